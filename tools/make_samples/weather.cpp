#include "tools/make_samples/weather.h"

#include <cmath>
#include <cstdint>
#include <cstring>

namespace {

constexpr double kPi = 3.14159265358979323846;

double gauss(double x, double centre, double width)
{
    const double d = (x - centre) / width;
    return std::exp(-d * d);
}

/// A number of [0, 1) that belongs to a site, an hour and a gate.
double noise(const SampleSite &site, int hour, int salt)
{
    uint64_t h = 1469598103934665603ULL;
    for (const uint64_t part : {static_cast<uint64_t>(site.wmo), static_cast<uint64_t>(hour + 1000),
                                static_cast<uint64_t>(salt)}) {
        h = (h ^ part) * 1099511628211ULL;
        h ^= h >> 29;
        h *= 0xBF58476D1CE4E5B9ULL;
    }
    return static_cast<double>(h >> 11) / 9007199254740992.0;
}

/// Degrees of longitude east of the trough; it moves at 0.8 degrees an hour.
double behind_trough(const SampleSite &site, double hour)
{
    return site.lon - (-112.0 + 0.8 * hour);
}

} // namespace

std::optional<SampleWind> sample_wind(const SampleSite &site, double hour, double height)
{
    const int gate = static_cast<int>(height) / kGate;
    const int whole_hour = static_cast<int>(hour);
    // the echo fades from a height that changes with site and hour
    const double top = 10500.0 + 6000.0 * noise(site, whole_hour, -1);
    const double lost = height < top ? 0.02 : 0.85;
    if (noise(site, whole_hour, gate) < lost) {
        return std::nullopt;
    }
    const double x = behind_trough(site, hour);
    const double asl = height + site.elev;
    const double depth = 1.0 - std::exp(-height / 2500.0);
    const double wave = std::sin(kPi * std::fmax(-1.0, std::fmin(1.0, x / 14.0)));
    const double jet = gauss(asl, 10800.0, 3200.0) * gauss(site.lat, 41.0 + 3.0 * wave, 9.0);
    const double night = 0.5 + 0.5 * std::cos(2.0 * kPi * (hour - 6.0) / 24.0);
    const double low_jet =
        night * gauss(height, 900.0, 600.0) * gauss(site.lon, -98.0, 5.0) * (x > 0.0 ? 1.0 : 0.2);
    SampleWind wind;
    wind.u = static_cast<float>(4.0 + 14.0 * depth + 42.0 * jet - 2.0 * low_jet +
                                1.2 * (noise(site, whole_hour, 1000 + gate) - 0.5));
    wind.v = static_cast<float>(18.0 * low_jet + (6.0 + 16.0 * depth + 12.0 * jet) * wave +
                                1.2 * (noise(site, whole_hour, 2000 + gate) - 0.5));
    wind.w = static_cast<float>(0.25 * gauss(x, 2.0, 5.0) * gauss(height, 5000.0, 4000.0) +
                                0.2 * (noise(site, whole_hour, 3000 + gate) - 0.5));
    return wind;
}

SampleSurface sample_surface(const SampleSite &site, double hour)
{
    const double x = behind_trough(site, hour);
    const double wave = std::sin(kPi * std::fmax(-1.0, std::fmin(1.0, x / 14.0)));
    const double day = std::cos(2.0 * kPi * (hour - 21.0) / 24.0);
    const double u = 2.5 - 1.0 * wave;
    const double v = 5.0 * wave;
    double direction = std::atan2(-u, -v) * 180.0 / kPi;
    direction += direction < 0.0 ? 360.0 : 0.0;
    SampleSurface s;
    s.pressure = static_cast<float>((1012.0 - 8.0 * gauss(x, 0.0, 6.0)) *
                                    std::pow(1.0 - 0.0065 * site.elev / 288.15, 5.2559));
    s.temperature = static_cast<float>(17.0 - 0.7 * (site.lat - 38.0) + 5.0 * day + 4.0 * wave -
                                       0.005 * site.elev);
    s.dew_point = s.temperature - static_cast<float>(6.0 - 3.0 * wave);
    s.direction = static_cast<float>(direction);
    s.speed = static_cast<float>(std::hypot(u, v));
    return s;
}

bool sample_is_there(const SampleSite &site, int hour)
{
    // one site's line is slow for three hours, the others lose a report now and then
    if (std::strcmp(site.id, "GDAC2") == 0 && hour >= 5 && hour <= 7) {
        return false;
    }
    return std::strcmp(site.id, "PLTC2") == 0 || noise(site, hour, -2) > 0.03;
}

std::vector<SampleSite> sample_reports(int hour)
{
    std::vector<SampleSite> result;
    for (const SampleSite &site : kSampleSites) {
        if (sample_is_there(site, hour)) {
            result.push_back(site);
        }
    }
    return result;
}
