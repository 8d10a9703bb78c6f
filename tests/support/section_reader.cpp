#include "support/section_reader.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace {

constexpr double kDegree = 57.29577951308232;
constexpr double kPlaceTolerance = 0.25; ///< points
constexpr double kShortestStaff = 15.0;  ///< points

using Box = PageBox;

double length(const PsPoint &a, const PsPoint &b)
{
    return std::hypot(b[0] - a[0], b[1] - a[1]);
}

/// The largest closed rectangle among the strokes.
std::optional<Box> find_box(const std::vector<PsStroke> &strokes)
{
    std::optional<Box> best;
    for (const PsStroke &s : strokes) {
        if (s.filled || s.points.size() < 4 || s.points.size() > 5) {
            continue;
        }
        Box b = {1e9, -1e9, 1e9, -1e9};
        for (const PsPoint &p : s.points) {
            b = {std::min(b.x0, p[0]), std::max(b.x1, p[0]), std::min(b.y0, p[1]),
                 std::max(b.y1, p[1])};
        }
        if (!best ||
            (b.x1 - b.x0) * (b.y1 - b.y0) > (best->x1 - best->x0) * (best->y1 - best->y0)) {
            best = b;
        }
    }
    return best;
}

/// The column and height that a point stands for, if it is one of the places of barbs.
std::optional<DrawnBarb> place_of(const PsPoint &p, const Box &box, const SectionAxes &axes)
{
    const double per_column = (box.x1 - box.x0) / axes.columns;
    const double per_metre = (box.y1 - box.y0) / (axes.top - axes.bottom);
    const double x = (p[0] - box.x0) / per_column - 1.0;
    const double z = (p[1] - box.y0) / per_metre + axes.bottom;
    DrawnBarb barb;
    barb.column = static_cast<int>(std::lround(x));
    barb.height = std::round(z / axes.step) * axes.step;
    if (std::fabs(x - barb.column) * per_column > kPlaceTolerance ||
        std::fabs(z - barb.height) * per_metre > kPlaceTolerance || barb.column < 0) {
        return std::nullopt;
    }
    return barb;
}

struct Staff {
    PsPoint foot, tip;

    /// Coordinates of a point along the staff and to its right, in staff lengths.
    PsPoint along(const PsPoint &p) const
    {
        const double l = length(foot, tip);
        const PsPoint s = {(tip[0] - foot[0]) / l, (tip[1] - foot[1]) / l};
        const PsPoint d = {(p[0] - foot[0]) / l, (p[1] - foot[1]) / l};
        return {d[0] * s[0] + d[1] * s[1], d[0] * s[1] - d[1] * s[0]};
    }
};

void add_sign(DrawnBarb &barb, const Staff &staff, const PsStroke &s)
{
    const PsPoint a = staff.along(s.points[0]);
    const PsPoint b = staff.along(s.points[1]);
    const bool on_staff = std::fabs(a[1]) < 0.02 && a[0] > 0.1 && a[0] < 1.02;
    if (!on_staff || b[1] < 0.1) {
        barb.oddities.push_back("a sign off the staff or on its left");
    } else if (s.filled) {
        barb.knots += std::fabs(b[1] - 0.5) < 0.02 ? 50 : 1;
    } else if (s.points.size() == 2) {
        barb.knots += std::fabs(b[1] - 0.5) < 0.02 ? 10 : std::fabs(b[1] - 0.25) < 0.02 ? 5 : 1;
    }
}

/// Degrees clockwise from up.
double direction_of(const PsPoint &a, const PsPoint &b)
{
    const double angle = std::atan2(b[0] - a[0], b[1] - a[1]) * kDegree;
    return angle < 0.0 ? angle + 360.0 : angle;
}

} // namespace

DrawnSection read_section(const std::string &bytes, const SectionAxes &axes)
{
    DrawnSection section;
    const PsPage page = read_ps(bytes);
    section.error = page.error;
    for (const PsText &text : page.texts) {
        section.texts.push_back(text.text);
    }
    const std::vector<PsStroke> strokes = strokes_of(page, -1);
    const std::optional<Box> box = find_box(strokes);
    if (!box) {
        section.error += " no border box";
        return section;
    }
    std::set<double> xs;
    std::set<double> ys;
    Staff staff = {};
    bool has_staff = false;
    for (const PsStroke &s : strokes) {
        if (s.points.size() < 2) {
            continue;
        }
        const PsPoint &a = s.points[0];
        const PsPoint &b = s.points[1];
        const double l = length(a, b);
        if (!s.filled && s.points.size() == 2 && l > 100.0) {
            (a[0] == b[0] ? xs.insert(a[0]) : ys.insert(a[1]));
            continue;
        }
        const auto place = place_of(a, *box, axes);
        if (!s.filled && s.points.size() == 2 && place && l > kShortestStaff) {
            staff = {a, b};
            has_staff = true;
            section.barbs.push_back(*place);
            section.barbs.back().direction = direction_of(a, b);
        } else if (has_staff && l < kShortestStaff) {
            add_sign(section.barbs.back(), staff, s);
        }
    }
    section.columns.assign(xs.begin(), xs.end());
    section.levels.assign(ys.begin(), ys.end());
    return section;
}

std::optional<PageBox> find_border(const PsPage &page)
{
    return find_box(strokes_of(page, -1));
}

std::vector<std::optional<DrawnBarb>> read_barbs(const PsPage &page,
                                                 const std::vector<PsPoint> &places)
{
    std::vector<std::optional<DrawnBarb>> barbs(places.size());
    std::optional<DrawnBarb> *current = nullptr;
    Staff staff = {};
    for (const PsStroke &s : strokes_of(page, -1)) {
        if (s.points.size() < 2) {
            continue;
        }
        const PsPoint &a = s.points[0];
        const PsPoint &b = s.points[1];
        const double l = length(a, b);
        const auto at = std::find_if(places.begin(), places.end(), [&a](const PsPoint &p) {
            return length(p, a) < kPlaceTolerance;
        });
        if (!s.filled && s.points.size() == 2 && l > kShortestStaff && at != places.end()) {
            current = &barbs[static_cast<size_t>(at - places.begin())];
            staff = {a, b};
            const bool is_second = current->has_value();
            *current = DrawnBarb{.direction = direction_of(a, b)};
            if (is_second) {
                (*current)->oddities.push_back("two barbs at a place");
            }
        } else if (current && l < kShortestStaff) {
            add_sign(**current, staff, s);
        } else {
            current = nullptr;
        }
    }
    return barbs;
}
