// Any bytes as a date, a display zone and the format of a label.

#include <array>

#include "fuzz/input.h"
#include "tyr/base/date.h"
#include "tyr/names/date_label.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    const std::string text = fuzz_text(data, size);
    DateRec date;
    TIME_parse(text.c_str(), &date);
    TIME_set_zone(text.c_str());
    std::array<char, kDateTextRoom> out;
    TIME_format(&date, out.data());
    TIME_set_plot(&date, 12000);
    std::array<char, kLabelRoom> label;
    TIME_expand_label(text.c_str(), label.data());
    TIME_to_seconds(&date);
    TIME_set_hour(&date);
    TIME_format_valid(3024000, &date, out.data());
    return 0;
}
