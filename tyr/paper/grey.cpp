#include "tyr/paper/grey.h"

#include <array>

namespace {

constexpr int kEntries = 257;

struct State {
    std::array<float, kEntries> grey{};
    bool reversed = false;
};

State state;

bool is_entry(int index)
{
    return index >= 0 && index < kEntries;
}

} // namespace

void gps_set_gray(int index, float red, float green, float blue)
{
    if (is_entry(index)) {
        const float grey = (0.9F * red + green + 0.8F * blue) / 2.7F;
        state.grey[index] = state.reversed ? 1.0F - grey : grey;
    }
}

float gps_gray(int index)
{
    return is_entry(index) ? state.grey[index] : 0.0F;
}

void gps_set_reverse(int flag)
{
    state.reversed = flag != 0;
}
