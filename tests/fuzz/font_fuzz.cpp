// Any bytes as a stroke font, every character of it drawn.

#include "fuzz/input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin_plot();
    read_font(fuzz_file(fuzz_text(data, size)).c_str());
    std::string all;
    for (int c = 1; c < 256; ++c) {
        all += static_cast<char>(c);
    }
    const float place[2] = {0.1F, 0.5F};
    gtext(place, all.c_str());
    return 0;
}
