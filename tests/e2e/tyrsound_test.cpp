// The companion tyrsound as a user runs it.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/program.h"
#include "support/screen.h"
#include "support/temp_dir.h"
#include "support/window_user.h"
#include "tyr/base/str.h"

namespace {

using namespace tyr;

// a bulletin of two parts, without the station's elevation
constexpr const char *kBulletin =
    "USUS44 KJAN 221223\nMANJAN\n72235 TTAA 72121 72235 99000 24416 18006 00089 ///// ///// 92772 "
    "21205 20540 85503 17218 22044 70136 09040 23538 50584 07191 24532 40754 183// 25532 30962 "
    "35377 25047 25086 43772 24560 20232 54767 24069 88125 71361 25061 77182 25075 41112=\n"
    "TTBB 72120 72235 00000 24416 11985 23605 22889 20018 33706 09024 44500 07191=\n"
    "PPBB 72120 72235 90012 18006 19033 20037 916// 23038=\n";
// another source's text, with a warm and moist layer at the ground
constexpr const char *kTable = "%TITLE%\n OAX   140616/1900  41.32,-96.37\n\n%RAW%\n"
                               " 965.00, 350.00, 27.80, 23.80, 150.00, 23.00\n"
                               " 850.00, 1460.00, 22.00, 18.00, 190.00, 40.00\n"
                               " 700.00, 3118.00, 11.60, 2.60, 215.00, 50.99\n"
                               " 500.00, 5820.00, -9.90, -19.90, 230.00, 53.00\n"
                               " 300.00, 9540.00, -37.00, -50.00, 240.00, 60.00\n"
                               " 200.00, 12200.00, -55.00, -65.00, 245.00, 70.00\n%END%\n";

class TyrSound : public testing::Test {
  protected:
    TyrSound()
    {
        folder_.write("wire.txt", kBulletin);
        folder_.write("oax.txt", kTable);
    }
    RunResult tyrsound(std::vector<std::string> words)
    {
        words.insert(words.begin(), {TYR_BINARY_DIR "/bin/tyrsound", "-df", "/nonexistent", "-fp",
                                     TYR_SOURCE_DIR "/data", "-cu", "12Z 30 SEP 06"});
        return run(words, {.folder = folder_.path()});
    }

    TempDir folder_;
};

/// The line of a listing that begins with a station, with single blanks.
std::string line_of(const std::string &text, const std::string &station)
{
    for (const std::string &line : STR_fields(text, '\n')) {
        if (STR_has_prefix(line, station)) {
            std::string plain;
            for (const char c : line) {
                if (c != ' ' || (!plain.empty() && plain.back() != ' ')) {
                    plain += c;
                }
            }
            return plain;
        }
    }
    return "";
}

TEST_F(TyrSound, ListsTheReportsOfAllFiles)
{
    const RunResult result = tyrsound({"wire.txt", "oax.txt"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "");
    // the bulletin tells the 22nd alone: that of the month up to "-cu"
    EXPECT_EQ(line_of(result.out, "JAN"), "JAN 72235 - - - 12 5 4 1200Z 22 SEP 06");
    EXPECT_EQ(line_of(result.out, "OAX"), "OAX - 41.32 -96.37 350 6 1 0 1900Z 16 JUN 14");
}

TEST_F(TyrSound, PrintsListingsOfTheChosenStation)
{
    const RunResult levels = tyrsound({"wire.txt", "oax.txt", "-id", "72235", "-va", "levels"});
    EXPECT_EQ(levels.code, 0);
    // the elevation is that of the list of stations
    EXPECT_NE(levels.out.find("SFC 1000    101  24.4  22.8"), std::string::npos) << levels.out;
    EXPECT_EQ(levels.out.find("OAX"), std::string::npos);
    EXPECT_EQ(levels.out.find("Storm"), std::string::npos);
    const RunResult all = tyrsound({"wire.txt", "oax.txt", "-ta"});
    for (const char *told : {"JAN  1200Z 22 SEP 06", "OAX  1900Z 16 JUN 14", "Storm Parameters"}) {
        EXPECT_NE(all.out.find(told), std::string::npos) << told;
    }
}

TEST_F(TyrSound, DrawsEachPicture)
{
    for (const char *word : {"skewt", "tephi", "upright", "hodo"}) {
        SCOPED_TRACE(word);
        const RunResult result = tyrsound({"oax.txt", "-va", word, "-de", "p,out.ps,color"});
        EXPECT_EQ(result.code, 0) << result.err;
        const std::string drawn = read_file(folder_.file("out.ps"));
        EXPECT_NE(drawn.find("%%Begin plot"), std::string::npos);
        EXPECT_GT(drawn.size(), 10000U);
    }
}

TEST_F(TyrSound, ConvertsToEachFormThatItReadsAgain)
{
    const struct {
        const char *form;
        int mand, sig, wind; ///< what the form holds of the report
    } cases[] = {{"short", 5, 4, 4},   {"longer", 8, 4, 4},  {"fixed", 12, 4, 4},
                 {"free", 12, 5, 4},   {"placed", 12, 5, 4}, {"netcdf", 12, 5, 4},
                 {"netcdf2", 12, 5, 4}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.form);
        const RunResult written =
            tyrsound({"wire.txt", "-of", "out", "-ou", c.form, "-pf", "over"});
        ASSERT_EQ(written.code, 0) << written.err;
        const RunResult listed = tyrsound({"out"});
        EXPECT_EQ(listed.code, 0);
        const std::string line = line_of(listed.out, "JAN");
        const std::string counts = STR_print(" %d %d %d 1200Z 22 SEP 06", c.mand, c.sig, c.wind);
        EXPECT_NE(line.find(counts), std::string::npos) << line;
    }
}

TEST_F(TyrSound, StandardOutputHoldsTheReportsAlone)
{
    const RunResult result = tyrsound({"wire.txt", "-of", "-"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out.rfind("TYRUPAx\n1200Z 22 SEP 06\n72235:JAN ", 0), 0U) << result.out;
}

TEST_F(TyrSound, WritesARawSoundingWithTheSameAnalysis)
{
    ASSERT_EQ(tyrsound({"oax.txt", "-of", "oax.raw"}).code, 0);
    const RunResult from_report = tyrsound({"oax.txt", "-va", "indices"});
    const RunResult from_raw = tyrsound({"oax.raw", "-va", "indices"});
    EXPECT_EQ(from_raw.code, 0);
    const auto line_with = [](const std::string &text, const char *word) {
        const size_t at = text.find(word);
        return at == std::string::npos ? "" : text.substr(at, text.find('\n', at) - at);
    };
    for (const char *word : {"Lifted", "Showalter", "K Index", "Total"}) {
        EXPECT_EQ(line_with(from_raw.out, word), line_with(from_report.out, word));
    }
    EXPECT_GT(from_raw.out.size(), 500U);
}

TEST_F(TyrSound, TellsWhatItCantDo)
{
    folder_.write("empty", "");
    folder_.write("digits", "\x01\x02 no report");
    folder_.write("bad.raw", "TYRRAW\n");
    ASSERT_EQ(tyrsound({"wire.txt", "-of", "out.xml"}).code, 0);
    ASSERT_EQ(tyrsound({"wire.txt", "-of", "out.bin"}).code, 0);
    const struct {
        std::vector<std::string> words;
        int code;
        const char *told;
    } cases[] = {
        {{"-ba"}, 10, "No upper-air file was named"},
        {{"none"}, 10, "Unable to open file:none"},
        {{"empty"}, 10, "empty: an empty file"},
        {{"digits"}, 10, "digits: not a file of upper-air reports"},
        {{"out.xml"}, 10, "an XML file can't be read"},
        {{"out.bin"}, 10, "a binary digest can't be read"},
        {{"bad.raw"}, 11, "bad.raw: no level in it"},
        {{"wire.txt", "-id", "XYZ"}, 31, "XYZ: no such station"},
        {{"wire.txt", "-va", "rainbow"}, 11, "rainbow: neither a picture nor a listing"},
        {{"wire.txt", "-va", "skewt,hodo"}, 11, "More than one picture"},
        {{"wire.txt", "-of", "-", "-ou", "netcdf"}, 12, "netCDF can't be written to standard"},
        {{"wire.txt", "-of", "x", "-ou", "gif"}, 12, "gif: not a form"},
        {{"wire.txt", "oax.txt", "-of", "x.raw"}, 31, "holds one station"},
        {{"wire.txt", "-of", "/proc/nowhere/x"}, 12, "/proc/nowhere/x: can't be written"},
        {{"oax.txt", "-of", "/proc/nowhere/x.raw"}, 12, "/proc/nowhere/x.raw"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.told);
        const RunResult result = tyrsound(c.words);
        EXPECT_EQ(result.code, c.code);
        EXPECT_NE((result.err + result.out).find(c.told), std::string::npos)
            << result.err << result.out;
    }
}

TEST_F(TyrSound, AWindowTakesANewSize)
{
    const VirtualScreen screen;
    NEED_SCREEN(screen);
    WindowUser user(
        screen,
        {"-de", "d", "-ti", "Sounding", "-me", "mess", "-va", "skewt", folder_.file("oax.txt")},
        folder_.file("log"), "tyrsound");
    ASSERT_TRUE(user.sees_window("Sounding")) << read_file(folder_.file("log"));
    const Picture first = user.look();
    user.resize(900, 700);
    const Picture resized = user.look();
    EXPECT_EQ(resized.width, 900);
    EXPECT_EQ(resized.height, 700);
    user.resize(first.width, first.height);
    EXPECT_EQ(user.look().differences(first), 0);
    user.press_key("Return");
    EXPECT_EQ(user.wait_for_exit(), 0) << read_file(folder_.file("log"));
}

} // namespace
