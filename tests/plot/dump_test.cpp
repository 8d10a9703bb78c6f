#include <filesystem>

#include "support/screen.h"
#include "support/temp_dir.h"
#include "support/world_plot.h"
#include "tyr/base/res.h"
#include "tyr/gks/gks.h"
#include "tyr/image/image.h"
#include "tyr/plot/dump.h"
#include "tyr/plot/plot_session.h"
#include "tyr/x11/frames.h"

namespace {

constexpr const char *kHead[] = {"", "", "GIF89a", "TYRIMG", "\x89PNG"};

} // namespace

TEST(Dump, WritesTheKindAndNameThatIsAsked)
{
    const VirtualScreen screen;
    NEED_SCREEN(screen);
    const TempDir folder;
    RES_put("image_path", folder.path().c_str());
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    RES_put("geometry", "120x80");
    RES_put("device", "d");
    const struct {
        const char *word, *file, *message;
        int kind;
    } cases[] = {
        {"gif", "tyr.gif", "Wrote GIF file: ", kDumpGif},
        {"png", "tyr.png", "Wrote PNG file: ", kDumpPng},
        {"img", "tyr.xwd", "Wrote IMG file: ", kDumpImage},
        {"xwd", "tyr.xwd", "Wrote xdump file: ", kDumpXwd},
        {"gif=wind.gif", "wind.gif", "Wrote GIF file: ", kDumpGif},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.word);
        RES_put("plot_param", c.word);
        ASSERT_EQ(PLT_begin(0.0F), 0);
        ::testing::internal::CaptureStdout();
        EXPECT_EQ(PLT_dump(kCurrentFrame), 0);
        EXPECT_EQ(::testing::internal::GetCapturedStdout(), c.message + folder.file(c.file) + "\n");
        PLT_end(); // doesn't wait for a user
        const std::string bytes = read_file(folder.file(c.file));
        EXPECT_EQ(bytes.rfind(kHead[c.kind], 0), 0U);
        ImageRec image;
        ASSERT_EQ(IMG_read_header(folder.file(c.file).c_str(), &image), 1);
        EXPECT_EQ(image.width, 120);
        EXPECT_EQ(image.height, 80);
        IMG_free(&image);
        std::filesystem::remove(folder.file(c.file));
    }
}

TEST(Dump, PaperHasNoPicture)
{
    const TempDir folder;
    PLT_set_dump(kDumpNone, nullptr);
    EXPECT_EQ(PLT_dump(kCurrentFrame), -1);
    RES_put("image_path", folder.path().c_str());
    RES_put("plot_param", "png");
    PlotSession plot;
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(PLT_dump(kCurrentFrame), 0);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "PLT_dump: Unable to write PNG file: " + folder.file("tyr.png") + "\n");
    EXPECT_FALSE(std::filesystem::exists(folder.file("tyr.png")));
}
