// Any bytes as a resource file, each line matched as start-up does.

#include <array>

#include "fuzz/input.h"
#include "tyr/start/deffile.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    DEF_clear();
    std::array<char, kDefNameRoom> name;
    std::array<char, kDefValueRoom> value;
    DEF_open(fuzz_file(fuzz_text(data, size)).c_str());
    while (DEF_get(name.data(), value.data()) == 1) {
        DEF_match("level", name.data());
        DEF_match_other(name.data());
    }
    DEF_close();
    return 0;
}
