#pragma once

#include <eccodes.h>

/// ecCodes, loaded when the first message needs it.

namespace tyr {

/// What is called of the library; a row is the name behind `codes_`.
#define TYR_ECCODES_CALLS(CALL)                                                                    \
    CALL(context_set_logging_proc)                                                                 \
    CALL(handle_new_from_message_copy)                                                             \
    CALL(handle_clone)                                                                             \
    CALL(handle_delete)                                                                            \
    CALL(get_long)                                                                                 \
    CALL(get_double)                                                                               \
    CALL(get_string)                                                                               \
    CALL(set_long)                                                                                 \
    CALL(bufr_keys_iterator_new)                                                                   \
    CALL(bufr_keys_iterator_next)                                                                  \
    CALL(bufr_keys_iterator_get_name)                                                              \
    CALL(bufr_keys_iterator_delete)

/// The library's functions, each under its own name without `codes_`.
struct EccodesCalls {
// NOLINTNEXTLINE(bugprone-macro-parentheses): the name of a member takes none
#define TYR_ECCODES_FIELD(name) decltype(&::codes_##name) name = nullptr;
    TYR_ECCODES_CALLS(TYR_ECCODES_FIELD)
#undef TYR_ECCODES_FIELD
};

/// Whether the library can be had; to be asked before its first call.
bool has_eccodes();

/// The library, which is there.
const EccodesCalls &codes();

} // namespace tyr
