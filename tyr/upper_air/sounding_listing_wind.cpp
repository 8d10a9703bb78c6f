#include <cmath>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/met/sounding_private.h"
#include "tyr/upper_air/sounding_listing.h"
#include "tyr/upper_air/sounding_listing_private.h"

namespace {

using namespace tyr;

constexpr int kHeightKind = 103;
constexpr double kMetresPerSecond = 0.5144; // in a knot
constexpr double kKnots = 1.944;            // in a metre a second

constexpr const char *kRule =
    "-------------------------------------------------------------------------------\n";

double thousandths(float x)
{
    return 1000.0 * double{x};
}

void print_helicity(const float *h)
{
    if (!is_missing(h[kHelTurning]))
        MSG_out(kListDetail, "Storm rel Dir Shear (0-3000m):    %6.1f deg\n",
                double{h[kHelTurning]});
    if (is_missing(h[kHelTotal]))
        return;
    MSG_out(kListMain, "Storm rel helicity (0-3000m) pos: %6.1f neg: %6.1f tot: %6.1f m^2/s^2\n",
            double{h[kHelPositive]}, double{h[kHelNegative]}, double{h[kHelTotal]});
    MSG_out(kListDetail, "                             ave: %6.1f 10^-3 m/s^2 rel: %6.2f\n",
            thousandths(h[kHelMean]), double{h[kHelRelative]});
    MSG_out(kListVariable, "Storm rel vorticity (0-3000m) horiz: %6.1f stream: %6.1f 10^-3/s\n",
            thousandths(h[kHelVorticity]), thousandths(h[kHelStreamwise]));
}

// One row's layer: what the wind does from the surface to a depth above it.
struct Layer {
    float mean[2] = {kMissing, kMissing};
    float shear[kShearResults] = {kMissing, kMissing};
    float helicity[kHelicityResults];

    Layer(const SoundingStore &s, float depth)
    {
        const float bottom = s.surface_height;
        const float top = bottom + depth;
        const float storm[2] = {s.storm_motion.dir, s.storm_motion.spd};
        MET_mean_wind(s.winds, s.num_winds, kHeightKind, mean, bottom, top);
        MET_shear(s.winds, s.num_winds, kHeightKind, storm, shear, bottom, top);
        MET_helicity(s.winds, s.num_winds, kHeightKind, storm, helicity, bottom, top);
    }
};

// The inflow in knots; a storm without a motion has none.
ListedWind inflow(const Layer &layer, const StoredWind &storm)
{
    const auto metric = [](float dir, float spd) {
        return listed_wind(dir,
                           is_missing(spd) ? kMissing : static_cast<float>(spd * kMetresPerSecond));
    };
    ListedWind w =
        relative_wind(metric(layer.mean[0], layer.mean[1]), metric(storm.dir, storm.spd));
    if (w.is_there())
        w.spd = static_cast<float>(w.spd * kKnots);
    return w;
}

void print_row_winds(const Layer &layer, const StoredWind &storm)
{
    if (is_missing(layer.mean[0]) || is_missing(layer.mean[1])) {
        MSG_out(kListLevel, " NO DATA       | ");
        return;
    }
    MSG_out(kListLevel, "%3.0f %3.0f ", double{layer.mean[0]}, double{layer.mean[1]});
    const ListedWind w = inflow(layer, storm);
    if (w.is_there())
        MSG_out(kListLevel, "%3.0f %3.0f| ", double{w.dir}, double{w.spd});
    else
        MSG_out(kListLevel, "       | ");
}

void print_row(const SoundingStore &s, float depth, bool is_high)
{
    const Layer layer(s, depth);
    const float *h = layer.helicity;
    MSG_out(kListLevel, "%4.0f  ", double{depth});
    print_row_winds(layer, s.storm_motion);
    if (is_missing(layer.shear[0]))
        MSG_out(kListLevel, "%14s|", "");
    else
        MSG_out(kListLevel, "%4.1f %4.1f %4.1f|", thousandths(layer.shear[0]),
                thousandths(layer.shear[1]), thousandths(layer.shear[0] + layer.shear[1]));
    if (is_missing(h[kHelTotal])) {
        MSG_out(kListLevel, "                              |\n");
        return;
    }
    MSG_out(kListLevel, "%5.1f%6.1f%6.1f ", double{h[kHelPositive]}, double{h[kHelNegative]},
            double{h[kHelTotal]});
    const char *gap = is_high ? " " : "";
    MSG_out(kListLevel, "%6.1f %5.2f|%s", thousandths(h[kHelMean]), double{h[kHelRelative]}, gap);
    if (is_high)
        MSG_out(kListLevel, "%4.1f %4.1f\n", thousandths(h[kHelVorticity]),
                thousandths(h[kHelStreamwise]));
    else
        MSG_out(kListLevel, "%5.1f%5.1f\n", thousandths(h[kHelVorticity]),
                thousandths(h[kHelStreamwise]));
}

} // namespace

void THERM_print_winds()
{
    const SoundingStore &s = THERM_store();
    const SoundingResults &r = THERM_results();
    MSG_out(kListMain, "\nWind Parameters\n");
    if (!is_missing(s.mean_wind.dir))
        MSG_out(kListMain, "Mean winds (0-6000m):           %6.1f at %6.1f knts\n",
                double{s.mean_wind.dir}, double{s.mean_wind.spd});
    if (!is_missing(s.storm_motion.dir))
        MSG_out(kListMain, "Storm direction:                %6.1f at %6.1f knts\n",
                double{s.storm_motion.dir}, double{s.storm_motion.spd});
    if (!is_missing(r.shear[0]))
        MSG_out(
            kListVariable, "Shear (0-3000m)              pos: %6.1f neg: %6.1f tot: %6.1f 10-3/s\n",
            thousandths(r.shear[0]), thousandths(r.shear[1]), thousandths(r.shear[0] + r.shear[1]));
    print_helicity(r.helicity);
    if (!is_missing(r.energy_helicity))
        MSG_out(kListMain, "Energy-Hel index:       %7.2f\n", double{r.energy_helicity});
    list_pause(kListMain);
    if (!is_missing(r.richardson)) {
        MSG_out(kListMain, "Bulk Rich Number:       %7.2f\n", double{r.richardson});
        MSG_out(kListVariable, "Bulk Shear:             %7.2f m/s\n", double{r.bulk_shear});
    }
    list_pause(kListMain);
}

void THERM_print_storm()
{
    constexpr float kLowRows[] = {500.0F, 1000.0F, 1500.0F, 2000.0F, 2500.0F, 3000.0F};
    constexpr float kHighRows[] = {4000.0F, 5000.0F, 6000.0F};
    const SoundingStore &s = THERM_store();
    MSG_out(kListLevel, "\nStorm Parameters\n%s", kRule);
    MSG_out(kListLevel,
            "Depth  Mean    Inflow|    Shear      |           Helicity           | Vorticity\n");
    MSG_out(kListLevel,
            " AGL  Dir Spd Dir Spd|  Pos  Neg  Tot|  Pos   Neg   Tot   Ave   Rel |  Hor Strm\n");
    MSG_out(kListLevel,
            "  m       knt     knt|     10^-3/s   |       m^2/s^2     m/s^2      | 10^-3/s\n");
    MSG_out(kListLevel, "%s", kRule);
    if (is_missing(s.surface_height))
        return;
    for (const float depth : kLowRows)
        print_row(s, depth, false);
    for (const float depth : kHighRows)
        print_row(s, depth, true);
}
