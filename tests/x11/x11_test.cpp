#include "tyr/image/gif.h"
#include "tyr/image/image_rec.h"
#include "tyr/x11/x11_image.h"
#include "x11/x11_window.h"

namespace {

TEST_F(X11, WindowTakesItsGeometry)
{
    NEED_SCREEN(screen);
    const struct {
        const char *geometry;
        int width, height;
    } cases[] = {
        {"320x240", 320, 240},
        {"300x200-10-20", 300, 200},
        {"+5+5", 640, 512},
        {"nonsense", 640, 512},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.geometry);
        ASSERT_TRUE(open(c.geometry));
        int width = 0;
        int height = 0;
        ginq_ws_size(&width, &height);
        EXPECT_EQ(width, c.width);
        EXPECT_EQ(height, c.height);
        EXPECT_EQ(ginq_depth(), 24);
        EXPECT_EQ(gupdate_ws(), 0);
        EXPECT_EQ(gclose_ws(1), 0);
        EXPECT_EQ(gupdate_ws(), -1) << "no window";
    }
}

TEST_F(X11, ServersThatArentThereAreTold)
{
    gopen_gks(nullptr, 0);
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(gopen_ws(1, ":4711", kDeviceDisplay), -1);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "gopen_ws: unable to connect to display\n");
}

TEST_F(X11, PrimitivesLandOnTheirPixels)
{
    NEED_SCREEN(screen);
    ASSERT_TRUE(open());
    start_plot();
    draw_picture();
    const Picture picture = grab_picture();
    ASSERT_EQ(picture.width, 200);
    ASSERT_EQ(picture.height, 100);
    const struct {
        const char *name;
        int x, y; ///< from the upper left
        unsigned colour;
    } cases[] = {
        {"ground", 0, 0, kBlack},
        {"inside the area", 30, 70, kRed},
        {"its corner", 10, 89, kRed},
        {"beside it", 8, 70, kBlack},
        {"a dash of the line", 5, 9, kGreen},
        {"the gap behind it", 14, 13, kBlack},
        {"left of the circle", 143, 79, kRed},
        {"its middle", 150, 79, kBlack},
        {"a row of the pattern", 120, 72, kRed},
        {"two rows further, its gap", 120, 74, kBlack},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(picture.at(c.x, c.y), c.colour) << c.name;
    }
    int text = 0;
    for (int y = 28; y < 40; y++) {
        for (int x = 20; x < 70; x++) {
            text += picture.at(x, y) == kGreen ? 1 : 0;
        }
    }
    EXPECT_GT(text, 50) << "strokes of the text, on its base line 60 from below";
}

TEST_F(X11, ClipHoldsEverythingInItsViewport)
{
    NEED_SCREEN(screen);
    ASSERT_TRUE(open());
    start_plot();
    const float quarter[4] = {0.0F, 0.5F, 0.0F, 0.25F};
    const float unit[4] = {0.0F, 1.0F, 0.0F, 1.0F};
    gset_viewport(2, quarter);
    gset_window(2, unit);
    gsel_norm_tran(2);
    gset_fill_colr_ind(2);
    const float beyond[8] = {-5, -5, 5, -5, 5, 5, -5, 5};
    gfill_area(4, beyond);
    const Picture picture = grab_picture();
    EXPECT_EQ(picture.at(99, 60), kRed);
    EXPECT_EQ(picture.at(102, 60), kBlack);
    EXPECT_EQ(picture.at(50, 45), kBlack);
}

TEST_F(X11, ColoursChangeAtOnceAndPrintColoursAreTheFirst)
{
    NEED_SCREEN(screen);
    ASSERT_TRUE(open());
    start_plot();
    const float line[4] = {10, 50, 190, 50};
    gset_line_colr_ind(2);
    GPH_set_colour(2, 0, 0, 1);
    gpolyline(2, line);
    EXPECT_EQ(grab_picture().at(100, 49), 0x0000FFU);
    gset_line_colr_ind(kFirstPrintColour + 1);
    EXPECT_EQ(ginq_line_colr(), 1);
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(gset_line_colr_ind(77), -1);
    const float rgb[3] = {0, 0, 0};
    EXPECT_EQ(gset_colr_rep(1, 257, rgb), -1);
    EXPECT_EQ(gset_colr_rep(1, -2, rgb), -1);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "gset_line_colr_ind: color index not initialized\n\n"
              "gset_colr_rep: invalid color index: 257\n\n"
              "gset_colr_rep: invalid color index: -2\n\n");
    EXPECT_EQ(gcolor_same(3, 0, 0.0F, 0.991F, 0.0F), 1);
    EXPECT_EQ(gcolor_same(3, 0, 0.005F, 0.99F, 0.0F), 0);
    EXPECT_EQ(gcolor_same(ginq_pixel(3), 1, 0.0F, 1.0F, 0.0F), 1);
}

TEST_F(X11, BackgroundByWord)
{
    NEED_SCREEN(screen);
    const struct {
        const char *word;
        bool inverse;
        unsigned colour;
    } cases[] = {
        {nullptr, false, kBlack},    {nullptr, true, kWhite},      {"none", false, kBlack},
        {"tomato", false, 0xFF6347}, {"#0000FF", false, 0x0000FF}, {"nocolour!", false, kBlack},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.word != nullptr ? c.word : "unset");
        RES_put("background", c.word);
        gset_invert(c.inverse ? 1 : 0);
        ASSERT_TRUE(open());
        gclear_ws(1, 1);
        EXPECT_EQ(grab_picture().count(c.colour), 200 * 100);
        gclose_ws(1);
    }
    gset_invert(0);
}

TEST_F(X11, FontsOfTheServerStandWhereStrokesWould)
{
    NEED_SCREEN(screen);
    RES_put("font_list", "#fixed,#nofont");
    ASSERT_TRUE(open());
    start_plot();
    gset_text_colr_ind(2);
    const float place[2] = {100, 50}; // the pixel 49 from above
    const struct {
        const char *name;
        int horizontal, vertical;
        int left, right, top, bottom; ///< box that holds the text; fixed is 6 wide and 13 high
    } cases[] = {
        {"left, base", kAlignLeft, kAlignBase, 100, 118, 38, 49},
        {"right, base", kAlignRight, kAlignBase, 82, 100, 38, 49},
        {"centre, top", kAlignCentre, kAlignTop, 91, 109, 49, 60},
        {"centre, middle", kAlignCentre, kAlignHalf, 91, 109, 43, 55},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const float all[4] = {0, 199, 0, 99};
        gclear_region(all);
        const int align[2] = {c.horizontal, c.vertical};
        gset_text_align(align);
        gtext(place, "WMH");
        const Picture picture = grab_picture();
        int inside = 0;
        for (int y = c.top; y <= c.bottom; y++) {
            for (int x = c.left; x <= c.right; x++) {
                inside += picture.at(x, y) == kRed ? 1 : 0;
            }
        }
        EXPECT_GT(inside, 30);
        EXPECT_EQ(picture.count(kRed), inside);
    }
    ::testing::internal::CaptureStderr();
    const int second[2] = {2, 2};
    gset_fontprec(second);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "read_font: unable to load font: nofont\n");
}

TEST_F(X11, ImageFilesAreDrawnAtTheirPlace)
{
    NEED_SCREEN(screen);
    const TempDir folder;
    const std::string path = folder.file("picture.png");
    ASSERT_TRUE(open());
    start_plot();
    draw_picture();
    const Picture drawn = grab_picture();
    ASSERT_EQ(IMG_write_png_window(path.c_str()), 1);
    const struct {
        const char *name, *transparent;
        int x, y;      ///< of the call
        int left, top; ///< of the image on the window
        unsigned off;  ///< colour that shows the ground
    } cases[] = {
        {"at the corner", nullptr, 0, 0, 0, 0, kBlack},
        {"aside", nullptr, 20, 10, 20, 10, kBlack},
        {"from the far edges", nullptr, -30, -15, -30, -15, kBlack},
        {"red is transparent", "#FF0000", 0, 0, 0, 0, kRed},
        {"a name of the server's", "lime", 0, 0, 0, 0, kGreen},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        gclear_ws(1, 1);
        GPH_set_colour(4, 0, 0, 1);
        gset_fill_colr_ind(4);
        gset_fill_int_style(1);
        const float all[8] = {-1, -1, 300, -1, 300, 200, -1, 200};
        gfill_area(4, all);
        EXPECT_EQ(gdraw_image_file(path.c_str(), c.transparent, c.x, c.y), 1);
        const Picture seen = grab_picture();
        int wrong = 0;
        for (int y = 0; y < 100; y++) {
            for (int x = 0; x < 200; x++) {
                const int from_x = x - c.left;
                const int from_y = y - c.top;
                const bool is_inside = from_x >= 0 && from_x < 200 && from_y >= 0 && from_y < 100;
                const unsigned source = is_inside ? drawn.at(from_x, from_y) : c.off;
                wrong += seen.at(x, y) != (source == c.off ? 0x0000FFU : source);
            }
        }
        EXPECT_EQ(wrong, 0);
    }
    // a picture of 256 MB that says little: what lies outside of the window isn't made
    const std::string vast = folder.write("vast.img", "TYRIMG\n\n\n16384 16384\n");
    EXPECT_EQ(gdraw_image_file(vast.c_str(), nullptr, 0, 0), 1);
    EXPECT_EQ(gdraw_image_file(vast.c_str(), nullptr, 5000, 5000), 1) << "nothing of it is seen";
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(gdraw_image_file(folder.file("none").c_str(), nullptr, 0, 0), 0);
    EXPECT_NE(::testing::internal::GetCapturedStderr(), "");
}

TEST_F(X11, TransparentGifsShowTheGround)
{
    NEED_SCREEN(screen);
    const TempDir folder;
    ASSERT_TRUE(open());
    start_plot();
    draw_picture();
    const Picture drawn = grab_picture();
    ASSERT_GT(drawn.count(kBlack), 0);
    gset_gif_transparent(1);
    ImageRec image;
    ASSERT_EQ(gget_image(&image), 1);
    EXPECT_EQ(GIF_write(folder.file("record.gif").c_str(), &image), 1);
    IMG_free(&image);
    EXPECT_EQ(GIF_write_window(folder.file("window.gif").c_str()), 1);
    gset_gif_transparent(0);
    for (const char *name : {"record.gif", "window.gif"}) {
        SCOPED_TRACE(name);
        ASSERT_EQ(GIF_read(folder.file(name).c_str(), &image, 0), 1);
        ASSERT_GE(image.transparent, 0);
        int ground = 0;
        for (int i = 0; i < image.width * image.height; ++i) {
            ground += image.data[i] == image.transparent ? 1 : 0;
        }
        EXPECT_EQ(ground, drawn.count(kBlack));
        IMG_free(&image);
    }
}

TEST_F(X11, ASizeThatIsSetKeepsThePicture)
{
    NEED_SCREEN(screen);
    ASSERT_TRUE(open());
    start_plot();
    draw_picture();
    const Picture before = grab_picture();
    EXPECT_EQ(gresize_ws(300, 150), 1);
    const Picture after = grab_picture();
    ASSERT_EQ(after.width, 300);
    EXPECT_EQ(after.height, 150);
    int changed = 0;
    for (int y = 0; y < 100; y++) {
        for (int x = 0; x < 200; x++) {
            changed += before.at(x, y) != after.at(x, y) ? 1 : 0;
        }
    }
    EXPECT_EQ(changed, 0);
    gsync();
    EXPECT_EQ(gresize_ws(-1, -1), 0) << "the window has it already";
}

} // namespace
