// Any bytes as a text grid file, old, present and with domain texts.

#include "fuzz/grid.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    for (const int kind : {kGridOldText, kGridText, kGridDescription}) {
        fuzz_grid(fuzz_text(data, size), kind);
    }
    return 0;
}
