#include "tyr/base/missing.h"
#include "tyr/geo/projection.h"
#include "tyr/plot/interaction.h"

using namespace tyr;

namespace {

std::vector<DomainRec> drawn;

int draw(DomainRec *domain)
{
    drawn.push_back(*domain);
    DOM_set(domain);
    return 0;
}

DomainRec section()
{
    DomainRec d;
    DOM_init(&d);
    d.proj = kProjTimeHeight;
    d.clat = -1.0F;
    d.clon = -1000.0F;
    d.dx = 14.0F;
    d.dy = 18000.0F;
    d.nx = 26;
    d.ny = 22;
    return d;
}

DomainRec map()
{
    DomainRec d;
    DOM_init(&d);
    d.proj = kProjLatLon;
    d.plat = d.clat = 40.0F;
    d.plon = d.clon = -100.0F;
    d.dx = d.dy = 2.0F;
    d.nx = 31;
    d.ny = 21;
    return d;
}

struct Interaction : ::testing::Test {
    Interaction()
    {
        drawn.clear();
        PLT_set_zoom_callback(draw);
        PLT_set_size_callback(draw);
    }
    /// The place of two data values in plot units.
    static std::pair<float, float> place(float a, float b)
    {
        float x = 0.0F;
        float y = 0.0F;
        MAP_ll_to_xy(&x, &y, a, b);
        return {x, y};
    }
    static int drag(float a0, float b0, float a1, float b1)
    {
        const auto [x0, y0] = place(a0, b0);
        const auto [x1, y1] = place(a1, b1);
        EXPECT_EQ(PLT_zoom_event("B1-P-Shft", x0, y0), 0);
        return PLT_zoom_event("B1-R", x1, y1);
    }
};

} // namespace

TEST_F(Interaction, SectionShowsTheBoxAndComesBack)
{
    DomainRec first = section();
    DOM_set(&first);
    EXPECT_EQ(drag(6.0F, 9000.0F, 2.0F, 3000.0F), 0); // from the upper right
    ASSERT_EQ(drawn.size(), 1U);
    EXPECT_NEAR(drawn[0].clat, 2.0F, 1e-3);
    EXPECT_NEAR(drawn[0].clon, 3000.0F, 1.0);
    EXPECT_NEAR(drawn[0].dx, 4.0F, 1e-3);
    EXPECT_NEAR(drawn[0].dy, 6000.0F, 1.0);
    EXPECT_EQ(drawn[0].nx, 26);
    EXPECT_EQ(drag(3.0F, 4000.0F, 4.0F, 5000.0F), 0);
    PLT_zoom_event("u-Alt", 0, 0);
    ASSERT_EQ(drawn.size(), 3U);
    EXPECT_EQ(drawn[2].clat, first.clat);
    EXPECT_EQ(drawn[2].dx, first.dx);
    EXPECT_EQ(drawn[2].dy, first.dy);
    PLT_zoom_event("u-Alt", 0, 0);
    EXPECT_EQ(drawn.size(), 3U) << "it is the first view";
}

TEST_F(Interaction, MapFitsTheBoxAboutItsCentre)
{
    DomainRec first = map();
    DOM_set(&first);
    // 20 degrees wide and 4 high: the width is what has to fit
    EXPECT_EQ(drag(38.0F, -120.0F, 42.0F, -100.0F), 0);
    ASSERT_EQ(drawn.size(), 1U);
    EXPECT_NEAR(drawn[0].clat, 40.0F, 0.01);
    EXPECT_NEAR(drawn[0].clon, -110.0F, 0.01);
    EXPECT_EQ(drawn[0].dx, drawn[0].dy);
    float window[4];
    DOM_get_window(window);
    const auto [left, low] = place(38.0F, -120.0F);
    const auto [right, high] = place(42.0F, -100.0F);
    EXPECT_NEAR(window[0], left, 0.05);
    EXPECT_NEAR(window[1], right, 0.05);
    EXPECT_LT(window[2], low);
    EXPECT_GT(window[3], high);
}

TEST_F(Interaction, OtherEvents)
{
    DomainRec first = section();
    DOM_set(&first);
    const auto [x, y] = place(2.0F, 3000.0F);
    PLT_zoom_event("B1-P-Shft", x, y);
    EXPECT_EQ(PLT_zoom_event("B1-R", x, y + 5.0F), -1) << "no width";
    PLT_zoom_event("B2-P", x, y);
    EXPECT_EQ(PLT_zoom_event("B1-R", x + 5.0F, y + 5.0F), 0);
    EXPECT_TRUE(drawn.empty()) << "another button ended the box";
    PLT_zoom_event("r-Alt", 0, 0);
    ASSERT_EQ(drawn.size(), 1U);
    EXPECT_EQ(drawn[0].dy, first.dy);
    PLT_size_event("size", 800, 600);
    EXPECT_EQ(drawn.size(), 2U);
    PLT_size_event("B1-P", 0, 0);
    PLT_zoom_event("", 0, 0);
    EXPECT_EQ(drawn.size(), 2U);
    PLT_set_zoom_callback(nullptr);
    PLT_zoom_event("r-Alt", 0, 0);
}
