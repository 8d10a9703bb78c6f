// Any bytes as an attribute text, drawn with.

#include "fuzz/input.h"
#include "tyr/plot/attributes.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin_plot();
    const std::string text = fuzz_text(data, size);
    AttrRec a;
    ATTR_init(&a);
    ATTR_parse(text.c_str(), &a);
    GPH_set_line_attr(&a);
    GPH_set_fill_attr(&a);
    GPH_set_marker_attr(&a, 1.0F);
    GPH_set_text_attr(&a, 0.02F);
    const float square[] = {0.2F, 0.2F, 0.3F, 0.2F, 0.3F, 0.3F};
    gpolyline(3, square);
    gfill_area(3, square);
    gpolymarker(3, square);
    gtext(square, "A1");
    return 0;
}
