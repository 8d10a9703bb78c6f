#include "tyr/grid_files/grid_search.h"

#include "tyr/base/missing.h"

using namespace tyr;

namespace {

bool fits(int wanted, int value)
{
    return wanted == kMissingInt || wanted == value;
}

} // namespace

int GRD_search_file(int handle, const GridWanted *wanted, GridRec *grid, int *index)
{
    GridRec head;
    GRD_init(&head);
    for (int place = *index;; ++place) {
        const int result = GRD_read(handle, &head, 1, &place);
        if (result < 0) {
            return -1;
        }
        if (result == 0 && fits(wanted->var, head.var) && fits(wanted->ltype, head.ltype) &&
            fits(wanted->level, head.level) && fits(wanted->time, head.time)) {
            *index = place;
            return GRD_read(handle, grid, 0, index);
        }
    }
}

int GRD_read_file(const char *path, const GridWanted *wanted, GridRec *grid)
{
    int kind = kGridUnknown;
    const int handle = GRD_open(path, 0, &kind);
    if (handle == -1) {
        return -1;
    }
    int index = 0;
    const int result = GRD_search_file(handle, wanted, grid, &index);
    GRD_close(handle);
    return result;
}
