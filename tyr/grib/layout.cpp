#include <algorithm>
#include <bit>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <numeric>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/grib/product_private.h"

namespace tyr {
namespace {

constexpr unsigned kFromEast = 0x80;
constexpr unsigned kFromSouth = 0x40;
constexpr unsigned kByColumns = 0x20;
constexpr unsigned kAlternating = 0x10;

bool is_present(const std::vector<std::uint8_t> &map, size_t point)
{
    return (map[point / 8U] >> (7U - point % 8U) & 1U) != 0;
}

/// Points that the map shows among the first `points`.
size_t count_present(const std::vector<std::uint8_t> &map, size_t points)
{
    size_t present = 0;
    for (size_t i = 0; i < points / 8U; ++i) {
        present += static_cast<unsigned>(std::popcount(map[i]));
    }
    for (size_t point = points / 8U * 8U; point < points; ++point) {
        present += is_present(map, point) ? 1U : 0U;
    }
    return present;
}

/// Moves values at the start of an array of `points` to the places that the map shows, in place,
/// the last one first. Where fewer than the map shows were made the last ones are Missing.
void spread_by_map(const std::vector<std::uint8_t> &map, float *values, size_t count, size_t points)
{
    size_t from = count_present(map, points);
    if (count < from) {
        std::fill(values + count, values + from, kMissing);
    }
    for (size_t point = points; point-- > 0;) {
        const bool present = is_present(map, point);
        from -= present ? 1U : 0U;
        values[point] = present ? values[from] : kMissing;
    }
}

/// A row of n points over nx places, from the first place to the last.
void spread_thinned(const float *row, int n, float *out, int nx)
{
    for (int i = 0; i < nx; ++i) {
        const double at = nx > 1 ? static_cast<double>(i) * (n - 1) / (nx - 1) : 0.0;
        const int left = std::min(static_cast<int>(at + 1e-9), n - 1);
        const double f = std::max(0.0, at - left);
        const float a = row[left];
        const float b = row[std::min(left + 1, n - 1)];
        if (f < 1e-6) {
            out[i] = a;
        } else if (is_missing(a) || is_missing(b)) {
            out[i] = kMissing;
        } else {
            out[i] = static_cast<float>(f * b + (1.0 - f) * a);
        }
    }
}

void spread_placed(const float *row, int n, float *out, int nx)
{
    if (n == 1) {
        std::fill_n(out, nx, row[0]);
        return;
    }
    if (n == nx - 1) {
        std::copy_n(row, n, out);
        out[n] = row[0];
        return;
    }
    std::fill_n(out, nx, kMissing);
    std::copy_n(row, n, out + (nx - n) / 2);
}

/// The grid's row for the file's row `row`.
int row_place(const Layout &layout, int row)
{
    return layout.from_south ? layout.ny - 1 - row : row;
}

void place_rows(const Layout &layout, const std::vector<float> &stored, float *values)
{
    const float *row = stored.data();
    for (int j = 0; j < layout.ny; ++j) {
        const int n = layout.row_lengths[static_cast<size_t>(j)];
        float *out =
            values + static_cast<size_t>(row_place(layout, j)) * static_cast<size_t>(layout.nx);
        if (n < 1) {
            std::fill_n(out, layout.nx, kMissing);
        } else if (layout.shape == RowShape::kThinned) {
            spread_thinned(row, n, out, layout.nx);
        } else {
            spread_placed(row, n, out, layout.nx);
        }
        row += n;
    }
}

/// Columns of the file to rows of the grid: the file's row is the grid's column.
void turn(const Layout &layout, float *values)
{
    const auto nx = static_cast<size_t>(layout.nx);
    const auto ny = static_cast<size_t>(layout.ny);
    const std::vector<float> columns(values, values + nx * ny);
    for (size_t i = 0; i < nx; ++i) {
        for (size_t j = 0; j < ny; ++j) {
            values[j * nx + i] = columns[i * ny + j];
        }
    }
}

void put_right(const Layout &layout, float *values)
{
    const auto nx = static_cast<size_t>(layout.nx);
    const auto ny = static_cast<size_t>(layout.ny);
    const size_t run = layout.by_columns ? ny : nx;
    const size_t runs = layout.by_columns ? nx : ny;
    for (size_t j = 1; layout.alternates && j < runs; j += 2) {
        std::reverse(values + j * run, values + (j + 1) * run);
    }
    if (layout.by_columns) {
        turn(layout, values);
    }
    for (size_t j = 0; layout.from_east && j < ny; ++j) {
        std::reverse(values + j * nx, values + (j + 1) * nx);
    }
    for (size_t j = 0; layout.from_south && j < ny / 2; ++j) {
        std::swap_ranges(values + j * nx, values + (j + 1) * nx, values + (ny - 1 - j) * nx);
    }
}

} // namespace

bool Origin::refuse(const char *format, ...) const
{
    if (is_quiet) {
        return false;
    }
    char reason[200];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(reason, sizeof reason, format, arguments);
    va_end(arguments);
    MSG_out(kMsgWarn, "GRIB: %s, message %ld: %s\n", file.c_str(), message, reason);
    return false;
}

size_t Layout::stored_points() const
{
    if (shape == RowShape::kEven) {
        return grid_points();
    }
    return std::accumulate(row_lengths.begin(), row_lengths.end(), size_t{0},
                           [](size_t sum, int n) { return sum + static_cast<unsigned>(n); });
}

void Layout::set_scanning(unsigned flags)
{
    from_east = (flags & kFromEast) != 0;
    from_south = (flags & kFromSouth) != 0;
    by_columns = (flags & kByColumns) != 0;
    alternates = (flags & kAlternating) != 0;
}

bool alloc_values(const Product &product, size_t data_bytes, GridRec *grid)
{
    grid->values = nullptr;
    const auto points = static_cast<std::int64_t>(product.layout.grid_points());
    if (points < 1 || product.layout.nx < 1 || product.layout.ny < 1) {
        return product.origin.refuse("a grid of %d by %d points", product.layout.nx,
                                     product.layout.ny);
    }
    const auto bytes = static_cast<std::int64_t>(data_bytes + product.bitmap.size());
    if (points > kMostPoints || (points > kMostFreePoints && points > 8 * bytes)) {
        return product.origin.refuse("a grid of %d by %d points is too big for its %lld bytes",
                                     product.layout.nx, product.layout.ny,
                                     static_cast<long long>(bytes));
    }
    return GRD_alloc(grid) == 1;
}

bool place_values(const Product &product, std::vector<float> *stored, size_t count, GridRec *grid)
{
    const Layout &layout = product.layout;
    const size_t points = layout.stored_points();
    float *values = layout.shape == RowShape::kEven ? grid->values : stored->data();
    if (product.has_map) {
        if (product.bitmap.size() < (points + 7U) / 8U) {
            return product.origin.refuse("its bit map is too short for the grid");
        }
        spread_by_map(product.bitmap, values, count, points);
    } else if (count < points) {
        std::fill(values + count, values + points, kMissing);
    }
    if (layout.shape == RowShape::kEven) {
        put_right(layout, grid->values);
    } else {
        place_rows(layout, *stored, grid->values);
        for (size_t j = 0; layout.from_east && j < static_cast<size_t>(layout.ny); ++j) {
            float *row = grid->values + j * static_cast<size_t>(layout.nx);
            std::reverse(row, row + layout.nx);
        }
    }
    return true;
}

} // namespace tyr
