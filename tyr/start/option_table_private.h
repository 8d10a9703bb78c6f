#pragma once

namespace tyr {

/// One row of the option vocabulary.
struct OptionRow {
    int code;
    const char *key; ///< short option; null for an option by place
    int place;       ///< 1 or 10 for an option by place, else 0
    const char *resource;
    const char *environment;
    int type;
    const char *usage;
    const char *help;
    bool long_help = false; ///< help is all that follows the usage word, newlines and all
};

/// A row by its code; null if there is none.
const OptionRow *option_row(int code);

} // namespace tyr
