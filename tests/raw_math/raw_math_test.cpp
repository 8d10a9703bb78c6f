#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "support/capture.h"
#include "support/shared_data.h"
#include "support/temp_dir.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/raw_math/raw_math.h"
#include "tyr/raw_math/raw_write.h"

namespace {

/// The files of the folder a command is run in.
constexpr const char *kA =
    "TYRRAW\n12Z 06 MAR 99\n!one\nid lat lon t:Temp_in_C:%3.1f u $\n"
    "AAA 40 -100 10 1\nBBB 41 -101 20 2\nBBB 41 -101 99 9\nCCC 42 -102 - 3\n";
constexpr const char *kB = "TYRRAW\n18Z 06 MAR 99\n!two\nid lat lon t:Temp_in_C:%3.1f u $\n"
                           "BBB 41 -101 4 5\nAAA 40 -100 3 6\nAAA 40 -100 7 6\nDDD 43 -103 8 7\n";
constexpr const char *kPlain = "TYRRAW\nnow\nno fields\nX 1 2 5.5\nY - - -2\n";

/// One command: words parted by blanks, the settings, what the file "out" holds then (null for no
/// file), whether it succeeds and what it tells.
struct CommandCase {
    const char *name;
    const char *command;
    const char *parameter;
    const char *out;
    const char *told = "";
    const char *identifiers = "";
    const char *format = "%1.1f";
};

constexpr const char *kNotOpened = "RAW_file_open: Unable to open file:";
constexpr const char *kRefused = "RAW_math_command: Invalid operation\n";

constexpr CommandCase kCommands[] = {
    // the first value column is -0
    {"sum of two", "sum aa-0 bb-0 = out", "",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 13.0\nBBB  41.00 -101.00 24.0\n\n"},
    {"case of words", "SUM aa-0 bb-0 = out", "",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 13.0\nBBB  41.00 -101.00 24.0\n\n"},
    {"three files", "sum aa-0 bb-0 bb-0 = out", "",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 16.0\nBBB  41.00 -101.00 28.0\n\n"},
    {"max", "max aa-0 bb-0 = out", "",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 10.0\nBBB  41.00 -101.00 20.0\n\n"},
    {"min", "min aa-0 bb-0 = out", "",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 3.0\nBBB  41.00 -101.00 4.0\n\n"},
    {"copy takes the last", "copy aa-0 bb-0 = out", "",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 3.0\nBBB  41.00 -101.00 4.0\n\n"},
    {"merge likewise", "merge aa-0 bb-0 = out", "",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 3.0\nBBB  41.00 -101.00 4.0\n\n"},
    {"missing as 0 enters all", "sum aa-0 bb-0 = out", "miss=0",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 13.0\nBBB  41.00 -101.00 24.0\n"
     "DDD  43.00 -103.00 8.0\n\n"},
    {"and what equals it when asked", "sum aa-0 bb-0 = out", "MISS=0,outmiss",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 13.0\nBBB  41.00 -101.00 24.0\n"
     "CCC  42.00 -102.00 0.0\nDDD  43.00 -103.00 8.0\n\n"},
    {"header words", "sum aa-0 bb-0 = out second date", "",
     "TYRRAW\ndate\nsecond\nAAA  40.00 -100.00 13.0\nBBB  41.00 -101.00 24.0\n\n"},
    {"a dash keeps both texts", "sum aa-0 bb-0 = out - date", "",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 13.0\nBBB  41.00 -101.00 24.0\n\n"},
    {"one station alone", "sum aa-0 bb-0 = out", "",
     "TYRRAW\n12Z 06 MAR 99\none\nBBB  41.00 -101.00 24.0\n\n", "", "BBB"},
    {"no output word", "sum aa-0 bb-0", "", nullptr},
    {"a less b", "aa-0 sub bb-0 = out", "",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 7.0\nBBB  41.00 -101.00 16.0\n\n"},
    {"a by b", "aa-0 div bb-0 = out", "",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 3.3\nBBB  41.00 -101.00 5.0\n\n"},
    {"a times b", "aa-0 mul bb-0 = out", "",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 30.0\nBBB  41.00 -101.00 80.0\n\n"},
    {"what b lacks isn't written", "aa-1 add bb-0 = out", "",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 4.0\nBBB  41.00 -101.00 6.0\n\n"},
    {"mod of two files takes b", "aa-0 mod bb-0 = out", "",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 3.0\nBBB  41.00 -101.00 4.0\n\n"},
    {"a constant behind", "aa-0 sub #4 = out", "",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 6.0:%3.1f\nBBB  41.00 -101.00 16.0:%3.1f\n"
     "BBB  41.00 -101.00 95.0:%3.1f\n\n"},
    {"a constant in front", "#10 sub aa-0 = out text when", "",
     "TYRRAW\nwhen\ntext\nAAA  40.00 -100.00 0.0:%3.1f\nBBB  41.00 -101.00 -10.0:%3.1f\n"
     "BBB  41.00 -101.00 -89.0:%3.1f\n\n"},
    {"a constant by a file", "#10 div bb-0 = out", "",
     "TYRRAW\n18Z 06 MAR 99\ntwo\nBBB  41.00 -101.00 2.5:%3.1f\nAAA  40.00 -100.00 3.3:%3.1f\n"
     "AAA  40.00 -100.00 1.4:%3.1f\nDDD  43.00 -103.00 1.2:%3.1f\n\n"},
    {"remainders", "bb-0 mod #3 = out", "",
     "TYRRAW\n18Z 06 MAR 99\ntwo\nBBB  41.00 -101.00 1.0:%3.1f\nAAA  40.00 -100.00 0.0:%3.1f\n"
     "AAA  40.00 -100.00 1.0:%3.1f\nDDD  43.00 -103.00 2.0:%3.1f\n\n"},
    {"remainders of a constant", "#10 mod bb-0 = out", "",
     "TYRRAW\n18Z 06 MAR 99\ntwo\nBBB  41.00 -101.00 2.0:%3.1f\nAAA  40.00 -100.00 1.0:%3.1f\n"
     "AAA  40.00 -100.00 3.0:%3.1f\nDDD  43.00 -103.00 2.0:%3.1f\n\n"},
    {"not above", "bb-0 ge #4 = out", "",
     "TYRRAW\n18Z 06 MAR 99\ntwo\nBBB  41.00 -101.00 4.0:%3.1f\nAAA  40.00 -100.00 3.0:%3.1f\n"
     "AAA  40.00 -100.00 -:%3.1f\nDDD  43.00 -103.00 -:%3.1f\n\n"},
    {"not below", "bb-0 le #4 = out", "",
     "TYRRAW\n18Z 06 MAR 99\ntwo\nBBB  41.00 -101.00 4.0:%3.1f\nAAA  40.00 -100.00 -:%3.1f\n"
     "AAA  40.00 -100.00 7.0:%3.1f\nDDD  43.00 -103.00 8.0:%3.1f\n\n"},
    {"missing takes the value", "aa-0 add #1 = out", "miss=5",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 11.0:%3.1f\nBBB  41.00 -101.00 21.0:%3.1f\n"
     "BBB  41.00 -101.00 100.0:%3.1f\nCCC  42.00 -102.00 6.0:%3.1f\n\n"},
    {"an extract has the label", "ext bb-t = out", "",
     "TYRRAW\n18Z 06 MAR 99\ntwo-Temp in C\nBBB  41.00 -101.00 4.0:%3.1f\n"
     "AAA  40.00 -100.00 3.0:%3.1f\nAAA  40.00 -100.00 7.0:%3.1f\nDDD  43.00 -103.00 "
     "8.0:%3.1f\n\n"},
    {"or the name of its column", "ext bb-u = out", "noattr",
     "TYRRAW\n18Z 06 MAR 99\ntwo-u\nBBB  41.00 -101.00 5.0\nAAA  40.00 -100.00 6.0\n"
     "AAA  40.00 -100.00 6.0\nDDD  43.00 -103.00 7.0\n\n"},
    {"without the format", "ext bb-t = out", "noattr",
     "TYRRAW\n18Z 06 MAR 99\ntwo-Temp in C\nBBB  41.00 -101.00 4.0\nAAA  40.00 -100.00 3.0\n"
     "AAA  40.00 -100.00 7.0\nDDD  43.00 -103.00 8.0\n\n"},
    {"a series by numbers", "series aa-0 bb-0 = out", "noattr",
     "TYRRAW\n12Z 06 MAR 99\nTemp in C\n1  40.00 -100.00 10.0:%3.1f\n2  40.00 -100.00 3.0:%3.1f\n"
     "2  40.00 -100.00 7.0:%3.1f\n\n",
     "", "AAA"},
    {"a series by labels", "series aa-1:12Z bb-1:18Z_of_the_day = out text day", "",
     "TYRRAW\nday\ntext\n12Z  40.00 -100.00 1.0\n18Z_of_the  40.00 -100.00 6.0\n"
     "18Z_of_the  40.00 -100.00 6.0\n\n",
     "", "AAA"},
    {"no fields", "plain add #1 = out", "", "TYRRAW\nnow\n\nX   1.00    2.00 6.5\nY -1.0\n\n"},
    {"an output that is an input", "sum out-0 bb-0 = out", "",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 13.0\nBBB  41.00 -101.00 24.0\n\n"},
    {"a stream into its own input", "out-0 mul #2 = out", "",
     "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 20.0:%3.1f\nBBB  41.00 -101.00 40.0:%3.1f\n"
     "BBB  41.00 -101.00 198.0:%3.1f\n\n"},
    {"a file that isn't there", "sum aa-0 none = out", "", nullptr, kNotOpened},
    {"the second of a series", "series aa-0 none = out", "", nullptr, kNotOpened},
    {"an unknown operation", "a pow b = out", "", nullptr, kRefused},
    {"words missing", "a add b =", "", nullptr, kRefused},
    {"no sign", "a add b out more", "", nullptr, kRefused},
    {"a sign alone", "=", "", nullptr, kRefused},
    {"a sign first", "sum = out", "", nullptr, kRefused},
    {"an operation alone", "sum", "", nullptr, kRefused},
    {"an extract without output", "ext a", "", nullptr, kRefused},
    {"a series of nothing", "series = out", "", nullptr, kRefused},
    {"a constant that is none", "a add #x = out", "", nullptr, kRefused},
};

class RawMathTest : public testing::Test {
  protected:
    RawMathTest()
    {
        RES_put("raw_path", folder_.path().c_str());
        folder_.write("name_conv", "");
        RES_put("file_path", folder_.path().c_str());
    }
    ~RawMathTest() override
    {
        for (const char *name :
             {"raw_path", "file_path", "parameter", "identifier", "plot_format"}) {
            RES_put(name, "");
        }
    }

    static int run(const std::string &command)
    {
        std::vector<std::string> words = STR_fields(command.c_str(), ' ');
        std::vector<char *> pointers;
        for (std::string &word : words) {
            pointers.push_back(word.data());
        }
        return RAW_math_command(static_cast<int>(pointers.size()), pointers.data());
    }

    TempDir folder_;
};

TEST_F(RawMathTest, Commands)
{
    for (const CommandCase &c : kCommands) {
        SCOPED_TRACE(c.name);
        folder_.write("aa", kA);
        folder_.write("bb", kB);
        folder_.write("plain", kPlain);
        std::remove(folder_.file("out").c_str());
        if (std::string(c.command).find("out-0") != std::string::npos) {
            folder_.write("out", kA);
        }
        RES_put("parameter", c.parameter);
        RES_put("identifier", c.identifiers);
        RES_put("plot_format", c.format);
        int result = -1;
        const std::string told = told_by([&] { result = run(c.command); });
        EXPECT_EQ(result, c.out != nullptr || c.told[0] == '\0' ? 1 : 0);
        EXPECT_NE(told.find(c.told), std::string::npos) << told;
        EXPECT_EQ(read_file(folder_.file("out")), c.out != nullptr ? c.out : "");
    }
}

TEST_F(RawMathTest, RealStationsMeetByTheirIds)
{
    const std::string list = shared_data("stations/profiler_sites.stn");
    if (list.empty()) {
        GTEST_SKIP() << "../shared/data isn't there";
    }
    std::ifstream file(list);
    std::vector<std::string> rows;
    std::string expected;
    for (std::string line; std::getline(file, line);) {
        std::vector<std::string> words = STR_fields(line.c_str(), ' ');
        std::erase(words, "");
        const size_t n = words.size();
        const double lat = std::stod(words[n - 3]) / 100.0;
        const double lon = std::stod(words[n - 2]) / 100.0;
        rows.push_back(
            STR_print("%s %.2f %.2f %s\n", words[0].c_str(), lat, lon, words[n - 1].c_str()));
        expected += STR_print("%s %6.2f %7.2f %d\n", words[0].c_str(), lat, lon,
                              2 * std::stoi(words[n - 1]));
    }
    ASSERT_GT(rows.size(), 30U);
    std::string text;
    std::string turned;
    for (const std::string &row : rows) {
        text += row;
        turned = row + turned;
    }
    folder_.write("there", "TYRRAW\nnow\nelevations\n" + text);
    folder_.write("back", "TYRRAW\nnow\nelevations\n" + turned);
    RES_put("plot_format", "%1.0f");
    EXPECT_EQ(run("sum there-0 back-0 = out"), 1);
    EXPECT_EQ(read_file(folder_.file("out")), "TYRRAW\nnow\n\n" + expected + "\n");
}

TEST_F(RawMathTest, TenThousandWords)
{
    folder_.write("aa", kA);
    std::string command = "sum";
    for (int i = 0; i < 10000; ++i) {
        command += " aa-0";
    }
    RES_put("plot_format", "%1.0f");
    EXPECT_EQ(run(command + " = out"), 1);
    EXPECT_EQ(read_file(folder_.file("out")),
              "TYRRAW\n12Z 06 MAR 99\none\nAAA  40.00 -100.00 100000\n"
              "BBB  41.00 -101.00 200000\n\n");
}

TEST_F(RawMathTest, DamagedInputEndsWell)
{
    const std::string whole = kA;
    for (size_t i = 0; i < whole.size(); ++i) {
        for (const char byte : {'\0', '\n', ' ', ':', '=', '\xFF'}) {
            std::string damaged = whole;
            damaged[i] = byte;
            folder_.write("aa", damaged);
            told_by([&] { EXPECT_EQ(run("sum aa-0 aa-0 = out"), 1); });
        }
        folder_.write("aa", whole.substr(0, i));
        told_by([&] { EXPECT_EQ(run("aa-t add #1 = out"), 1); });
        EXPECT_TRUE(read_file(folder_.file("out")).starts_with("TYRRAW\n")) << i;
    }
}

/// How a value is written. The value is 12.5,7, "word" and without a format unless told.
struct WrittenCase {
    const char *name;
    int kind;
    int mode;
    const char *plot_format;
    const char *expected;
};

constexpr WrittenCase kWritten[] = {
    {"text", kRawWord, 1, "", "ID  10.00  -20.00 word\n"},
    {"number", kRawNumber, 1, "", "ID  10.00  -20.00 12.500000\n"},
    {"format", kRawNumber, 1, "%1.0e", "ID  10.00  -20.00 1e+01\n"},
    {"integer", 5, 1, "", "ID  10.00  -20.00 13\n"},
    {"vector", 21, 1, "", "ID  10.00  -20.00 12.500000,7.000000\n"},
    {"name of a kind", kRawWord, 1, "barb", "ID  10.00  -20.00 12.500000,7.000000\n"},
    {"the last word wins", kRawWord, 1, "barb,%1.1f", "ID  10.00  -20.00 12.5\n"},
    {"strings are none", kRawNumber, 1, "%s%n", "ID  10.00  -20.00 12.500000\n"},
    {"another kind", 32, 1, "", "ID  10.00  -20.00 -\n"},
    {"value alone", kRawNumber, 0, "%1.1f", " 12.5"},
    {"place alone", kRawNumber, 3, "", "ID  10.00  -20.00"},
    {"end of a line", kRawNumber, 5, "", "\n"},
};

TEST_F(RawMathTest, ValuesAreWrittenByTheirKind)
{
    for (const WrittenCase &c : kWritten) {
        SCOPED_TRACE(c.name);
        RES_put("plot_format", c.plot_format);
        const int handle = RAW_open(folder_.file("out").c_str(), kRawWrite, nullptr);
        RawValue value = {};
        STR_copy(value.id, sizeof value.id, "ID");
        STR_copy(value.text, sizeof value.text, "word");
        value.lat = 10.0F;
        value.lon = -20.0F;
        value.value1 = 12.5F;
        value.value2 = 7.0F;
        value.kind = c.kind;
        RAW_write_value(handle, &value, c.mode, nullptr);
        RAW_close(handle);
        EXPECT_EQ(read_file(folder_.file("out")), std::string(c.expected) + "\n");
    }
}

} // namespace
