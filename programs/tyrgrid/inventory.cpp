#include "programs/tyrgrid/inventory.h"

#include <algorithm>
#include <cstdio>

#include "tyr/base/res.h"
#include "tyr/grid_files/grid_line.h"

int tyr::list_grids(GridChoice *choice)
{
    const std::vector<std::string> words = RES_list("plot_param");
    const bool has_values = std::find(words.begin(), words.end(), "heads") == words.end();
    std::printf("%s\n", grid_line_head().c_str());
    int count = 0;
    for (size_t i = 0; i < choice->grids.size(); ++i) {
        GridRec whole;
        GRD_init(&whole);
        const GridRec head = choice->grids[i].head();
        const bool is_read = has_values && choice->take(&choice->grids[i], &whole);
        const std::string range = is_read ? grid_range(whole) : has_values ? "can't be read" : "-";
        const GridRec &known = is_read ? whole : head;
        std::printf("%s\n", grid_line(choice->number(i), known, range).c_str());
        count += is_read || !has_values ? 1 : 0;
        GRD_free(&whole);
    }
    return count;
}
