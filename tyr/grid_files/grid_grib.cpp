#include "tyr/base/str.h"
#include "tyr/grid_files/grid_grib_private.h"

namespace tyr {

int GridGrib::read_header(GridFileInfo *info, int *file_type)
{
    GribHeader header;
    if (stream_.read_header(&header) != 0) {
        return -1;
    }
    info->grid_type = 0;
    info->date = header.date;
    STR_copy(info->date_text, sizeof info->date_text, header.date_text);
    *file_type = header.file_type();
    return 0;
}

} // namespace tyr
