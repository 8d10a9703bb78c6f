#include "tyr/var/variable.h"

#include <algorithm>
#include <array>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/var/type_words.h"

namespace {

constexpr VarRec kUnset{kMissingInt, "",          "",          kMissingInt, kMissingInt,
                        kMissingInt, kMissingInt, kMissingInt, 0,           kMissingInt,
                        0,           kMissingInt, kMissingInt, "",          0};

struct State {
    std::array<VarRec, kMaxVariables> list{};
    int count = 0;

    State() { list.fill(kUnset); }
};
State state;

/// Record i of those that count, null for none.
const VarRec *counted(int i)
{
    return i >= 0 && i < state.count ? VAR_get(i) : nullptr;
}

int is_type(int i, int first, int last)
{
    const VarRec *record = counted(i);
    return record != nullptr && record->type >= first && record->type <= last ? 1 : 0;
}

int is_role(int i, int digit)
{
    const VarRec *record = counted(i);
    return record != nullptr && record->role % 10 == digit ? 1 : 0;
}

} // namespace

void VAR_init(VarRec *record)
{
    *record = kUnset;
}

void VAR_reset()
{
    state.list.fill(kUnset);
    state.count = 0;
}

int VAR_count()
{
    return state.count;
}

void VAR_set_count(int count)
{
    state.count = std::clamp(count, 0, kMaxVariables);
}

VarRec *VAR_get_list()
{
    return state.list.data();
}

VarRec *VAR_get(int i)
{
    return i >= 0 && i < kMaxVariables ? &state.list[static_cast<size_t>(i)] : nullptr;
}

int VAR_is_point(int i)
{
    const VarRec *record = counted(i);
    if (record == nullptr) {
        return 0;
    }
    const bool is_word = record->type >= kTypeMap && record->type <= kTypePanel;
    return (record->type < kTypeGrid && !is_word) || record->type > kTypeStream ? 1 : 0;
}

int VAR_is_map(int i)
{
    return is_type(i, kTypeMap, kTypeMap);
}

int VAR_is_frame(int i)
{
    return is_type(i, kTypeFrame, kTypeFrame);
}

int VAR_is_panel(int i)
{
    return is_type(i, kTypePanel, kTypePanel);
}

int VAR_is_grid(int i)
{
    return is_type(i, kTypeGrid, kTypeGridValue);
}

int VAR_is_vector(int i)
{
    return is_type(i, kTypeWind, kTypeStream);
}

int VAR_is_plain(int i)
{
    return is_role(i, kRolePlain);
}

int VAR_is_in_group(int i)
{
    return is_role(i, 1);
}

int VAR_is_function(int i)
{
    return is_role(i, kRoleFunction);
}

int VAR_is_group(int i)
{
    return is_role(i, kRoleGroup);
}

int VAR_is_vector_head(int i)
{
    return is_role(i, kRoleVector);
}

int VAR_is_second(int i)
{
    return is_role(i, kRoleSecond);
}

void VAR_print(unsigned mask, const VarRec *record)
{
    MSG_out(mask, "V: %-10s ", record->name);
    MSG_out(mask, "U: %-10s ", record->units);
    MSG_out(mask, "FH: %7ld ", static_cast<long>(record->time));
    MSG_out(mask, "LT: %6d ", record->level_kind);
    MSG_out(mask, "L: %7ld ", static_cast<long>(record->level_value));
    MSG_out(mask, "VN: %6d ", record->var_number);
    MSG_out(mask, "T: %5s ", VAR_plot_name(record->type));
    MSG_out(mask, "F: %2d ", record->role);
    MSG_out(mask, "FM: %s\n", record->format);
}
