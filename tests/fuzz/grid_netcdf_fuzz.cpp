// Any bytes as a netCDF grid file, the system's own or a model's.

#include "fuzz/grid.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    fuzz_grid(fuzz_text(data, size), kGridNetcdf);
    return 0;
}
