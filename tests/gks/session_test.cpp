#include <cmath>

#include "support/kernel_plot.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"

namespace {

constexpr float kSmall = 1.0e-4F;

TEST(Session, DeviceWordsGoByTheirFirstLetter)
{
    struct Case {
        const char *word;
        int device;
    };
    const Case cases[] = {
        {"d", 1}, {"postscript", 4}, {"P", 4}, {"h", 5}, {"q", 5}, {"Quick", 5}, {"H", 5},
        {"m", 3}, {"META", 3},       {"w", 6}, {"W", 6}, {"x", 1}, {"", 1},      {nullptr, 1},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(GPH_device_code(c.word), c.device) << (c.word ? c.word : "null");
    }
}

TEST(Session, FitKeepsTheShapeAndTheCentre)
{
    struct Case {
        const char *name;
        float rect[4], aw, ah;
        float expected[4];
    };
    const Case cases[] = {
        {"square in square", {0, 1, 0, 1}, 1, 1, {0, 1, 0, 1}},
        {"twice as wide", {0, 1, 0, 1}, 2, 1, {0, 1, 0.25F, 0.75F}},
        {"twice as high", {0, 1, 0, 1}, 1, 2, {0.25F, 0.75F, 0, 1}},
        {"off centre", {1, 5, 2, 4}, 1, 1, {2, 4, 2, 4}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        float rect[4] = {c.rect[0], c.rect[1], c.rect[2], c.rect[3]};
        GPH_fit_aspect(rect, c.aw, c.ah);
        for (int i = 0; i < 4; i++) {
            EXPECT_NEAR(rect[i], c.expected[i], kSmall) << i;
        }
    }
}

/// Opens a session on a file of its own.
class Session {
  public:
    Session(const std::string &words, float aspect, const float margins[4])
    {
        RES_put("file_path", TYR_SOURCE_DIR "/data");
        RES_put("device", ("p," + dir_.file("plot.ps") + words).c_str());
        std::copy(margins, margins + 4, area);
        GPH_open(&ws, &device, area, aspect);
    }
    ~Session() { GPH_end(ws); }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    int ws = 0;
    int device = 0;
    float area[4];

  private:
    TempDir dir_;
};

TEST(Session, PlotAreaLiesWithinTheMargins)
{
    const float margins[4] = {0.1F, 0.1F, 0.2F, 0.2F};
    {
        // letter paper: 755 by 575, aspect_y 0.76159; no aspect: the shape of the surface.
        // within 0.8 by 0.6 * 0.76159 the height binds: width 0.6, centred
        const Session session("", 0.0F, margins);
        EXPECT_EQ(session.ws, 1);
        EXPECT_EQ(session.device, kDevicePostScript);
        EXPECT_NEAR(session.area[0], 0.2F, kSmall);
        EXPECT_NEAR(session.area[1], 0.8F, kSmall);
        EXPECT_NEAR(session.area[2], 0.15232F, kSmall);
        EXPECT_NEAR(session.area[3], 0.60927F, kSmall);
        float area[4];
        for (const int n : {2, 3}) {
            GPH_get_viewport(n, area);
            EXPECT_NEAR(area[1], 0.8F, kSmall);
            GPH_get_window(n, area);
            EXPECT_NEAR(area[3], 0.60927F, kSmall);
        }
        GPH_get_viewport(1, area);
        EXPECT_NEAR(area[1], 1.0F, kSmall);
        EXPECT_NEAR(area[3], 575.0F / 755.0F, kSmall);
        EXPECT_NEAR(GPH_get_aspect_y(), 575.0F / 755.0F, kSmall);
    }
    {
        // a square sheet of 8.5 inches, 576 points: an aspect of 2 takes the full width
        const float none[4] = {0, 0, 0, 0};
        const Session session(",sz=8.5x8.5", 2.0F, none);
        EXPECT_NEAR(session.area[0], 0.0F, kSmall);
        EXPECT_NEAR(session.area[1], 1.0F, kSmall);
        EXPECT_NEAR(session.area[2], 0.25F, kSmall);
        EXPECT_NEAR(session.area[3], 0.75F, kSmall);
    }
}

TEST(Session, ViewFractionNarrowsTheArea)
{
    GPH_set_view_frac(0.5F, 0.5F, 0.5F, 0.5F);
    const float none[4] = {0, 0, 0, 0};
    const Session session("", 0.0F, none);
    EXPECT_NEAR(session.area[0], 0.5F, kSmall);
    EXPECT_NEAR(session.area[1], 1.0F, kSmall);
    EXPECT_NEAR(session.area[2], 0.5F * 575.0F / 755.0F, kSmall);
    float frac[4];
    GPH_get_view_frac(frac);
    EXPECT_NEAR(frac[0], 0.5F, kSmall);
    EXPECT_NEAR(frac[3], 575.0F / 755.0F, kSmall);
}

TEST(Session, NameWithoutTitleLosesItsPlus)
{
    RES_put("name", "+prog");
    const float none[4] = {0, 0, 0, 0};
    const Session session("", 0.0F, none);
    EXPECT_STREQ(ginq_title(), "prog");
    EXPECT_STREQ(ginq_app_name(), "+prog");
}

TEST(Session, TitleWinsOverName)
{
    RES_put("name", "+prog");
    RES_put("title", "A title");
    const float none[4] = {0, 0, 0, 0};
    const Session session("", 0.0F, none);
    EXPECT_STREQ(ginq_title(), "A title");
}

TEST(Session, LongNamesAreCut)
{
    gset_app_name(std::string(100, 'a').c_str());
    gset_title(std::string(100, 't').c_str());
    EXPECT_EQ(std::string(ginq_app_name()), std::string(31, 'a'));
    EXPECT_EQ(std::string(ginq_title()), std::string(59, 't'));
}

TEST(Session, EndsTwiceWithoutHarm)
{
    const float none[4] = {0, 0, 0, 0};
    const Session session("", 0.0F, none);
    EXPECT_EQ(GPH_end(1), 0);
    EXPECT_EQ(GPH_end(1), -1);
    EXPECT_EQ(ginq_open(), 0);
    EXPECT_EQ(PRM_get(kPrmDevice), kDevicePostScript);
}

TEST(SessionDeathTest, WithoutADeviceTheProgramEnds)
{
    const TempDir dir;
    const std::string params = dir.path(); // a folder can't be written
    int ws = 0;
    int device = kDevicePostScript;
    EXPECT_EXIT(GPH_begin(&ws, params.c_str(), &device), testing::ExitedWithCode(4),
                "gopen_ws: unable to open postscript file(.|\n)*"
                "GPH_begin: Error opening workstation\n");
}

TEST(Session, ReportsAreCutAtTheLine)
{
    testing::internal::CaptureStderr();
    gerror("routine", "%s\n", std::string(200, 'x').c_str());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    gopen_gks(nullptr, 0);
    testing::internal::CaptureStderr();
    gerror("routine", "%s\n", std::string(200, 'x').c_str());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "routine: " + std::string(79, 'x') + "\n");
    gclose_gks();
    EXPECT_EQ(gopen_gks("/dev/null/nothing", 0), 1);
}

TEST(Colour, RepresentationIsKeptByIndex)
{
    const KernelPlot plot(kDevicePostScript);
    const float rgb[3] = {0.2F, 0.4F, 0.6F};
    EXPECT_EQ(gset_colr_rep(1, 5, rgb), 0);
    EXPECT_EQ(gset_colr_rep(1, 501, rgb), 0);
    int r = 0;
    int g = 0;
    int b = 0;
    ginq_color255(5, &r, &g, &b);
    EXPECT_EQ(r, 51);
    EXPECT_EQ(g, 102);
    EXPECT_EQ(b, 153);
    EXPECT_EQ(gcolor_same(5, 0, 0.2F, 0.4F, 0.609F), 1);
    EXPECT_EQ(gcolor_same(5, 0, 0.2F, 0.406F, 0.606F), 0);
    float red = 0;
    float green = 0;
    float blue = 0;
    ginq_color(-1, &red, &green, &blue); // paper is white
    EXPECT_EQ(red + green + blue, 3.0F);
    ginq_color(501, &red, &green, &blue);
    EXPECT_EQ(red + green + blue, 0.0F);
}

TEST(Colour, NewColoursFillTheTableAndNoMore)
{
    const KernelPlot plot(kDevicePostScript);
    gset_color(200, 0.5F, 0.5F, 0.5F);
    EXPECT_EQ(gset_color(-1, 0.123F, 0.456F, 0.789F), 1);
    EXPECT_EQ(gcolor_same(201, 0, 0.123F, 0.456F, 0.789F), 1);
    int added = 0;
    for (int i = 0; i < 400; i++) {
        const auto row = static_cast<float>(i / 20);
        const auto column = static_cast<float>(i % 20);
        added += gset_color(-1, row / 21.0F, 0.913F, column / 21.0F) == 1 ? 1 : 0;
    }
    EXPECT_EQ(added, 54); // 202 to 255
    float red = 0;
    float green = 0;
    float blue = 0;
    ginq_color(-1, &red, &green, &blue); // the background's entry was never taken
    EXPECT_EQ(red + green + blue, 3.0F);
    EXPECT_EQ(gset_color(-1, 0.33F, 0.77F, 0.11F), -1);
}

} // namespace
