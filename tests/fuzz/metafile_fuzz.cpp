// Any bytes as a text metafile, played.

#include "fuzz/input.h"
#include "tyr/paper/metafile_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin_plot();
    const std::string path = fuzz_file(fuzz_text(data, size));
    gread_metafile(path.c_str());
    constexpr float kPanel[4] = {0.5F, 1.0F, 0.0F, 0.4F};
    gread_metafile_panel(path.c_str(), kPanel, 1);
    gsel_norm_tran(0);
    return 0;
}
