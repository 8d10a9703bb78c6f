// Lists of map files: marks, conditions, blocks, damage.

#include "map/map_page.h"

namespace {

struct EntryCase {
    const char *entry;
    int mode;
    bool is_drawn;
};

TEST_F(MapLayer, MarksAndConditions)
{
    // the window is 32 high
    folder_.write("m", binary_map({{{1.0F, 1.0F}, {2.0F, 2.0F}}}));
    const EntryCase cases[] = {
        {"m", 4, true},
        {"m", 3, false},
        {"-m", 1, true},
        {"-m", 6, false},
        {"+m", 2, true},
        {"+m", 5, false},
        {"s+32:m", 4, true},
        {"s+33:m", 4, false},
        {"s-32:m", 4, true},
        {"s-31:m", 4, false},
        {">30:m", 4, true},
        {">33:m", 4, false},
        {">30<40:m", 4, true},
        {">30<31:m", 4, false},
        {"<40:m", 4, true},
        {"<31:m", 4, false},
        {"<40>30:m", 4, true},
        {"<40>35:m", 4, false},
        {"s+20:s-40:m", 4, true},
        {"-s+20:>10<50:s-40:<60>2:s+1:>3:m", 1, true},
        {"s+20:s-30:m", 4, false},
        {">20:s-40:s+33:m", 4, false},
        {"m:blue", 4, true},
        {"m:none", 4, false},
        {"", 7, false},
        {"-", 7, false},
        {"s+20", 4, false},
    };
    for (const EntryCase &c : cases) {
        SCOPED_TRACE(c.entry);
        MapPage page("lat:0:0,0,0,25,17,2,2");
        RES_put("file_path", folder_.path().c_str());
        start_map_entries(c.mode);
        testing::internal::CaptureStderr();
        MAP_process(c.entry);
        testing::internal::GetCapturedStderr();
        EXPECT_EQ(page.strokes().size(), c.is_drawn ? 1U : 0U);
    }
}

TEST_F(MapLayer, BlocksOfListFiles)
{
    const struct {
        const char *name, *list, *expected; ///< numbers of the maps drawn
    } cases[] = {
        {"the first that fits", "[50,60,0,5\n1\n[-10,10,-10,10\n2\n[0,10,0,10\n3\n", "2"},
        {"in any order of the limits", "[10,-10,10,-10\n1", "1"},
        {"too high", "[-10,10,-10,10,20\n1\n[-10,10,-10,10,40\n2", "2"},
        {"the default behind others", "[50,60,0,5\n1\n[\n2\n", "2"},
        {"the default after a fit", "[-1,1,-1,1\n1\n[\n2\n", "1"},
        {"ahead of all blocks", "1\n[50,60,0,5\n2\n", "1"},
        {"many a line, and marks", "-1 +2 3", "13"},
        {"the list itself is no entry", "fi:list 3", "3"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        for (int i = 1; i <= 3; ++i) {
            const float x = static_cast<float>(i);
            folder_.write(std::to_string(i), binary_map({{{x, 0.0F}, {x, 1.0F}}}));
        }
        folder_.write("list", c.list);
        MapPage page("lat:0:0,0,0,25,17,2,2");
        RES_put("file_path", folder_.path().c_str());
        RES_put("map_file", "fi:list");
        DOM_set_offset(0, 0, 0.0F, 0.0F);
        testing::internal::CaptureStderr();
        EXPECT_EQ(MAP_draw(kMapUnder | kMapUnmarked), 0);
        testing::internal::GetCapturedStderr();
        std::string drawn;
        for (const PsStroke &s : page.strokes()) {
            drawn += std::to_string(std::lround(s.points[0][1]));
        }
        EXPECT_EQ(drawn, c.expected);
    }
}

TEST_F(MapLayer, DamagedListsAreNamed)
{
    MapPage page("lat:0:0,0,0,25,17,2,2");
    RES_put("file_path", folder_.path().c_str());
    RES_put("map_file", "fi:none,fi:zeros");
    folder_.write("zeros", std::string(5000, '\0'));
    testing::internal::CaptureStderr();
    EXPECT_EQ(MAP_draw(kMapUnmarked), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "MAP_draw: Unable to open map list file: " + folder_.file("none") +
                  "\nMAP_draw: Map list file is damaged: " + folder_.file("zeros") + "\n");
}

TEST_F(MapLayer, MissingAndUselessFilesAreNamed)
{
    const struct {
        std::string entry;
        const char *said;
    } cases[] = {
        {folder_.file("none"), "MAP_process: Map file not found: "},
        {folder_.path(), "MAP_process: Map file not found: "},
        {folder_.write("words", "<html><body>No map</body></html>\n<p>at all</p>\n"),
         "MAP_process: Map file is damaged: "},
        {folder_.write("negative", "-5 0 0 0 0 0\n"), "MAP_process: Map file is damaged: "},
        {folder_.write("short", "3 0 0 0 0 0\n1 1\n2 2\n"), "MAP_process: Map file is damaged: "},
        {folder_.write("huge", "2000000000 0 0 0 0 0\n1 1\n2 2\n"),
         "MAP_process: Map file is damaged: "},
        {folder_.write("odd", "2 0 0 0 0 0\n1 1\n2 nan\n"), "MAP_process: Map file is damaged: "},
    };
    for (const auto &c : cases) {
        draw("lat:0:0,0,0,25,17,2,2", c.entry);
        EXPECT_EQ(said_, c.said + c.entry + "\n");
    }
    draw("lat:0:0,0,0,25,17,2,2", folder_.write("empty", ""));
    EXPECT_EQ(said_, "");
}

} // namespace
