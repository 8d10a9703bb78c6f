#include "tyr/plot/grid_interval.h"

namespace {

struct State {
    GridInterval interval = {0, 0, 0.0F, 0.0F};
    int count = 0;
};

State state;

} // namespace

void DOM_set_offset(int crosses, int repeat, float dlat, float dlon)
{
    state = {
        {crosses, repeat, dlat, dlon},
        state.count + 1
    };
}

void DOM_get_offset(float *dlat, float *dlon)
{
    *dlat = state.interval.dlat;
    *dlon = state.interval.dlon;
}

GridInterval DOM_get_grid_interval()
{
    return state.interval;
}

int DOM_count_offsets()
{
    return state.count;
}
