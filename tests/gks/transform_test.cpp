#include <cmath>

#include "support/kernel_plot.h"
#include "tyr/gks/gks.h"

namespace {

constexpr float kSmall = 0.001F;

/// The device of the hand-worked numbers: 640 by 512, the longer side spanning 0 to 1.
void take_screen()
{
    const float surface[4] = {0.0F, 1.0F, 0.0F, 511.0F / 639.0F};
    gset_ws_size(640, 512);
    gset_ws_window(1, surface);
}

void set_transformation(int n, float x0, float x1, float y0, float y1, float vx0, float vx1,
                        float vy0, float vy1)
{
    const float window[4] = {x0, x1, y0, y1};
    const float viewport[4] = {vx0, vx1, vy0, vy1};
    gset_window(n, window);
    gset_viewport(n, viewport);
}

TEST(Transform, UnitSquareStartsAtTheCornerAndKeepsItsShape)
{
    // letter paper: 756 by 576 points, so 575 units for the side of the square
    const KernelPlot plot(kDevicePostScript);
    EXPECT_NEAR(gwc_to_pc_x(0.0F), 0.0F, kSmall);
    EXPECT_NEAR(gwc_to_pc_x(1.0F), 575.0F, kSmall);
    EXPECT_NEAR(gwc_to_pc_y(1.0F), 575.0F, kSmall);
    EXPECT_NEAR(gwc_to_pc_y(0.25F), 143.75F, kSmall);
}

TEST(Transform, ScreenCornersAreTheCornersOfNormalisedSpace)
{
    const KernelPlot plot(kDevicePostScript);
    take_screen();
    EXPECT_NEAR(gndc_to_dc_x(0.0F), 0.0F, kSmall);
    EXPECT_NEAR(gndc_to_dc_y(511.0F / 639.0F), 0.0F, kSmall);
    EXPECT_NEAR(gndc_to_dc_x(1.0F), 639.0F, kSmall);
    EXPECT_NEAR(gndc_to_dc_y(0.0F), 511.0F, kSmall);
    EXPECT_NEAR(gndc_to_pc_y(0.0F), 0.0F, kSmall);
}

TEST(Transform, WorldGoesThroughWindowAndViewport)
{
    const KernelPlot plot(kDevicePostScript);
    take_screen();
    set_transformation(3, 10, 20, 100, 200, 0.2F, 0.7F, 0.1F, 0.4F);
    ASSERT_EQ(gsel_norm_tran(3), 0);
    // x 15 is 0.45 of 639; y 150 is 0.25 of 639 from below, 511 less that from above
    EXPECT_NEAR(gwc_to_pc_x(15.0F), 287.55F, kSmall);
    EXPECT_NEAR(gwc_to_pc_y(150.0F), 159.75F, kSmall);
    EXPECT_NEAR(gwc_to_dc_x(15.0F), 287.55F, kSmall);
    EXPECT_NEAR(gwc_to_dc_y(150.0F), 351.25F, kSmall);
    EXPECT_NEAR(gdc_to_wc_x(287.55F), 15.0F, kSmall);
    EXPECT_NEAR(gdc_to_wc_y(351.25F), 150.0F, kSmall);
    short clip[4];
    gclip_rect(clip);
    // 127.8 and 447.3 across; 255.4 and 447.1 down
    EXPECT_EQ(clip[0], 128);
    EXPECT_EQ(clip[1], 255);
    EXPECT_EQ(clip[2], 320);
    EXPECT_EQ(clip[3], 193);
}

TEST(Transform, FarPointsAreClamped)
{
    const KernelPlot plot(kDevicePostScript);
    EXPECT_EQ(gwc_to_dc_x(1.0e9F), 30000.0F);
    EXPECT_EQ(gwc_to_dc_y(1.0e9F), -30000.0F);
    EXPECT_EQ(gwc_to_pc_x(-1.0e9F), -100000.0F);
    EXPECT_EQ(gwc_to_pc_y(1.0e9F), 100000.0F);
    EXPECT_LE(std::fabs(gwc_to_pc_x(NAN)), 100000.0F);
    set_transformation(0, 5, 5, 0, 1, 0, 1, 0, 1); // a window without width
    EXPECT_LE(std::fabs(gwc_to_pc_x(5.0F)), 100000.0F);
    EXPECT_LE(std::fabs(gwc_to_dc_x(6.0F)), 30000.0F);
}

TEST(Transform, CoordinatesGoFromOneTransformationToAnother)
{
    const KernelPlot plot(kDevicePostScript);
    set_transformation(3, 10, 20, 100, 200, 0.2F, 0.7F, 0.1F, 0.4F);
    set_transformation(4, 0, 100, 0, 60, 0.2F, 0.7F, 0.1F, 0.4F);
    EXPECT_NEAR(gtran_x(3, 0, 15.0F), 0.45F, kSmall);
    EXPECT_NEAR(gtran_y(3, 0, 150.0F), 0.25F, kSmall);
    EXPECT_NEAR(gtran_x(3, 4, 15.0F), 50.0F, kSmall);
    EXPECT_NEAR(gtran_y(4, 3, 20.0F), 133.333F, kSmall);
}

TEST(Transform, OnlyNumbersZeroToFiveExist)
{
    const KernelPlot plot(kDevicePostScript);
    ASSERT_EQ(gsel_norm_tran(5), 0);
    const float rect[4] = {0, 2, 0, 2};
    float out[8];
    int err = 7;
    for (const int n : {6, -1}) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(gsel_norm_tran(n), -1);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "gsel_norm_tran: invalid transformation number: " + std::to_string(n) + "\n\n");
        testing::internal::CaptureStderr();
        EXPECT_EQ(gset_window(n, rect), -1);
        EXPECT_EQ(gset_viewport(n, rect), -1);
        testing::internal::GetCapturedStderr();
        EXPECT_EQ(ginq_norm_tran(n, &err, out), -1);
    }
    EXPECT_NEAR(gwc_to_pc_x(1.0F), 575.0F, kSmall);
    ASSERT_EQ(ginq_norm_tran(5, &err, out), 0);
    EXPECT_EQ(err, 0);
    EXPECT_EQ(out[1], 1.0F);
}

TEST(Transform, BoundingBoxDecidesWhatIsVisible)
{
    struct Case {
        const char *name;
        std::vector<float> points;
        int visible;
    };
    const Case cases[] = {
        {"inside", {0.2F, 0.2F, 0.4F, 0.3F}, 1},
        {"left of it", {-2, 0.5F, -0.1F, 0.6F}, 0},
        {"right of it", {1.1F, 0.5F, 2, 0.6F}, 0},
        {"below it", {0.5F, -2, 0.6F, -1}, 0},
        {"above it", {0.5F, 1.5F, 0.6F, 3}, 0},
        {"across it", {-1, -1, 2, 2}, 1},
        {"box across a corner, line outside", {-0.5F, 0.9F, 0.1F, 2}, 1},
        {"touching the edge", {1, 0.5F, 2, 0.5F}, 1},
    };
    const KernelPlot plot(kDevicePostScript);
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(gextent_visible(static_cast<int>(c.points.size() / 2), c.points.data()),
                  c.visible);
    }
    EXPECT_EQ(gextent_visible(0, nullptr), 0);
}

TEST(Transform, ClipFollowsTheSelectedViewportOnly)
{
    KernelPlot plot(kDevicePostScript);
    const float half[4] = {0, 0.5F, 0, 0.5F};
    const float line[4] = {0.1F, 0.1F, 0.2F, 0.2F};
    gset_viewport(2, half);
    gpolyline(2, line);
    gsel_norm_tran(2);
    gpolyline(2, line);
    const PsPage page = plot.page();
    ASSERT_EQ(page.error, "");
    ASSERT_EQ(page.strokes.size(), 2U);
    EXPECT_EQ(page.strokes[0].clip, (std::array<double, 4>{-0.1, -0.1, 575.1, 575.1}));
    EXPECT_EQ(page.strokes[1].clip, (std::array<double, 4>{-0.1, -0.1, 287.6, 287.6}));
}

TEST(Transform, ClipIsWrittenWhereItChanges)
{
    struct Case {
        const char *name;
        void (*call)(const float rect[4]);
        int clips;
    };
    const Case cases[] = {
        {"size of the surface", [](const float *) { gset_ws_size(400, 300); }, 0},
        {"redraw", [](const float *) { ginit_ws(kTranX11Redraw); }, 0},
        {"selected already", [](const float *) { gsel_norm_tran(0); }, 0},
        {"window", [](const float *rect) { gset_window(0, rect); }, 0},
        {"viewport not selected", [](const float *rect) { gset_viewport(2, rect); }, 0},
        {"viewport", [](const float *rect) { gset_viewport(0, rect); }, 1},
        {"another", [](const float *) { gsel_norm_tran(3); }, 1},
        {"shown part", [](const float *rect) { gset_ws_window(1, rect); }, 1},
    };
    const float rect[4] = {0, 0.5F, 0, 0.5F};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        KernelPlot plot(kDevicePostScript);
        c.call(rect);
        const std::string text = plot.finish();
        int clips = -1; // the first is the opening's
        for (size_t at = 0; (at = text.find("initclip\n", at)) != text.npos; at++) {
            clips++;
        }
        EXPECT_EQ(clips, c.clips);
    }
}

TEST(Transform, SizeOfTheSurfaceCanBeAsked)
{
    const KernelPlot plot(kDevicePostScript);
    MaxDisplaySize size{};
    int err = 1;
    EXPECT_EQ(ginq_max_ds(1, &err, &size), 0);
    EXPECT_EQ(err, 0);
    EXPECT_EQ(size.units, 1);
    EXPECT_EQ(size.dx, 755.0F);
    EXPECT_EQ(size.height, 576);
}

} // namespace
