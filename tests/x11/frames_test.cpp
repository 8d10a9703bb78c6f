#include <cstdio>

#include <sys/wait.h>
#include <unistd.h>

#include "support/screen.h"
#include "tyr/base/res.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/gks/state_private.h"
#include "tyr/x11/frames.h"
#include "tyr/x11/loop_private.h"
#include "tyr/x11/x11_events.h"
#include "tyr/x11/x11_state_private.h"
#include "tyr/x11/x11_window.h"
#include "tyr/x11/zoom.h"

using namespace tyr;

namespace {

/// A window of 64 by 48 pixels; pictures are told apart by their colour.
struct Frames : ::testing::Test {
    VirtualScreen screen;
    bool is_open = false;
    Frames()
    {
        if (!screen.is_there()) {
            return;
        }
        RES_put("geometry", "64x48");
        RES_put("file_path", TYR_SOURCE_DIR "/data");
        gopen_gks(nullptr, 0);
        is_open = gopen_ws(1, "", kDeviceDisplay) == 0;
        gset_title("Loop");
        gset_frame_title(1);
    }
    ~Frames() override { gclose_ws(1); }

    /// Fills the draw target with a colour, 0xRRGGBB.
    static void paint(unsigned colour)
    {
        const auto part = [&](int shift) {
            return static_cast<float>(colour >> shift & 255U) / 255.0F;
        };
        gsel_norm_tran(0);
        GPH_set_colour(1, part(16), part(8), part(0));
        gset_fill_colr_ind(1);
        const float all[8] = {-1, -1, 2, -1, 2, 2, -1, 2};
        gfill_area(4, all);
    }
    /// n frames, frame i of colour i + 1; the backing pixmap is of colour 99.
    static void make_frames(int n)
    {
        for (int i = 0; i < n; i++) {
            gselect_frame(gnew_frame(-1));
            paint(static_cast<unsigned>(i + 1));
        }
        gselect_frame(kBackingPixmap);
        paint(99);
    }
    static unsigned colour_of(int frame)
    {
        gselect_frame(frame);
        const unsigned colour = grab_picture().at(5, 5);
        gselect_frame(kBackingPixmap);
        return colour;
    }
    static std::string window_name()
    {
        char *name = nullptr;
        XFetchName(x11().display, x11().window, &name);
        const std::string text = name != nullptr ? name : "";
        XFree(name);
        return text;
    }
};

} // namespace

TEST(LoopingWindow, FiveClientsInARowLoseNothing)
{
    const VirtualScreen screen;
    NEED_SCREEN(screen);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t owner = fork();
    if (owner == 0) {
        RES_put("geometry", "64x48");
        RES_put("file_path", TYR_SOURCE_DIR "/data");
        gopen_gks(nullptr, 0);
        gopen_ws(1, "", kDeviceDisplay);
        Frames::paint(1);
        gsync();
        dprintf(ends[1], "+%lu:%lu:64x48:%lu\n", x11().window, x11().pixmap, x11().default_map);
        gwait();
        dprintf(ends[1], "%d", ginq_frames());
        for (int i = 0; i < ginq_frames(); i++) {
            dprintf(ends[1], " %u", Frames::colour_of(i));
        }
        _exit(0);
    }
    close(ends[1]);
    FILE *answers = fdopen(ends[0], "r");
    char id[100] = "";
    ASSERT_EQ(fscanf(answers, "%99s", id), 1);
    for (unsigned client = 2; client <= 6; client++) {
        gopen_gks(nullptr, 0);
        kernel().ws.wish = 2;
        ASSERT_EQ(gopen_ws(1, (std::string(",") + id).c_str(), kDeviceExtern), 0);
        Frames::paint(client);
        if (client == 6) {
            kernel().ws.wish = 9; // ends the owner
        }
        gclose_ws(1);
    }
    char colours[200] = "";
    EXPECT_NE(fgets(colours, sizeof colours, answers), nullptr); // the rest of the line of the id
    EXPECT_NE(fgets(colours, sizeof colours, answers), nullptr);
    EXPECT_STREQ(colours, "5 2 3 4 5 6") << "the first draws on the picture that stood there";
    fclose(answers);
    kernel().ws.wish = 0;
    waitpid(owner, nullptr, 0);
}

TEST_F(Frames, AreShownAndNamed)
{
    NEED_SCREEN(screen);
    ASSERT_TRUE(is_open);
    EXPECT_EQ(gnext_frame(0), -1) << "none";
    make_frames(3);
    EXPECT_EQ(ginq_frames(), 3);
    EXPECT_EQ(ginq_cur_frame(), -1);
    gshow_frame(2);
    EXPECT_EQ(colour_of(kBackingPixmap), 3U);
    EXPECT_EQ(window_name(), "Loop [2]");
    gshow_frame(-1);
    EXPECT_EQ(ginq_cur_frame(), 2) << "the current one, not the last";
    gset_frame_title(0);
    gset_title_suffix("");
    gshow_frame(0);
    EXPECT_EQ(window_name(), "Loop");
    EXPECT_EQ(ginq_recording(), 0) << "a frame's picture is another program's";
}

TEST_F(Frames, NextGoesRound)
{
    NEED_SCREEN(screen);
    ASSERT_TRUE(is_open);
    make_frames(1);
    gshow_frame(0);
    EXPECT_EQ(gnext_frame(0), 0) << "a loop of one";
    make_frames(2);
    const struct {
        int current, step, next;
    } cases[] = {
        {0, 0, 1}, {2, 0, 0}, {1, -1, 0}, {0, -1, 2}, {2, 1, 0},
    };
    for (const auto &c : cases) {
        gshow_frame(c.current);
        EXPECT_EQ(gnext_frame(c.step), c.next) << c.current << " " << c.step;
    }
}

TEST_F(Frames, DelaysAreOfAllButTheLast)
{
    NEED_SCREEN(screen);
    ASSERT_TRUE(is_open);
    make_frames(3);
    EXPECT_FLOAT_EQ(ginq_frame_dwell(0), 0.5F);
    EXPECT_FLOAT_EQ(ginq_frame_dwell(1), 0.5F);
    EXPECT_FLOAT_EQ(ginq_frame_dwell(kLastFrame), 1.0F);
    gloop_delay(-0.45F);
    EXPECT_NEAR(ginq_frame_dwell(1), 0.05F, 1e-6);
    gloop_delay(-0.1F);
    EXPECT_EQ(ginq_loop_delay(), 0.0F);
    EXPECT_EQ(ginq_frame_dwell(0), 0.0F);
    EXPECT_FLOAT_EQ(ginq_frame_dwell(2), 1.0F);
}

TEST_F(Frames, DeletingMovesTheLaterOnesDown)
{
    NEED_SCREEN(screen);
    ASSERT_TRUE(is_open);
    make_frames(4);
    gshow_frame(1);
    EXPECT_EQ(gdelete_frame(kCurrentFrame), 1);
    EXPECT_EQ(ginq_cur_frame(), 1);
    EXPECT_EQ(colour_of(kBackingPixmap), 3U) << "the one that took its number is shown";
    EXPECT_EQ(gdelete_frame(kLastFrame), 1);
    EXPECT_EQ(colour_of(0), 1U);
    EXPECT_EQ(colour_of(1), 3U);
    EXPECT_FLOAT_EQ(ginq_frame_dwell(1), 1.0F) << "of the new last one";
    EXPECT_EQ(gdelete_frame(128), 0);
    EXPECT_EQ(gdelete_frame(7), 1);
    EXPECT_EQ(ginq_frames(), 2);
    gdelete_frame(1);
    EXPECT_EQ(ginq_cur_frame(), 0);
    gdelete_frame(0);
    EXPECT_EQ(ginq_frames(), 0);
    EXPECT_EQ(ginq_cur_frame(), -1);
}

TEST_F(Frames, PublishedPixmapStaysTheLastFrame)
{
    NEED_SCREEN(screen);
    ASSERT_TRUE(is_open);
    const unsigned long published = x11().pixmap;
    paint(7);
    for (unsigned i = 1; i <= 3; i++) {
        loop_take_frame();
        EXPECT_EQ(ginq_frames(), static_cast<int>(i));
        EXPECT_EQ(ginq_frame_pixmap(kLastFrame), published);
        gselect_frame(kLastFrame); // as the other program draws
        paint(10 * i);
        gselect_frame(kBackingPixmap);
    }
    EXPECT_EQ(colour_of(0), 10U);
    EXPECT_EQ(colour_of(1), 20U);
    EXPECT_EQ(colour_of(2), 30U);
    EXPECT_EQ(window_name(), "Loop") << "the other program sees that it may draw";
    EXPECT_EQ(ginq_loop(), 1);
}

TEST_F(Frames, ThereAreOnlySoMany)
{
    NEED_SCREEN(screen);
    ASSERT_TRUE(is_open);
    for (int i = 0; i < kMaxFrames; i++) {
        ASSERT_EQ(gnew_frame(-1), i);
    }
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(gnew_frame(-1), -1);
    EXPECT_EQ(gnew_frame(5000), -1);
    EXPECT_NE(::testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(ginq_frames(), kMaxFrames);
}

TEST_F(Frames, ZoomMagnifiesAndComesBackExactly)
{
    NEED_SCREEN(screen);
    ASSERT_TRUE(is_open);
    paint(0x202020);
    const float line[4] = {0.0F, 0.0F, 1.0F, 0.75F};
    GPH_set_colour(1, 1.0F, 1.0F, 1.0F);
    gpolyline(2, line);
    const Picture plain = grab_picture();
    const struct {
        const char *name;
        int x, y, factor; ///< of the call
        int zoom;         ///< then in force
        int left, top;    ///< source pixel at the upper left
    } steps[] = {
        {"in the middle", 32, 24, -2, 2, 16, 12},
        {"again, at its place", 32, 24, -2, 4, 24, 18},
        {"set to 2", 32, 24, 2, 2, 16, 12},
        {"at the right edge", 63, 24, -2, 4, 39, 18}, // pixel 47 comes to the middle
        {"at the corner", 63, 47, 8, 8, 50, 26},      // pixel 54, 29
        {"factor kept", -1, -1, -1, 8, 50, 26},
        {"without a zoom", 32, 24, 1, 1, 0, 0},
        {"at the very corner", 63, 47, 2, 2, 32, 24}, // the view stays inside
    };
    for (const auto &step : steps) {
        SCOPED_TRACE(step.name);
        EXPECT_EQ(gzoom(kCurrentFrame, step.x, step.y, step.factor, 0), 1);
        EXPECT_EQ(ginq_zoom(), step.zoom);
        const Picture seen = grab_picture();
        int wrong = 0;
        for (int y = 0; y < 48; y++) {
            for (int x = 0; x < 64; x++) {
                wrong +=
                    seen.at(x, y) != plain.at(step.left + x / step.zoom, step.top + y / step.zoom);
            }
        }
        EXPECT_EQ(wrong, 0);
        EXPECT_EQ(gzoom_x(0.0F), static_cast<float>(step.left));
        EXPECT_EQ(gzoom_y(8.0F),
                  static_cast<float>(step.top) + 8.0F / static_cast<float>(step.zoom));
    }
    gunzoom();
    EXPECT_EQ(grab_picture().differences(plain), 0);
    EXPECT_EQ(gzoom(kCurrentFrame, -1, -1, -1, 1), 0) << "nothing to put on";
    EXPECT_EQ(gzoom_x(17.0F), 17.0F);
}

TEST_F(Frames, ZoomEndsAt1024)
{
    NEED_SCREEN(screen);
    ASSERT_TRUE(is_open);
    paint(0x123456);
    for (int i = 0; i < 10; i++) {
        EXPECT_EQ(gzoom(kCurrentFrame, 32, 24, -2, 0), 1);
    }
    EXPECT_EQ(ginq_zoom(), 1024);
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(gzoom(kCurrentFrame, 32, 24, -2, 0), 0);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "gzoom: Cannot zoom past 1024x\n");
    EXPECT_EQ(grab_picture().count(0x123456), 64 * 48);
}

TEST_F(Frames, ZoomIsPutOnEachFrameThatIsShown)
{
    NEED_SCREEN(screen);
    ASSERT_TRUE(is_open);
    make_frames(2);
    gshow_frame(0);
    gzoom(kCurrentFrame, 10, 10, -2, 0);
    gshow_frame(1);
    EXPECT_EQ(grab_picture().at(5, 5), 2U);
    EXPECT_EQ(ginq_zoom(), 2);
    gunzoom();
    EXPECT_EQ(colour_of(kBackingPixmap), 2U) << "the frame on show";
}
