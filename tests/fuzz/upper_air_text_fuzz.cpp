// Any bytes as a file of upper-air reports, by its magic and as each of the five text forms.

#include "fuzz/upper_air.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    for (int form = 0; form <= kUpaPlaced; ++form) {
        fuzz_upper_air(fuzz_text(data, size), form);
    }
    return 0;
}
