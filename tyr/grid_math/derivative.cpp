#include "tyr/grid_math/derivative.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "tyr/base/angle.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/grid_math/grid_places.h"
#include "tyr/grid_math/row_bands.h"
#include "tyr/grid_math/vector_math_private.h"

using namespace tyr;

namespace {

constexpr double kDegreeLength = 1.11195; // 100 km in a degree of latitude

/// One over the spacings of a row, in 1 / 100 km; 0 where the row has none.
struct Spacing {
    float x = 0.0F;
    float y = 0.0F;
    bool is_valid() const { return x != 0.0F && y != 0.0F; }
};

float inverse_of(double spacing)
{
    const auto inverse = static_cast<float>(1.0 / spacing);
    return std::isfinite(inverse) ? inverse : 0.0F;
}

Spacing row_spacing(const DomainRec &domain, int row)
{
    if (is_missing(domain.dx) || is_missing(domain.dy))
        return {};
    const double dx = domain.dx;
    const double dy = domain.dy;
    if (domain.proj == kProjLatLon) {
        const double latitude = tyr::row_latitude(domain, row);
        if (std::fabs(static_cast<float>(latitude)) >= 90.0F)
            return {};
        return {inverse_of(dx * cosd(latitude) * kDegreeLength), inverse_of(dy * kDegreeLength)};
    }
    const double factor = is_missing(domain.parm3) ? 1.0 : static_cast<double>(domain.parm3);
    return {inverse_of(dx * factor), inverse_of(dy * factor)};
}

/// The difference over the two neighbours, or over one. @param one, two  one over the length of
/// one spacing and of what the difference spans with both neighbours there
inline float first_difference(float here, float back, float next, float one, float two)
{
    const bool no_back = back == kMissing;
    const bool no_next = next == kMissing;
    const float from = no_back ? here : back;
    const float to = no_next ? here : next;
    return (to - from) * ((no_back | no_next) ? one : two);
}

/// The fields of one derivative: one that is differentiated along x, one along y (rows above and
/// below it too), and two that the result is made with.
struct Rows {
    const float *x;
    const float *y;
    const float *north;
    const float *south;
    const float *a;
    const float *b;
};

struct Fields {
    const float *x;
    const float *y;
    const float *a;
    const float *b;

    Rows rows(size_t nx, size_t ny, size_t row) const
    {
        const size_t at = row * nx;
        return {x + at, y + at, y + (row > 0 ? at - nx : at), y + (row + 1 < ny ? at + nx : at),
                a + at, b + at};
    }
};

/// The steps along y at one row: at the edge both stand for one spacing.
struct Steps {
    float x_one, x_two, y_one, y_two;
};

template <class Combine>
[[gnu::always_inline]] inline float value_at(const Rows &r, int i, int west, int east, float x_two,
                                             const Steps &s, Combine combine)
{
    const float dx = first_difference(r.x[i], r.x[west], r.x[east], s.x_one, x_two);
    const float dy = first_difference(r.y[i], r.south[i], r.north[i], s.y_one, s.y_two);
    const bool is_out =
        (r.x[i] == kMissing) | (r.y[i] == kMissing) | (r.a[i] == kMissing) | (r.b[i] == kMissing);
    const float value = combine(dx, dy, r.a[i], r.b[i]);
    return is_out ? kMissing : value;
}

template <class Combine>
[[gnu::always_inline]] inline void difference_row(const Rows &r, int nx, const Steps &s, float *out,
                                                  Combine combine)
{
    out[0] = value_at(r, 0, 0, std::min(1, nx - 1), s.x_one, s, combine);
#pragma GCC ivdep
    for (int i = 1; i < nx - 1; ++i)
        out[i] = value_at(r, i, i - 1, i + 1, s.x_two, s, combine);
    if (nx > 1)
        out[nx - 1] = value_at(r, nx - 1, nx - 2, nx - 1, s.x_one, s, combine);
}

/// Sums of the two differences, each with its sign.
struct Signs {
    float x, y;
};

TYR_WIDE void sum_row(const Rows &r, int nx, const Steps &s, float *out, Signs sign)
{
    difference_row(r, nx, s, out,
                   [sign](float dx, float dy, float, float) { return sign.x * dx + sign.y * dy; });
}

TYR_WIDE void convergence_row(const Rows &r, int nx, const Steps &s, float *out)
{
    difference_row(r, nx, s, out,
                   [](float dx, float dy, float factor, float) { return (-dx - dy) * factor; });
}

TYR_WIDE void advection_row(const Rows &r, int nx, const Steps &s, float *out)
{
    difference_row(r, nx, s, out,
                   [](float dx, float dy, float u, float v) { return -u * dx - v * dy; });
}

/// Runs a row routine row_work(row, spacing, out row) over the grid; rows without a spacing are
/// Missing.
template <class RowWork> void over_grid(const DomainRec &domain, float *out, RowWork row_work)
{
    const auto nx = static_cast<size_t>(domain.nx);
    tyr::over_rows(domain.ny, tyr::point_count(domain), tyr::kCheapPoints,
                   [&](int first, int last) {
                       for (int row = first; row < last; ++row) {
                           const Spacing spacing = row_spacing(domain, row);
                           float *line = out + static_cast<size_t>(row) * nx;
                           if (spacing.is_valid())
                               row_work(row, spacing, line);
                           else
                               std::fill_n(line, nx, kMissing);
                       }
                   });
}

/// row_work(rows, nx, steps, out row) over the grid.
template <class RowWork>
void differences(const DomainRec &domain, const Fields &fields, float *out, RowWork row_work)
{
    over_grid(domain, out, [&](int row, Spacing spacing, float *line) {
        const bool is_edge = row == 0 || row == domain.ny - 1;
        const Steps steps{spacing.x, spacing.x / 2.0F, spacing.y,
                          is_edge ? spacing.y : spacing.y / 2.0F};
        const Rows rows = fields.rows(static_cast<size_t>(domain.nx),
                                      static_cast<size_t>(domain.ny), static_cast<size_t>(row));
        row_work(rows, domain.nx, steps, line);
    });
}

/// First differences of a line of points and the lines on both sides of it, where no other field
/// has a say.
TYR_WIDE void difference_line(const float *here, const float *back, const float *next, float one,
                              float two, float *out, int count)
{
#pragma GCC ivdep
    for (int i = 0; i < count; ++i) {
        const float value = first_difference(here[i], back[i], next[i], one, two);
        out[i] = here[i] == kMissing ? kMissing : value;
    }
}

void dx_row(const float *f, int nx, float one, float *out)
{
    difference_line(f, f, f + std::min(1, nx - 1), one, one, out, 1);
    if (nx > 1) {
        difference_line(f + 1, f, f + 2, one, one / 2.0F, out + 1, nx - 2);
        difference_line(f + nx - 1, f + nx - 2, f + nx - 1, one, one, out + nx - 1, 1);
    }
}

/// The second difference times the spacing squared; places off the line come in as Missing.
inline float second_difference(float f, float back2, float back, float next, float next2)
{
    const bool no_next = next == kMissing;
    const bool no_back = back == kMissing;
    const float middle = back + next - 2.0F * f;
    const float behind = f + back2 - 2.0F * back;
    const float ahead = f + next2 - 2.0F * next;
    const bool is_out =
        (no_next & (no_back | (back2 == kMissing))) | (!no_next & no_back & (next2 == kMissing));
    const float value = no_next ? behind : (no_back ? ahead : middle);
    return is_out ? kMissing : value;
}

/// A line of the grid and the two on each side of it.
struct FiveRows {
    const float *north2, *north, *here, *south, *south2;
};

inline float laplacian_at(const FiveRows &r, int i, float along_x, Spacing spacing)
{
    const float f = r.here[i];
    const float along_y = second_difference(f, r.north2[i], r.north[i], r.south[i], r.south2[i]);
    const bool is_out = (f == kMissing) | (along_x == kMissing) | (along_y == kMissing);
    const float value = along_x * (spacing.x * spacing.x) + along_y * (spacing.y * spacing.y);
    return is_out ? kMissing : value;
}

TYR_WIDE void laplacian_row(const FiveRows &r, int nx, Spacing spacing, float *out)
{
    const float *f = r.here;
    const auto place = [&](int i) { return i >= 0 && i < nx ? f[i] : kMissing; };
    const auto at_end = [&](int i) {
        const float along_x =
            second_difference(f[i], place(i - 2), place(i - 1), place(i + 1), place(i + 2));
        out[i] = laplacian_at(r, i, along_x, spacing);
    };
    for (int i = 0; i < std::min(2, nx); ++i)
        at_end(i);
#pragma GCC ivdep
    for (int i = 2; i < nx - 2; ++i) {
        const float along_x = second_difference(f[i], f[i - 2], f[i - 1], f[i + 1], f[i + 2]);
        out[i] = laplacian_at(r, i, along_x, spacing);
    }
    for (int i = std::max(2, nx - 2); i < nx; ++i)
        at_end(i);
}

void laplacian(const DomainRec &domain, const float *in, float *out)
{
    const auto nx = static_cast<size_t>(domain.nx);
    const std::vector<float> nothing(nx, kMissing);
    over_grid(domain, out, [&](int row, Spacing spacing, float *line) {
        const auto at = [&](int r) {
            return r >= 0 && r < domain.ny ? in + static_cast<size_t>(r) * nx : nothing.data();
        };
        const FiveRows rows{at(row - 2), at(row - 1), at(row), at(row + 1), at(row + 2)};
        laplacian_row(rows, domain.nx, spacing, line);
    });
}

bool is_valid(const char *routine, const GridRec *first, const GridRec *other)
{
    if (first->values == nullptr || other->values == nullptr ||
        tyr::point_count(first->domain) == 0) {
        MSG_out(kMsgWarn, "%s: A grid has no values\n", routine);
        return false;
    }
    if (first->domain.nx != other->domain.nx || first->domain.ny != other->domain.ny) {
        MSG_out(kMsgWarn, "%s: Grids of %d by %d and %d by %d points\n", routine, first->domain.nx,
                first->domain.ny, other->domain.nx, other->domain.ny);
        return false;
    }
    return true;
}

/// Checks the inputs and runs work(values) on an array that is none of them, which then becomes
/// the output's.
template <class Work>
int into_output(const char *routine, std::initializer_list<const GridRec *> inputs, GridRec *out,
                Work work)
{
    const GridRec *first = *inputs.begin();
    bool is_shared = false;
    for (const GridRec *input : inputs) {
        if (!is_valid(routine, first, input))
            return -1;
        is_shared = is_shared || input->values == out->values;
    }
    if (out->values != nullptr && !is_valid(routine, first, out))
        return -1;
    const size_t room = tyr::point_count(first->domain) * sizeof(float);
    float *values = out->values;
    if (values == nullptr || is_shared)
        values = static_cast<float *>(std::malloc(room));
    if (values == nullptr) {
        MSG_out(kMsgWarn, "%s: No memory for grid field\n", routine);
        return -1;
    }
    work(values);
    if (out->values == nullptr) {
        out->domain.nx = first->domain.nx;
        out->domain.ny = first->domain.ny;
        out->values = values;
    } else if (is_shared) {
        std::copy_n(values, tyr::point_count(first->domain), out->values);
        std::free(values);
    }
    return 0;
}

/// One field's difference along x and another's along y.
int sum_of_differences(const char *routine, const GridRec *x, const GridRec *y, Signs signs,
                       GridRec *out)
{
    return into_output(routine, {x, y}, out, [&](float *to) {
        differences(x->domain, {x->values, y->values, x->values, y->values}, to,
                    [signs](const Rows &r, int nx, const Steps &s, float *line) {
                        sum_row(r, nx, s, line, signs);
                    });
    });
}

} // namespace

int GRD_dx(const GridRec *in, GridRec *out)
{
    return into_output("GRD_dx", {in}, out, [&](float *to) {
        const auto nx = static_cast<size_t>(in->domain.nx);
        over_grid(in->domain, to, [&](int row, Spacing spacing, float *line) {
            dx_row(in->values + static_cast<size_t>(row) * nx, in->domain.nx, spacing.x, line);
        });
    });
}

int GRD_dy(const GridRec *in, GridRec *out)
{
    return into_output("GRD_dy", {in}, out, [&](float *to) {
        const DomainRec &d = in->domain;
        const auto nx = static_cast<size_t>(d.nx);
        over_grid(d, to, [&](int row, Spacing spacing, float *line) {
            const float *here = in->values + static_cast<size_t>(row) * nx;
            const bool is_edge = row == 0 || row == d.ny - 1;
            difference_line(here, row + 1 < d.ny ? here + nx : here, row > 0 ? here - nx : here,
                            spacing.y, is_edge ? spacing.y : spacing.y / 2.0F, line, d.nx);
        });
    });
}

int GRD_laplacian(const GridRec *in, GridRec *out)
{
    return into_output("GRD_laplacian", {in}, out,
                       [&](float *to) { laplacian(in->domain, in->values, to); });
}

int GRD_converge(const GridRec *u, const GridRec *v, const GridRec *factor, GridRec *out)
{
    if (factor == nullptr)
        return sum_of_differences("GRD_converge", u, v, {-1.0F, -1.0F}, out);
    return into_output("GRD_converge", {u, v, factor}, out, [&](float *to) {
        differences(u->domain, {u->values, v->values, factor->values, factor->values}, to,
                    convergence_row);
    });
}

int GRD_vorticity(const GridRec *u, const GridRec *v, GridRec *out)
{
    return sum_of_differences("GRD_vorticity", v, u, {1.0F, -1.0F}, out);
}

int GRD_deformation1(const GridRec *u, const GridRec *v, GridRec *out)
{
    return sum_of_differences("GRD_deformation1", u, v, {1.0F, -1.0F}, out);
}

int GRD_deformation2(const GridRec *u, const GridRec *v, GridRec *out)
{
    return sum_of_differences("GRD_deformation2", v, u, {-1.0F, -1.0F}, out);
}

int GRD_advection(const GridRec *u, const GridRec *v, const GridRec *s, GridRec *out)
{
    return into_output("GRD_advection", {u, v, s}, out, [&](float *to) {
        differences(u->domain, {s->values, s->values, u->values, v->values}, to, advection_row);
    });
}
