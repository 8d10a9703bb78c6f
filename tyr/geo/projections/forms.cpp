#include <algorithm>
#include <iterator>

#include "tyr/geo/projections/form_private.h"

using namespace tyr;

namespace tyr {

// each in its own file
extern const ProjectionForm kPolarForm, kLatLonForm, kMercatorForm, kLambertForm, kOrthoForm,
    kMollweideForm, kAzimuthalForm, kSatelliteForm;
extern const ProjectionForm kXYForm, kTimeHeightForm, kXPForm, kPolarPlotForm, kPixelForm;
extern const ProjectionForm kXLogPForm, kEmagramForm, kStuveForm, kSkewTForm, kTephigramForm,
    kRotatedTephigramForm;

namespace {

constexpr double kEdge = 1.0; ///< of a sine

/// The codes that are names only.
constexpr ProjectionForm named(int code, const char *name, const char *word)
{
    return {code,    name,    {word},  WindowForm::projected,
            nullptr, nullptr, nullptr, nullptr,
            nullptr, nullptr, nullptr, nullptr};
}

constexpr ProjectionForm kGnomonicForm = named(kProjGnomonic, "gnom", "gn");
constexpr ProjectionForm kXZForm = named(kProjXZ, "xz", nullptr);
constexpr ProjectionForm kZoomForm = named(kProjZoom, "zoom", "zoom");
constexpr ProjectionForm kSizeForm = named(kProjSize, "", "size");

constexpr const ProjectionForm *kForms[] = {
    &kNoneForm,      &kPolarForm,     &kLatLonForm,
    &kMercatorForm,  &kLambertForm,   &kOrthoForm,
    &kGnomonicForm,  &kMollweideForm, &kAzimuthalForm,
    &kSatelliteForm, &kXYForm,        &kXZForm,
    &kXLogPForm,     &kPolarPlotForm, &kTimeHeightForm,
    &kXPForm,        &kSkewTForm,     &kStuveForm,
    &kEmagramForm,   &kTephigramForm, &kRotatedTephigramForm,
    &kZoomForm,      &kSizeForm,      &kPixelForm,
};

} // namespace

std::span<const ProjectionForm *const> projection_forms()
{
    return kForms;
}

const ProjectionForm *projection_form(int code)
{
    const auto *form = std::find_if(std::begin(kForms), std::end(kForms),
                                    [code](const ProjectionForm *f) { return f->code == code; });
    return form != std::end(kForms) ? *form : nullptr;
}

CurrentDomain &current_domain()
{
    static CurrentDomain state = {.form = &kNoneForm};
    return state;
}

double wrap_longitude(double lon)
{
    if (lon >= -kHalfTurn && lon <= kHalfTurn) {
        return lon;
    }
    lon = std::fmod(lon, kTurn);
    if (lon > kHalfTurn) {
        return lon - kTurn;
    }
    return lon < -kHalfTurn ? lon + kTurn : lon;
}

double asin_degrees(double value)
{
    return std::asin(std::clamp(value, -kEdge, kEdge)) * kDegreesPerRadian;
}

} // namespace tyr
