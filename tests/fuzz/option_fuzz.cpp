// Any bytes as a command line, a word a line, converted by every kind of option.

#include <vector>

#include "fuzz/input.h"
#include "tyr/start/options.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    std::string text = "profiler\n" + fuzz_text(data, size);
    if (text.find('|') != std::string::npos) {
        return 0; // a command isn't run by chance
    }
    std::vector<std::string> words;
    while (!text.empty()) {
        words.push_back(fuzz_line(text));
    }
    std::vector<char *> arguments;
    for (std::string &word : words) {
        arguments.push_back(word.data());
    }
    static constexpr int kKeyed[] = {57, 3,  73, 48, 41, 39, 94, 55, 63, 106, 112, 113, 6,  72, 76,
                                     64, 80, 47, 40, 58, 78, 60, 84, 89, 88,  35,  2,   53, 0};
    static constexpr int kPositional[] = {50, 0};
    OPT_init(static_cast<int>(arguments.size()), arguments.data(), kKeyed, kPositional);
    return 0;
}
