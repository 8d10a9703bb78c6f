// Any bytes as the words of a command (line 1) and a raw data file (the rest), which both names of
// the command mean.

#include <vector>

#include "fuzz/input.h"
#include "tyr/base/str.h"
#include "tyr/raw_math/raw_math.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    std::string text = fuzz_text(data, size);
    const std::string line = fuzz_line(text);
    const std::string path = fuzz_file(text);
    const std::string folder = path.substr(0, path.rfind('/'));
    RES_put("raw_path", folder.c_str());
    std::vector<std::string> words;
    for (const std::string &word : STR_fields(line.c_str(), ' ')) {
        // names of the user's own files aren't written over, nor commands run
        const bool is_name = word.find_first_of("/|~$`@") != std::string::npos;
        words.push_back(is_name ? "input" : word);
    }
    std::vector<char *> pointers;
    for (std::string &word : words) {
        pointers.push_back(word.data());
    }
    RAW_math_command(static_cast<int>(pointers.size()), pointers.data());
    return 0;
}
