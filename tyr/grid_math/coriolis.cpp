#include "tyr/grid_math/coriolis.h"

#include <array>
#include <cmath>
#include <optional>
#include <vector>

#include "tyr/base/angle.h"
#include "tyr/base/missing.h"
#include "tyr/base/str.h"
#include "tyr/grid_math/grid_places.h"
#include "tyr/grid_math/row_bands.h"

using namespace tyr;

namespace {

constexpr double kTwiceRotation = 14.584; // of the earth, 1e-5 per second

enum class Mode { add, subtract, subtract_from, multiply, divide, divide_by };

struct ModeWord {
    const char *word;
    Mode mode;
};
constexpr ModeWord kModes[] = {
    {"add",  Mode::add          },
    {"sub",  Mode::subtract     },
    {"sub-", Mode::subtract_from},
    {"mul",  Mode::multiply     },
    {"div",  Mode::divide       },
    {"div-", Mode::divide_by    }
};

std::optional<Mode> find_mode(const char *word)
{
    for (const ModeWord &known : kModes)
        if (STR_casecmp(word, known.word) == 0)
            return known.mode;
    return {};
}

float combine(float g, float f, Mode mode)
{
    switch (mode) {
    case Mode::add:
        return g + f;
    case Mode::subtract:
        return g - f;
    case Mode::subtract_from:
        return f - g;
    case Mode::multiply:
        return g * f;
    case Mode::divide:
        return g / f;
    case Mode::divide_by:
        return f / g;
    }
    return kMissing;
}

float parameter(double latitude)
{
    return static_cast<float>(kTwiceRotation * sind(latitude));
}

void combine_point(float *g, float f, Mode mode)
{
    if (is_missing(*g))
        return;
    const float value = combine(*g, f, mode);
    *g = std::isfinite(value) ? value : kMissing;
}

} // namespace

int GRD_coriolis(GridRec *grid, const char *mode_word)
{
    const std::optional<Mode> mode = find_mode(mode_word);
    const DomainRec &domain = grid->domain;
    const size_t count = tyr::point_count(domain);
    if (grid->values == nullptr || count == 0)
        return -1;
    if (!mode)
        return 0;
    const auto nx = static_cast<size_t>(domain.nx);
    const tyr::DomainScope scope(domain);
    const tyr::Corner corner = tyr::north_west(domain);
    const bool is_latlon = domain.proj == kProjLatLon;
    const size_t at_least = is_latlon ? tyr::kCheapPoints : tyr::kCostlyPoints;
    tyr::over_rows(domain.ny, count, at_least, [&](int first, int last) {
        std::vector<float> lat(nx, kMissing);
        std::vector<float> lon(nx);
        for (int row = first; row < last; ++row) {
            float *line = grid->values + static_cast<size_t>(row) * nx;
            const float row_parameter = parameter(tyr::row_latitude(domain, row));
            if (!is_latlon)
                tyr::row_places(domain, corner, row, lat.data(), lon.data());
            for (size_t i = 0; i < nx; ++i) {
                if (is_latlon)
                    combine_point(&line[i], row_parameter, *mode);
                else if (is_missing(lat[i]))
                    line[i] = kMissing;
                else
                    combine_point(&line[i], parameter(lat[i]), *mode);
            }
        }
    });
    return 0;
}
