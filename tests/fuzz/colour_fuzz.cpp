// Any bytes as a colour table, its colours looked up and drawn with.

#include "fuzz/input.h"
#include "tyr/gks/colour_table.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin_plot();
    std::string words = fuzz_text(data, size);
    CLR_read_table(fuzz_file(words).c_str());
    CLR_lookup(fuzz_line(words).c_str());
    float rgb[3];
    CLR_get_rgb(CLR_count() - 1, &rgb[0], &rgb[1], &rgb[2]);
    gset_colr_rep(1, 20, rgb);
    int of_255[3];
    ginq_color255(20, &of_255[0], &of_255[1], &of_255[2]);
    return 0;
}
