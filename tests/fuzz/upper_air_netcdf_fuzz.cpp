// Any bytes as a netCDF file of upper-air reports, in both layouts.

#include "fuzz/upper_air.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    for (const int form : {0, 11, 12}) {
        fuzz_upper_air(fuzz_text(data, size), form);
    }
    return 0;
}
