#include "support/kernel_plot.h"

#include "tyr/base/res.h"
#include "tyr/gks/gks.h"

KernelPlot::KernelPlot(int device, const std::string &words) : path_(dir_.file("plot"))
{
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    gopen_gks(nullptr, 0);
    const std::string params = path_ + (words.empty() ? "" : "," + words);
    opened_ = gopen_ws(1, params.c_str(), device) == 0;
}

KernelPlot::~KernelPlot()
{
    gclose_ws(1);
    gclose_gks();
}

std::string KernelPlot::finish()
{
    gclose_ws(1);
    return read_file(path_);
}
