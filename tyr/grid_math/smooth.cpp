#include <array>
#include <cmath>
#include <vector>

#include "tyr/grid_math/pointwise.h"

namespace {

constexpr int kReach = 4; // points to each side
constexpr int kSide = 2 * kReach + 1;

using Weights = std::array<double, static_cast<size_t>(kSide) * kSide>;

/// exp(r^2 / s), divided by the largest of them so that none overflows; with s = 0 only the point
/// itself counts.
Weights make_weights(float s)
{
    Weights weights{};
    const double scale = s;
    const double largest = scale > 0.0 ? 2.0 * kReach * kReach : 0.0;
    size_t n = 0;
    for (int j = -kReach; j <= kReach; ++j)
        for (int i = -kReach; i <= kReach; ++i) {
            const double squared = static_cast<double>(i * i + j * j);
            const double centre = squared == 0.0 ? 1.0 : 0.0;
            weights[n++] = scale == 0.0 ? centre : std::exp((squared - largest) / scale);
        }
    return weights;
}

/// Sums of a row of results: of weight times value, and of the weights.
struct Sums {
    std::vector<double> value, weight;
};

/// Adds what one row of the grid gives to the sums, shifted by i columns.
void add_shifted(const float *line, int nx, int i, double weight, Sums *sums)
{
    const int first = std::max(0, -i);
    const int last = std::min(nx, nx - i);
    double *value_sum = sums->value.data();
    double *weight_sum = sums->weight.data();
    for (int column = first; column < last; ++column) {
        const float value = line[column + i];
        const double w = value == kMissing ? 0.0 : weight;
        value_sum[column] += w * double{value};
        weight_sum[column] += w;
    }
}

void smooth_row(const DomainRec &domain, const float *in, int row, const Weights &weights,
                Sums *sums, float *out)
{
    const auto nx = static_cast<size_t>(domain.nx);
    sums->value.assign(nx, 0.0);
    sums->weight.assign(nx, 0.0);
    for (int j = -kReach; j <= kReach; ++j) {
        if (row + j < 0 || row + j >= domain.ny)
            continue;
        const float *line = in + static_cast<size_t>(row + j) * nx;
        const double *w = &weights[static_cast<size_t>((j + kReach) * kSide)];
        for (int i = -kReach; i <= kReach; ++i)
            add_shifted(line, domain.nx, i, w[i + kReach], sums);
    }
    const float *here = in + static_cast<size_t>(row) * nx;
    for (size_t i = 0; i < nx; ++i)
        out[i] =
            tyr::checked(static_cast<float>(sums->value[i] / sums->weight[i]), here[i] == kMissing);
}

} // namespace

/// A neighbour that is Missing is passed over like a place outside the grid.
bool tyr::run_smooth(const MathCall &call)
{
    const Operand in = call.operand(0);
    const Operand scale = call.operand(1);
    if (in.values == nullptr || scale.values != nullptr)
        return false;
    const Weights weights = make_weights(scale.constant);
    const DomainRec &domain = call.out->domain;
    over_rows(domain.ny, point_count(domain), kCostlyPoints, [&](int first, int last) {
        Sums sums;
        for (int row = first; row < last; ++row)
            smooth_row(domain, in.values, row, weights, &sums,
                       call.out->values +
                           static_cast<size_t>(row) * static_cast<size_t>(domain.nx));
    });
    return true;
}
