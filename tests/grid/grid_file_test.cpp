#include <cmath>
#include <cstdlib>
#include <cstring>

#include "support/capture.h"
#include "support/scoped_env.h"
#include "support/temp_dir.h"
#include "tyr/base/missing.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/grid/known_domain.h"
#include "tyr/grid/param.h"
#include "tyr/grid_files/grid_out.h"
#include "tyr/grid_files/grid_search.h"

using namespace tyr;

namespace {

/// A record that frees its values.
struct Grid : GridRec {
    Grid() { GRD_init(this); }
    ~Grid() { GRD_free(this); }
    Grid(const Grid &) = delete;
    Grid &operator=(const Grid &) = delete;
};

void make_grid(Grid *grid, int proj, int version)
{
    STR_copy(grid->date, sizeof grid->date, "12Z  6 MAR 99");
    STR_copy(grid->info, sizeof grid->info, "500 mb Geopotential height (10 m)");
    STR_copy(grid->units, sizeof grid->units, "10 m");
    grid->grid_id = 211;
    grid->source = 7;
    grid->version = version;
    grid->model = 83;
    grid->ltype = 100;
    grid->level = 500;
    grid->time = 12;
    grid->var = 7;
    DomainRec &d = grid->domain;
    d.proj = proj;
    d.clat = 40.607F;
    d.clon = -100.553F;
    d.plon = proj == kProjMercator ? kMissing : -95.0F;
    d.dx = 0.8127F;
    d.dy = 0.7F;
    d.nx = 7;
    d.ny = 5;
    if (proj == kProjLambert) {
        d.plat = 41.0F;
        d.parm1 = 25.0F;
        d.parm2 = 35.0F;
        d.parm3 = 1.0F;
    }
    GRD_alloc(grid);
    for (int i = 0; i < d.nx * d.ny; ++i) {
        grid->values[i] = i == 3 ? kMissing : std::sin(static_cast<float>(i)) * 1e4F;
    }
}

void expect_same(const GridRec &a, const GridRec &b)
{
    EXPECT_STREQ(a.date, b.date);
    EXPECT_STREQ(a.info, b.info);
    EXPECT_STREQ(a.units, b.units);
    const int GridRec::*const fields[] = {&GridRec::grid_id, &GridRec::source, &GridRec::version,
                                          &GridRec::model,   &GridRec::ltype,  &GridRec::level,
                                          &GridRec::time,    &GridRec::var};
    for (const auto field : fields) {
        EXPECT_EQ(a.*field, b.*field);
    }
    EXPECT_EQ(std::memcmp(&a.domain, &b.domain, sizeof a.domain), 0);
    ASSERT_NE(b.values, nullptr);
    for (int i = 0; i < a.domain.nx * a.domain.ny; ++i) {
        EXPECT_EQ(a.values[i], b.values[i]) << i;
    }
}

int read_one(const std::string &path, int index, GridRec *grid, int mode = 0)
{
    int kind = 0;
    const int handle = GRD_open(path.c_str(), 0, &kind);
    const int result = GRD_read(handle, grid, mode, &index);
    GRD_close(handle);
    return result;
}

const std::string kHead = "12Z  6 MAR 99\n";

} // namespace

TEST(GridFile, KindIsToldByTheFirstBytes)
{
    const TempDir dir;
    const struct {
        const char *name;
        std::string bytes;
        int kind;
    } cases[] = {
        {"digit before GRIB", "1 GRIB", 1},
        {"blank", " 6 MAR", 1},
        {"text", "TYRGRID\n", 2},
        {"description", "TYRGRID4\n", 4},
        {"netCDF", "CDF\1", 11},
        {"GRIB", "GRIBxxxx", 21},
        {"star", "** X", 21},
        {"start of heading", "\1\r\r\n", 21},
        {"coded", "GRID 11001", 22},
        {"GRIB at 150", std::string(150, 'x') + "GRIB", 21},
        {"GRIB at 200", std::string(200, 'x') + "GRIB", -1},
        {"nothing", "", -1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(GRD_file_type(dir.write("f", c.bytes).c_str()), c.kind);
    }
    EXPECT_EQ(GRD_file_type(dir.file("absent").c_str()), -1);
}

TEST(GridFile, GridsComeBackAsTheyWereWritten)
{
    const TempDir dir;
    RES_put("grid_path", dir.path().c_str());
    PRM_set(kPrmFileParam, 1);
    for (const int kind : {1, 2, 3, 11}) {
        for (const int proj : {1, 2, 3, 4}) {
            for (const int version : {0, 1, 2}) {
                SCOPED_TRACE(STR_print("kind %d proj %d version %d", kind, proj, version));
                Grid grid;
                make_grid(&grid, proj, version);
                ASSERT_EQ(GRD_save_file("out", &grid, nullptr, kind), 1);
                Grid back;
                ASSERT_EQ(read_one(dir.file("out"), 0, &back), 0);
                expect_same(grid, back);
                EXPECT_EQ(read_one(dir.file("out"), 1, &back), -1);
            }
        }
    }
}

TEST(GridFile, TwoFilesAreReadByTurnsInAnyOrder)
{
    const TempDir dir;
    RES_put("grid_path", dir.path().c_str());
    for (const int kind : {2, 3, 11}) {
        SCOPED_TRACE(kind);
        int handles[2];
        for (int f = 0; f < 2; ++f) {
            std::string name = STR_print("g%d_%d", kind, f);
            const int out = GRD_open_out_file(name.data(), kind);
            ASSERT_GE(out, 1);
            GridFileInfo info = {};
            GRD_write_header(out, &info);
            for (int i = 0; i < 4; ++i) {
                Grid grid;
                make_grid(&grid, 2, 2);
                grid.level = 100 * f + i;
                grid.values[0] = static_cast<float>(grid.level);
                ASSERT_EQ(GRD_write(out, &grid, 0, &i), 0);
            }
            ASSERT_EQ(GRD_close(out), 0);
            int found = 0;
            handles[f] = GRD_open(dir.file(name).c_str(), 0, &found);
        }
        Grid back;
        for (const int place : {2, 0, 0, 3, 1}) {
            for (int f = 0; f < 2; ++f) {
                for (const int mode : {1, 0}) {
                    int index = place;
                    ASSERT_EQ(GRD_read(handles[f], &back, mode, &index), 0);
                    EXPECT_EQ(index, place);
                    EXPECT_EQ(back.level, 100 * f + place);
                    ASSERT_EQ(back.values == nullptr, mode == 1);
                }
                EXPECT_EQ(back.values[0], static_cast<float>(100 * f + place));
            }
        }
        const GridWanted wanted = {7, kMissingInt, 103, kMissingInt};
        int index = 0;
        EXPECT_EQ(GRD_search_file(handles[1], &wanted, &back, &index), 0);
        EXPECT_EQ(index, 3);
        EXPECT_EQ(GRD_search_file(handles[0], &wanted, &back, &(index = 0)), -1);
        GRD_close(handles[0]);
        GRD_close(handles[1]);
    }
}

TEST(GridFile, OldAndJoinedTextsAreRead)
{
    const TempDir dir;
    const std::string values = "1 2\n3 4\n";
    const struct {
        const char *name;
        std::string text;
        int index;
        float clon, plon, dy;
        const char *info, *units;
    } cases[] = {
        {"polar by latitude", kHead + "Height\n50 -100 2 2 2\n" + values, 0, -100, -100, 2,
         "Height", ""},
        {"version 1", kHead + "1-T\nLL 40 100 2 3 2 2\n" + values, 0, -100, -100, 3, "T", ""},
        {"record of version 1",
         "TYRGRID\n" + kHead + "2-T\n1 1 1 0 0 0 0 0\nLL 40 100 2 3 2 2\n" + values, 0, -100, -100,
         3, "T", ""},
        {"units in front", kHead + "0-T\n:deg_C PS:-80 40 100 2 3 2 2\n" + values, 0, 100, -80, 3,
         "T", "deg C"},
        {"a number that is no version", kHead + "500-mb T\nME 40 100 2 3 2 2\n" + values, 0, 100,
         kMissing, 3, "500-mb T", ""},
        {"joined",
         "TYRGRID\n" + kHead + "a\nLL 1 1 1 1 1 1\n5\nTYRGRID\n" + kHead +
             "2-b\n1 2 3 4 5 6 7 8:m/s\nLL 40 100 2 3 2 2\n" + values,
         1, 100, 100, 3, "b", "m/s"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        Grid grid;
        ASSERT_EQ(read_one(dir.write("f", c.text), c.index, &grid), 0);
        EXPECT_EQ(grid.domain.clon, c.clon);
        EXPECT_EQ(grid.domain.plon, c.plon);
        EXPECT_EQ(grid.domain.dy, c.dy);
        EXPECT_STREQ(grid.info, c.info);
        EXPECT_STREQ(grid.units, c.units);
        EXPECT_EQ(grid.values[3], 4.0F);
    }
}

TEST(GridFile, ValuesOfAnotherFileTurnByTheirDirections)
{
    const TempDir dir;
    dir.write("numbers", "xx1 2 3 4");
    const std::string head = "TYRGRID\n" + kHead + "4-T\n1 4 1 0 0 0 0 0\nLL 0 0 1 1 2 2\n";
    const struct {
        const char *line;
        float first, second;
    } cases[] = {{"A numbers 2 1 1", 1, 2}, {"A numbers 2 0 1", 2, 1}, {"A numbers 2 1 0", 3, 4}};
    for (const auto &c : cases) {
        Grid grid;
        ASSERT_EQ(read_one(dir.write("f", head + c.line + "\n"), 0, &grid), 0) << c.line;
        EXPECT_EQ(grid.values[0], c.first);
        EXPECT_EQ(grid.values[1], c.second);
    }
    for (const char *line : {"A |touch${IFS}x 0 1 1", "A - 0 1 1", "A absent 0 1 1"}) {
        Grid grid;
        const std::string path = dir.write("f", head + line + "\n");
        EXPECT_NE(told_by([&] {
                      EXPECT_EQ(read_one(path, 0, &grid), -1);
                  }).find("GRD_read: Unable to open grid file: "),
                  std::string::npos);
    }
}

TEST(GridFile, DescriptionFilesTellTheirDomainByText)
{
    const TempDir dir;
    Grid grid;
    const std::string path =
        dir.write("f", "TYRGRID4\n" + kHead + "T\nlatlon:10,40,10,2,2,5,5\n1 2 3 4\n");
    ASSERT_EQ(read_one(path, 0, &grid), 0);
    EXPECT_EQ(grid.domain.proj, kProjLatLon);
    EXPECT_EQ(grid.domain.nx, 2);
    EXPECT_EQ(grid.values[2], 3.0F);
    EXPECT_EQ(grid.version, 0);
}

TEST(GridFile, CodedProductsAreRead)
{
    const TempDir dir;
    RES_put("file_path", TYR_SOURCE_DIR "/data");
    // quadrant 4: rows from the last one up; temperature, two digits with a sign, tenths, from -10
    std::string text = "GRID 12004 11111 22222 104xx 250xx 69903 70612 80012 0xxxx 1xxx1 23 31100";
    for (int row = 0; row < 15; ++row) {
        text += row == 14 ? " 9" : " 5";
        text += STR_print("%02d", row);
        for (int x = 0; x < (row == 14 ? 1 : 19); ++x) {
            text += STR_print(" %d%02d", x % 2, row + x);
        }
    }
    text += " 777\n";
    Grid grid;
    const std::string path = dir.write("f", text);
    EXPECT_EQ(told_by([&] { ASSERT_EQ(read_one(path, 0, &grid), 0); }), "");
    EXPECT_EQ(std::string(grid.info).rfind("500 mb ", 0), 0U) << grid.info;
    EXPECT_EQ(grid.var, 4);
    EXPECT_EQ(grid.ltype, 10);
    EXPECT_EQ(grid.level, 500);
    EXPECT_EQ(grid.time, 12);
    EXPECT_EQ(grid.grid_id, 74);
    EXPECT_EQ(grid.source, 1);
    EXPECT_EQ(grid.model, 2);
    EXPECT_EQ(grid.domain.clon, 45.0F);
    EXPECT_FLOAT_EQ(grid.values[14 * 19 + 0], -10.0F); // first row of the file, the southern one
    EXPECT_FLOAT_EQ(grid.values[14 * 19 + 3], -10.3F);
    EXPECT_FLOAT_EQ(grid.values[0], -8.6F);
    EXPECT_FLOAT_EQ(grid.values[18], -8.6F);
}

TEST(GridFile, TableHasFifteenPlaces)
{
    const TempDir dir;
    const std::string path = dir.write("f", kHead + "T\nLL 0 0 1 1 1 1\n5\n");
    int kind = 0;
    for (int i = 0; i < kMaxGridFiles; ++i) {
        EXPECT_EQ(GRD_open(path.c_str(), 0, &kind), i);
    }
    EXPECT_EQ(told_by([&] { EXPECT_EQ(GRD_open(path.c_str(), 0, &kind), -1); }), "");
    for (int i = 0; i < kMaxGridFiles; ++i) {
        EXPECT_EQ(GRD_close(i), 0);
        EXPECT_EQ(GRD_close(i), 0);
    }
    EXPECT_EQ(GRD_close(-1), -1);
    EXPECT_EQ(GRD_close(15), -1);
    EXPECT_EQ(GRD_open(path.c_str(), 2, &kind), -1);
}

TEST(GridFile, DamageIsToldInOneLineWithTheFile)
{
    const TempDir dir;
    const struct {
        const char *name;
        std::string text;
    } cases[] = {
        {"more points than bytes", kHead + "T\nLL 0 0 1 1 40000 40000\n1 2 3\n"},
        {"cut values", kHead + "T\nLL 0 0 1 1 2 2\n1 2 3\n"},
        {"a word among the values", kHead + "T\nLL 0 0 1 1 2 2\n1 two 3 4\n"},
        {"no points", kHead + "T\nLL 0 0 1 1 0 2\n1 2 3 4\n"},
        {"binary cut", "TYRGRID\n" + kHead + "3-T\n1 3 1 0 0 0 0 0\nLL 0 0 1 1 2 2\nabcd\n"},
        {"unknown projection", kHead + "T\nXX 0 0 1 1 2 2\n1 2 3 4\n"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = dir.write("f", c.text);
        Grid grid;
        const std::string told = told_by([&] { EXPECT_EQ(read_one(path, 0, &grid), -1); });
        EXPECT_EQ(told.rfind("GRD_read: " + path + ", grid 0: ", 0), 0U) << told;
        EXPECT_EQ(told.find('\n'), told.size() - 1);
    }
}

TEST(GridFile, EachDamageOfASmallFileEndsWell)
{
    const TempDir dir;
    RES_put("grid_path", dir.path().c_str());
    PRM_set(kPrmFileParam, 1);
    for (const int kind : {2, 3, 11}) {
        Grid grid;
        make_grid(&grid, 4, 2);
        ASSERT_EQ(GRD_save_file("whole", &grid, nullptr, kind), 1);
        const std::string whole = read_file(dir.file("whole"));
        const auto try_one = [&](const std::string &bytes) {
            const std::string path = dir.write("f", bytes);
            Grid back;
            const int result = read_one(path, 0, &back);
            EXPECT_TRUE(result == 0 ? back.values != nullptr : result == -1);
        };
        told_by([&] {
            for (size_t i = 0; i < whole.size(); ++i) {
                try_one(whole.substr(0, i));
                for (const char c : {'\0', '\xFF', static_cast<char>(~whole[i])}) {
                    std::string damaged = whole;
                    damaged[i] = c;
                    try_one(damaged);
                }
            }
        });
    }
}

TEST(GridFile, ModelFilesOfAnotherLayoutAreRead)
{
    const TempDir dir;
    const struct {
        const char *title;
        int ltype;
    } cases[] = {{"NMC Early run", 9}, {"NMC Early Trop", 7}, {"ECMWF: Maximum wind", 6}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.title);
        const std::string cdl = dir.write(
            "m.cdl",
            STR_print(
                "netcdf m {dimensions: lon=3; lat=2; level=2; frtime=2; rtime=1; variables:"
                "float lat(lat); float lon(lon); int level(level); int frtime(frtime);"
                "int grib_center; int grib_model; int year; int month; int day; int hour;"
                "float T(frtime,level,lat,lon); T:units=\"degK\"; float RH(frtime,lat,lon);"
                ":title=\"%s\"; data: lat=40,45; lon=-100,-95,-90; level=850,500; frtime=0,12;"
                "grib_center=7; grib_model=64; year=2026; month=11; day=23; hour=6;"
                "T=1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,1e31;"
                "RH=1e31,1e31,1e31,1e31,1e31,1e31,7,8,9,10,11,12;}",
                c.title));
        const std::string path = dir.file("m.nc");
        if (std::system(("ncgen -o " + path + " " + cdl).c_str()) != 0) {
            GTEST_SKIP() << "no ncgen";
        }
        int kind = 0;
        const int handle = GRD_open(path.c_str(), 0, &kind);
        ASSERT_EQ(kind, 11);
        GridFileInfo info;
        ASSERT_EQ(GRD_read_header(handle, &info), 0);
        EXPECT_EQ(info.date.year, 2026);
        Grid grid;
        int index = 3;
        ASSERT_EQ(GRD_read(handle, &grid, 0, &index), 0);
        EXPECT_EQ(grid.var, 104);
        EXPECT_EQ(grid.level, 500);
        EXPECT_EQ(grid.time, 12);
        EXPECT_EQ(grid.grid_id, 50);
        EXPECT_EQ(grid.domain.clat, 42.5F);
        EXPECT_EQ(grid.domain.clon, -95.0F);
        EXPECT_EQ(grid.values[0], 22.0F);
        EXPECT_EQ(grid.values[2], kMissing);
        EXPECT_EQ(grid.values[3], 19.0F);
        ASSERT_EQ(GRD_read(handle, &grid, 0, &(index = 4)), 0);
        EXPECT_EQ(grid.var, 0); // empty
        EXPECT_EQ(grid.values[5], kMissing);
        ASSERT_EQ(GRD_read(handle, &grid, 0, &(index = 5)), 0);
        EXPECT_EQ(grid.var, 13);
        EXPECT_EQ(grid.ltype, c.ltype);
        EXPECT_EQ(GRD_read(handle, &grid, 0, &(index = 6)), -1);
        GRD_close(handle);
    }
}

TEST(GridParam, NumbersTurnIntoTheSystems)
{
    const struct {
        int source, version, var, wanted, ltype, level;
        const char *units;
    } cases[] = {
        {98, 1, 167, 11, 105, 2, "K"},    {98, 1, 151, 1, 102, 0, "Pa"},
        {7, 0, 4, 11, 100, 500, "C"},     {7, 1, 1033, 1033, 100, 500, "m/s"},
        {98, 0, 21, 32, 100, 500, "m/s"}, {98, 0, 164, 71, 200, 0, "%"},
    };
    for (const auto &c : cases) {
        Grid grid;
        grid.source = c.source;
        grid.version = c.version;
        grid.var = c.var;
        grid.ltype = 100;
        grid.level = 500;
        GRD_convert_param(&grid);
        EXPECT_EQ(grid.var, c.wanted);
        EXPECT_EQ(grid.ltype, c.ltype);
        EXPECT_EQ(grid.level, c.level);
        EXPECT_STREQ(grid.units, c.units);
    }
    EXPECT_STREQ(GRD_unit_text(102), "geopotential meters");
    EXPECT_EQ(GRD_unit_text(3), nullptr);
}
