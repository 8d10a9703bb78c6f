// Any bytes as a symbol file, some of its symbols drawn.

#include "fuzz/input.h"
#include "tyr/plot/symbol.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin_plot();
    static bool odd = false;
    odd = !odd; // a file of the same name counts as the same file
    WX_symb_file(fuzz_file(fuzz_text(data, size), odd ? "odd" : "even").c_str());
    for (const char *code : {"a", "-", "rain", "TRW+", "*"}) {
        WX_symbol(0.5F, 0.5F, 0.1F, code);
    }
    return 0;
}
