#include "tyr/plot/value.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/plot/barb.h"
#include "tyr/plot/levels.h"
#include "tyr/plot/sky.h"
#include "tyr/plot/style.h"
#include "tyr/plot/symbol.h"
#include "tyr/plot/view.h"
#include "tyr/start/convert.h"
#include "tyr/var/type_words.h"

using namespace tyr;

namespace {

constexpr int kPlotTypeNone = 99;
constexpr int kNumberRoom = 128;
constexpr float kUnitsPerKnot = 1.852F / 100.0F; ///< knots to 100 km an hour
constexpr int kTrackTicks = 4;

// sizes, as fractions of the window height
constexpr float kStaff = 0.05F;
constexpr float kCloudGap = 0.01F;
constexpr float kDotRadius = 0.003F;
constexpr float kCalmCloudRadius = 0.013F;
constexpr float kCalmDotRadius = 0.006F;
constexpr float kSkyRadius = 0.01F;
constexpr float kSymbolSize = 0.03F;
constexpr float kTrackTick = 0.1F;

struct Point {
    float x = kMissing;
    float y = kMissing;
    bool is_set() const { return !is_missing(x) && !is_missing(y); }
};

struct State {
    PlotStyle base;
    Point newest, previous; ///< of the values plotted, for lines between them
    bool joins_next = false;
};

State state;

bool nothing_wanted(int slot)
{
    return PRM_get_draw(slot) == 0 || PRM_get(kPrmPlotType) == kPlotTypeNone;
}

/// The words of `con_base`: limits and the base of the levels.
void read_con_base(PlotStyle &style)
{
    for (const std::string &word : RES_list("con_base")) {
        const bool is_min = word[0] == '>';
        const bool is_max = word[0] == '<';
        const float value =
            static_cast<float>(std::atof(word.c_str() + (is_min || is_max ? 1 : 0)));
        if (is_max) {
            style.max = value;
        } else {
            style.base = value;
            style.min = is_min ? value : style.min;
        }
    }
    if (!RES_list("con_base").empty()) {
        CONT_set_base(style.base);
        CONT_set_limits(style.max, style.min);
    }
}

void draw_between_points()
{
    if (state.newest.is_set() && state.previous.is_set()) {
        const std::array<float, 4> points = {state.previous.x, state.previous.y, state.newest.x,
                                             state.newest.y};
        gpolyline(2, points.data());
    }
}

void note_point(const PlotValue &v)
{
    if (v.x != state.newest.x || v.y != state.newest.y) {
        state.previous = state.newest;
        state.newest = {v.x, v.y};
    }
}

bool is_wind_type(int type)
{
    switch (type) {
    case kTypeVector:
    case kTypeBarb:
    case kTypeStream:
    case kTypeWindBarb:
    case kTypeCloudBarb:
    case kTypeDotBarb:
    case kTypeVectorBarb:
        return true;
    default:
        return false;
    }
}

void colour_by_level(PlotStyle &style, const PlotValue &v)
{
    if (CONT_get_levels(nullptr) == 0 && is_missing(style.interval)) {
        return;
    }
    AttrRec attr;
    CONT_value_attr(is_wind_type(v.type) ? v.value2 : v.value1, &attr);
    ATTR_merge(&style.attr, &attr);
}

bool is_outside(const PlotStyle &style, float value)
{
    return !is_missing(value) && ((!is_missing(style.min) && value < style.min) ||
                                  (!is_missing(style.max) && value > style.max));
}

/// One drawing: the style, the value and where its mark goes.
struct Drawing {
    const PlotStyle &style;
    const PlotValue &v;
    Point at;
    float size; ///< window height times scale

    void text(const char *t) const { GPH_text_at("%s", at.x, at.y, t); }
    void sky(float radius, char code = '0') const
    {
        WX_sky_symbol(at.x, at.y, size * radius, code);
    }
};

void draw_number(const Drawing &d)
{
    if (is_missing(d.v.value1)) {
        d.text(d.v.text);
        return;
    }
    std::array<char, kNumberRoom> text;
    PLT_format_number(text.data(), kNumberRoom, d.style.format, d.v.value1);
    d.text(text.data());
}

void draw_integer(const Drawing &d)
{
    int value = 0;
    static_assert(sizeof value == sizeof d.v.value1);
    std::memcpy(&value, &d.v.value1, sizeof value);
    std::array<char, kNumberRoom> text;
    PLT_format_integer(text.data(), kNumberRoom, d.style.format, value);
    d.text(text.data());
}

void draw_marker(const Drawing &d, int code)
{
    gset_marker_type(code);
    GPH_mark(d.at.x, d.at.y);
}

void draw_barb(const Drawing &d, float calm_radius, float gap)
{
    if (d.v.value2 == 0.0F) {
        d.sky(calm_radius);
    } else if (d.v.value1 >= 0.0F) {
        WX_barb(d.at.x, d.at.y, d.v.value1, d.v.value2, d.size * kStaff, d.size * gap);
    }
}

void draw_track(const Drawing &d)
{
    if (!(d.v.value2 > 0.0F) || is_missing(d.v.value1)) {
        return;
    }
    const float factor = MAP_scale_factor(DOM_get_clat(), DOM_get_clon());
    WX_track(d.at.x, d.at.y, d.v.value1, 2.0F * factor * d.v.value2 * kUnitsPerKnot,
             d.size * kTrackTick, kTrackTicks);
}

void draw_point_line(const Drawing &d)
{
    if (STR_casecmp(d.v.text, "post") == 0) {
        state.joins_next = true;
        return;
    }
    if (STR_casecmp(d.v.text, "pre") != 0) {
        state.newest = d.at;
        if (!is_missing(d.v.value1) && !is_missing(d.v.value2)) {
            MAP_ll_to_xy(&state.previous.x, &state.previous.y, d.v.value1, d.v.value2);
        }
    }
    draw_between_points();
}

void draw_by_type(const Drawing &d)
{
    switch (d.v.type) {
    case kTypeData:
    case kTypeText:
        d.text(d.v.text);
        break;
    case kTypeValue:
        draw_number(d);
        break;
    case kTypeInt:
        draw_integer(d);
        break;
    case kTypeMark:
        draw_marker(d, ATTR_marker_code(d.v.text));
        break;
    case kTypeCloud:
        d.sky(kSkyRadius, d.v.text[0]);
        break;
    case kTypeCloudBarb:
        draw_barb(d, kCalmCloudRadius, kCloudGap);
        break;
    case kTypeDotBarb:
        d.sky(kDotRadius);
        draw_barb(d, kCalmDotRadius, kDotRadius);
        break;
    case kTypeWindBarb:
        draw_barb(d, kDotRadius, 0.0F);
        break;
    case kTypeVectorBarb:
        if (d.v.value2 > 0.0F) {
            WX_vector(d.at.x, d.at.y, d.v.value1, d.v.value2 * kUnitsPerKnot, d.style.scale, 1.0F);
        }
        break;
    case kTypeStream:
        draw_track(d);
        break;
    case kTypeSymbol:
        WX_symbol(d.at.x, d.at.y, d.size * kSymbolSize, d.v.text);
        break;
    case kTypePointLine:
        draw_point_line(d);
        break;
    default:
        break;
    }
}

/// Draws by the first that fits: fixed text, mark, line, bar, or the type's own sign.
void draw(const Drawing &d)
{
    const PlotStyle &style = d.style;
    if (style.fixed_text[0] != '\0') {
        d.text(style.fixed_text);
    } else if (style.mark != 0 && (d.v.text[0] != '\0' || !is_missing(d.v.value1))) {
        if (style.mark == kSkyMark) {
            d.sky(kSkyRadius);
        } else {
            draw_marker(d, style.mark);
        }
    } else if (style.line != 0) {
        draw_between_points();
    } else if (style.ybar != kMissingInt) {
        state.newest = d.at;
        state.previous = {d.at.x, static_cast<float>(style.ybar)};
        draw_between_points();
    } else {
        draw_by_type(d);
    }
}

} // namespace

void PLT_init_value(PlotValue *value)
{
    value->x = value->y = kMissing;
    ATTR_init(&value->attr);
    value->format[0] = '\0';
    PLT_clear_value(value);
}

void PLT_clear_value(PlotValue *value)
{
    value->value1 = value->value2 = kMissing;
    value->text[0] = '\0';
}

void RAW_set_plot_options()
{
    for (const std::string &word : RES_list("plot_param")) {
        PLT_apply_option(&state.base, word.c_str());
    }
}

int PLT_setup_values(const AttrRec *attr, float scale)
{
    if (nothing_wanted(kDrawAll)) {
        return -1;
    }
    PlotStyle &style = state.base;
    style = {};
    style.scale = scale;
    style.attr = *attr;
    RAW_set_plot_options();
    GPH_set_text_attr(nullptr, 0.0F);
    GPH_set_line_attr(nullptr);
    GPH_set_marker_attr(nullptr, 0.0F);
    GPH_set_fill_attr(nullptr);
    gsel_norm_tran(2);
    CONT_reset();
    CONT_set_fill_colors(nullptr, 0);
    if (const char *format = RES_get("plot_format")) {
        if (const int type = PLT_parse_format(&style, format); type != 0) {
            style.type = type;
        }
    }
    read_con_base(style);
    const char *interval = RES_get("con_interval");
    if (interval && *interval && RES_get_value("con_interval", &style.interval, kResReal) == 1) {
        CONT_set_interval(style.interval);
    }
    PLT_apply_style(&style);
    style.h_align = style.x_offset < 0.0F   ? kAlignRight
                    : style.x_offset > 0.0F ? kAlignLeft
                                            : kAlignCentre;
    GPH_set_text_align(style.h_align, style.v_align);
    return 0;
}

PlotStyle &PLT_base_style()
{
    return state.base;
}

void PLT_clear_points()
{
    state.newest = state.previous = {};
    state.joins_next = false;
}

int PLT_plot_value(PlotValue *value)
{
    if (nothing_wanted(kDrawData)) {
        return -1;
    }
    PlotStyle style = state.base;
    note_point(*value);
    if (state.joins_next) {
        draw_between_points();
        state.joins_next = false;
    }
    ATTR_merge(&style.attr, &value->attr);
    colour_by_level(style, *value);
    if (is_outside(style, value->value1) || is_missing(value->x) || is_missing(value->y)) {
        return -1; // beyond the limits, or at a place that the map can't show
    }
    PlotValue v = *value;
    if (const int type = PLT_parse_format(&style, value->format); type != 0) {
        v.type = type;
    }
    PLT_apply_style(&style);
    const float size = DOM_window_height() * style.scale;
    const Point at = {v.x + size * style.x_offset, v.y + size * style.y_offset};
    MSG_out(kMsgDebugB, "PLOT: %8.3f %8.3f %-5s %-10s %-10s %8.3f\n", v.x, v.y,
            VAR_plot_name(v.type), v.format, v.text, v.value1);
    draw({style, v, at, size});
    return 0;
}
