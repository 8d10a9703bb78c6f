#pragma once

#include <cstdint>

/// One option as start-up sees it.
struct OptionRec {
    const char *name = nullptr;        ///< resource name; null ends a list
    const char *environment = nullptr; ///< environment variable
    const char *key = nullptr;         ///< short option, or the place of OPT_place_key
    int type = 0;                      ///< type code of base/res.h
    void *destination = nullptr;       ///< where start-up converts the value to; null for none
    int *count = nullptr;              ///< for type 21 the word count's place
};

/// Places up to this value in `key` are positions: 1 the first positional word, 10 all of them.
inline constexpr int kListPlace = 10;
/// A position as an option's key, and back: 0 for a key that is a text.
const char *OPT_place_key(int place);
int OPT_key_place(const char *key);

/// Room of a program's option records, the end included.
inline constexpr int kMaxOptions = 75;
