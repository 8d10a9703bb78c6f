// Any bytes as a raw sounding file, read and written again.

#include "fuzz/input.h"
#include "tyr/upper_air/raw_sounding.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    const std::string path = fuzz_file(fuzz_text(data, size), "sounding");
    RES_put("out_file", "/dev/null");
    THERM_read_raw(path.c_str());
    THERM_out_raw();
    return 0;
}
