#include "tyr/grid/grid.h"

#include <cstdlib>
#include <cstring>

#include "tyr/base/msg.h"

void GRD_init(GridRec *grid)
{
    *grid = GridRec{};
    DOM_init(&grid->domain);
}

int GRD_alloc(GridRec *grid)
{
    grid->values = nullptr;
    const DomainRec &domain = grid->domain;
    if (domain.nx >= 1 && domain.ny >= 1) {
        const size_t count = static_cast<size_t>(domain.nx) * static_cast<size_t>(domain.ny);
        grid->values = static_cast<float *>(std::malloc(count * sizeof(float)));
    }
    if (grid->values == nullptr) {
        MSG_out(kMsgWarn, "GRD_alloc: No memory for grid field\n");
        return 0;
    }
    return 1;
}

void GRD_free(GridRec *grid)
{
    std::free(grid->values);
    grid->values = nullptr;
}

void GRD_copy_layout(GridRec *to, const GridRec *from)
{
    to->grid_id = from->grid_id;
    to->source = from->source;
    to->version = from->version;
    std::memcpy(to->date, from->date, sizeof to->date);
    std::memcpy(to->units, from->units, sizeof to->units);
    to->model = from->model;
    to->domain = from->domain;
    to->values = nullptr;
}

void GRD_copy(GridRec *to, const GridRec *from)
{
    *to = *from;
}
