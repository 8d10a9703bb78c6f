#include <cmath>

#include "geo/projection_places.h"
#include "tyr/base/missing.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"

using namespace tyr;

namespace {

DomainRec domain_of(const ProjectionCase &c)
{
    DomainRec d;
    DOM_init(&d);
    d.proj = c.proj;
    d.plat = c.plat;
    d.plon = c.plon;
    d.parm1 = c.parm1;
    d.parm2 = c.parm2;
    d.ellipsoid = c.ellipsoid;
    d.clat = c.plat;
    d.clon = c.plon;
    d.nx = d.ny = 25;
    d.dx = d.dy = 1.0F;
    return d;
}

/// Sets a domain of a projection with its pole, by default in the middle of a 25 by 17 grid.
void set_map(int proj, float plat, float plon, float parm1 = kMissing, float parm2 = kMissing)
{
    const DomainRec d = domain_of({"", proj, plat, plon, parm1, parm2, 0, {}});
    DOM_set(&d);
}

struct Place {
    float x = 0.0F, y = 0.0F;
    int result = 0;
};

Place forward(float lat, float lon)
{
    Place p;
    p.result = MAP_ll_to_xy(&p.x, &p.y, lat, lon);
    return p;
}

Place inverse(float x, float y)
{
    Place p;
    p.result = MAP_xy_to_ll(&p.x, &p.y, x, y);
    return p;
}

/// Degrees between two places on a sphere, by the haversine formula.
double distance(double lat1, double lon1, double lat2, double lon2)
{
    constexpr double kRadian = 3.14159265358979 / 180.0;
    const double a = std::sin((lat2 - lat1) * kRadian / 2.0);
    const double b = std::sin((lon2 - lon1) * kRadian / 2.0);
    const double h = a * a + std::cos(lat1 * kRadian) * std::cos(lat2 * kRadian) * b * b;
    return 2.0 * std::asin(std::sqrt(std::min(h, 1.0))) / kRadian;
}

TEST(Projection, PutsPlacesWhereProjPutsThem)
{
    for (const ProjectionCase &c : projection_cases()) {
        const DomainRec d = domain_of(c);
        DOM_set(&d);
        for (const PlaceOnMap &place : c.places) {
            SCOPED_TRACE(std::string(c.name) + ", " + std::to_string(place.lat) + ", " +
                         std::to_string(place.lon));
            const Place p = forward(place.lat, place.lon);
            ASSERT_EQ(p.result, place.x == kHidden ? 0 : 1);
            if (p.result == 0) {
                EXPECT_TRUE(is_missing(p.x) && is_missing(p.y));
                continue;
            }
            const float far = std::hypot(place.x, place.y);
            // a float, and proj's own precision at the poles of the Mollweide map
            EXPECT_NEAR(p.x, place.x, 1e-3 + 2e-6 * far);
            EXPECT_NEAR(p.y, place.y, 1e-3 + 2e-6 * far);
        }
    }
}

TEST(Projection, GivesPlacesBack)
{
    for (const ProjectionCase &c : projection_cases()) {
        const DomainRec d = domain_of(c);
        DOM_set(&d);
        // a sphere's view is taken back on the equatorial radius
        const double tolerance = c.proj == kProjSatellite && c.ellipsoid == 0 ? 3.5
                                 : c.proj == kProjOrtho                       ? 0.1
                                                                              : 0.01;
        for (const PlaceOnMap &place : c.places) {
            SCOPED_TRACE(std::string(c.name) + ", " + std::to_string(place.lat) + ", " +
                         std::to_string(place.lon));
            const Place p = forward(place.lat, place.lon);
            if (p.result == 0) {
                continue;
            }
            const Place back = inverse(p.x, p.y);
            if (is_missing(back.x)) {
                // at the limb of a view the way back may just miss
                EXPECT_TRUE(c.proj == kProjSatellite || c.proj == kProjOrtho);
                continue;
            }
            EXPECT_LT(distance(place.lat, place.lon, back.x, back.y), tolerance);
        }
    }
}

TEST(Projection, HoldsWhatLiesTooFarOut)
{
    set_map(kProjPolar, 90.0F, 0.0F);
    EXPECT_FLOAT_EQ(forward(-80.0F, 20.0F).y, forward(-75.0F, 20.0F).y);
    set_map(kProjPolar, -90.0F, 0.0F);
    EXPECT_FLOAT_EQ(forward(80.0F, 20.0F).x, forward(75.0F, 20.0F).x);
    set_map(kProjMercator, 0.0F, 0.0F);
    EXPECT_FLOAT_EQ(forward(90.0F, 0.0F).y, forward(89.9F, 0.0F).y);
    EXPECT_NEAR(forward(90.0F, 0.0F).y, 63.7122 * std::log(std::tan(1.5699235)), 0.05);
    set_map(kProjLambert, 50.0F, 0.0F);
    EXPECT_FLOAT_EQ(forward(-90.0F, 30.0F).x, forward(-89.0F, 30.0F).x);
}

TEST(Projection, WrapsLongitudes)
{
    for (const int proj : {1, 2, 3, 4, 5, 7, 8, 9}) {
        SCOPED_TRACE(proj);
        set_map(proj, proj == kProjPolar ? 90.0F : 0.0F, -170.0F);
        for (const float lon : {-190.0F, -550.0F, 530.0F}) {
            EXPECT_NEAR(forward(10.0F, lon).x, forward(10.0F, 170.0F).x, 1e-3) << lon;
        }
    }
    set_map(kProjLatLon, 0.0F, 150.0F);
    EXPECT_FLOAT_EQ(forward(5.0F, -170.0F).x, 40.0F);
    EXPECT_FLOAT_EQ(inverse(40.0F, 5.0F).y, -170.0F);
}

TEST(Projection, SatelliteViewsWithoutScanAnglesAreTangents)
{
    // sphere: point (10 N, 20 E of the point below), R 63.7122, H 421.61:
    // f = H - R cos 10 cos 20 = 362.6503, x = R sin 20 cos 10 / f * H = 24.9485,
    // y = R sin 10 / hypot(21.4597, f) * H = 12.8396
    set_map(kProjSatellite, 0.0F, 0.0F);
    Place p = forward(10.0F, 20.0F);
    EXPECT_NEAR(p.x, 24.9485, 2e-3);
    EXPECT_NEAR(p.y, 12.8396, 2e-3);
    // a nearer satellite, given by its distance, sees less
    set_map(kProjSatellite, 0.0F, 0.0F, 100.0F);
    EXPECT_EQ(forward(0.0F, 50.0F).result, 1);
    EXPECT_EQ(forward(0.0F, 51.0F).result, 0) << "acos(0.637122) = 50.42";
    // the limb: acos(R / H) = 81.31
    set_map(kProjSatellite, 0.0F, 0.0F);
    EXPECT_EQ(forward(0.0F, 81.2F).result, 1);
    EXPECT_EQ(forward(0.0F, 81.4F).result, 0);
    EXPECT_TRUE(is_missing(inverse(100.0F, 0.0F).x));
}

TEST(Projection, AzimuthalCentreIsGivenWithResultZero)
{
    set_map(kProjLambertAzimuthal, 40.0F, 130.0F);
    const Place p = inverse(0.0F, 0.0F);
    EXPECT_EQ(p.result, 0);
    EXPECT_FLOAT_EQ(p.x, 40.0F);
    EXPECT_FLOAT_EQ(p.y, 130.0F);
    EXPECT_EQ(inverse(128.0F, 0.0F).result, 0);
    EXPECT_TRUE(is_missing(inverse(128.0F, 0.0F).x)) << "beyond 2 R";
}

TEST(Projection, UnshowableDomainsGiveNoPlace)
{
    // a cone with opposite standard latitudes is none
    set_map(kProjLambert, 10.0F, 0.0F, 30.0F, -30.0F);
    EXPECT_EQ(forward(20.0F, 10.0F).result, 0);
    DOM_set(nullptr);
    const Place p = forward(20.0F, 10.0F);
    EXPECT_EQ(p.x, 20.0F);
    EXPECT_EQ(p.y, 10.0F);
}

struct PlotSpaceCase {
    const char *name;
    int proj;
    float a, b, x, y;
};

TEST(Projection, PlotSpaces)
{
    // window -1 to 24 and bottom -1000 in the linear spaces: 14 columns and 18000 m over 25 by 21
    const PlotSpaceCase cases[] = {
        {"section", kProjTimeHeight, 6.0F, 8000.0F, 11.5F, -989.5F},
        {"x, y", kProjXY, -1.0F, 17000.0F, -1.0F, -979.0F},
        {"pressure downward", kProjXP, 6.0F, -1000.0F, 11.5F, 1000.0F + 2000.0F * 21.0F / 18000.0F},
        {"logarithm", kProjXLogP, 3.0F, 500.0F, 3.0F, -6.214608F},
        {"emagram", kProjEmagram, -20.0F, 1000.0F, -20.0F, -6.907755F},
        {"power", kProjStuve, 3.0F, 500.0F, 3.0F, -5.903826F},
        {"hodograph", kProjPolarPlot, 90.0F, 30.0F, 30.0F, 0.0F},
        {"hodograph, second quadrant", kProjPolarPlot, 300.0F, 10.0F, -8.660254F, 5.0F},
        {"image", kProjPixel, 12.0F, 34.0F, 12.0F, -34.0F},
    };
    for (const PlotSpaceCase &c : cases) {
        SCOPED_TRACE(c.name);
        DomainRec d;
        DOM_init(&d);
        d.proj = c.proj;
        d.clat = -1.0F;
        d.clon = -1000.0F;
        d.dx = 14.0F;
        d.dy = 18000.0F;
        d.nx = 25;
        d.ny = 21;
        DOM_set(&d);
        const Place p = forward(c.a, c.b);
        EXPECT_NEAR(p.x, c.x, 1e-3);
        EXPECT_NEAR(p.y, c.y, 1e-3);
        const Place back = inverse(p.x, p.y);
        EXPECT_NEAR(back.x, c.a, 1e-3 * std::fabs(c.a) + 1e-4);
        EXPECT_NEAR(back.y, c.b, 1e-3 * std::fabs(c.b) + 1e-3);
    }
}

/// Directions follow a small step on the earth: where a wind from `direction` comes from on the
/// plot is the way from the point to a point a little that way.
TEST(Projection, DirectionsTurnWithTheMap)
{
    const ProjectionCase cases[] = {
        {"polar north", kProjPolar, 90.0F, -97.0F, kMissing, kMissing, 0, {}},
        {"polar south", kProjPolar, -90.0F, 20.0F, kMissing, kMissing, 0, {}},
        {"cone north", kProjLambert, 50.0F, -97.0F, kMissing, kMissing, 0, {}},
        {"cone south", kProjLambert, -50.0F, -60.0F, kMissing, kMissing, 0, {}},
        {"satellite", kProjSatellite, 0.0F, -75.0F, kMissing, kMissing, 0, {}},
        {"Mercator", kProjMercator, 0.0F, 0.0F, kMissing, kMissing, 0, {}},
    };
    constexpr float kRadian = 0.0174532925F;
    for (const ProjectionCase &c : cases) {
        const DomainRec d = domain_of(c);
        DOM_set(&d);
        const float lat = c.plat < 0.0F ? -38.0F : 38.0F;
        const float lon = c.plon + 25.0F;
        for (const float direction : {0.0F, 30.0F, 135.0F, 270.0F}) {
            SCOPED_TRACE(std::string(c.name) + " " + std::to_string(direction));
            const Place from = forward(lat, lon);
            const Place to =
                forward(lat + 0.2F * std::cos(direction * kRadian),
                        lon + 0.2F * std::sin(direction * kRadian) / std::cos(lat * kRadian));
            const double expected = std::atan2(to.x - from.x, to.y - from.y) / kRadian;
            const double turned = MAP_rotate_dir(direction, from.x, from.y);
            EXPECT_NEAR(std::remainder(turned - expected, 360.0), 0.0,
                        c.proj == kProjSatellite ? 2.0 : 0.5);
        }
    }
    set_map(kProjPolar, 90.0F, -97.0F);
    EXPECT_FLOAT_EQ(MAP_rotate_dir(10.0F, 0.0F, 0.0F), 107.0F);
    set_map(kProjSatellite, 0.0F, 0.0F);
    EXPECT_TRUE(is_missing(MAP_rotate_dir(10.0F, 200.0F, 0.0F)));
}

TEST(Projection, ScaleFactors)
{
    set_map(kProjPolar, 90.0F, 0.0F);
    EXPECT_NEAR(MAP_scale_factor(60.0F, 0.0F), 1.0, 1e-4);
    EXPECT_NEAR(MAP_scale_factor(30.0F, 0.0F), 1.244, 1e-4);
    set_map(kProjLambert, 40.0F, 0.0F);
    EXPECT_EQ(MAP_scale_factor(30.0F, 0.0F), 1.0F);
    set_map(kProjMercator, 0.0F, 0.0F);
    EXPECT_EQ(MAP_scale_factor(30.0F, 0.0F), 1.0F);
}

TEST(Domain, WindowsLieAroundTheirCentres)
{
    DomainRec d;
    DOM_init(&d);
    d.proj = kProjPolar;
    d.plon = d.clon = -97.0F;
    d.clat = 39.0F;
    d.nx = 25;
    d.ny = 17;
    d.dx = d.dy = 2.3F;
    EXPECT_EQ(DOM_set(&d), 0);
    float w[4];
    DOM_get_window(w);
    // r = 63.7122 * (1 + sin 60) * tan(25.5) = 56.7067
    EXPECT_NEAR(w[0], -27.6, 1e-3);
    EXPECT_NEAR(w[1], 27.6, 1e-3);
    EXPECT_NEAR(w[2], -56.7067 - 18.4, 2e-3);
    EXPECT_NEAR(w[3], -56.7067 + 18.4, 2e-3);
    EXPECT_EQ(DOM_get(nullptr)->plat, 39.0F) << "a pole that isn't given is the centre";
    EXPECT_NEAR(DOM_aspect(&d), 1.5, 1e-6);
    EXPECT_EQ(DOM_near_window(34.4F, -56.0F), 1) << "three cells beyond the edge";
    EXPECT_EQ(DOM_near_window(34.6F, -56.0F), 0);
    DomainRec same = *DOM_get(nullptr);
    EXPECT_EQ(DOM_equal(&d, &same), 1);
    same.parm1 = 45.0F;
    EXPECT_EQ(DOM_equal(&d, &same), 0);
    d.ny = 1;
    EXPECT_EQ(DOM_aspect(&d), 1.0F);
    EXPECT_EQ(DOM_set(nullptr), -1);
    EXPECT_EQ(DOM_get_proj(), kProjNone);
}

} // namespace
