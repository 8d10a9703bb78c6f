// A time-height section of winds of our own: a jet that sinks and strengthens through twelve hours.
// usage: section [option...]     e.g. section -de p,jet.ps,eps,port,color

#include <cmath>

#include <tyr/geo/domain.h>
#include <tyr/geo/projection.h>
#include <tyr/gks/session.h>
#include <tyr/map/map_layer.h>
#include <tyr/plot/grid_interval.h>
#include <tyr/plot/labels.h>
#include <tyr/plot/plot_session.h>
#include <tyr/plot/value.h>
#include <tyr/plot/view.h>
#include <tyr/start/option_codes.h>
#include <tyr/start/options.h>
#include <tyr/var/type_words.h>

constexpr int kOptions[] = {kOptHelp, kOptDevice, kOptFilePath, kOptPlotParam, 0};
constexpr int kNoPositions[] = {0};

int main(int count, char **words)
{
    OPT_init(count, words, kOptions, kNoPositions);
    DomainRec domain;
    DOM_init(&domain);
    domain.proj = kProjTimeHeight; // columns -1 to 13, heights 0 to 12 km, a window of 25 by 21
    domain.clat = -1.0F;
    domain.clon = 0.0F;
    domain.dx = 14.0F;
    domain.dy = 12000.0F;
    domain.nx = 25;
    domain.ny = 21;
    DOM_set_offset(0, 0, 1.0F, -1000.0F);
    if (PLT_begin(DOM_aspect(&domain)) != 0) {
        return 1;
    }
    PLT_set_domain(&domain);
    PLT_map_under();
    PLT_label_ul("A jet of our own");
    AttrRec attributes;
    ATTR_init(&attributes);
    PLT_setup_values(&attributes, 1.0F);
    PlotValue value;
    PLT_init_value(&value);
    value.type = kTypeWindBarb;
    GPH_sel_tran(2);
    for (int hour = 0; hour <= 12; ++hour) {
        const auto t = static_cast<float>(hour);
        for (int z = 0; z <= 11500; z += 500) {
            const float above = (static_cast<float>(z) - 9000.0F + 300.0F * t) / 2500.0F;
            MAP_ll_to_xy(&value.x, &value.y, t, static_cast<float>(z));
            value.value1 = 220.0F + 5.0F * t;                                    // degrees
            value.value2 = (40.0F + 5.0F * t) * std::exp(-above * above) + 5.0F; // knots
            PLT_plot_value(&value);
        }
    }
    PLT_map_over();
    return PLT_end();
}
