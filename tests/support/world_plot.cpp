#include "support/world_plot.h"

#include <array>
#include <cmath>
#include <cstdio>

#include "tyr/base/res.h"
#include "tyr/gks/colour_table.h"
#include "tyr/gks/gks.h"
#include "tyr/plot/plot_session.h"
#include "tyr/plot/view.h"

namespace {

constexpr double kPaperSteps = 1200.0; ///< of the shorter side of the page, at least

} // namespace

WorldPlot::WorldPlot(int size)
    : plot_(kDevicePostScript, "color"), half_(size / 2.0), tolerance_(size / kPaperSteps)
{
    CLR_read_table("");
    DomainRec domain;
    DOM_init(&domain);
    domain.proj = kProjXY;
    domain.clat = domain.clon = static_cast<float>(-half_);
    domain.dx = domain.dy = static_cast<float>(size);
    domain.nx = domain.ny = size;
    PLT_set_domain(&domain);
    // a right angle, from which the way back from paper to plot units is worked out
    const float h = static_cast<float>(half_);
    const std::array<float, 6> corner = {h, -h, -h, -h, -h, h};
    gset_linetype(1);
    gpolyline(3, corner.data());
}

PsPage WorldPlot::finish()
{
    PsPage page = plot_.page();
    undo_paper(&page, {-half_, half_, -half_, half_});
    return page;
}

PlotSession::PlotSession(float aspect)
{
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    RES_put("device", ("p," + path() + ",color").c_str());
    begun_ = PLT_begin(aspect);
    if (begun_ == 0) {
        gsel_norm_tran(1);
        const std::array<float, 6> corner = {0.5F, 0.0F, 0.0F, 0.0F, 0.0F, 0.5F};
        gset_linetype(1);
        gpolyline(3, corner.data());
    }
}

PlotSession::~PlotSession()
{
    if (!ended_) {
        PLT_end();
    }
}

PsPage PlotSession::finish()
{
    ended_ = true;
    PLT_end();
    PsPage page = read_ps(read_file(path()));
    undo_paper(&page, {0.0, 0.5, 0.0, 0.5});
    return page;
}

void undo_paper(PsPage *page, const std::array<double, 4> &rect)
{
    if (page->strokes.empty() || page->strokes[0].points.size() != 3) {
        page->error += " no corner";
        return;
    }
    const std::vector<PsPoint> corner = page->strokes[0].points;
    page->strokes.erase(page->strokes.begin());
    const PsPoint origin = corner[1];
    const PsPoint along = {corner[0][0] - origin[0], corner[0][1] - origin[1]};
    const PsPoint up = {corner[2][0] - origin[0], corner[2][1] - origin[1]};
    const double det = along[0] * up[1] - along[1] * up[0];
    for (PsStroke &stroke : page->strokes) {
        for (PsPoint &p : stroke.points) {
            const double dx = p[0] - origin[0];
            const double dy = p[1] - origin[1];
            p = {rect[0] + (rect[1] - rect[0]) * (dx * up[1] - dy * up[0]) / det,
                 rect[2] + (rect[3] - rect[2]) * (along[0] * dy - along[1] * dx) / det};
        }
    }
}

std::vector<std::string> show_strokes(const PsPage &page, int places)
{
    std::vector<std::string> list;
    for (const PsStroke &stroke : page.strokes) {
        if (stroke.text >= 0) {
            continue;
        }
        std::string text = stroke.filled ? "fill" : "line";
        const double unit = std::pow(10.0, places);
        for (const PsPoint &p : stroke.points) {
            char pair[64];
            std::snprintf(pair, sizeof pair, " %.*f,%.*f", places,
                          std::round(p[0] * unit) / unit + 0.0, places,
                          std::round(p[1] * unit) / unit + 0.0);
            text += pair;
        }
        list.push_back(text);
    }
    return list;
}
