// Any bytes as a text metafile, played.

#include "fuzz/input.h"
#include "tyr/paper/metafile_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin_plot();
    gread_metafile(fuzz_file(fuzz_text(data, size)).c_str());
    gsel_norm_tran(0);
    return 0;
}
