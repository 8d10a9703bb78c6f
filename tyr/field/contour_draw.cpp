#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/str.h"
#include "tyr/field/contour_private.h"
#include "tyr/geo/domain.h"
#include "tyr/gks/colour_table.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/grid_math/sample.h"
#include "tyr/plot/area.h"
#include "tyr/plot/attributes.h"
#include "tyr/plot/levels.h"
#include "tyr/plot/style.h"
#include "tyr/plot/view.h"

using namespace tyr;

namespace tyr {

namespace {

constexpr int kDashed = 2;
constexpr int kMostShown = 20000;   ///< levels that a picture can show
constexpr float kTextSize = 0.015F; ///< of the drawing's height

} // namespace

const char *plain_colour()
{
    return PLT_is_light() != 0 ? "black" : "white";
}

AttrRec field_attr(const char *resource, const char *plain, const std::string &options)
{
    AttrRec a;
    ATTR_init(&a);
    ATTR_from_resource(resource, plain, &a);
    for (const std::string &word : STR_fields(options, ':')) {
        for (const char *key : {"co=", "wi=", "st=", "fp="}) {
            if (STR_has_prefix(word, key)) {
                ATTR_parse(word.c_str(), &a);
            }
        }
    }
    return a;
}

float most_lines()
{
    const int most = contours().set.most_lines;
    return most == 0  ? 10000.0F
           : most > 0 ? static_cast<float>(most)
                      : static_cast<float>(-most) * static_cast<float>(CONT_view().rows);
}

TracedField traced_field(const FieldSpace &space)
{
    const GridRec &grid = space.grid();
    TracedField field(grid.domain.nx, grid.domain.ny, grid.values, space.x(), space.y(),
                      space.sides());
    const LevelPlan &plan = contours().plan;
    field.drop_steep_cells(plan.is_list ? std::numeric_limits<float>::infinity() : plan.interval,
                           most_lines());
    return field;
}

namespace {

bool is_filled(int kind)
{
    return kind == kContFilled || kind == kContBoth;
}

void set_fill(const AttrRec &row, const AttrRec &line)
{
    const int pattern = contours().set.pattern != kMissingInt ? contours().set.pattern
                        : row.fill != kMissingInt             ? row.fill
                                                              : line.fill;
    gset_fill_colr_ind(row.color);
    gset_fill_int_style(pattern > 0 ? 2 : 1);
    if (pattern > 0) {
        gset_fill_style_ind(pattern);
    }
}

void fill_bands(const TracedField &field, const AttrRec &line)
{
    const ContourState &c = contours();
    for (int i = 0; i < c.plan.count; ++i) {
        const AttrRec row = CONT_row(c.plan.row(i));
        float lower = c.plan.level(i);
        float upper =
            i + 1 < c.plan.count ? c.plan.level(i + 1) : std::numeric_limits<float>::infinity();
        if (!is_missing(c.set.lowest)) {
            lower = std::max(lower, c.set.lowest);
        }
        if (!is_missing(c.set.highest)) {
            // what is as high as the limit still has its colour
            upper = std::min(upper,
                             std::nextafter(c.set.highest, std::numeric_limits<float>::infinity()));
        }
        if (row.color < 0 || !(lower < upper) || lower > c.high || upper <= c.low) {
            continue;
        }
        set_fill(row, line);
        trace_band(field, lower, upper, [&field](std::span<const FieldPoint> area) {
            draw_piece(kContFilled, area, field.sides());
        });
    }
}

int line_style(const AttrRec &row, const AttrRec &line, float level)
{
    const ContourState &c = contours();
    const bool is_high = level >= c.plan.base && level >= 0.0F;
    if (row.style != kMissingInt) {
        return row.style;
    }
    if (c.set.dash == -1 && is_high) {
        return 1;
    }
    return line.style != kMissingInt ? line.style : c.set.dash == 0 ? 1 : kDashed;
}

void set_line(int i, const AttrRec &line, float level)
{
    const AttrRec row = CONT_row(contours().plan.row(i));
    if (line.color != kColourNone) {
        gset_line_colr_ind(line.color);
    } else if (row.color >= 0) {
        gset_line_colr_ind(row.color);
    }
    gset_linetype(line_style(row, line, level));
    gset_linewidth(!is_missing(row.width)    ? row.width
                   : !is_missing(line.width) ? line.width
                                             : 0.0F);
}

void draw_lines(const TracedField &field, const AttrRec &line)
{
    const ContourState &c = contours();
    for (int i = 0; i < c.plan.count; ++i) {
        const float level = c.plan.level(i);
        if ((!is_missing(c.set.lowest) && level < c.set.lowest) ||
            (!is_missing(c.set.highest) && level > c.set.highest) || level > c.high ||
            level < c.low) {
            continue;
        }
        set_line(i, line, level);
        trace_lines(field, level, [&field](std::span<const FieldPoint> points) {
            draw_piece(kContLines, points, field.sides());
        });
    }
}

void draw_value(const FieldPoint &at, float value, const AttrRec &plain, float height)
{
    const ContourSettings &s = contours().set;
    AttrRec a = plain;
    if (contours().plan.is_list || !is_missing(CONT_view().interval)) {
        CONT_value_attr(value, &a);
        if (a.color == kColourNone) {
            return;
        }
        ATTR_merge(&a, &plain);
        AttrRec banded;
        CONT_value_attr(value, &banded);
        a.color = banded.color;
    }
    GPH_set_text_attr(&a, s.scale * height * kTextSize);
    std::array<char, kRealTextRoom> text;
    if (s.format.empty()) {
        STR_format_real(text.data(), "1.1.0", value);
    } else {
        PLT_format_number(text.data(), static_cast<int>(text.size()), s.format.c_str(), value);
    }
    const std::array<float, 2> p = {at.x + height * s.offset_x, at.y + height * s.offset_y};
    gtext(p.data(), text.data());
}

void draw_values(const GridRec &grid, const FieldSpace &space, const TracedField &field)
{
    const ContourSettings &s = contours().set;
    const AttrRec line = field_attr("color_cont", plain_colour(), s.options);
    const AttrRec plain = field_attr("color_label", plain_colour(), s.options);
    const AttrRec &attr = line.color == kColourNone ? plain : line;
    GPH_set_text_attr(nullptr, 0.0F);
    const std::array<int, 2> align = {kAlignCentre, kAlignHalf};
    gset_text_align(align.data());
    for (int row = 0; row < grid.domain.ny; row += s.skip_y) {
        for (int column = 0; column < grid.domain.nx; column += s.skip_x) {
            const int at = row * field.columns() + column;
            const float value = field.value(at);
            const FieldPoint p = field.place(at);
            const bool in_limits = (is_missing(s.lowest) || value >= s.lowest) &&
                                   (is_missing(s.highest) || value <= s.highest);
            if (std::isfinite(value) && !is_missing(value) && !is_missing(p.x) &&
                !is_missing(p.y) && in_limits) {
                draw_value(p, value, attr, space.height());
            }
        }
    }
}

bool is_good_grid(const GridRec *grid)
{
    if (grid == nullptr) {
        MSG_out(kMsgWarn, "CONT_draw: Invalid grids\n");
        return false;
    }
    if (grid->values == nullptr || grid->domain.nx < 1 || grid->domain.ny < 1) {
        MSG_out(kMsgWarn, "CONT_draw: Invalid grid arrays\n");
        return false;
    }
    return true;
}

} // namespace

} // namespace tyr

int CONT_draw_contours(GridRec *grid)
{
    if (!is_good_grid(grid)) {
        return -1;
    }
    ContourState &c = contours();
    CONT_set_fill_colors(nullptr, 0);
    if (is_missing(c.high)) {
        GRD_max_min(grid, &c.high, &c.low);
        CONT_plan_levels(grid);
    }
    if (c.plan.count > kMostShown) {
        MSG_out(kMsgWarn, "CONT_draw_contours: %d levels are more than a picture can show\n",
                c.plan.count);
        return -1;
    }
    const FieldSpace space(*grid, c.set.kind != kContValues);
    if (!space.is_good()) {
        MSG_out(kMsgWarn, "CONT_draw_contours: Unable to allocate grid arrays\n");
        return -1;
    }
    const TracedField field = traced_field(space);
    AttrRec line = field_attr("color_cont", plain_colour(), c.set.options);
    if (c.set.kind == kContValues) {
        draw_values(*grid, space, field);
        return 0;
    }
    GPH_set_line_attr(nullptr);
    GPH_set_fill_attr(nullptr);
    if (is_filled(c.set.kind)) {
        fill_bands(field, line);
    }
    if (c.set.kind == kContLines || c.set.kind == kContBoth) {
        draw_lines(field, line);
    }
    GPH_set_line_attr(nullptr);
    GPH_set_fill_attr(nullptr);
    return 0;
}

int CONT_draw(GridRec *grid)
{
    if (PRM_get_draw(kDrawData) == 0 || !is_good_grid(grid)) {
        return -1;
    }
    if (CONT_draw_contours(grid) != 0 || contours().set.kind == kContValues) {
        return -1;
    }
    CONT_draw_labels(grid);
    CONT_draw_extremes(grid);
    return 0;
}
