#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/field/contour_cell_private.h"
#include "tyr/field/contour_private.h"
#include "tyr/field/world_private.h"
#include "tyr/geo/domain.h"
#include "tyr/gks/colour_table.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/plot/attributes.h"
#include "tyr/plot/levels.h"

using namespace tyr;

namespace {

constexpr float kLabelSize = 0.015F; ///< of the drawing's height
constexpr float kLabelsApart = 2.5F; ///< sizes, so that labels don't lie on one another
constexpr float kMarkSize = 0.02F;
constexpr const char *kPlainMark = "black";

bool has_colour(const char *resource)
{
    const char *text = RES_get(resource);
    return text != nullptr && *text != '\0' && STR_casecmp(text, "off") != 0;
}

AttrRec label_attr()
{
    const ContourState &c = contours();
    const bool on_fill = c.set.kind == kContFilled || c.set.kind == kContBoth;
    if (on_fill) {
        return field_attr("color_clabel", kPlainMark, c.set.options);
    }
    const char *plain = has_colour("color_cont") ? RES_get("color_cont") : plain_colour();
    return field_attr("color_label", plain, c.set.options);
}

bool is_off(const AttrRec &a)
{
    return a.color == kColourNone;
}

void set_text(const AttrRec &attr, float height, float up_x, float up_y)
{
    GPH_set_text_attr(nullptr, 0.0F);
    GPH_set_text_attr(&attr, height);
    const std::array<int, 2> align = {kAlignCentre, kAlignHalf};
    gset_text_align(align.data());
    const std::array<float, 2> up = {up_x, up_y};
    gset_char_up(up.data());
}

/// The labels of one field.
class Labeller {
  public:
    Labeller(const GridRec &grid, const FieldSpace &space)
        : field_(traced_field(space)), attr_(label_attr()),
          size_(contours().set.scale * space.height() * kLabelSize)
    {
        const ContourSettings &s = contours().set;
        columns_ =
            s.label_columns != kMissingInt ? s.label_columns : std::max(grid.domain.nx / 5, 1);
        rows_ = s.label_rows != kMissingInt ? s.label_rows : std::max(grid.domain.ny / 5, 1);
        if (s.label_step > 0) {
            const float lines =
                s.most_lines < 1 ? 10000.0F : static_cast<float>(CONT_view().rows * s.most_lines);
            field_.drop_steep_cells(contours().plan.is_list ? 1e30F : contours().plan.interval,
                                    lines);
        }
    }

    void run()
    {
        for (int row = 0; row + 1 < field_.rows(); ++row) {
            for (int column = 0; column + 1 < field_.columns(); ++column) {
                const CellBounds &bounds = field_.cell(column, row);
                if (!bounds.exists()) {
                    continue;
                }
                const Cell cell(field_, column, row);
                if (contours().set.boxes) {
                    draw_box(cell);
                }
                const bool on_column = column % columns_ == 0;
                const bool on_row = row % rows_ == 0;
                if ((on_column || on_row) && contours().set.label_step > 0 && has_room(cell)) {
                    label_cell(cell, on_column, on_row, bounds.low, bounds.high);
                }
            }
        }
    }

  private:
    bool has_room(const Cell &cell) const
    {
        const FieldPoint a = field_.place(cell.corner[0]);
        const FieldPoint b = field_.sides().beside(field_.place(cell.corner[1]), a);
        const float side = (b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y);
        const float size = attr_.height > 0.0F ? size_ * attr_.height : size_;
        return size * size <= side * static_cast<float>(columns_) * static_cast<float>(rows_);
    }

    void draw_box(const Cell &cell) const
    {
        std::vector<FieldPoint> box;
        for (int i = 0; i < 5; ++i) {
            const FieldPoint p = field_.place(cell.corner[i % 4]);
            box.push_back(box.empty() ? p : field_.sides().beside(p, box.back()));
        }
        draw_piece(kContLines, box, field_.sides());
    }

    void label_cell(const Cell &cell, bool on_column, bool on_row, float low, float high)
    {
        const ContourState &c = contours();
        const LevelPlan &plan = c.plan;
        // every n-th level from the base
        const float from_base = plan.is_list ? 0.0F : (plan.first - plan.base) / plan.interval;
        const long start = std::lround(std::fmod(from_base, static_cast<float>(c.set.label_step)));
        for (int i = 0; i < plan.count; ++i) {
            const float level = plan.level(i);
            if (level > high) {
                return;
            }
            const bool in_limits = (is_missing(c.set.lowest) || level >= c.set.lowest) &&
                                   (is_missing(c.set.highest) || level <= c.set.highest);
            if (level < low || !in_limits || (i + start) % c.set.label_step != 0) {
                continue;
            }
            const bool runs_north = cell.is_crossed(0, level) && cell.partner(0, level) == 2;
            const bool runs_east = cell.is_crossed(3, level) && cell.partner(3, level) == 1;
            if (runs_north && on_row) {
                label(cell, 0, 2, level, i, c.set.turn_labels);
            } else if (runs_east && on_column) {
                label(cell, 3, 1, level, i, false);
            }
        }
    }

    void label(const Cell &cell, int from, int to, float level, int i, bool turned)
    {
        const FieldPoint a = field_.crossing(cell.from(from), cell.to(from), level);
        const FieldPoint b =
            field_.sides().beside(field_.crossing(cell.from(to), cell.to(to), level), a);
        const std::array<float, 2> at = {(a.x + b.x) / 2.0F, (a.y + b.y) / 2.0F};
        if (!taken_.take({at[0], at[1]})) {
            return;
        }
        std::array<char, kRealTextRoom> text;
        STR_format_real(text.data(), "1.2.0", level);
        const char *name = CONT_label(contours().plan.row(i));
        set_text(attr_, size_, turned ? 1.0F : 0.0F, turned ? 0.0F : 1.0F);
        gtext(at.data(), *name != '\0' ? name : text.data());
    }

    TracedField field_;
    AttrRec attr_;
    float size_;
    TakenPlaces taken_{size_ * kLabelsApart};
    int columns_ = 1, rows_ = 1;
};

/// 1 where all neighbours are lower, -1 where all are higher, 0 elsewhere.
/// @param round  columns once round the world, or 0
int extreme_at(const TracedField &field, int round, int column, int row, int radius)
{
    const float value = field.value(row * field.columns() + column);
    int higher = 0;
    int lower = 0;
    int missing = 0;
    for (int j = std::max(row - radius, 0); j <= std::min(row + radius, field.rows() - 1); ++j) {
        for (int i = column - radius; i <= column + radius; ++i) {
            const int c = round > 0 ? ((i % round) + round) % round : i;
            if (c < 0 || c >= field.columns() || (c == column && j == row)) {
                continue;
            }
            const float other = field.value(j * field.columns() + c);
            if (is_missing(other) || !std::isfinite(other)) {
                ++missing;
                continue;
            }
            higher += other >= value ? 1 : 0;
            lower += other <= value ? 1 : 0;
            if ((higher > 0 && lower > 0) || missing > 1) {
                return 0;
            }
        }
    }
    return lower > 0 ? 1 : higher > 0 ? -1 : 0;
}

void draw_mark(FieldPoint at, int sign, float value, const AttrRec &attr, float s)
{
    std::array<float, 2> p = {at.x, at.y};
    set_text(attr, s * kMarkSize, 0.0F, 1.0F);
    gtext(p.data(), sign > 0 ? "H" : "L");
    p[1] -= kMarkSize * s;
    std::array<char, kRealTextRoom> text;
    STR_format_real(text.data(), "3.3.0", value);
    set_text(attr, s * kLabelSize, 0.0F, 1.0F);
    gtext(p.data(), text.data());
}

} // namespace

int CONT_draw_labels(GridRec *grid)
{
    if (grid == nullptr || grid->values == nullptr) {
        return -1;
    }
    GPH_set_line_attr(nullptr);
    const FieldSpace space(*grid);
    const bool no_labels = is_off(field_attr("color_clabel", kPlainMark, contours().set.options));
    if (!space.is_good() || contours().plan.count > 20000 ||
        ((no_labels || contours().set.label_step <= 0) && !contours().set.boxes)) {
        return 0;
    }
    Labeller(*grid, space).run();
    return 0;
}

int CONT_draw_extremes(GridRec *grid)
{
    const ContourSettings &s = contours().set;
    const AttrRec off = field_attr("color_clabel", kPlainMark, s.options);
    if (grid == nullptr || grid->values == nullptr || s.extreme_radius <= 0 || is_off(off)) {
        return 0;
    }
    const FieldSpace space(*grid);
    if (!space.is_good()) {
        return -1;
    }
    const AttrRec attr = label_attr();
    const GridRec &drawn = space.grid();
    const TracedField field(drawn.domain.nx, drawn.domain.ny, drawn.values, space.x(), space.y(),
                            space.sides());
    const int round = columns_round(grid->domain);
    const float size = s.scale * space.height();
    TakenPlaces highs(size * kMarkSize / 2.0F);
    TakenPlaces lows(size * kMarkSize / 2.0F);
    const int columns = round > 0 ? round : grid->domain.nx; // a repeated one has had its mark
    for (int row = 0; row < grid->domain.ny; ++row) {
        for (int column = 0; column < columns; ++column) {
            const int at = row * field.columns() + column;
            const float value = field.value(at);
            const FieldPoint p = field.place(at);
            if (is_missing(value) || !std::isfinite(value) || is_missing(p.x) ||
                (!is_missing(s.lowest) && value < s.lowest) ||
                (!is_missing(s.highest) && value > s.highest)) {
                continue;
            }
            const int sign = extreme_at(field, round, column, row, s.extreme_radius);
            if (sign != 0 && (sign > 0 ? highs : lows).take(p)) {
                draw_mark(p, sign, value, attr, size);
            }
        }
    }
    return 0;
}
