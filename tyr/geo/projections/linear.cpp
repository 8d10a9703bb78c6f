// The plot spaces without thermodynamics.

#include "tyr/geo/projections/form_private.h"

using namespace tyr;

namespace tyr {

namespace {

MapPoint same(const CurrentDomain &, double a, double b)
{
    return {a, b};
}

MapPoint linear_forward(const CurrentDomain &d, double a, double b)
{
    const float *w = d.window;
    return {(a - w[0]) * d.fx + w[0], (b - w[2]) * d.fy + w[2]};
}

MapPoint linear_inverse(const CurrentDomain &d, double x, double y)
{
    const float *w = d.window;
    return {(x - w[0]) / d.fx + w[0], (y - w[2]) / d.fy + w[2]};
}

MapPoint downward_forward(const CurrentDomain &d, double a, double b)
{
    const float *w = d.window;
    return {(a - w[0]) * d.fx + w[0], (w[2] - b) * d.fy + w[2]};
}

MapPoint downward_inverse(const CurrentDomain &d, double x, double y)
{
    const float *w = d.window;
    return {(x - w[0]) / d.fx + w[0], w[2] - (y - w[2]) / d.fy};
}

MapPoint polar_plot_forward(const CurrentDomain &, double angle, double radius)
{
    return {sind(angle) * radius, cosd(angle) * radius};
}

MapPoint polar_plot_inverse(const CurrentDomain &, double x, double y)
{
    const double a = x == 0.0 && y == 0.0 ? 0.0 : std::atan2(x, y) * kDegreesPerRadian;
    return {a < 0.0 ? a + kTurn : a, std::hypot(x, y)};
}

MapPoint pixel_forward(const CurrentDomain &, double a, double b)
{
    return {a, -b};
}

} // namespace

const ProjectionForm kNoneForm = {.code = kProjNone,
                                  .name = "none",
                                  .words = {"=miss"},
                                  .window = WindowForm::projected,
                                  .set_up = nullptr,
                                  .forward = same,
                                  .forward_all = nullptr,
                                  .inverse = same,
                                  .rotate = nullptr,
                                  .scale = nullptr,
                                  .wrap_width = nullptr,
                                  .skew = nullptr};
extern const ProjectionForm kXYForm;
const ProjectionForm kXYForm = {.code = kProjXY,
                                .name = "xy",
                                .words = {"xy"},
                                .window = WindowForm::linear,
                                .set_up = nullptr,
                                .forward = linear_forward,
                                .forward_all = nullptr,
                                .inverse = linear_inverse,
                                .rotate = nullptr,
                                .scale = nullptr,
                                .wrap_width = nullptr,
                                .skew = nullptr};
extern const ProjectionForm kTimeHeightForm;
const ProjectionForm kTimeHeightForm = {.code = kProjTimeHeight,
                                        .name = "cat",
                                        .words = {"cat"},
                                        .window = WindowForm::linear,
                                        .set_up = nullptr,
                                        .forward = linear_forward,
                                        .forward_all = nullptr,
                                        .inverse = linear_inverse,
                                        .rotate = nullptr,
                                        .scale = nullptr,
                                        .wrap_width = nullptr,
                                        .skew = nullptr};
extern const ProjectionForm kXPForm;
const ProjectionForm kXPForm = {.code = kProjXP,
                                .name = "",
                                .words = {"=xp"},
                                .window = WindowForm::linear,
                                .set_up = nullptr,
                                .forward = downward_forward,
                                .forward_all = nullptr,
                                .inverse = downward_inverse,
                                .rotate = nullptr,
                                .scale = nullptr,
                                .wrap_width = nullptr,
                                .skew = nullptr};
extern const ProjectionForm kPolarPlotForm;
const ProjectionForm kPolarPlotForm = {.code = kProjPolarPlot,
                                       .name = "polar",
                                       .words = {"hodo"},
                                       .window = WindowForm::plain,
                                       .set_up = nullptr,
                                       .forward = polar_plot_forward,
                                       .forward_all = nullptr,
                                       .inverse = polar_plot_inverse,
                                       .rotate = nullptr,
                                       .scale = nullptr,
                                       .wrap_width = nullptr,
                                       .skew = nullptr};
extern const ProjectionForm kPixelForm;
const ProjectionForm kPixelForm = {.code = kProjPixel,
                                   .name = "pixel",
                                   .words = {"pix"},
                                   .window = WindowForm::projected,
                                   .set_up = nullptr,
                                   .forward = pixel_forward,
                                   .forward_all = nullptr,
                                   .inverse = pixel_forward,
                                   .rotate = nullptr,
                                   .scale = nullptr,
                                   .wrap_width = nullptr,
                                   .skew = nullptr};

} // namespace tyr
