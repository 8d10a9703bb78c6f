#include <algorithm>
#include <limits>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tyr/base/classic_extent_private.h"
#include "tyr/base/classic_header_private.h"

using namespace tyr;

namespace {

void measure(const ClassicHeader &header, int64_t file_size, ClassicExtent &extent)
{
    extent.fixed_part = true;
    int64_t record_end = 0;
    for (const ClassicVariable &v : header.variables) {
        if (v.bytes > file_size || v.begin > file_size) {
            extent.fixed_part = extent.fixed_part && v.is_record;
            record_end = v.is_record ? std::numeric_limits<int64_t>::max() / 2 : record_end;
        } else if (!v.is_record) {
            extent.fixed_part = extent.fixed_part && v.begin + v.bytes <= file_size;
        } else {
            record_end = std::max(record_end, v.begin + v.bytes);
        }
    }
    const int64_t record_bytes = header.record_bytes();
    if (record_bytes > 0 && record_end <= file_size) {
        extent.whole_records = 1 + (file_size - record_end) / record_bytes;
    }
}

} // namespace

ClassicExtent tyr::classic_extent(const ClassicHeader &header, int64_t file_size)
{
    ClassicExtent extent;
    extent.is_classic = header.is_classic;
    extent.is_whole = header.is_whole;
    if (extent.is_whole) {
        measure(header, file_size, extent);
    }
    return extent;
}

ClassicExtent tyr::classic_extent(std::string_view bytes)
{
    return classic_extent(read_classic_header(bytes), static_cast<int64_t>(bytes.size()));
}

ClassicExtent tyr::classic_file_extent(const char *path)
{
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    struct stat info = {};
    ClassicExtent extent;
    if (file >= 0 && fstat(file, &info) == 0 && S_ISREG(info.st_mode) && info.st_size > 0) {
        const auto size = static_cast<size_t>(info.st_size);
        void *bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
        if (bytes != MAP_FAILED) {
            extent = classic_extent({static_cast<const char *>(bytes), size});
            munmap(bytes, size);
        }
    }
    if (file >= 0) {
        close(file);
    }
    return extent;
}
