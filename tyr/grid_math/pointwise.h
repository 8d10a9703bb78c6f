#pragma once

// Loops over the points of grids and constants alike: a constant becomes a row of its own that
// stays in the cache, so that one loop without branches serves every mix of operands.

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/grid_math/grid_operands.h"
#include "tyr/grid_math/grid_places.h"
#include "tyr/grid_math/row_bands.h"

namespace tyr {

inline constexpr size_t kPointSlice = 2048; ///< points of one step

template <size_t N> using Operands = std::array<Operand, N>;
template <size_t N> using Lanes = std::array<const float *, N>;

/// Calls work(lanes, first point, count) on slices of the grid, in bands.
template <size_t N, class Work>
void over_points(const GridRec &out, const Operands<N> &operands, size_t at_least, Work work)
{
    const size_t count = point_count(out.domain);
    std::array<std::vector<float>, N> constants;
    for (size_t k = 0; k < N; ++k)
        if (operands[k].values == nullptr)
            constants[k].assign(kPointSlice, operands[k].constant);
    const int slices = static_cast<int>((count + kPointSlice - 1) / kPointSlice);
    over_rows(slices, count, at_least, [&](int first, int last) {
        for (int slice = first; slice < last; ++slice) {
            const size_t at = static_cast<size_t>(slice) * kPointSlice;
            Lanes<N> lanes{};
            for (size_t k = 0; k < N; ++k)
                lanes[k] =
                    operands[k].values == nullptr ? constants[k].data() : operands[k].values + at;
            work(lanes, at, std::min(kPointSlice, count - at));
        }
    });
}

inline float checked(float value, bool is_out)
{
    const bool is_bad = is_out | !(std::fabs(value) <= kLargest);
    return is_bad ? kMissing : value;
}

template <size_t... K, class F>
void quick_slice(std::index_sequence<K...>, const Lanes<sizeof...(K)> &lanes, size_t tested,
                 float *out, size_t count, F f)
{
    if (tested == sizeof...(K)) {
#pragma GCC ivdep
        for (size_t i = 0; i < count; ++i)
            out[i] = checked(f(lanes[K][i]...), ((lanes[K][i] == kMissing) | ...));
        return;
    }
#pragma GCC ivdep
    for (size_t i = 0; i < count; ++i)
        out[i] = checked(f(lanes[K][i]...), (((K < tested) & (lanes[K][i] == kMissing)) | ...));
}

/// out = f(operands) at each point, for an f that is a few instructions. Missing where one of the
/// first `tested` operands is, and where the result is no finite number. The result may be one of
/// the operands.
template <size_t N, class F>
void quick_points(const GridRec &out, const Operands<N> &operands, F f, size_t tested = N)
{
    over_points(out, operands, kCheapPoints, [&](const Lanes<N> &lanes, size_t at, size_t count) {
        quick_slice(std::make_index_sequence<N>(), lanes, tested, out.values + at, count, f);
    });
}

template <size_t... K, class F>
void costly_slice(std::index_sequence<K...>, const Lanes<sizeof...(K)> &lanes, float *out,
                  size_t count, F f)
{
    for (size_t i = 0; i < count; ++i) {
        const bool is_out = ((lanes[K][i] == kMissing) | ...);
        out[i] = is_out ? kMissing : checked(f(lanes[K][i]...), false);
    }
}

/// The same for an f that calls functions: it isn't called where an operand is Missing.
template <size_t N, class F>
void costly_points(const GridRec &out, const Operands<N> &operands, F f)
{
    over_points(out, operands, kCostlyPoints, [&](const Lanes<N> &lanes, size_t at, size_t count) {
        costly_slice(std::make_index_sequence<N>(), lanes, out.values + at, count, f);
    });
}

/// row(a, b, out, count) on slices of the grid: a routine for rows of points.
template <class RowWork>
void row_points(const GridRec &out, const Operands<2> &operands, RowWork row)
{
    over_points(out, operands, kCostlyPoints, [&](const Lanes<2> &lanes, size_t at, size_t count) {
        row(lanes[0], lanes[1], out.values + at, count);
    });
}

/// Plot position of the first point for the operations that walk a grid, whose domain is current:
/// whole spacings from the centre, so that with an even number of columns or rows the walk stands
/// half a spacing to the east or south.
Corner walk_corner(const DomainRec &domain);

/// Calls work(point, plot x, plot y) at each point of a domain, which must be current.
template <class Work> void walk_points(const DomainRec &domain, Work work)
{
    const Corner corner = walk_corner(domain);
    over_rows(domain.ny, point_count(domain), kCostlyPoints, [&](int first, int last) {
        for (int row = first; row < last; ++row) {
            const float y = corner.y - static_cast<float>(row) * domain.dy;
            const size_t at = static_cast<size_t>(row) * static_cast<size_t>(domain.nx);
            for (int i = 0; i < domain.nx; ++i)
                work(at + static_cast<size_t>(i), corner.x + static_cast<float>(i) * domain.dx, y);
        }
    });
}

} // namespace tyr
