// Any bytes as the words of plot_param.

#include "fuzz/input.h"
#include "tyr/plot/params.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin_plot();
    RES_put("plot_param", fuzz_text(data, size).c_str());
    PLT_read_params();
    return 0;
}
