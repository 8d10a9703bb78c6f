#include "tyr/x11/window_id_private.h"

using namespace tyr;

TEST(WindowId, TextsAndFiles)
{
    const struct {
        const char *text;
        bool is_id;
        unsigned long window, pixmap;
        int width, height;
        unsigned long map;
    } ids[] = {
        {"+1234:5678:640x512:99", true, 1234, 5678, 640, 512, 99},
        {"5678:800x600:3", true, 0, 5678, 800, 600, 0},
        {"5678", true, 0, 5678, 640, 512, 0},
        {"0x1a00005:800x600:0", true, 0, 0x1a00005, 800, 600, 0},
        {"+1234:0:640x512:9", false, 0, 0, 0, 0, 0},
        {"5678:0x0:1", false, 0, 0, 0, 0, 0},
        {"5678:99999x999999999:1", false, 0, 0, 0, 0, 0},
        {"+", false, 0, 0, 0, 0, 0},
        {"", false, 0, 0, 0, 0, 0},
        {"0", false, 0, 0, 0, 0, 0},
    };
    for (const auto &c : ids) {
        SCOPED_TRACE(c.text);
        const std::optional<WindowId> id = parse_window_id(c.text);
        ASSERT_EQ(id.has_value(), c.is_id);
        if (id) {
            EXPECT_EQ(id->window, c.window);
            EXPECT_EQ(id->pixmap, c.pixmap);
            EXPECT_EQ(id->width, c.width);
            EXPECT_EQ(id->height, c.height);
            EXPECT_EQ(id->colour_map, c.map);
        }
    }
    const std::pair<const char *, const char *> files[] = {
        {"w", "tyrloop.win"}, {"W3", "tyrloop.3"}, {"w12", "tyrloop.12"}, {"window", "window"},
        {"my.win", "my.win"}, {"123", ""},         {"+1:2", ""},          {"", ""},
    };
    for (const auto &[word, file] : files) {
        EXPECT_EQ(window_id_file(word), file) << word;
    }
}
