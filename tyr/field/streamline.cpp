#include <algorithm>
#include <cmath>

#include "tyr/base/angle.h"
#include "tyr/base/msg.h"
#include "tyr/field/contour_private.h"
#include "tyr/field/streamline_private.h"
#include "tyr/field/vector_private.h"
#include "tyr/gks/colour_table.h"
#include "tyr/plot/barb.h"

using namespace tyr;

namespace {

constexpr float kStep = 0.25F; ///< grid lengths
constexpr float kCalm = 0.001F;
constexpr int kFreeSteps = 6; ///< a line's first steps, which a full box doesn't end
constexpr float kHead = 4.0F; ///< steps
/// Steps of all lines that a picture can show: at least so many, and so many times the boxes.
constexpr double kMostSteps = 5.0e6, kMostStepsOfBox = 8.0;

float direction_of(float x, float y)
{
    return static_cast<float>(std::atan2(-x, -y) * kDegreesPerRadian);
}

/// The road of one line: fourth order Runge-Kutta on the direction of the wind, so that a circle
/// closes.
class Road {
  public:
    Road(const StreamSpace &space, const GridRec &u, const GridRec &v)
        : space_(space), u_(u), v_(v), length_(kStep * space.cell())
    {
    }

    float length() const { return length_; }
    PlotWind wind_at(FieldPoint p) const { return space_.wind(u_, v_, p); }

    /// The place a step on, straight on where the field ends.
    FieldPoint step(FieldPoint p, PlotWind w) const
    {
        FieldPoint slopes[4];
        slopes[0] = unit(w);
        for (int i = 1; i < 4; ++i) {
            const float part = i < 3 ? length_ / 2.0F : length_;
            const PlotWind next =
                wind_at({p.x + slopes[i - 1].x * part, p.y + slopes[i - 1].y * part});
            if (!next.is_set() || next.speed() < kCalm) {
                return {p.x + slopes[0].x * length_, p.y + slopes[0].y * length_};
            }
            slopes[i] = unit(next);
        }
        const auto mean = [&slopes](float FieldPoint::*c) {
            return (slopes[0].*c + 2.0F * slopes[1].*c + 2.0F * slopes[2].*c + slopes[3].*c) / 6.0F;
        };
        return {p.x + mean(&FieldPoint::x) * length_, p.y + mean(&FieldPoint::y) * length_};
    }

  private:
    static FieldPoint unit(PlotWind w) { return {w.u / w.speed(), w.v / w.speed()}; }

    const StreamSpace &space_;
    const GridRec &u_, &v_;
    float length_;
};

/// Draws the steps of a line as one stroke for as long as their colour stays.
class Pen {
  public:
    explicit Pen(const WorldSides &sides) : sides_(sides) {}
    ~Pen() { lift(); }
    Pen(const Pen &) = delete;
    Pen &operator=(const Pen &) = delete;

    /// @param is_shown  whether the speed is one to draw
    void step(FieldPoint from, FieldPoint to, float speed, bool is_shown)
    {
        const AttrRec attr = speed_attr(speed);
        const bool same = attr.color == attr_.color && attr.width == attr_.width &&
                          attr.style == attr_.style && is_shown == is_shown_;
        if (!same) {
            lift();
            attr_ = attr;
            is_shown_ = is_shown;
        }
        if (points_.empty()) {
            points_.push_back(from);
        }
        points_.push_back(to);
    }

    void head(FieldPoint from, FieldPoint to, float size) const
    {
        const float dx = to.x - from.x;
        const float dy = to.y - from.y;
        if (size > 0.0F && draws()) {
            set_sign_attr(attr_);
            WX_vector_raw(from.x, from.y, direction_of(dx, dy), std::hypot(dx, dy), 1.0F, size);
        }
    }

    void lift()
    {
        if (points_.size() > 1 && draws()) {
            set_sign_attr(attr_);
            draw_piece(kContLines, points_, sides_);
        }
        points_.clear();
    }

  private:
    bool draws() const { return attr_.color != kColourNone && is_shown_; }

    WorldSides sides_;
    std::vector<FieldPoint> points_;
    AttrRec attr_ = {};
    bool is_shown_ = false;
};

bool in_limits(float speed)
{
    const VectorState &s = vectors();
    return (is_missing(s.lowest) || speed >= s.lowest) &&
           (is_missing(s.highest) || speed <= s.highest);
}

/// What ends a line before its next step.
bool turns_back(float before, float now)
{
    const float change = std::fabs(now - before);
    return !is_missing(before) && change > 120.0F && change < 240.0F;
}

bool starts(int sweep, float u, float v)
{
    // a wind along an axis belongs to the sweep that begins where it comes in
    switch (sweep) {
    case 0:
        return u > 0.0F && v >= 0.0F;
    case 1:
        return u >= 0.0F && v < 0.0F;
    case 2:
        return u <= 0.0F && v > 0.0F;
    default:
        return u < 0.0F && v <= 0.0F;
    }
}

void make_boxes(const StreamSpace &space)
{
    if (vectors().boxes.size() != space.box_count()) {
        vectors().boxes.assign(space.box_count(), 0);
    }
}

/// Counts a line's way through the boxes and tells where it must end.
class Crowd {
  public:
    explicit Crowd(const StreamSpace &space) : space_(space)
    {
        const VectorState &s = vectors();
        most_ = is_missing(s.base) || s.base <= 0.0F ? 1.0F : s.base;
        last_ = space.box_count();
    }

    bool ends(FieldPoint p, int n)
    {
        VectorState &s = vectors();
        const size_t box = space_.box(p);
        stay_ = box == last_ ? stay_ + 1 : 0;
        s.boxes[box] += box == last_ ? 0 : 1;
        last_ = box;
        const bool is_full = static_cast<float>(s.boxes[box]) > most_;
        return (is_full && (n < 1 || n >= kFreeSteps)) || stay_ > 6 * s.skip_x;
    }

  private:
    const StreamSpace &space_;
    float most_;
    size_t last_;
    int stay_ = 0;
};

} // namespace

namespace tyr {

int trace_streamline(const StreamSpace &space, float steps, const GridRec &u, const GridRec &v,
                     int column, int row)
{
    const VectorState &s = vectors();
    make_boxes(space);
    FieldPoint p;
    vector_place(u, column, u.domain.ny - 1 - row, &p.x, &p.y);
    const Road road(space, u, v);
    const int period = std::max(static_cast<int>(s.spacing * 10.0F), 1);
    Crowd crowd(space);
    Pen pen(space.sides());
    FieldPoint before = p;
    float direction = kMissing;
    int n = 0;
    while (static_cast<float>(n) < steps && !is_missing(p.x) && space.is_near(p)) {
        const bool is_crowded = crowd.ends(p, n);
        const PlotWind w = road.wind_at(p);
        if (is_crowded || !w.is_set() || w.speed() < kCalm) {
            break;
        }
        const float previous = direction;
        direction = direction_of(w.u, w.v);
        if (turns_back(previous, direction)) {
            break;
        }
        const FieldPoint next = road.step(p, w);
        FieldPoint beyond;
        if (!space.grid_place(next, &beyond)) {
            break; // the map ends here
        }
        pen.step(p, next, w.speed(), in_limits(w.speed()));
        if (n % period == period - 1) {
            pen.head(p, next, s.spacing * kHead);
        }
        before = p;
        p = space.inside(next);
        if (!(p == next)) { // on from the other side
            pen.lift();
            before = space.sides().beside(before, p);
            pen.step(before, p, w.speed(), in_limits(w.speed()));
        }
        ++n;
    }
    if (n > 0 && static_cast<float>(n) < steps) {
        pen.head(before, p, s.spacing * kHead);
    }
    return n;
}

int draw_streamlines(GridRec *u, GridRec *v)
{
    VectorState &s = vectors();
    const int nx = u->domain.nx;
    const int ny = u->domain.ny;
    const StreamSpace space(*u);
    s.boxes.assign(space.box_count(), 0);
    const float steps = 4.0F * static_cast<float>(nx) * s.scale;
    double left = std::max(kMostSteps, kMostStepsOfBox * static_cast<double>(space.box_count()));
    for (int sweep = 0; sweep < 4; ++sweep) {
        const bool from_left = sweep < 2;
        const bool from_bottom = sweep % 2 == 0;
        for (int c = 0; c < nx; c += s.skip_x) {
            for (int r = 0; r < ny; r += s.skip_y) {
                const int column = from_left ? c : nx - 1 - c;
                const int row = from_bottom ? r : ny - 1 - r;
                const int at = (ny - 1 - row) * nx + column;
                const PlotWind w = {u->values[at], v->values[at]};
                if (left > 0.0 && w.is_set() && starts(sweep, w.u, w.v)) {
                    const float most = std::min(steps, static_cast<float>(left));
                    left -= trace_streamline(space, most, *u, *v, column, row);
                }
            }
        }
    }
    s.boxes.clear();
    if (left <= 0.0) {
        MSG_out(kMsgWarn, "VECT_draw: Streamlines are more than a picture can show\n");
    }
    return 0;
}

} // namespace tyr

void VECT_trace(float steps, GridRec *u, GridRec *v, int column, int row)
{
    const auto holds = [column, row](const GridRec *g) {
        return g != nullptr && g->values != nullptr && column >= 0 && column < g->domain.nx &&
               row >= 0 && row < g->domain.ny;
    };
    if (holds(u) && holds(v) && u->domain.nx == v->domain.nx && u->domain.ny == v->domain.ny) {
        trace_streamline(StreamSpace(*u), steps, *u, *v, column, row);
    }
}
