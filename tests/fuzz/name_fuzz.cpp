// Any bytes as a name convention (line 1), a user's name (line 2) and a convention file (the rest).

#include <array>

#include "fuzz/input.h"
#include "tyr/base/file.h"
#include "tyr/names/name_conv.h"
#include "tyr/names/name_mask_private.h"
#include "tyr/names/name_template_private.h"

using namespace tyr;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    std::string rest = fuzz_text(data, size);
    std::string type = fuzz_line(rest);
    const std::string input = fuzz_line(rest);
    RES_put("name_conv", fuzz_file(rest).c_str());
    FILE_set_name(type.data());
    const DateRec date = {2026, 11, 22, 326, 0, 12, 30, 0};
    std::array<char, kFileNameRoom> out = {};
    FILE_compose(&date, out.data());
    FILE_out_name(&date, out.data());
    FILE_take_name(input.c_str(), out.data());
    FILE_set_last(out.data());
    FILE_compose(nullptr, out.data());
    shell_mask(type, {});
    return 0;
}
