// The thermodynamic diagrams: temperature in degrees Celsius against pressure in hPa.

#include "tyr/geo/projections/form_private.h"

using namespace tyr;

namespace tyr {

namespace {

constexpr double kStuvePower = 0.285714;
constexpr double kReferencePressure = 1000.0; ///< hPa
constexpr double kZeroCelsius = 273.16;
constexpr double kPoisson = 0.286; ///< exponent of Poisson's equation, as MET_theta has it
constexpr double kRootHalf = 0.70710678118654752;

MapPoint log_forward(const CurrentDomain &, double a, double p)
{
    return {a, -std::log(p)};
}

MapPoint log_inverse(const CurrentDomain &, double x, double y)
{
    return {x, std::exp(-y)};
}

MapPoint stuve_forward(const CurrentDomain &, double t, double p)
{
    return {t, -std::pow(p, kStuvePower)};
}

MapPoint stuve_inverse(const CurrentDomain &, double x, double y)
{
    return {x, std::pow(-y, 1.0 / kStuvePower)};
}

MapPoint skew_forward(const CurrentDomain &d, double t, double p)
{
    return {t + (-std::log(p) - d.window[2]) * d.skew, -std::log(p)};
}

MapPoint skew_inverse(const CurrentDomain &d, double x, double y)
{
    return {x - (y - d.window[2]) * d.skew, std::exp(-y)};
}

/// The shift that leans the isotherms by 45 degrees on the viewport.
double lean(const CurrentDomain &d)
{
    const float *w = d.window;
    const float *v = d.viewport;
    return static_cast<double>((w[1] - w[0]) * ((v[3] - v[2]) / (v[1] - v[0]))) /
           static_cast<double>(w[3] - w[2]);
}

/// Potential temperature of single precision, as MET_theta gives it.
MapPoint theta_forward(const CurrentDomain &, double celsius, double pressure)
{
    const auto t = static_cast<float>(celsius + kZeroCelsius);
    const auto p = static_cast<float>(pressure);
    if (t <= 0.0F || p <= 0.0F) {
        return kNowhere;
    }
    const auto theta = static_cast<float>(t * std::pow(kReferencePressure / p, kPoisson));
    return {celsius, std::log(static_cast<double>(theta))};
}

/// Poisson's equation, solved for the pressure.
MapPoint theta_inverse(const CurrentDomain &, double x, double y)
{
    return {x, kReferencePressure * std::pow((x + kZeroCelsius) / std::exp(y), 1.0 / kPoisson)};
}

/// Turns a tephigram's point by 45 degrees in units of the viewport; to = 1 forward, -1 back.
/// Without a viewport it stays as it is.
MapPoint turn_in_viewport(const CurrentDomain &d, double x, double y, double to)
{
    const float *w = d.window;
    const float *v = d.viewport;
    const double width = static_cast<double>(w[1]) - w[0];
    const double height = static_cast<double>(w[3]) - w[2];
    if (v[1] <= v[0] || v[3] <= v[2] || width == 0.0 || height == 0.0) {
        return {x, y};
    }
    const double sx = (static_cast<double>(v[1]) - v[0]) / width;
    const double sy = (static_cast<double>(v[3]) - v[2]) / height;
    const double xv = (x - w[0]) * sx;
    const double yv = (y - w[2]) * sy;
    return {w[0] + (xv + to * yv) * kRootHalf / sx, w[2] + (yv - to * xv) * kRootHalf / sy};
}

MapPoint turned_forward(const CurrentDomain &d, double t, double p)
{
    const MapPoint point = theta_forward(d, t, p);
    return point.shown ? turn_in_viewport(d, point.a, point.b, d.skew) : point;
}

MapPoint turned_inverse(const CurrentDomain &d, double x, double y)
{
    const MapPoint point = turn_in_viewport(d, x, y, -d.skew);
    return theta_inverse(d, point.a, point.b);
}

double whole_turn(const CurrentDomain &)
{
    return 1.0;
}

} // namespace

extern const ProjectionForm kXLogPForm;
const ProjectionForm kXLogPForm = {
    .code = kProjXLogP,
    .name = "xlogp",
    .words = {"xlogy", "xlogp", "vert"},
    .window = WindowForm::projected,
    .set_up = nullptr,
    .forward = log_forward,
    .forward_all = nullptr,
    .inverse = log_inverse,
    .rotate = nullptr,
    .scale = nullptr,
    .wrap_width = nullptr,
    .skew = nullptr
};
extern const ProjectionForm kEmagramForm;
const ProjectionForm kEmagramForm = {.code = kProjEmagram,
                                     .name = "ema",
                                     .words = {"ema"},
                                     .window = WindowForm::projected,
                                     .set_up = nullptr,
                                     .forward = log_forward,
                                     .forward_all = nullptr,
                                     .inverse = log_inverse,
                                     .rotate = nullptr,
                                     .scale = nullptr,
                                     .wrap_width = nullptr,
                                     .skew = nullptr};
extern const ProjectionForm kStuveForm;
const ProjectionForm kStuveForm = {.code = kProjStuve,
                                   .name = "stuve",
                                   .words = {"stuve"},
                                   .window = WindowForm::projected,
                                   .set_up = nullptr,
                                   .forward = stuve_forward,
                                   .forward_all = nullptr,
                                   .inverse = stuve_inverse,
                                   .rotate = nullptr,
                                   .scale = nullptr,
                                   .wrap_width = nullptr,
                                   .skew = nullptr};
extern const ProjectionForm kSkewTForm;
const ProjectionForm kSkewTForm = {
    .code = kProjSkewT,
    .name = "skewt",
    .words = {"skewt", "therm"},
    .window = WindowForm::skewed,
    .set_up = nullptr,
    .forward = skew_forward,
    .forward_all = nullptr,
    .inverse = skew_inverse,
    .rotate = nullptr,
    .scale = nullptr,
    .wrap_width = nullptr,
    .skew = lean
};
extern const ProjectionForm kTephigramForm;
const ProjectionForm kTephigramForm = {.code = kProjTephigram,
                                       .name = "",
                                       .words = {"teph"},
                                       .window = WindowForm::skewed,
                                       .set_up = nullptr,
                                       .forward = turned_forward,
                                       .forward_all = nullptr,
                                       .inverse = turned_inverse,
                                       .rotate = nullptr,
                                       .scale = nullptr,
                                       .wrap_width = nullptr,
                                       .skew = whole_turn};
extern const ProjectionForm kRotatedTephigramForm;
const ProjectionForm kRotatedTephigramForm = {.code = kProjRotatedTephigram,
                                              .name = "",
                                              .words = {"rteph"},
                                              .window = WindowForm::skewed,
                                              .set_up = nullptr,
                                              .forward = theta_forward,
                                              .forward_all = nullptr,
                                              .inverse = theta_inverse,
                                              .rotate = nullptr,
                                              .scale = nullptr,
                                              .wrap_width = nullptr,
                                              .skew = nullptr};

} // namespace tyr
