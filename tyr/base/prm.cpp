#include "tyr/base/prm.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "tyr/base/missing.h"

namespace {

std::array<std::intptr_t, kPrmSlots> unset_slots()
{
    std::array<std::intptr_t, kPrmSlots> slots;
    slots.fill(kMissingInt);
    return slots;
}

std::array<int, kDrawSlots> all_drawn()
{
    std::array<int, kDrawSlots> draw;
    draw.fill(1);
    return draw;
}

struct State {
    std::array<std::intptr_t, kPrmSlots> slots = unset_slots();
    std::array<int, kDrawSlots> draw = all_drawn();
} state;

} // namespace

std::intptr_t PRM_get(int slot)
{
    return slot >= 0 && slot < kPrmSlots ? state.slots[slot] : 0;
}

int PRM_set(int slot, int value)
{
    return PRM_set_ptr(slot, value);
}

int PRM_set_ptr(int slot, std::intptr_t value)
{
    if (slot < 0 || slot >= kPrmSlots) {
        return -1;
    }
    state.slots[slot] = value;
    return 0;
}

void PRM_clear(int value)
{
    state.slots.fill(value);
}

int PRM_is_batch()
{
    return PRM_get(kPrmBatch) > 0;
}

int PRM_is_help()
{
    return PRM_get(kPrmHelp) > 0;
}

int PRM_get_draw(int slot)
{
    return slot >= 0 && slot < kDrawSlots ? state.draw[slot] : 0;
}

int PRM_set_draw(int slot, int value)
{
    if (slot < 0 || slot >= kDrawSlots) {
        return -1;
    }
    auto &draw = state.draw;
    draw[slot] = value;
    if (slot == kDrawAll) {
        std::fill(draw.begin(), draw.begin() + kDrawAll, value);
    } else if (slot == kDrawText) {
        std::fill(draw.begin(), draw.begin() + kDrawTextLr + 1, value);
    }
    draw[kDrawText] =
        std::accumulate(draw.begin() + kDrawTextUl, draw.begin() + kDrawTextLr + 1, 0);
    draw[kDrawAll] = std::accumulate(draw.begin(), draw.begin() + kDrawAll, 0);
    return 0;
}

void PRM_clear_draw()
{
    state.draw.fill(0);
}
