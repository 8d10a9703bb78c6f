#include "support/kernel_plot.h"
#include "tyr/base/res.h"
#include "tyr/gks/colour_table.h"

namespace {

/// Reads a table of the given texts, as files of one list; with a resource the list is its value.
void read_files(const TempDir &dir, const std::vector<std::string> &texts, bool by_resource = false)
{
    std::string list;
    for (size_t i = 0; i < texts.size(); i++) {
        list += (i > 0 ? "," : "") + dir.write("table" + std::to_string(i), texts[i]);
    }
    RES_put("color_table", by_resource ? list.c_str() : "");
    CLR_read_table(by_resource ? nullptr : list.c_str());
}

std::string colour_of(int index)
{
    float red = 0;
    float green = 0;
    float blue = 0;
    CLR_get_rgb(index, &red, &green, &blue);
    char text[40];
    std::snprintf(text, sizeof text, "%.2f %.2f %.2f", red, green, blue);
    return text;
}

TEST(ColourTable, EntriesInAllForms)
{
    const TempDir dir;
    read_files(dir, {"# a comment\n"
                     "first 0.1 0.2 0.3\n"
                     "second #FF8000\n"
                     "7 seventh 0.5 0.5 0.5\n"
                     "eighth 1 1 1\r\n"
                     "2 numbered #00ff00   \n"});
    EXPECT_EQ(CLR_lookup("FIRST"), 0);
    EXPECT_EQ(CLR_lookup("second"), 1);
    EXPECT_EQ(CLR_lookup("seventh"), 7);
    EXPECT_EQ(CLR_lookup("eighth"), 8);
    EXPECT_EQ(CLR_lookup("numbered"), 2);
    EXPECT_EQ(colour_of(0), "0.10 0.20 0.30");
    EXPECT_EQ(colour_of(1), "1.00 0.50 0.00");
    EXPECT_EQ(colour_of(2), "0.00 1.00 0.00");
    EXPECT_EQ(colour_of(7), "0.50 0.50 0.50");
    EXPECT_EQ(colour_of(999), colour_of(CLR_count() - 1));
}

TEST(ColourTable, SecondFileFollowsTheHighestIndexSeen)
{
    std::string twenty;
    for (int i = 0; i < 20; i++) {
        twenty += "c" + std::to_string(i) + " 0 0 0\n";
    }
    const TempDir dir;
    read_files(dir, {twenty + "# behind\n", "next 1 1 1\n"});
    EXPECT_EQ(CLR_lookup("c19"), 19);
    EXPECT_EQ(CLR_lookup("next"), 21);
    EXPECT_EQ(CLR_count(), 22);
}

TEST(ColourTable, CountFollowsThePositionAtTheStartOfALine)
{
    const TempDir dir;
    read_files(dir, {"7 seven 1 1 1\n"});
    EXPECT_EQ(CLR_count(), 1);
    read_files(dir, {"7 seven 1 1 1\n# behind\n"});
    EXPECT_EQ(CLR_count(), 9);
}

TEST(ColourTable, IndicesBeyondTheTableAreNotStored)
{
    const TempDir dir;
    read_files(dir, {"300 far 1 1 1\n254 near 0 0 1\nlast 0 0 1\nbehind 1 0 0\n"});
    EXPECT_EQ(CLR_count(), 256);
    EXPECT_EQ(CLR_lookup("last"), 255);
    EXPECT_EQ(CLR_lookup("far"), -1);
    EXPECT_EQ(CLR_lookup("behind"), -1);
    EXPECT_EQ(CLR_lookup("#102030"), -1); // no room for a further one
}

TEST(ColourTable, EndMarksTheFillColoursOfAResource)
{
    const TempDir dir;
    read_files(dir, {"a 0 0 0\nb 0 0 0\nend\nc 0 0 0\n"}, true);
    EXPECT_EQ(CLR_fill_count(), 2);
    EXPECT_EQ(CLR_lookup("c"), 2);
    read_files(dir, {"a 0 0 0\nb 0 0 0\nc 0 0 0\n"}, true);
    EXPECT_EQ(CLR_fill_count(), 2); // the highest index
}

TEST(ColourTable, WordsThatAreNoEntries)
{
    struct Case {
        const char *word;
        int index;
    };
    const Case cases[] = {
        {nullptr, -1},  {"", -1},       {"none", -1},    {"OFF", -1},
        {"back", -1},   {"end", -2},    {"END", -2},     {"pblk", 500},
        {"ptwht", 505}, {"PTGRY", 508}, {"17", 17},      {"9999", 9999},
        {"nosuch", -1}, {"#12", -1},    {"#ZZZZZZ", -1}, {"#256000000", -1},
    };
    const TempDir dir;
    read_files(dir, {"end 1 1 1\nred 1 0 0\n"});
    for (const Case &c : cases) {
        EXPECT_EQ(CLR_lookup(c.word), c.index) << (c.word ? c.word : "null");
    }
    EXPECT_EQ(CLR_lookup("red"), 1);
}

TEST(ColourTable, HashWordsAreAddedUnderTheirName)
{
    const KernelPlot plot(4);
    const TempDir dir;
    read_files(dir, {"white 1 1 1\n"});
    EXPECT_EQ(CLR_lookup("#FF0080"), 1);
    EXPECT_EQ(CLR_lookup("#255000128"), 2);
    EXPECT_EQ(CLR_lookup("#ff0080"), 1);
    EXPECT_EQ(colour_of(1), "1.00 0.00 0.50");
    EXPECT_EQ(colour_of(1), colour_of(2));
    EXPECT_EQ(CLR_count(), 3);
}

TEST(ColourTable, DamagedLinesTakeUpTheirPosition)
{
    const TempDir dir;
    read_files(dir, {"a 0 0 0\nwithout colour\na_name_of_more_than_19_characters 1 1 1\nd 1 1 1\n" +
                     std::string(300, 'x') + "\ne 1 1 1\n"});
    EXPECT_EQ(CLR_lookup("d"), 3);
    EXPECT_EQ(CLR_lookup("e"), 5);
    CLR_read_table("/dev/null/none"); // nothing is said, nothing is lost
    EXPECT_EQ(CLR_lookup("d"), 3);
}

} // namespace
