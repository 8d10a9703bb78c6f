#include "tyr/grid_math/remap.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/geo/projection.h"
#include "tyr/grid_math/grid_places.h"
#include "tyr/grid_math/row_bands.h"

using namespace tyr;

namespace {

constexpr int kStepPoints = 1 << 18; ///< points whose places are held at a time

bool has_values(const char *routine, const GridRec &grid)
{
    if (grid.values != nullptr && tyr::point_count(grid.domain) > 0)
        return true;
    MSG_out(kMsgWarn, "%s: The grid has no values\n", routine);
    return false;
}

/// Fills the rows first to last - 1 of `out` from plot places in `in`'s domain, which is current.
void sample_rows(const GridRec &out, const GridRec &in, int first, int last, const float *x,
                 const float *y)
{
    float window[4];
    DOM_get_window(window);
    const auto nx = static_cast<size_t>(out.domain.nx);
    const size_t count = static_cast<size_t>(last - first) * nx;
    const DomainRec &from = in.domain;
    tyr::over_rows(last - first, count, tyr::kCostlyPoints, [&](int begin, int end) {
        float *values = out.values + static_cast<size_t>(first) * nx;
        for (size_t i = static_cast<size_t>(begin) * nx; i < static_cast<size_t>(end) * nx; ++i) {
            const bool is_out = is_missing(x[i]) || is_missing(y[i]);
            values[i] =
                is_out ? kMissing
                       : tyr::bilinear(in.values, from.nx, from.ny, (x[i] - window[0]) / from.dx,
                                       (window[3] - y[i]) / from.dy);
        }
    });
}

/// Side of `pieces` pieces that share their edges; 0 where no int holds it.
int joined_side(int side, int pieces)
{
    if (side < 1 || pieces < 1)
        return 0;
    const long long joined = 1LL * side * pieces + 1 - pieces;
    return joined > std::numeric_limits<int>::max() ? 0 : static_cast<int>(joined);
}

/// Sets the centre so that the north-west corner of the domain is at a plot point of `before`.
void move_center(DomainRec *domain, const DomainRec &before)
{
    const tyr::DomainScope scope(before);
    const tyr::Corner corner = tyr::north_west(before);
    float lat = kMissing;
    float lon = kMissing;
    const float x = corner.x + static_cast<float>(domain->nx - 1) / 2.0F * domain->dx;
    const float y = corner.y - static_cast<float>(domain->ny - 1) / 2.0F * domain->dy;
    if (MAP_xy_to_ll(&lat, &lon, x, y) == 0)
        return;
    // a pole that the centre stood for stays where it is
    if (is_missing(domain->plat))
        domain->plat = before.clat;
    if (is_missing(domain->plon))
        domain->plon = before.clon;
    domain->clat = lat;
    domain->clon = lon;
}

} // namespace

int GRD_remap(GridRec *out, const DomainRec *domain, const GridRec *in)
{
    if (!has_values("GRD_remap", *in))
        return 0;
    const GridRec source = *in; // the same record may be the output
    GRD_copy(out, &source);
    out->domain = *domain;
    if (GRD_alloc(out) == 0)
        return 0;
    const int rows = std::max(1, kStepPoints / out->domain.nx);
    const size_t room =
        static_cast<size_t>(std::min(rows, out->domain.ny)) * static_cast<size_t>(out->domain.nx);
    std::vector<float> x(room);
    std::vector<float> y(room);
    for (int first = 0; first < out->domain.ny; first += rows) {
        const int last = std::min(first + rows, out->domain.ny);
        tyr::places_in(out->domain, first, last, source.domain, x.data(), y.data());
        sample_rows(*out, source, first, last, x.data(), y.data());
    }
    return 1;
}

int GRD_cutoff(GridRec *out, const char *word, const GridRec *in, float limit, float value)
{
    if (!has_values("GRD_cutoff", *in))
        return 0;
    const float *from = in->values;
    GRD_copy(out, in);
    if (GRD_alloc(out) == 0)
        return 0;
    const bool is_lower = STR_casecmp(word, "lower") == 0;
    const bool is_higher = STR_casecmp(word, "higher") == 0;
    const size_t count = tyr::point_count(out->domain);
    for (size_t i = 0; i < count; ++i) {
        const float v = from[i];
        const bool is_beyond = (is_lower & (v < limit)) | (is_higher & (v > limit));
        const float cut = is_beyond ? value : v;
        out->values[i] = v == kMissing || !(is_lower | is_higher) ? kMissing : cut;
    }
    return 1;
}

int GRD_piece_layout(GridRec *out, int columns, int rows, const GridRec *piece)
{
    const DomainRec before = piece == nullptr ? out->domain : piece->domain;
    const int nx = joined_side(before.nx, columns);
    const int ny = joined_side(before.ny, rows);
    if (nx == 0 || ny == 0 || 1LL * nx * ny > std::numeric_limits<int>::max()) {
        MSG_out(kMsgWarn, "GRD_piece_layout: %d by %d pieces of %d by %d points are no grid\n",
                columns, rows, before.nx, before.ny);
        return 0;
    }
    if (piece != nullptr)
        GRD_copy(out, piece);
    out->domain.nx = nx;
    out->domain.ny = ny;
    move_center(&out->domain, before);
    if (piece == nullptr)
        return 1;
    if (GRD_alloc(out) == 0)
        return 0;
    std::fill_n(out->values, tyr::point_count(out->domain), kMissing);
    return 1;
}

int GRD_paste(GridRec *out, int column, int row, const GridRec *piece)
{
    const DomainRec &to = out->domain;
    const DomainRec &from = piece->domain;
    if (out->values == nullptr || piece->values == nullptr || tyr::point_count(from) == 0)
        return -1;
    const long long x = 1LL * (from.nx - 1) * column;
    const long long y = 1LL * (from.ny - 1) * row;
    if (x < 0 || y < 0 || x + from.nx > to.nx || y + from.ny > to.ny)
        return -1;
    for (int r = 0; r < from.ny; ++r)
        std::copy_n(piece->values + static_cast<std::ptrdiff_t>(r) * from.nx, from.nx,
                    out->values + (y + r) * to.nx + x);
    return 0;
}

int GRD_close_circle(GridRec *grid)
{
    constexpr float kCircle = 360.0F;
    const DomainRec &from = grid->domain;
    const float gap = kCircle - static_cast<float>(from.nx) * from.dx;
    const bool is_short = std::fabs(gap) < 0.01F * from.dx; // spacings are rounded in files
    if (from.proj != kProjLatLon || grid->values == nullptr || from.nx < 2 || !is_short)
        return 0;
    GridRec closed = *grid;
    closed.domain.nx = from.nx + 1;
    closed.domain.clon = from.clon + from.dx / 2.0F;
    if (!is_missing(from.plon))
        closed.domain.plon = closed.domain.clon;
    if (GRD_alloc(&closed) == 0)
        return 0;
    const auto nx = static_cast<size_t>(from.nx);
    for (size_t row = 0; row < static_cast<size_t>(from.ny); ++row) {
        const float *old = grid->values + row * nx;
        float *values = closed.values + row * (nx + 1);
        std::copy_n(old, nx, values);
        values[nx] = old[0];
    }
    GRD_free(grid);
    *grid = closed;
    return 1;
}
