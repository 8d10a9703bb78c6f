#include "tyr/var/base_stack.h"

#include <array>

#include "tyr/base/missing.h"

namespace {

constexpr VarBase kUnset{kMissingInt, kMissingInt, kMissingInt,
                         kMissingInt, kMissingInt, kMissingInt};

struct State {
    std::array<VarBase, kMaxVarBase> entries{};
    int index = -1;
};
State state;

} // namespace

void VAR_base_clear()
{
    state.entries.fill(kUnset);
    state.index = -1;
}

int VAR_base_index()
{
    return state.index;
}

const VarBase *VAR_base_top()
{
    return state.index < 0 ? nullptr : &state.entries[static_cast<std::size_t>(state.index)];
}

bool VAR_base_add(const VarBase &base)
{
    if (state.index + 1 >= kMaxVarBase)
        return false;
    state.entries[static_cast<std::size_t>(++state.index)] = base;
    return true;
}

void VAR_base_pop()
{
    if (state.index >= 0)
        --state.index;
}
