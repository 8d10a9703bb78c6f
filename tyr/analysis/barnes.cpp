#include "tyr/analysis/barnes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <new>
#include <vector>

#include "tyr/analysis/barnes_params_private.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/grid_math/row_bands.h"
#include "tyr/grid_math/vector_math_private.h"

using namespace tyr;

namespace {

constexpr float kZero = 1e-10F; ///< a value nearer to 0 is 0
constexpr int kOurModel = 1;
constexpr int kGridNumber = 2;
constexpr size_t kBlock = 1024;   ///< stations whose column weights are held at a time
constexpr int kTileStations = 64; ///< worked on together, with the rows that they reach
constexpr int kTileRows = 8;

/// What a run works on, in grid coordinates.
struct Run {
    const float *column, *row; ///< of the stations
    int stations;
    std::vector<int> fields; ///< those that are used
    GridRec *grids;
    int nx, ny;
    double dx, dy;
    double reach; ///< squared distance up to which a station counts
};

/// Sums over a field: one place a grid point.
struct Sums {
    std::vector<double> weighted, weight;
    std::vector<int> count; ///< of stations, where more than one is asked for

    Sums(size_t points, bool is_counted)
        : weighted(points), weight(points), count(is_counted ? points : 0)
    {
    }
};

/// First and last index, of 0 to count - 1, within `reach` of a place.
struct Interval {
    int first, last;
};

Interval in_reach(double place, double step, double reach, int count)
{
    const double span = std::sqrt(reach) / std::fabs(step) + 1.0;
    const double low = std::max(place - span, 0.0);
    const double high = std::min(place + span, static_cast<double>(count - 1));
    if (!(low <= high)) {
        return {0, -1};
    }
    return {static_cast<int>(std::floor(low)), static_cast<int>(std::ceil(high))};
}

/// The columns of a station, with their part of the weight.
struct Reach {
    Interval columns{0, -1}, rows{0, -1};
    std::vector<double> square, weight; ///< squared distance in x and its factor, by column
};

void set_reach(const Run &run, int station, double filter, Reach *reach)
{
    const double column = run.column[station];
    const double row = run.row[station];
    reach->columns = reach->rows = {0, -1};
    if (is_missing(run.column[station]) || !std::isfinite(column) || !std::isfinite(row)) {
        return;
    }
    reach->rows = in_reach(row, run.dy, run.reach, run.ny);
    reach->columns = in_reach(column, run.dx, run.reach, run.nx);
    const int count = std::max(reach->columns.last - reach->columns.first + 1, 0);
    reach->square.resize(static_cast<size_t>(count));
    reach->weight.resize(static_cast<size_t>(count));
    for (int k = 0; k < count; k++) {
        const double a = (column - (reach->columns.first + k)) * run.dx;
        const auto place = static_cast<size_t>(k);
        reach->square[place] = a * a;
        reach->weight[place] = std::exp(-a * a / filter);
    }
}

TYR_WIDE void add_weights(const double *by_column, double by_row, double value, size_t n,
                          double *weighted, double *weight)
{
    for (size_t k = 0; k < n; k++) {
        const double w = by_column[k] * by_row;
        weighted[k] += value * w;
        weight[k] += w;
    }
}

/// Adds a station to the points of one row that it reaches.
void add_to_row(const Run &run, const Reach &reach, int station, int row, double filter,
                float value, Sums *sums)
{
    const double b = (static_cast<double>(run.row[station]) - row) * run.dy;
    const double square = b * b;
    if (square > run.reach) {
        return;
    }
    const double row_weight = std::exp(-square / filter);
    const size_t base = static_cast<size_t>(row) * static_cast<size_t>(run.nx) +
                        static_cast<size_t>(reach.columns.first);
    double *weighted = &sums->weighted[base];
    double *weight = &sums->weight[base];
    size_t first = 0;
    size_t last = reach.square.size();
    while (first < last && reach.square[first] + square > run.reach) {
        first++;
    }
    while (last > first && reach.square[last - 1] + square > run.reach) {
        last--;
    }
    if (first >= last) {
        return;
    }
    add_weights(&reach.weight[first], row_weight, value, last - first, weighted + first,
                weight + first);
    if (!sums->count.empty()) {
        int *count = &sums->count[base];
        std::for_each(count + first, count + last, [](int &c) { c++; });
    }
}

void add_fields(const Run &run, const Reach &reach, int station, int row, double filter,
                const float *const *values, std::vector<Sums> *sums)
{
    for (size_t f = 0; f < run.fields.size(); f++) {
        const float value = values[run.fields[f]][station];
        if (!is_missing(value) && std::isfinite(value)) {
            add_to_row(run, reach, station, row, filter, value, &(*sums)[f]);
        }
    }
}

/// Adds some stations to some rows. Few rows at a time, so that their sums stay in the cache.
void add_tile(const Run &run, const std::vector<Reach> &block, int begin, int end, int first,
              int last, double filter, const float *const *values, std::vector<Sums> *sums)
{
    for (int top = first; top < last; top += kTileRows) {
        for (int s = begin; s < end; s++) {
            const Reach &reach = block[static_cast<size_t>(s) % kBlock];
            const int low = std::max(top, reach.rows.first);
            const int high = std::min({top + kTileRows, last, reach.rows.last + 1});
            for (int row = low; row < high && !reach.square.empty(); row++) {
                add_fields(run, reach, s, row, filter, values, sums);
            }
        }
    }
}

/// One pass over all points: a block of stations after the other, in their order, rows in bands.
void gather(const Run &run, double filter, const float *const *values, std::vector<Sums> *sums)
{
    std::vector<Reach> block(std::min(kBlock, static_cast<size_t>(run.stations)));
    const auto points = static_cast<size_t>(run.nx) * static_cast<size_t>(run.ny);
    for (int begin = 0; begin < run.stations; begin += static_cast<int>(kBlock)) {
        const int end = std::min(run.stations, begin + static_cast<int>(kBlock));
        for (int s = begin; s < end; s++) {
            set_reach(run, s, filter, &block[static_cast<size_t>(s - begin)]);
        }
        over_rows(run.ny, points, kCostlyPoints, [&](int first, int last) {
            for (int s = begin; s < end; s += kTileStations) {
                add_tile(run, block, s, std::min(s + kTileStations, end), first, last, filter,
                         values, sums);
            }
        });
    }
}

/// A replacement stands in for the missing values of stations that reach a point of the grid.
void replace_missing(const Run &run, float replacement, float **values)
{
    for (int s = 0; s < run.stations && !is_missing(replacement); s++) {
        if (is_missing(run.column[s]) || !std::isfinite(run.column[s]) ||
            !std::isfinite(run.row[s])) {
            continue;
        }
        // the nearest point of the grid
        const double i =
            std::clamp(std::round(run.column[s]), 0.0F, static_cast<float>(run.nx - 1));
        const double j = std::clamp(std::round(run.row[s]), 0.0F, static_cast<float>(run.ny - 1));
        const double a = (run.column[s] - i) * run.dx;
        const double b = (run.row[s] - j) * run.dy;
        for (const int f : run.fields) {
            if (a * a + b * b <= run.reach && is_missing(values[f][s])) {
                values[f][s] = replacement;
            }
        }
    }
}

/// Means of a pass to the grids: in place of what they hold, or on top of it.
void settle(const Run &run, const std::vector<Sums> &sums, bool is_first)
{
    for (size_t f = 0; f < run.fields.size(); f++) {
        float *values = run.grids[run.fields[f]].values;
        for (size_t p = 0; p < sums[f].weight.size(); p++) {
            const bool is_counted = !sums[f].count.empty();
            if (sums[f].weight[p] == 0.0 ||
                (is_counted && sums[f].count[p] < barnes_params().minimum)) {
                values[p] = kMissing;
                continue;
            }
            const double mean = sums[f].weighted[p] / sums[f].weight[p];
            const auto value = static_cast<float>(is_first ? mean : values[p] + mean);
            values[p] = std::fabs(value) < kZero ? 0.0F : value;
        }
    }
}

/// The grid's value at a station by its four points; Missing where one of them is, or outside.
float at_station(const Run &run, const float *values, int station)
{
    const float x = run.column[station];
    const float y = run.row[station];
    if (is_missing(x) || !(x >= 0.0F) || !(y >= 0.0F) || !(x <= static_cast<float>(run.nx - 1)) ||
        !(y <= static_cast<float>(run.ny - 1))) {
        return kMissing;
    }
    const int i = static_cast<int>(x);
    const int j = static_cast<int>(y);
    const float p = x - static_cast<float>(i);
    const float q = y - static_cast<float>(j);
    float sum = 0.0F;
    // a station on the last row or column needs no point beyond it
    const auto add = [&](int column, int row, float share) {
        if (column >= run.nx || row >= run.ny || is_missing(sum)) {
            return;
        }
        const float value = values[static_cast<std::ptrdiff_t>(row) * run.nx + column];
        sum = is_missing(value) ? kMissing : sum + value * share;
    };
    add(i, j, (1.0F - q) * (1.0F - p));
    add(i + 1, j, (1.0F - q) * p);
    add(i, j + 1, (1.0F - p) * q);
    add(i + 1, j + 1, p * q);
    return sum;
}

void find_residuals(const Run &run, const float *const *values, float *const *residuals)
{
    MSG_out(kMsgOut3, "Computing residuals...\n");
    for (const int f : run.fields) {
        double sum = 0.0;
        int count = 0;
        for (int s = 0; s < run.stations; s++) {
            const float value = values[f][s];
            const float known = is_missing(value) || !std::isfinite(value)
                                    ? kMissing
                                    : at_station(run, run.grids[f].values, s);
            residuals[f][s] = is_missing(known) ? kMissing : value - known;
            if (!is_missing(residuals[f][s])) {
                sum += static_cast<double>(residuals[f][s]) * residuals[f][s];
                count++;
            }
        }
        if (count == 0) {
            MSG_out(kMsgOut3, "RMS Error for field %d: no stations\n", f + 1);
        } else {
            MSG_out(kMsgOut3, "RMS Error for field %d: %f\n", f + 1, std::sqrt(sum / count));
        }
    }
}

void tell(const Run &run)
{
    const BarnesParams &p = barnes_params();
    MSG_out(kMsgMess, "Fitting to grid...\n");
    for (const int f : run.fields) {
        MSG_out(kMsgMess, "   Data field [%d] = %s\n", f + 1, run.grids[f].info);
    }
    MSG_out(kMsgOut4, "Time and date are            = %s\n", run.grids[0].date);
    MSG_out(kMsgOut4, "Number of stations           = %4d stats\n", run.stations);
    MSG_out(kMsgOut4, "Number of passes             = %4d\n", p.passes);
    MSG_out(kMsgOut4, "Filter parameter             = %9.4f cm**2\n", p.filter);
    if (p.passes > 1) {
        MSG_out(kMsgOut4, "Convergence parameter        = %9.4f\n", p.convergence);
    }
    MSG_out(kMsgOut4, "Radius of influence          = %7.2f grids\n", p.radius);
    MSG_out(kMsgOut4, "Minimum stations at gridpt   = %4d stats\n\n", p.minimum);
}

/// Plot coordinates to columns and rows, which count down from the top of the window.
void to_grid_coordinates(const DomainRec &domain, float *x, float *y, int stations)
{
    DomainRec before;
    DOM_get(&before);
    DOM_set(&domain);
    float window[4];
    DOM_get_window(window);
    for (int s = 0; s < stations; s++) {
        if (is_missing(x[s])) {
            y[s] = kMissing;
            continue;
        }
        x[s] = (x[s] - window[0]) / domain.dx;
        y[s] = (window[3] - y[s]) / domain.dy;
    }
    DOM_set(&before);
}

void pass(const Run &run, int number, const float *const *values)
{
    MSG_out(kMsgOut3, "Pass: %d...\n", number);
    const auto points = static_cast<size_t>(run.nx) * static_cast<size_t>(run.ny);
    std::vector<Sums> sums(run.fields.size(), Sums(points, barnes_params().minimum > 1));
    gather(run, barnes_params().filter, values, &sums);
    settle(run, sums, number == 1);
}

void further_passes(const Run &run, float **values, int fields)
{
    std::vector<std::vector<float>> held(static_cast<size_t>(fields));
    std::vector<float *> residuals(static_cast<size_t>(fields), nullptr);
    for (const int f : run.fields) {
        held[static_cast<size_t>(f)].resize(static_cast<size_t>(run.stations));
        residuals[static_cast<size_t>(f)] = held[static_cast<size_t>(f)].data();
    }
    find_residuals(run, values, residuals.data());
    for (int n = 2; n <= barnes_params().passes; n++) {
        barnes_params().filter *= barnes_params().convergence;
        pass(run, n, residuals.data());
        find_residuals(run, values, residuals.data());
    }
}

/// What the arguments come to. False where there is nothing to analyse.
bool set_up(float **values, int stations, int fields, GridRec *grids, Run *run)
{
    for (int f = 0; f < fields; f++) {
        if (values[f] != nullptr) {
            run->fields.push_back(f);
        }
    }
    const bool is_usable = !run->fields.empty() && stations >= 0 && grids[0].domain.nx >= 1 &&
                           grids[0].domain.ny >= 1 &&
                           std::all_of(run->fields.begin(), run->fields.end(),
                                       [grids](int f) { return grids[f].values != nullptr; });
    run->grids = grids;
    run->stations = stations;
    return is_usable;
}

} // namespace

int OBJ_analyze(float *x, float *y, float **values, int stations, int fields, GridRec *grids)
{
    Run run{};
    if (!set_up(values, stations, fields, grids, &run)) {
        return -1;
    }
    OBJ_read_params();
    tell(run);
    const DomainRec &domain = grids[0].domain;
    to_grid_coordinates(domain, x, y, stations);
    run.column = x;
    run.row = y;
    run.nx = domain.nx;
    run.ny = domain.ny;
    run.dx = domain.dx;
    run.dy = domain.dy;
    run.reach =
        static_cast<double>(barnes_params().radius) * barnes_params().radius * run.dx * run.dx;
    for (const int f : run.fields) {
        grids[f].grid_id = kGridNumber;
        grids[f].source = grids[f].version = 1;
        grids[f].model = kOurModel;
    }
    try {
        replace_missing(run, barnes_params().replacement, values);
        pass(run, 1, values);
        if (barnes_params().passes > 1 || MSG_test(kMsgOut3) != 0) {
            further_passes(run, values, fields);
        }
    } catch (const std::bad_alloc &) {
        MSG_out(kMsgWarn, "OBJ_analyze: No memory for residual data\n");
        return -1;
    }
    return 0;
}
