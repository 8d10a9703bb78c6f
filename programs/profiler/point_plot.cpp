#include "programs/profiler/point_plot.h"

#include "programs/profiler/evaluate.h"
#include "programs/profiler/walk.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/gks.h"
#include "tyr/plot/area.h"
#include "tyr/plot/labels.h"
#include "tyr/plot/value.h"
#include "tyr/start/convert.h"
#include "tyr/var/expression.h"
#include "tyr/var/type_words.h"

namespace {

constexpr unsigned kDetail = 0x0F000000;

struct State {
    PlotValue value = {};
};

State state;

bool is_barb(int type)
{
    return type >= kTypeWindBarb && type <= kTypeVectorBarb;
}

} // namespace

tyr::Styles tyr::setup_values()
{
    Styles styles;
    ATTR_init(&styles.data);
    ATTR_init(&styles.wind);
    ATTR_from_resource("color_data", "green", &styles.data);
    ATTR_from_resource("color_wind", PLT_is_light() != 0 ? "black" : "white", &styles.wind);
    gset_fill_black(1);
    float scale = 1.0F;
    RES_get_value("plot_scale", &scale, kResReal);
    const bool barb = VAR_count() > 0 && is_barb(VAR_get_list()->type);
    PLT_setup_values(barb ? &styles.wind : &styles.data, scale);
    return styles;
}

void tyr::begin_points()
{
    PLT_init_value(&state.value);
}

void tyr::plot_point(const ProfilerRecord &record, VarRec *asked, const Styles &styles, float x,
                     float y, PlotMode mode)
{
    MAP_ll_to_xy(&state.value.x, &state.value.y, x, y);
    const VarRec *list = VAR_get_list();
    for (int i = 0; i < VAR_count(); ++i) {
        if (VAR_is_point(i) == 0) {
            continue;
        }
        state.value.attr = is_barb(list[i].type) ? styles.wind : styles.data;
        state.value.type = list[i].type;
        STR_copy(state.value.format, sizeof state.value.format, list[i].format);
        if (PRF_evaluate(&record, asked, &state.value) != 0) {
            if (mode == kLevelMap) {
                MSG_out(kDetail, "%s %7.2f %7.2f - %7.2f %7.2f\n", record.id, record.lat,
                        record.lon, state.value.value1, state.value.value2);
            }
            PLT_plot_value(&state.value);
        }
    }
}

void tyr::label_date(const DateRec &date)
{
    const PrfFileInfo &info = PRF_file_info();
    PLT_set_label_date(&info.date);
    if (info.date_label[0] == '\0' && date.year != kMissingInt) {
        PRF_set_date_label(&date);
    }
    PLT_label_ur(info.date_label);
}
