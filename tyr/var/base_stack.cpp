#include "tyr/var/base_stack.h"

#include <array>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/var/variable.h"

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
    return state.index < 0 ? nullptr : &state.entries[static_cast<size_t>(state.index)];
}

bool VAR_base_add(const VarBase &base)
{
    if (state.index + 1 >= kMaxVarBase) {
        return false;
    }
    state.entries[static_cast<size_t>(++state.index)] = base;
    return true;
}

void VAR_base_pop()
{
    if (state.index >= 0) {
        --state.index;
    }
}

int VAR_base_push()
{
    const VarRec *record = VAR_get(VAR_count());
    if (record == nullptr) {
        return -1;
    }
    VarBase base{record->type,       record->time,        record->time_class,
                 record->level_kind, record->level_value, record->level_class};
    if (const VarBase *outer = VAR_base_top()) { // what a record doesn't set goes on from outside
        if (base.type == kMissingInt) {
            base.type = outer->type;
        }
        if (base.time_class == 0) {
            base.time = outer->time;
            base.time_class = outer->time_class;
        }
        if (base.level_class == 0) {
            base.level_kind = outer->level_kind;
            base.level_value = outer->level_value;
            base.level_class = outer->level_class;
        }
    }
    if (!VAR_base_add(base)) {
        MSG_out(kMsgWarn, "VAR_base_push: More than %d levels, left out what stands in: %s\n",
                kMaxVarBase, record->name);
        return -1;
    }
    MSG_out(kMsgDebugC, "VAR_base_push: %d = %d %d %d %d %d\n", VAR_base_index(), base.type,
            base.time, base.level_kind, base.level_value, base.level_class);
    return 0;
}
