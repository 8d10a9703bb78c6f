// Any bytes as upper-air bulletins, and as the tables of others.

#include "fuzz/upper_air.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    for (const int form : {61, 62, 63}) {
        fuzz_upper_air(fuzz_text(data, size), form);
    }
    return 0;
}
