#include "tyr/plot/tick.h"

#include <array>
#include <cmath>

#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/plot/area.h"
#include "tyr/plot/grid_interval.h"

using namespace tyr;

namespace {

constexpr float kTickHeight = 0.015F;
constexpr float kTickGap = 0.01F;    ///< between viewport and label
constexpr float kAutoLabels = 10.0F; ///< labels across the domain where no interval is given

bool wants_tick(float x)
{
    float interval = 0.0F;
    float unused = 0.0F;
    DOM_get_offset(&interval, &unused);
    if (interval != 0.0F) {
        return std::fmod(x, interval) == 0.0F;
    }
    const float every = std::ceil(DOM_get(nullptr)->dx / kAutoLabels);
    return every > 0.0F && std::fmod(x, every) < 0.5F;
}

} // namespace

void PLT_x_tick(float x, const char *text, const AttrRec *line)
{
    constexpr int kCentreCap[] = {kAlignCentre, kAlignCap};
    std::array<float, 4> viewport;
    PLT_get_viewport(viewport.data());
    GPH_sel_tran(1);
    GPH_set_text_attr(line, kTickHeight);
    gset_text_align(kCentreCap);
    float px = 0.0F;
    float py = 0.0F;
    MAP_ll_to_xy(&px, &py, x, 0.0F);
    const std::array<float, 2> place = {gtran_x(2, 1, px), viewport[2] - kTickGap};
    if (place[0] >= viewport[0] && place[0] <= viewport[1] && wants_tick(x)) {
        gtext(place.data(), text);
    }
    GPH_sel_tran(2);
}
