// Any bytes as the format tokens of a series, values drawn by them.

#include "fuzz/input.h"
#include "tyr/plot/style.h"
#include "tyr/plot/value.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin_plot();
    const std::string text = fuzz_text(data, size);
    PlotStyle style;
    ATTR_init(&style.attr);
    PLT_parse_format(&style, text.c_str());
    PLT_apply_option(&style, text.c_str());
    char out[30];
    for (const float value : {0.25F, -1e30F, 1e38F, kMissing}) {
        PLT_format_number(out, sizeof out, style.format, value);
        PLT_format_number(out, sizeof out, text.c_str(), value);
        PLT_format_integer(out, sizeof out, text.c_str(), -12);
    }
    PLT_apply_style(&style);
    return 0;
}
