#include "tyr/plot/colour_bar.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/plot/area.h"
#include "tyr/plot/attributes.h"
#include "tyr/plot/levels.h"
#include "tyr/start/convert.h"

namespace {

constexpr int kMostBands = 200;
constexpr int kLabels = 15; ///< about so many labels stand at the bar
constexpr float kRoom = 0.035F;
constexpr float kLeastRoom = 0.01F;
constexpr float kTolerance = 0.01F;
constexpr float kLabelSpace = 1.15F; ///< of a label's length, from one label to the next

struct State {
    int mode = 0;
    bool was_due = false;
    float fixed_low = kMissing, fixed_high = kMissing;
    float first = kMissing, last = kMissing;
};

State state;

struct Range {
    float low, high, interval, base;
};

struct Geometry {
    float left, right, bottom, top;
    float middle() const { return (bottom + top) / 2.0F; }
};

bool has_fixed_range()
{
    return !is_missing(state.fixed_low) && !is_missing(state.fixed_high);
}

void apply_con_base(Range &range)
{
    for (const std::string &word : RES_list("con_base")) {
        const bool is_min = word[0] == '>';
        const bool is_max = word[0] == '<';
        const float value =
            static_cast<float>(std::atof(word.c_str() + (is_min || is_max ? 1 : 0)));
        if (!is_max) {
            range.base = value;
        }
        if (is_min && !has_fixed_range()) {
            range.low = value;
        }
        if (is_max && !has_fixed_range()) {
            range.high = value;
        }
    }
}

/// First and last level of a bar without explicit levels, and its bands; -1 if there are none.
int count_bands(Range &range, const LevelView &view)
{
    if (is_missing(range.low) || is_missing(range.high)) {
        return -1;
    }
    if (!is_missing(range.interval) && range.interval <= 0.0F) {
        range.interval = CONT_nice_interval(view.rows - 1, range.high, range.low);
    }
    if (is_missing(range.interval) || !(std::fabs(range.interval) > 0.0F)) {
        return -1;
    }
    if (range.high < range.low) {
        state.first = range.high;
        state.last = range.low;
    } else {
        const float b = is_missing(range.base) ? 0.0F : range.base;
        const float steps = (range.high - b) / range.interval;
        state.first = b + range.interval * std::floor((range.low - b) / range.interval);
        state.last = b + range.interval * std::floor(steps + 1.0F);
        if (range.high - b == range.interval) {
            state.last += range.interval;
        }
    }
    const float bands = (state.last - state.first + kTolerance) / range.interval;
    return bands >= 1.0F && bands <= static_cast<float>(kMostBands) ? static_cast<int>(bands) : -1;
}

bool place_bar(int side, Geometry &g)
{
    std::array<float, 4> plot;
    std::array<float, 4> view;
    PLT_get_viewport(plot.data());
    GPH_get_view_frac(view.data());
    const bool inside = PLT_labels_inside() != 0;
    const float base = plot[2] - PLT_get_foot();
    const float room = inside ? kRoom : std::fmin(base - view[2], kRoom);
    if (room < kLeastRoom) {
        return false;
    }
    const float width = plot[1] - plot[0];
    g.left = side == 1 ? plot[0] + width * 0.03F : (plot[0] + plot[1]) / 2.0F;
    g.right = side == 1 ? (plot[0] + plot[1]) / 2.0F : plot[1] - width * 0.03F;
    g.bottom = inside ? base + room * 0.15F : base - room;
    g.top = inside ? base + room : base - room * 0.15F;
    return true;
}

void fill_box(const std::array<float, 10> &box, const AttrRec &row, const AttrRec &line)
{
    if (row.color < 0) {
        return;
    }
    const int fill = row.fill != kMissingInt ? row.fill : line.fill;
    gset_fill_colr_ind(row.color);
    if (fill > 0) {
        gset_fill_int_style(2);
        gset_fill_style_ind(fill);
    } else {
        gset_fill_int_style(1);
    }
    gfill_area(4, box.data());
}

std::string label_text(int i, float value)
{
    std::array<char, kRealTextRoom> text;
    STR_format_real(text.data(), "2.2.0", value);
    const char *label = i >= 0 ? CONT_label(i) : "";
    return label[0] != '\0' ? label : text.data();
}

void draw_label(float x, float y, const std::string &text)
{
    const std::array<float, 2> at = {x, y};
    gtext(at.data(), text.c_str());
}

struct Bar {
    Geometry g;
    Range range;
    LevelView view;
    int bands;
    AttrRec text, line;
};

void set_line_style(const AttrRec &row, const AttrRec &line)
{
    if (line.color == -1 && row.color >= 0) {
        gset_line_colr_ind(row.color);
    }
    gset_linetype(row.style != kMissingInt    ? row.style
                  : line.style != kMissingInt ? line.style
                                              : 1);
    gset_linewidth(!is_missing(row.width)    ? row.width
                   : !is_missing(line.width) ? line.width
                                             : 1.0F);
}

/// Row of the fill table of the first band, counted from the base, or else 0, as the rows of
/// values are.
int first_row(const Bar &bar)
{
    if (bar.view.has_levels || bar.view.rows <= 0) {
        return 0;
    }
    const float start = is_missing(bar.range.base) ? 0.0F : bar.range.base;
    const float bands = std::floor((state.first - start) / bar.range.interval + kTolerance);
    const float place = std::fmod(bands, static_cast<float>(bar.view.rows));
    const int row = std::isfinite(place) ? static_cast<int>(place) : 0;
    return row < 0 ? row + bar.view.rows : row;
}

float band_value(const Bar &bar, int i)
{
    return bar.view.has_levels ? CONT_level(i)
                               : state.first + bar.range.interval * static_cast<float>(i);
}

/// Labels at the left edges of bands, so many that they stand clear of one another, and one at
/// the right end.
void draw_labels(const Bar &bar)
{
    const Geometry &g = bar.g;
    const float width = (g.right - g.left) / static_cast<float>(bar.bands);
    std::vector<std::string> texts;
    float longest = 0.0F;
    const int first = first_row(bar);
    for (int i = 0; i < bar.bands + (bar.view.has_levels ? 0 : 1); ++i) {
        const bool has_row = bar.view.rows > 0 && i < bar.bands;
        texts.push_back(label_text(has_row ? (first + i) % bar.view.rows : -1, band_value(bar, i)));
        longest = std::fmax(longest, gtext_length(texts.back().c_str()));
    }
    const float space = longest * kLabelSpace;
    const int every = std::max(bar.bands / kLabels + 1, static_cast<int>(std::ceil(space / width)));
    for (int i = 0; i < bar.bands; i += every) {
        const float x = g.left + width * static_cast<float>(i);
        if (bar.view.has_levels || x + space <= g.right || i == 0) {
            draw_label(x, g.bottom, texts[static_cast<size_t>(i)]);
        }
    }
    if (!bar.view.has_levels) {
        draw_label(g.right, g.bottom, texts.back());
    }
}

void draw_bands(const Bar &bar)
{
    const Geometry &g = bar.g;
    const float width = (g.right - g.left) / static_cast<float>(bar.bands);
    const int first = first_row(bar);
    for (int i = 0; i < bar.bands; ++i) {
        const float x0 = g.left + width * static_cast<float>(i);
        const float x1 = x0 + width;
        const std::array<float, 10> box = {x0,    g.middle(), x1,    g.middle(), x1,
                                           g.top, x0,         g.top, x0,         g.middle()};
        const AttrRec attr = CONT_row(first + i);
        fill_box(box, attr, bar.line);
        set_line_style(attr, bar.line);
    }
    draw_labels(bar);
    GPH_set_line_attr(nullptr);
    GPH_set_line_attr(&bar.text);
    GPH_box(g.left, g.middle(), g.right, g.top);
}

} // namespace

void PLT_set_bar_mode(int mode)
{
    state.mode = mode;
}

int PLT_get_bar_mode()
{
    return state.mode;
}

void PLT_set_bar_range(float low, float high)
{
    state.fixed_low = low;
    state.fixed_high = high;
}

int PLT_bar_due()
{
    if (state.mode <= 0 || state.was_due) {
        return 0;
    }
    state.was_due = true;
    return 1;
}

void PLT_clear_bar()
{
    state.was_due = false;
}

int PLT_color_bar(int side, const char *title)
{
    Bar bar = {};
    const char *plain = PLT_is_light() != 0 ? "black" : "white";
    ATTR_init(&bar.text);
    ATTR_init(&bar.line);
    ATTR_from_resource("color_text", plain, &bar.text);
    ATTR_from_resource("color_cont", plain, &bar.line);
    bar.view = CONT_view();
    bar.range = {bar.view.low, bar.view.high, bar.view.interval, bar.view.base};
    if (has_fixed_range()) {
        bar.range.low = state.fixed_low;
        bar.range.high = state.fixed_high;
    }
    const char *interval = RES_get("con_interval");
    if (is_missing(bar.range.interval) && interval && *interval) {
        RES_get_value("con_interval", &bar.range.interval, kResReal);
    }
    apply_con_base(bar.range);
    if (bar.view.has_levels) {
        state.first = CONT_level(0);
        bar.bands = bar.view.levels;
    } else {
        bar.bands = count_bands(bar.range, bar.view);
    }
    if (bar.bands < 1 || bar.bands > kMostBands || !place_bar(side, bar.g)) {
        return -1;
    }
    GPH_set_text_attr(nullptr, 0.0F);
    GPH_set_text_attr(&bar.text, (bar.g.top - bar.g.bottom) * 0.35F);
    GPH_set_text_align(kAlignCentre, kAlignBase);
    GPH_set_line_attr(&bar.text);
    draw_bands(bar);
    if (title[0] != '\0') {
        std::array<float, 4> plot;
        PLT_get_viewport(plot.data());
        GPH_set_text_align(kAlignLeft, kAlignCap);
        const std::array<float, 2> at = {plot[1], plot[2] - 0.01F};
        gtext(at.data(), title);
    }
    return 0;
}
