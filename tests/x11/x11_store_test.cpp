// What a window keeps for redraws: pictures, paper, segments, functions.

#include "x11/x11_window.h"

namespace {

TEST_F(X11, PicturesComeBackFromTheStore)
{
    NEED_SCREEN(screen);
    const TempDir folder;
    const std::string meta = folder.file("plot.meta");
    const ScopedEnv out("METAOUT", meta.c_str());
    ASSERT_TRUE(open());
    start_plot();
    draw_picture();
    // the second plot begins with the attributes that the first one left
    start_plot();
    const float line[4] = {20, 20, 180, 80};
    gpolyline(2, line);
    draw_picture();
    const Picture drawn = grab_picture();
    const int objects = gobj_count();
    EXPECT_EQ(gobj_redraw(), 0);
    EXPECT_EQ(grab_picture().differences(drawn), 0) << "drawn over itself";
    EXPECT_EQ(gobj_count(), objects) << "a replay records nothing";

    ::testing::internal::CaptureStdout();
    EXPECT_EQ(gprint_meta(), 0);
    ::testing::internal::GetCapturedStdout();
    EXPECT_EQ(ginq_device(), kDeviceDisplay);
    EXPECT_EQ(ginq_recording(), 1);
    EXPECT_EQ(grab_picture().differences(drawn), 0);
    gclose_ws(1);
    ASSERT_TRUE(open());
    start_plot(); // a reader leaves the surface alone
    for (int i = 0; i < 4; i++) {
        GPH_set_colour(i, 0.5F, 0.5F, 0.5F);
    }
    gread_metafile(meta.c_str());
    // places have six decimals there: here and there a pixel lies on its neighbour
    EXPECT_LT(grab_picture().differences(drawn), 40);
}

TEST_F(X11, PaperOfTheStoreHasThePicture)
{
    NEED_SCREEN(screen);
    const TempDir folder;
    const std::string path = folder.file("plot.ps");
    const ScopedEnv out("tyrps_print", path.c_str());
    ASSERT_TRUE(open());
    start_plot();
    draw_picture();
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(gprint_plot(), 0);
    ::testing::internal::GetCapturedStdout();
    const std::string page = read_file(path);
    for (const char *part : {"%%PL:3", "%%FA:4", "%%PM:2", "Wind", "showpage"}) {
        EXPECT_NE(page.find(part), std::string::npos) << part;
    }
    int width = 0;
    int height = 0;
    ginq_ws_size(&width, &height);
    EXPECT_EQ(width, 200);
    EXPECT_EQ(height, 100);
}

TEST_F(X11, AnEmptyStoreIsTold)
{
    NEED_SCREEN(screen);
    const TempDir folder;
    const std::string meta = folder.file("plot.meta");
    const ScopedEnv out("METAOUT", meta.c_str());
    ASSERT_TRUE(open());
    gclear_ws(1, 1);
    ::testing::internal::CaptureStderr();
    ::testing::internal::CaptureStdout();
    gprint_meta();
    ::testing::internal::GetCapturedStdout();
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "gobj_print_meta: No redraw data to make metafile from\n");
    EXPECT_EQ(read_file(meta).rfind("TYRMETA", 0), 0U);
}

TEST_F(X11, MetafileThatCantBeMadeIsTold)
{
    NEED_SCREEN(screen);
    const ScopedEnv out("METAOUT", "/dev/null/plot.meta");
    ASSERT_TRUE(open());
    start_plot();
    ::testing::internal::CaptureStderr();
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(gprint_meta(), -1);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "") << "nothing was created";
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "gprint_meta: unable to open metafile\n\n");
}

TEST_F(X11, ClearedStoreKeepsTheSurface)
{
    NEED_SCREEN(screen);
    const TempDir folder;
    const std::string meta = folder.file("plot.meta");
    const ScopedEnv out("METAOUT", meta.c_str());
    ASSERT_TRUE(open());
    start_plot();
    const float half[4] = {0.0F, 0.5F, 0.0F, 0.25F};
    gset_ws_window(1, half);
    gobj_clear();
    draw_picture();
    const Picture drawn = grab_picture();
    EXPECT_EQ(gobj_redraw(), 0);
    EXPECT_EQ(grab_picture().differences(drawn), 0);
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(gprint_meta(), 0);
    ::testing::internal::GetCapturedStdout();
    EXPECT_NE(read_file(meta).find("WS_WIN"), std::string::npos);
}

TEST_F(X11, SegmentsLeaveTheStore)
{
    NEED_SCREEN(screen);
    ASSERT_TRUE(open());
    start_plot();
    const float kept[4] = {0, 20, 199, 20};
    const float taken[4] = {0, 60, 199, 60};
    gset_line_colr_ind(2);
    gpolyline(2, kept);
    EXPECT_EQ(gcreate_seg(7), 0);
    gpolyline(2, taken);
    EXPECT_EQ(gclose_seg(7), 0);
    const int objects = gobj_count();
    EXPECT_EQ(gdelete_seg(8), 0);
    EXPECT_EQ(gobj_count(), objects);
    EXPECT_EQ(gdelete_seg(7), 0);
    EXPECT_EQ(gobj_count(), objects - 3);
    const float all[4] = {0, 199, 0, 99};
    gset_recording(0);
    gclear_region(all);
    gset_recording(1);
    gobj_redraw();
    const Picture picture = grab_picture();
    EXPECT_EQ(picture.at(100, 79), kRed);
    EXPECT_EQ(picture.at(100, 39), kBlack);
}

TEST_F(X11, FunctionsOfTheProgramAreReplayedAndTheirArgumentsFreed)
{
    NEED_SCREEN(screen);
    ASSERT_TRUE(open());
    start_plot();
    static int calls;
    calls = 0;
    auto *step = static_cast<int *>(std::malloc(sizeof(int)));
    *step = 5;
    gobj_add_function([](void *argument) { calls += *static_cast<int *>(argument); }, step);
    gobj_redraw();
    EXPECT_EQ(calls, 5);
    gobj_clear(); // the leak checker tells if it isn't freed
    EXPECT_EQ(gobj_count(), 0);
}

TEST_F(X11, RecordingCanBeTurnedOff)
{
    NEED_SCREEN(screen);
    const ScopedEnv off("tyrredraw", "no");
    ASSERT_TRUE(open());
    start_plot();
    draw_picture();
    EXPECT_EQ(gobj_count(), 0);
    EXPECT_EQ(gobj_redraw(), -1);
}

} // namespace
