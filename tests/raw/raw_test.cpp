#include <cmath>
#include <random>

#include "support/temp_dir.h"
#include "tyr/base/res.h"
#include "tyr/raw/raw.h"

namespace {

constexpr const char *kHeader = "TYRRAW surface\n12Z 06 MAR 99\n!%1.0f:ul\n";

/// One value as a text: "id@lat,lon value1 value2 text format".
std::string show(const RawValue &v)
{
    const auto number = [](float f) {
        char text[32];
        std::snprintf(text, sizeof text, "%g", static_cast<double>(f));
        return is_missing(f) ? std::string("-") : std::string(text);
    };
    return std::string(v.id) + "@" + number(v.lat) + "," + number(v.lon) + " " + number(v.value1) +
           " " + number(v.value2) + " '" + v.text + "' '" + v.format + "'";
}

struct RawTest : ::testing::Test {
    TempDir folder;
    int handle = -1;
    RawHeader header = {};
    ~RawTest() override { RAW_close(handle); }
    void open(const std::string &text)
    {
        RAW_close(handle);
        int type = 0;
        handle = RAW_open(folder.write("raw", text).c_str(), kRawRead, &type);
        ASSERT_GE(handle, 0);
        EXPECT_EQ(type, !text.empty() && text[0] == 'T' ? kRawHeadered : kRawHeaderless);
        RAW_read_header(handle, &header);
    }
    /// All of a column, a line each; "0" for a line without it.
    std::string column(long number)
    {
        std::string out;
        RawValue value;
        for (int result; (result = RAW_read_value(handle, &value, number, nullptr)) != -1;) {
            out += result == 1 ? show(value) + "\n" : "0\n";
        }
        return out;
    }
};

} // namespace

TEST_F(RawTest, HeaderTellsDateFormatAndFields)
{
    open(std::string(kHeader) +
         "id lat lon tmpf:Temp_in_F:%3.0f\nwind:Wind $ ignored words\nA 1 2 3\n");
    EXPECT_STREQ(header.title, "12Z 06 MAR 99");
    EXPECT_EQ(header.date.year, 1999);
    EXPECT_EQ(header.date.hour, 12);
    EXPECT_STREQ(header.format, "%1.0f:ul");
    EXPECT_STREQ(RAW_field_label(handle, 10), "Temp in F");
    EXPECT_STREQ(RAW_field_label(handle, RAW_name_column("WIND")), "Wind");
    EXPECT_STREQ(RAW_field_label(handle, kRawId), "");
    EXPECT_EQ(RAW_field_label(handle, 12), nullptr);
    EXPECT_EQ(RAW_field_label(handle, RAW_name_column("none")), nullptr);
    EXPECT_EQ(RAW_field_label(-1, 10), nullptr);
    EXPECT_EQ(column(10), "A@1,2 3 - '3' '%3.0f'\n");
}

TEST_F(RawTest, WordsOfALineAreTakenApart)
{
    const struct {
        const char *name, *fields, *line, *shown;
    } cases[] = {
        {"value", "id lat lon t $", "KDEN 40 -105 12.5", "KDEN@40,-105 12.5 - '12.5' ''"},
        {"both and a format", "id lat lon t $", "KDEN 40 -105 12.5,7:%4.1f",
         "KDEN@40,-105 12.5 7 '12.5,7' '%4.1f'"},
        {"both formats", "id lat lon t::%2.0f $", "KDEN 40 -105 5:ul",
         "KDEN@40,-105 5 - '5' '%2.0f:ul'"},
        {"missing value", "id lat lon t $", "KDEN 40 -105 -", "KDEN@40,-105 - - '' ''"},
        {"missing place", "id lat lon t $", "KDEN - - 7", "KDEN@-,- 7 - '7' ''"},
        {"half a place", "id lat lon t $", "KDEN 40 - 7", "KDEN@40,- 7 - '7' ''"},
        {"place of words", "id lat lon t $", "KDEN north west 7", "KDEN@-,- 7 - '7' ''"},
        {"text", "id lat lon wx $", "KDEN 40 -105 TSRA:mk=x", "KDEN@40,-105 - - 'TSRA' 'mk=x'"},
        {"named value", "id lat lon t $", "KDEN 40 -105 t=3", "KDEN@40,-105 3 - '3' ''"},
        {"no number", "id lat lon t $", "KDEN 40 -105 -nan", "KDEN@40,-105 - - '-nan' ''"},
        {"one value behind", "id lat lon t $", "   KDEN\t40   -105   1  ",
         "KDEN@40,-105 1 - '1' ''"},
        {"carriage return", "id lat lon t $", "KDEN 40 -105 12\r", "KDEN@40,-105 12 - '12' ''"},
        {"pressure", "id p t $", "KDEN 850 12", "KDEN@850,- 12 - '12' ''"},
        {"pressure, word", "id pres t $", "KDEN x 12", "KDEN@-,- 12 - '12' ''"},
        {"no place", "id t td $", "KDEN 12 8", "KDEN@-,- 12 - '12' ''"},
        {"three fields only", "id lat lon $", "KDEN 40 -105", "KDEN@-,- 40 - '40' ''"},
        {"two for p", "id p $", "KDEN 850", "KDEN@-,- 850 - '850' ''"},
        {"only an id", "id lat lon t $", "KDEN", "0"},
        {"no value", "id lat lon t $", "KDEN 40 -105", "0"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        open(std::string(kHeader) + c.fields + "\n" + c.line + "\nNEXT 1 2 3\n");
        const std::string all = column(kRawFirstValue);
        EXPECT_EQ(all.substr(0, all.find('\n')), c.shown);
    }
}

TEST_F(RawTest, HeaderlessFilesHavePlacesWhereTheyStand)
{
    open("KDEN 40 -105 12\nKORD 5\n12345 - - 4\n");
    EXPECT_EQ(column(kRawFirstValue), "KDEN@40,-105 12 - '12' ''\n"
                                      "KORD@-,- 5 - '5' ''\n"
                                      "12345@-,- 4 - '4' ''\n");
    open("TYRRAW\n12Z 06 MAR 99\nno field list\nKDEN 40 -105 12\n");
    EXPECT_EQ(column(kRawFirstValue), "KDEN@40,-105 12 - '12' ''\n");
}

TEST_F(RawTest, ColumnsAreFoundByNumberAndName)
{
    open(std::string(kHeader) + "id lat lon t td $\n72469 40 -105 12 8 speed=15\nB 41 -106 13\n");
    const struct {
        const char *name;
        long column;
        const char *shown;
    } cases[] = {
        {"first value", 10, "72469@40,-105 12 - '12' ''\nB@41,-106 13 - '13' ''\n"},
        {"second value", 11, "72469@40,-105 8 - '8' ''\n0\n"},
        {"id", kRawId, "72469@40,-105 72469 - '72469' ''\nB@41,-106 - - 'B' ''\n"},
        {"id by name", RAW_name_column("id"),
         "72469@40,-105 72469 - '72469' ''\nB@41,-106 - - 'B' ''\n"},
        {"by name", RAW_name_column("TD"), "72469@40,-105 8 - '8' ''\n0\n"},
        {"just ahead", 9, "72469@40,-105 -105 - '-105' ''\nB@41,-106 -106 - '-106' ''\n"},
        {"ahead of them", RAW_name_column("lon"),
         "72469@40,-105 -105 - '-105' ''\nB@41,-106 -106 - '-106' ''\n"},
        {"named in a word", RAW_name_column("speed"), "72469@40,-105 15 - '15' ''\n0\n"},
        {"part of a name", RAW_name_column("spee"), "0\n0\n"},
        {"no name", RAW_name_column(""), "0\n0\n"},
        {"too far", 75, "0\n0\n"},
        {"none", kRawNoColumn, "0\n0\n"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(RAW_rewind(handle), 0);
        EXPECT_EQ(column(c.column), c.shown);
    }
    const char *name = "speed";
    RAW_rewind(handle);
    RawValue value;
    EXPECT_EQ(RAW_read_value(handle, &value, reinterpret_cast<long>(name), nullptr), 1);
    EXPECT_EQ(value.value1, 15.0F);
    EXPECT_EQ(value.station, 72469);
}

TEST_F(RawTest, WalkGivesALinesValuesThenTheNextLine)
{
    open(std::string(kHeader) + "id lat lon t td $\nA 40 -105 12 8 \nB 41 -106\nC 42 -107 1:cc\n");
    const struct {
        int result;
        const char *shown;
        int field;
    } steps[] = {
        {1, "A@40,-105 12 - '12' ''", 3},        {1, "A@40,-105 8 - '8' ''", 4},
        {0, "A@40,-105 - - '' ''", kMissingInt}, {0, "B@41,-106 - - '' ''", kMissingInt},
        {1, "C@42,-107 1 - '1' 'cc'", 3},        {0, "C@42,-107 - - '' ''", kMissingInt},
        {-1, "@-,- - - '' ''", kMissingInt},     {-1, "@-,- - - '' ''", kMissingInt},
    };
    for (const bool with_line : {false, true}) {
        RAW_rewind(handle);
        int line = 0;
        for (const auto &s : steps) {
            SCOPED_TRACE(s.shown);
            RawValue value;
            EXPECT_EQ(RAW_read_value(handle, &value, kRawAllWords, with_line ? &line : nullptr),
                      s.result);
            EXPECT_EQ(show(value), s.shown);
            EXPECT_EQ(value.field, s.field);
        }
    }
}

TEST_F(RawTest, AnyLineIsReached)
{
    std::string text = std::string(kHeader) + "id lat lon t $\n";
    for (int i = 0; i < 50; ++i) {
        text += "S" + std::to_string(i) + " 1 2 " + std::to_string(i) + "\n";
    }
    open(text + "\nbehind 1 2 99\n");
    for (const int wanted : {0, 0, 5, 5, 4, 49, 48, 0, 20, 20, 19}) {
        SCOPED_TRACE(wanted);
        RawValue value;
        int line = wanted;
        ASSERT_EQ(RAW_read_value(handle, &value, 10, &line), 1);
        EXPECT_EQ(value.value1, static_cast<float>(wanted));
        EXPECT_EQ(line, wanted + 1) << "the next one";
    }
    RawValue value;
    for (int wanted : {50, 51, 1000000}) {
        EXPECT_EQ(RAW_read_value(handle, &value, 10, &wanted), -1) << "behind the empty line";
    }
}

TEST_F(RawTest, NamesCarryColumnAndFormat)
{
    RES_put("raw_path", folder.path().c_str());
    folder.write("obs", std::string(kHeader) + "id lat lon t $\nA 1 2 3\n");
    const struct {
        const char *name, *text;
        bool opens;
        int column;
        const char *format;
    } cases[] = {
        {"plain", "obs", true, kRawAllWords, nullptr},
        {"number", "obs-3", true, 13, nullptr},
        {"number, format", "obs-3:%5.1f", true, 13, "%5.1f"},
        {"format", "obs:%5.1f:ul", true, kRawAllWords, "%5.1f:ul"},
        {"dash in format", "obs:xy=-1 2", true, kRawAllWords, "xy=-1 2"},
        {"word ahead", "obs--1", true, 9, nullptr},
        {"no column", "obs--9999", true, kRawNoColumn, nullptr},
        {"unknown file", "none-3", false, 13, nullptr},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        std::string name = c.text;
        char *format = nullptr;
        int column = 0;
        ::testing::internal::CaptureStderr();
        const int opened = RAW_file_open(name.data(), &column, &format, kRawRead);
        const std::string told = ::testing::internal::GetCapturedStderr();
        EXPECT_EQ(opened >= 0, c.opens);
        EXPECT_EQ(told, c.opens
                            ? ""
                            : "RAW_file_open: Unable to open file:" + folder.file("none") + "\n");
        EXPECT_EQ(column, c.column);
        EXPECT_STREQ(format, c.format);
        RAW_close(opened);
    }
    std::string name = "obs-tmpf:%d";
    char *format = nullptr;
    int column = 0;
    const int opened = RAW_file_open(name.data(), &column, &format, kRawRead);
    EXPECT_EQ(column, RAW_name_column("tmpf"));
    RAW_close(opened);
    RES_put("raw_path", nullptr);
    const std::string dashed = folder.file("a-b");
    ASSERT_EQ(std::system(("mkdir " + dashed).c_str()), 0);
    std::string path = folder.write("a-b/obs", "x 1 2 3\n") + "-0";
    const int below = RAW_file_open(path.data(), &column, &format, kRawRead);
    EXPECT_GE(below, 0) << "a dash of a folder is none of the name";
    EXPECT_EQ(column, 10);
    RAW_close(below);
}

TEST_F(RawTest, FiveFilesAtMost)
{
    const std::string path = folder.write("raw", "A 1 2 3\n");
    std::vector<int> handles;
    for (int i = 0; i < kRawFiles; ++i) {
        handles.push_back(RAW_open(path.c_str(), kRawRead, nullptr));
        EXPECT_GE(handles.back(), 0);
    }
    EXPECT_EQ(RAW_open(path.c_str(), kRawRead, nullptr), -1);
    RAW_close(handles[2]);
    EXPECT_EQ(RAW_open(path.c_str(), kRawRead, nullptr), handles[2]);
    for (const int h : handles) {
        RAW_close(h);
    }
    RawValue value;
    EXPECT_EQ(RAW_read_value(handles[0], &value, 10, nullptr), 0) << "closed";
    EXPECT_EQ(RAW_read_value(-1, &value, 10, nullptr), 0);
    EXPECT_EQ(RAW_read_value(99, &value, 10, nullptr), 0);
    EXPECT_EQ(RAW_rewind(-1), -1);
}

TEST_F(RawTest, OpensTellWhatKindOfFileItIs)
{
    EXPECT_EQ(RAW_file_type(folder.write("a", kHeader).c_str()), kRawHeadered);
    EXPECT_EQ(RAW_file_type(folder.write("b", "KDEN 1 2\n").c_str()), kRawHeaderless);
    EXPECT_EQ(RAW_file_type(folder.write("c", "").c_str()), kRawHeaderless);
    EXPECT_EQ(RAW_file_type(folder.file("none").c_str()), -1);
    EXPECT_EQ(RAW_file_type(folder.path().c_str()), -1);
    EXPECT_EQ(RAW_open(folder.path().c_str(), kRawRead, nullptr), -1);
    EXPECT_EQ(RAW_open(folder.file("none").c_str(), kRawRead, nullptr), -1);
    const int written = RAW_open(folder.file("out").c_str(), kRawWrite, nullptr);
    ASSERT_GE(written, 0);
    RawValue value;
    EXPECT_EQ(RAW_read_value(written, &value, 10, nullptr), -1);
    RAW_close(written);
    EXPECT_EQ(read_file(folder.file("out")), "\n");
    int type = 0;
    const int piped = RAW_open("|printf 'A 1 2 3\\n'", kRawRead, &type);
    ASSERT_GE(piped, 0);
    EXPECT_EQ(type, kRawHeaderless);
    EXPECT_EQ(RAW_read_value(piped, &value, 10, nullptr), 1);
    EXPECT_EQ(value.value1, 3.0F);
    EXPECT_EQ(RAW_rewind(piped), -1);
    RAW_close(piped);
}

TEST_F(RawTest, FieldListEndsAfterSeventyFiveWords)
{
    std::string fields = "id lat lon";
    for (int i = 3; i < 90; ++i) {
        fields += " f" + std::to_string(i);
    }
    open(std::string(kHeader) + fields + "\nA 1 2 3\n");
    EXPECT_NE(RAW_field_label(handle, RAW_name_column("f74")), nullptr);
    EXPECT_EQ(RAW_field_label(handle, RAW_name_column("f75")), nullptr);
    EXPECT_EQ(column(10), "A@1,2 3 - '3' ''\n") << "the rest of its line is no data";
    RAW_rewind(handle);
    EXPECT_EQ(column(10), "A@1,2 3 - '3' ''\n");
}

TEST_F(RawTest, DamagedFilesEndEarly)
{
    const std::string whole = std::string(kHeader) +
                              "id lat lon tmpf:Temp_F:%3.0f wind $\nKDEN 39.8 -104.7 55 270,12\n"
                              "KORD - - - speed=12:%4.1f\n";
    for (size_t length = 0; length <= whole.size(); ++length) {
        open(whole.substr(0, length));
        column(kRawAllWords);
        RAW_rewind(handle);
        column(11);
    }
    for (size_t at = 0; at < whole.size(); ++at) {
        for (const char byte : {'\0', '\xFF', '\n', ':', '$', '%'}) {
            std::string text = whole;
            text[at] = byte;
            open(text);
            column(kRawAllWords);
            RAW_rewind(handle);
            column(RAW_name_column("speed"));
        }
    }
    constexpr unsigned kSeed = 20261122;
    std::mt19937 random(kSeed);
    for (int round = 0; round < 300; ++round) {
        std::string text = round % 2 == 0 ? "T" : "";
        for (int i = 0; i < 500; ++i) {
            text += static_cast<char>(random() % 7 == 0 ? " \n:-$!="[random() % 7] : random());
        }
        open(text);
        column(kRawAllWords);
        RAW_rewind(handle);
        column(10 + static_cast<long>(random() % 66));
    }
}

TEST_F(RawTest, LongLinesAndWordsAreCut)
{
    const std::string x(10000, 'x');
    open("TYRRAW " + x + "\n" + x + "\n!" + x + "\n" + x + ":" + x + ":" + x + " lat lon t $" + x +
         "\n" + x + " 1 2 3\nA 1 2 " + x + "\nB 1 2 3 " + x + "\n");
    EXPECT_EQ(std::string(header.title).size(), kRawTitleRoom - 1U);
    RawValue value;
    EXPECT_EQ(RAW_read_value(handle, &value, 10, nullptr), 0) << "cut within its id";
    EXPECT_EQ(std::string(value.id).size(), kRawWordRoom - 1U);
    EXPECT_EQ(RAW_read_value(handle, &value, 10, nullptr), 1);
    EXPECT_EQ(std::string(value.text), std::string(kRawTextRoom - 1, 'x'));
    EXPECT_EQ(RAW_read_value(handle, &value, 10, nullptr), 1);
    EXPECT_EQ(value.value1, 3.0F);
    EXPECT_EQ(RAW_read_value(handle, &value, 10, nullptr), -1);
}
