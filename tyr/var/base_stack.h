#pragma once

/// Defaults that the head of a function, group or vector hands to what stands inside it.
struct VarBase {
    int type;
    int time;
    int time_class;
    int level_kind;
    int level_value;
    int level_class;
};

inline constexpr int kMaxVarBase = 10; ///< entries of the stack

/// Empties the stack: no parse runs, the index is -1 and every entry kMissingInt.
void VAR_base_clear();
/// Index of the topmost entry, -1 outside a parse.
int VAR_base_index();
/// The topmost entry, null outside a parse.
const VarBase *VAR_base_top();
/// Puts an entry on top: true, or false when the stack is full.
bool VAR_base_add(const VarBase &base);
/// Takes the topmost entry off.
void VAR_base_pop();
/// Makes the settings of the record at the count the defaults of what stands inside it. Returns 0,
/// or -1 with a message when the stack is full.
int VAR_base_push();
