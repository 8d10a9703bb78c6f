// Any bytes as a coded text product.

#include "fuzz/grid.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    fuzz_grid(fuzz_text(data, size), kGridCoded);
    return 0;
}
