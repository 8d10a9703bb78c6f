// Any bytes as a template of file names (line 1) and a current-file word (the rest).

#include <array>

#include "fuzz/input.h"
#include "tyr/base/file.h"
#include "tyr/base/str.h"
#include "tyr/names/search.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    std::string word = fuzz_text(data, size);
    std::string type = "@" + fuzz_line(word);
    FILE_set_name(type.data());
    TIME_clear_hour();
    std::array<char, kFileNameRoom> out = {};
    FILE_current(word.c_str(), out.data());
    if (STR_ncasecmp(word.c_str(), "exit", 4) != 0) { // ends the program
        FILE_parse_name(word.c_str(), out.data());
    }
    return 0;
}
