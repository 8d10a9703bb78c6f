// Any bytes as fill words and as a fill file; values looked up in the bands.

#include "fuzz/input.h"
#include "tyr/plot/levels.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin_plot();
    const std::string text = fuzz_text(data, size);
    const std::string words = text.substr(0, text.find_first_of(std::string("\0|", 2)));
    const std::string list = words.find(',') == std::string::npos ? words + ",red" : words;
    for (const std::string &fill : {list, fuzz_file(text)}) {
        CONT_reset();
        CONT_set_fill_colors(fill.c_str(), 1);
        for (const float value : {-1e30F, 1e-40F, 0.5F, 12.0F, 3e38F}) {
            AttrRec attr;
            CONT_value_attr(value, &attr);
            CONT_set_interval(value);
            CONT_nice_interval(10, value, 0.0F);
        }
        CONT_row(3);
    }
    return 0;
}
