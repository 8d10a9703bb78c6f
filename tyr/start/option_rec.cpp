#include "tyr/start/option_rec.h"

const char *OPT_place_key(int place)
{
    // a place and a text share one field
    return reinterpret_cast<const char *>(static_cast<std::intptr_t>(place));
}

int OPT_key_place(const char *key)
{
    const auto place = reinterpret_cast<std::uintptr_t>(key);
    return place <= kListPlace ? static_cast<int>(place) : 0;
}
