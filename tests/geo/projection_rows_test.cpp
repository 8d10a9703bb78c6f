#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "tyr/base/missing.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/geo/projection_rows_private.h"

namespace {

struct Case {
    const char *name;
    int proj;
    float plat, plon, parm1, parm2;
};

// clang-format off
constexpr Case kCases[] = {
    {"polar", kProjPolar, 90, -97, kMissing, kMissing},
    {"polar of the south", kProjPolar, -90, 20, -71, kMissing},
    {"latitude and longitude", kProjLatLon, 0, 150, kMissing, kMissing},
    {"Mercator", kProjMercator, 0, -170, kMissing, kMissing},
    {"Lambert", kProjLambert, 50, -97, 30, 60},
    {"Lambert of the south", kProjLambert, -50, 25, -30, -60},
    {"orthographic", kProjOrtho, 35, -95, kMissing, kMissing},
    {"Mollweide", kProjMollweide, 0, 11, kMissing, kMissing},
};
// clang-format on

void set_domain(const Case &c)
{
    DomainRec d = {};
    d.proj = c.proj;
    d.plat = c.plat;
    d.plon = c.plon;
    d.parm1 = c.parm1;
    d.parm2 = c.parm2;
    d.parm3 = kMissing;
    d.clat = c.plat;
    d.clon = c.plon;
    d.dx = d.dy = 1.0F;
    d.nx = d.ny = 11;
    DOM_set(&d);
}

} // namespace

TEST(ProjectionRows, ComeWhereSinglePlacesCome)
{
    std::vector<float> lat, lon;
    for (float a = -90.0F; a <= 90.0F; a += 0.75F) {
        for (float b = -360.0F; b <= 360.0F; b += 1.25F) {
            lat.push_back(a);
            lon.push_back(b);
        }
    }
    for (const Case &c : kCases) {
        SCOPED_TRACE(c.name);
        set_domain(c);
        std::vector<float> x(lat.size());
        std::vector<float> y(lat.size());
        tyr::project_places(lat.data(), lon.data(), lat.size(), x.data(), y.data());
        int shown = 0;
        for (size_t i = 0; i < lat.size(); ++i) {
            float px = kMissing;
            float py = kMissing;
            const bool is_shown = MAP_ll_to_xy(&px, &py, lat[i], lon[i]) == 1;
            if (is_shown == is_missing(x[i])) { // the rim itself may fall to either side
                ASSERT_EQ(c.proj, kProjOrtho);
                const float rim = is_shown ? std::hypot(px, py) : std::hypot(x[i], y[i]);
                ASSERT_NEAR(rim, 63.712F, 0.01F) << lat[i] << " " << lon[i];
                continue;
            }
            const float most = 2e-7F * std::fmax(1.0F, std::hypot(px, py));
            ASSERT_NEAR(x[i], px, most) << lat[i] << " " << lon[i];
            ASSERT_NEAR(y[i], py, most) << lat[i] << " " << lon[i];
            shown += is_shown ? 1 : 0;
        }
        EXPECT_GT(shown, 10000);
    }
}
