// GRIB streams and failing disks through the table of open files.

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/resource.h>

#include <gtest/gtest.h>

#include "support/capture.h"
#include "support/grib_message.h"
#include "support/shared_data.h"
#include "support/temp_dir.h"
#include "tyr/base/missing.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/grib/grib.h"
#include "tyr/grid_files/grid_out.h"

using namespace tyr;

namespace {

struct Grid : GridRec {
    Grid() { GRD_init(this); }
    ~Grid() { GRD_free(this); }
    Grid(const Grid &) = delete;
    Grid &operator=(const Grid &) = delete;
};

/// An open file of GRIB products.
struct Open {
    explicit Open(const std::string &path, int wanted = 0) : kind(wanted)
    {
        handle = GRD_open(path.c_str(), 0, &kind);
    }
    ~Open() { GRD_close(handle); }
    Open(const Open &) = delete;
    Open &operator=(const Open &) = delete;
    int kind;
    int handle;
};

std::string message(int level)
{
    Grib1Wish wish;
    wish.level = level;
    return grib1_message(wish);
}

/// Edition 2, with another level in Pa.
std::string message2(int level)
{
    return grib2_message(grib2_ident() + grib2_grid() + grib2_product(0, 0, 100L * level) +
                         grib2_packing(12, 100.0F) + grib2_bitmap(255) +
                         grib2_data(std::string(12, '\1')));
}

class GridGribFile : public testing::Test {
  protected:
    void SetUp() override { RES_put("file_path", TYR_SOURCE_DIR "/data"); }
    TempDir dir;
};

} // namespace

TEST_F(GridGribFile, EveryEnvelopeIsReadInAnyOrder)
{
    const std::string line = "\r\r\n";
    const struct {
        const char *name;
        std::string before, behind;
    } cases[] = {
        {"stars", "** HTXA50 KWBC 041200\r\r\n", "\r\r\n\3"},
        {"heading", "\1" + line + "123" + line + "HTXA50 KWBC" + line, line + "\3"},
        {"length", "", ""},
        {"bare", "", ""},
    };
    for (const auto &c : cases) {
        for (const bool is_second : {false, true}) {
            SCOPED_TRACE(std::string(c.name) + (is_second ? " 2" : " 1"));
            std::string text;
            for (const int level : {1000, 850, 500, 250}) {
                std::string one = is_second ? message2(level) : message(level);
                if (std::string(c.name) == "length") {
                    one = "\1" + line + "123" + line + "HTXA50" + line + one + line + "\3";
                    text += STR_print("GRIB: %zu\n", one.size());
                }
                text += c.before;
                text += one;
                text += c.behind;
            }
            const Open file(dir.write("f.grb", text));
            ASSERT_EQ(file.kind, kGridGrib);
            GridFileInfo info;
            ASSERT_EQ(GRD_read_header(file.handle, &info), 0);
            EXPECT_EQ(info.date.day, 4);
            const int levels[] = {1000, 850, 500, 250};
            for (const int place : {0, 1, 3, 3, 1, 2, 0}) {
                for (const int mode : {1, 2, 0}) {
                    Grid grid;
                    int index = place;
                    ASSERT_EQ(GRD_read(file.handle, &grid, mode, &index), 0) << place;
                    EXPECT_EQ(index, place);
                    EXPECT_EQ(grid.level, levels[place]);
                    ASSERT_EQ(grid.values != nullptr, mode == 0);
                    EXPECT_STREQ(grid.date, "12Z WED  4 MAR 20"); // six hours on
                    if (mode == 0) {
                        EXPECT_EQ(grid.values[11], is_second ? 101.0F : 111.0F);
                    }
                }
            }
            Grid grid;
            int index = 4;
            EXPECT_EQ(GRD_read(file.handle, &grid, 0, &index), -1);
            EXPECT_EQ(GRD_rewind(file.handle), 0);
            EXPECT_EQ(GRD_get_file(file.handle)->index, -1);
            EXPECT_EQ(GRD_read(file.handle, &grid, 0, &(index = 0)), 0);
            EXPECT_EQ(grid.level, 1000);
        }
    }
}

TEST_F(GridGribFile, AnIndexTellsDescriptions)
{
    const std::string first = message(1000);
    const std::string path = dir.write("f.grb", first + message(500));
    // the index says what the products don't, so that its use shows
    const std::string lines = "0 x / GRIB1 S7 M83 G211 T12 L100 H700 V33\n" +
                              std::to_string(first.size()) +
                              " / 1:96 255 6 100 300 11\nno offset\n0 / 96 255 6 100 -20 11\n";
    const std::string index_path = dir.write("f.idx", lines);
    const Open file(path);
    GridFileInfo info;
    ASSERT_EQ(GRD_read_header(file.handle, &info), 0);
    EXPECT_EQ(GRD_attach_index(file.handle, dir.file("absent").c_str()), -1);
    EXPECT_EQ(GRD_attach_index(file.handle, ""), -1);
    ASSERT_EQ(GRD_attach_index(file.handle, index_path.c_str()), 0);
    Grid grid;
    int index = 0;
    ASSERT_EQ(GRD_read(file.handle, &grid, 2, &index), 0);
    EXPECT_EQ(grid.source, 7);
    EXPECT_EQ(grid.model, 83);
    EXPECT_EQ(grid.grid_id, 211);
    EXPECT_EQ(grid.time, 12);
    EXPECT_EQ(grid.level, 700);
    EXPECT_EQ(grid.var, 33);
    EXPECT_EQ(grid.domain.nx, 93);
    EXPECT_EQ(grid.values, nullptr);
    EXPECT_NE(std::string(grid.info).find("700 mb"), std::string::npos) << grid.info;
    ASSERT_EQ(GRD_read(file.handle, &grid, 1, &(index = 1)), 0);
    EXPECT_EQ(grid.model, 96);
    EXPECT_EQ(grid.level, 300);
    EXPECT_EQ(grid.source, 1);
    ASSERT_EQ(GRD_read(file.handle, &grid, 1, &(index = 2)), 0);
    EXPECT_EQ(grid.level, -20);
    EXPECT_EQ(grid.source, 7);
    ASSERT_EQ(GRD_read(file.handle, &grid, 0, &(index = 1)), 0); // values are the product's own
    EXPECT_EQ(grid.level, 500);
    EXPECT_EQ(grid.values[0], 100.0F);
    EXPECT_EQ(GRD_read(file.handle, &grid, 1, &(index = 3)), -1);
}

TEST_F(GridGribFile, TwoFilesAreReadByTurns)
{
    const Open first(dir.write("a.grb", message(1000) + message(850) + message(700)));
    const Open second(dir.write("b.grb", message2(500) + message2(300) + message2(200)));
    const int levels[2][3] = {{1000, 850, 700}, {500, 300, 200}};
    for (const int place : {0, 2, 1, 1, 0}) {
        int file = 0;
        for (const int handle : {first.handle, second.handle}) {
            Grid grid;
            int index = place;
            ASSERT_EQ(GRD_read(handle, &grid, 0, &index), 0);
            EXPECT_EQ(grid.level, levels[file][place]);
            EXPECT_EQ(grid.values[11], file == 0 ? 111.0F : 101.0F);
            ++file;
        }
    }
}

TEST_F(GridGribFile, StandardInputIsReadForward)
{
    type_in(message(1000) + message(500));
    const Open file("-", kGridGrib);
    ASSERT_EQ(file.kind, kGridGrib);
    GridFileInfo info;
    EXPECT_EQ(GRD_read_header(file.handle, &info), 0);
    for (int place = 0; place < 2; ++place) {
        Grid grid;
        int index = place;
        ASSERT_EQ(GRD_read(file.handle, &grid, 0, &index), 0);
        EXPECT_EQ(grid.level, place == 0 ? 1000 : 500);
    }
}

TEST_F(GridGribFile, EveryMessageOfARealFileIsReadAgain)
{
    const std::string path = shared_data("grib/eta.grb");
    if (path.empty()) {
        GTEST_SKIP() << "no folder of shared data";
    }
    const Open file(path);
    std::vector<int> levels;
    Grid grid;
    int index = 0;
    for (; GRD_read(file.handle, &grid, 1, &index) == 0; ++index) {
        levels.push_back(grid.level);
    }
    ASSERT_EQ(levels.size(), 181U);
    for (const int place : {180, 90, 3}) {
        ASSERT_EQ(GRD_read(file.handle, &grid, 0, &(index = place)), 0);
        EXPECT_EQ(grid.level, levels[static_cast<size_t>(place)]);
    }
}

TEST_F(GridGribFile, WordsOfPlotParamSetTheReaderAndTheWriter)
{
    RES_put("plot_param", "nohdr,max_bad=1,grdfmt%.2f");
    RES_put("grid_path", dir.path().c_str());
    PRM_set(kPrmFileParam, 1);
    Grib1Wish wish;
    wish.ltype = 1;
    wish.data = std::string("\0\377\0\377\0\377\0\377\0\377\0\377", 12);
    const Open file(dir.write("f.grb", grib1_message(wish)));
    dir.write("f.idx", "0 / 96 255 6 100 300 11\n");
    EXPECT_EQ(GRD_attach_index(file.handle, dir.file("f.idx").c_str()), -1);
    Grid grid;
    int index = 0;
    ASSERT_EQ(GRD_read(file.handle, &grid, 0, &index), 0);
    EXPECT_EQ(grid.values[1], 355.0F);
    EXPECT_EQ(grid.values[11], kMissing); // the guard counts the steps up and down
    ASSERT_EQ(GRD_save_file("out", &grid, nullptr, kGridText), 1);
    const std::string text = read_file(dir.file("out"));
    EXPECT_NE(text.find("\n100.00\n"), std::string::npos) << text;
    RES_put("plot_param", "");
    GRD_set_number_format("%14.8e\n");
}

TEST_F(GridGribFile, AFailedSaveLeavesWhatStoodThere)
{
    RES_put("grid_path", dir.path().c_str());
    PRM_set(kPrmFileParam, 1);
    std::signal(SIGXFSZ, SIG_IGN);
    Grid grid;
    grid.domain.proj = kProjLatLon;
    grid.domain.nx = grid.domain.ny = 200;
    grid.domain.dx = grid.domain.dy = 1.0F;
    grid.domain.clat = grid.domain.clon = 0.0F;
    ASSERT_EQ(GRD_alloc(&grid), 1);
    std::fill(grid.values, grid.values + 40000, 1.0F);
    const auto files = [&] {
        const std::filesystem::directory_iterator all(dir.path());
        return std::distance(begin(all), end(all));
    };
    for (const int kind : {kGridOldText, kGridText, kGridBinary, kGridNetcdf}) {
        SCOPED_TRACE(kind);
        for (const bool is_there : {false, true}) {
            if (is_there) {
                dir.write("out", "old");
            }
            rlimit usual{};
            getrlimit(RLIMIT_FSIZE, &usual);
            rlimit small = usual;
            small.rlim_cur = 20000;
            setrlimit(RLIMIT_FSIZE, &small);
            int result = 1;
            told_by([&] { result = GRD_save_file("out", &grid, nullptr, kind); });
            setrlimit(RLIMIT_FSIZE, &usual);
            EXPECT_EQ(result, 0);
            EXPECT_EQ(files(), is_there ? 1 : 0);
            EXPECT_EQ(read_file(dir.file("out")), is_there ? "old" : "");
        }
        std::filesystem::remove(dir.file("out"));
        EXPECT_EQ(GRD_save_file("out", &grid, nullptr, kind), 1);
        EXPECT_EQ(files(), 1);
        std::filesystem::remove(dir.file("out"));
    }
}

TEST_F(GridGribFile, AFailedAdditionLeavesTheFileAsItStood)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const std::string path = dir.write("old", "TYRGRID\n");
    Grid grid;
    grid.domain.proj = kProjLatLon;
    grid.domain.nx = grid.domain.ny = 200;
    ASSERT_EQ(GRD_alloc(&grid), 1);
    std::fill(grid.values, grid.values + 40000, 1.0F);
    const int handle = tyr::grid_open_out(path.c_str(), kGridText, 1, true);
    ASSERT_GE(handle, 1);
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    rlimit small = usual;
    small.rlim_cur = 20000;
    setrlimit(RLIMIT_FSIZE, &small);
    int index = 0;
    EXPECT_NE(told_by([&] { EXPECT_EQ(GRD_write(handle, &grid, 0, &index), -1); }), "");
    setrlimit(RLIMIT_FSIZE, &usual);
    EXPECT_EQ(GRD_close(handle), -1);
    EXPECT_EQ(read_file(path), "TYRGRID\n");
}

TEST_F(GridGribFile, AFullDeviceIsToldAndStays)
{
    RES_put("grid_path", "/dev");
    PRM_set(kPrmFileParam, 1);
    Grid grid;
    grid.domain.proj = kProjLatLon;
    grid.domain.nx = grid.domain.ny = 10;
    ASSERT_EQ(GRD_alloc(&grid), 1);
    std::fill(grid.values, grid.values + 100, 1.0F);
    told_by([&] { EXPECT_EQ(GRD_save_file("full", &grid, nullptr, kGridText), 0); });
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}
