#include <algorithm>
#include <cmath>
#include <filesystem>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include "support/program.h"
#include "support/screen.h"
#include "support/temp_dir.h"
#include "support/window_user.h"

namespace {

/// A section of the sample station in a window.
struct HeldWindow : ::testing::Test {
    VirtualScreen screen;
    TempDir folder;
    std::vector<std::string> files = make_samples(folder.file("obs"));

    std::vector<std::string> section(const std::vector<std::string> &more = {}) const
    {
        std::vector<std::string> words = {"-de",  "d",   "-id",  "PLTC2", "-va",
                                          "wbrb", "-ti", "Wind", "-me",   "mess"};
        words.insert(words.end(), more.begin(), more.end());
        words.insert(words.end(), files.begin(), files.end());
        return words;
    }
};

/// Share of the pixels that aren't background.
double ink(const Picture &picture)
{
    return 1.0 - static_cast<double>(picture.count(0)) / static_cast<double>(picture.pixels.size());
}

} // namespace

TEST_F(HeldWindow, StaysUntilReturnOrAltQ)
{
    NEED_SCREEN(screen);
    for (const bool by_return : {true, false}) {
        WindowUser user(screen, section(), folder.file("log"));
        ASSERT_TRUE(user.sees_window("Wind")) << read_file(folder.file("log"));
        const Picture picture = user.look();
        EXPECT_EQ(picture.width, 640);
        EXPECT_EQ(picture.height, 512);
        EXPECT_GT(ink(picture), 0.05);
        user.press_key("q"); // without Alt it is the program's
        EXPECT_EQ(user.look().differences(picture), 0);
        user.press_key(by_return ? "Return" : "q", !by_return);
        EXPECT_EQ(user.wait_for_exit(), 0) << read_file(folder.file("log"));
    }
}

TEST_F(HeldWindow, LocksLeaveTheKeysOfAltAlone)
{
    NEED_SCREEN(screen);
    for (const unsigned locks : {LockMask, Mod2Mask, LockMask | Mod2Mask}) {
        SCOPED_TRACE(locks);
        WindowUser user(screen, section(), folder.file("log"));
        ASSERT_TRUE(user.sees_window("Wind"));
        const Picture first = user.look();
        user.press_key_with("z", Mod1Mask | locks);
        EXPECT_GT(user.look().differences(first), 5000);
        user.press_key_with("u", Mod1Mask | locks);
        EXPECT_EQ(user.look().differences(first), 0);
        user.press_key_with("q", Mod1Mask | locks);
        EXPECT_EQ(user.wait_for_exit(), 0);
    }
}

TEST_F(HeldWindow, WindowThatIsTakenAwayEndsIt)
{
    NEED_SCREEN(screen);
    WindowUser user(screen, section(), folder.file("log"));
    ASSERT_TRUE(user.sees_window("Wind"));
    user.destroy_window();
    EXPECT_EQ(user.wait_for_exit(), 4);
    EXPECT_NE(read_file(folder.file("log")).find("destroyed the window\nFatal X11 Error\n"),
              std::string::npos);
}

TEST_F(HeldWindow, TitlesThatNameNoFile)
{
    NEED_SCREEN(screen);
    const struct {
        const char *title, *file;
    } cases[] = {
        {"a/b c", "a_b_c.gif"},
        {"..", "plot.gif"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.title);
        std::vector<std::string> words = section({"-ip", folder.path()});
        *std::find(words.begin(), words.end(), "Wind") = c.title;
        WindowUser user(screen, words, folder.file("log"));
        ASSERT_TRUE(user.sees_window(c.title));
        user.press_key("g", true);
        user.look();
        user.press_key("Return");
        EXPECT_EQ(user.wait_for_exit(), 0);
        EXPECT_TRUE(std::filesystem::exists(folder.file(c.file))) << read_file(folder.file("log"));
    }
}

TEST_F(HeldWindow, MessageOfAnotherProgramEndsIt)
{
    NEED_SCREEN(screen);
    WindowUser user(screen, section(), folder.file("log"));
    ASSERT_TRUE(user.sees_window("Wind"));
    user.send_message(9);
    EXPECT_EQ(user.wait_for_exit(), 0);
}

TEST_F(HeldWindow, BoxZoomsAndAltUComesBack)
{
    NEED_SCREEN(screen);
    WindowUser user(screen, section(), folder.file("log"));
    ASSERT_TRUE(user.sees_window("Wind"));
    const Picture first = user.look();
    user.drag(200, 150, 400, 350);
    const Picture zoomed = user.look();
    EXPECT_GT(zoomed.differences(first), 5000);
    user.press_key("u", true);
    EXPECT_EQ(user.look().differences(first), 0);
    user.press_key("z", true);
    const Picture magnified = user.look();
    EXPECT_EQ(magnified.at(0, 0), magnified.at(1, 1)) << "pixels become squares";
    user.press_key("u", true);
    EXPECT_EQ(user.look().differences(first), 0);
    user.press_key("r", true);
    EXPECT_EQ(user.look().differences(first), 0);
    user.press_key("Return");
    EXPECT_EQ(user.wait_for_exit(), 0);
}

TEST_F(HeldWindow, NewSizeIsAPictureOfThatSize)
{
    NEED_SCREEN(screen);
    WindowUser user(screen, section(), folder.file("log"));
    ASSERT_TRUE(user.sees_window("Wind"));
    const Picture first = user.look();
    user.resize(900, 700);
    const Picture resized = user.look();
    EXPECT_EQ(resized.width, 900);
    EXPECT_EQ(resized.height, 700);
    user.resize(640, 512);
    EXPECT_EQ(user.look().differences(first), 0);
    user.resize(900, 700);
    EXPECT_EQ(user.look().differences(resized), 0);
    user.press_key("Return");
    EXPECT_EQ(user.wait_for_exit(), 0);
    // the same as a window that had the size from the start
    WindowUser other(screen, section({"-ge", "900x700"}), folder.file("log"));
    ASSERT_TRUE(other.sees_window("Wind"));
    EXPECT_EQ(other.look().differences(resized), 0);
}

TEST_F(HeldWindow, KeysWriteThePicture)
{
    NEED_SCREEN(screen);
    if (!have_program("convert")) {
        GTEST_SKIP() << "ImageMagick isn't installed";
    }
    const std::string pictures = folder.file("pictures");
    std::filesystem::create_directory(pictures);
    WindowUser user(screen, section({"-ip", pictures}), folder.file("log"));
    ASSERT_TRUE(user.sees_window("Wind"));
    const Picture seen = user.look();
    user.press_key("g", true);
    user.press_key("x", true);
    user.look();
    user.press_key("Return");
    EXPECT_EQ(user.wait_for_exit(), 0);
    for (const char *name : {"Wind.gif", "Wind.xwd"}) {
        EXPECT_EQ(read_picture(pictures + "/" + name).differences(seen), 0) << name;
    }
}

TEST_F(HeldWindow, DumpsNeedNoUser)
{
    NEED_SCREEN(screen);
    if (!have_program("convert")) {
        GTEST_SKIP() << "ImageMagick isn't installed";
    }
    std::vector<std::string> words = section({"-pp", "png=section.png"});
    const RunResult run =
        run_profiler(words, {.env = {"DISPLAY=" + screen.name()}, .folder = folder.path()});
    EXPECT_EQ(run.code, 0) << run.err;
    WindowUser user(screen, section(), folder.file("log"));
    ASSERT_TRUE(user.sees_window("Wind"));
    EXPECT_EQ(read_picture(folder.file("section.png")).differences(user.look()), 0);
}

TEST_F(HeldWindow, ADumpThatFailsIsToldAndEndsWithItsCode)
{
    NEED_SCREEN(screen);
    const RunResult run = run_profiler(section({"-pp", "png=/proc/no/section.png"}),
                                       {.env = {"DISPLAY=" + screen.name()}});
    EXPECT_EQ(run.code, 12);
    EXPECT_NE(run.err.find("section.png: No such file or directory"), std::string::npos) << run.err;
}

TEST_F(HeldWindow, AnotherProgramsPixmapIsDrawnOn)
{
    NEED_SCREEN(screen);
    Display *display = XOpenDisplay(screen.name().c_str());
    const Window root = DefaultRootWindow(display);
    const Pixmap pixmap = XCreatePixmap(display, root, 300, 200, 24);
    XSync(display, 0);
    for (const char *geometry : {"", "P2x2+1+1"}) {
        SCOPED_TRACE(geometry);
        std::vector<std::string> words = section();
        words[1] = "w," + std::to_string(pixmap) + ":300x200:0";
        if (geometry[0] != '\0') {
            words.insert(words.begin(), {"-ge", geometry});
        }
        GC gc = XCreateGC(display, pixmap, 0, nullptr);
        XSetForeground(display, gc, 0x000055);
        XFillRectangle(display, pixmap, gc, 0, 0, 300, 200);
        XFreeGC(display, gc);
        XSync(display, 0);
        const RunResult run = run_profiler(words, {.env = {"DISPLAY=" + screen.name()}});
        EXPECT_EQ(run.code, 0) << run.err;
        XImage *image = XGetImage(display, pixmap, 0, 0, 300, 200, AllPlanes, ZPixmap);
        ASSERT_NE(image, nullptr);
        int outside = 0;
        int inside = 0;
        for (int y = 0; y < 200; y++) {
            for (int x = 0; x < 300; x++) {
                const bool is_drawn = (XGetPixel(image, x, y) & 0xFFFFFFU) != 0x000055U;
                (x >= 149 && y >= 99 ? inside : outside) += is_drawn ? 1 : 0;
            }
        }
        XDestroyImage(image);
        EXPECT_GT(inside, 500);
        if (geometry[0] != '\0') {
            EXPECT_EQ(outside, 0) << "only its panel";
        } else {
            EXPECT_GT(outside, 500);
        }
    }
    XCloseDisplay(display);
}
