#include "support/capture.h"
#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/start/convert.h"

namespace {

constexpr unsigned kDefault = 0x000FFFFFU;

void reset()
{
    MSG_set_mask(20, kDefault);
    MSG_set_mask(10, kDefault);
    MSG_set_paging(1);
}

TEST(Msg, LevelWordsSetTheMask)
{
    const struct {
        unsigned mask;
        std::vector<const char *> words;
    } cases[] = {
        {0, {"none", "warna", "errorc", "wurn"}},
        {0xF, {"print"}},
        {0x3F, {"error"}},
        {0x7F, {"warnc"}},
        {0xFF, {"warn", "WARN"}},
        {0xFFF, {"mess", "-out1,-out2", "messages please"}},
        {0x0003FFFF, {"out2b"}},
        {0x008000FF, {"warn,+out3d"}},
        {0xFFFFFFFF, {"debug"}},
        {kDefault | 0xF0000000, {"+debug"}},
        {kDefault & ~0xFU, {"-print"}},
        {kDefault, {"+wurn", "-", ""}},
    };
    for (const auto &c : cases) {
        for (const char *words : c.words) {
            SCOPED_TRACE(words);
            reset();
            const int before = MSG_explicit();
            MSG_options(words);
            EXPECT_EQ(MSG_get_mask(), c.mask);
            EXPECT_EQ(MSG_explicit(), before + 1);
        }
    }
}

TEST(Msg, ModesOfTheMaskYieldToTheUser)
{
    MSG_set_mask(10, kDefault);
    if (MSG_explicit() == 0) {
        MSG_set_mask(20, 0x40);
        EXPECT_EQ(MSG_get_mask(), 0x7FU);
        MSG_set_mask(21, 0x100);
        EXPECT_EQ(MSG_get_mask(), 0x17FU);
        MSG_set_mask(19, 0x1);
        EXPECT_EQ(MSG_get_mask(), 0x17EU);
    }
    MSG_set_mask(0, 0x100);
    EXPECT_EQ(MSG_get_mask(), 0x1FFU);
    MSG_set_mask(20, 0);
    EXPECT_EQ(MSG_get_mask(), 0x1FFU) << "a mode above 15 yields";
    MSG_set_mask(9, 0xF);
    EXPECT_EQ(MSG_get_mask(), 0x1F0U);
    MSG_set_mask(3, 0);
    EXPECT_EQ(MSG_get_mask(), 0x1F0U) << "no such mode";
    MSG_set_mask(0, 0);
    EXPECT_EQ(MSG_get_mask(), 0U);
}

TEST(Msg, TextGoesToItsStream)
{
    reset();
    std::string shown;
    const std::string told = told_by([&] {
        shown = shown_by([] {
            EXPECT_EQ(MSG_out(kMsgPrint, "to out %d\n", 1), 1);
            EXPECT_EQ(MSG_out(kMsgWarn, "to err %s\n", "two"), 1);
            EXPECT_EQ(MSG_out(64, "single bit\n"), 1);
            EXPECT_EQ(MSG_out(kMsgDebug, "unseen\n"), 0);
        });
    });
    EXPECT_EQ(shown, "to out 1\n");
    EXPECT_EQ(told, "to err two\nsingle bit\n");
}

TEST(Msg, SinksTakeTheText)
{
    const struct {
        const char *prefix;
        int shown;
        std::string log; ///< what the log holds; '#' stands for a time stamp
    } cases[] = {
        {"fi=", 0, "old\nnew 7\n"},  {"+fi=", 1, "old\nnew 7\n"},      {"-fi=", 1, "new 7\n"},
        {"dfi=", 1, "old\nnew 7\n"}, {"@fi=", 1, "old\n# -- new 7\n"},
    };
    const TempDir folder;
    for (const auto &c : cases) {
        SCOPED_TRACE(c.prefix);
        reset();
        const std::string path = folder.write("made/run.log", "old\n");
        MSG_options((c.prefix + path).c_str());
        EXPECT_EQ(shown_by([&] { EXPECT_EQ(MSG_out(kMsgPrint, "new %d\n", 7), c.shown); }),
                  c.shown ? "new 7\n" : "");
        MSG_options("+fi=/dev/null"); // closes the log, the terminal is back
        std::string log = read_file(path);
        if (c.prefix[0] == '@') {
            EXPECT_EQ(log.substr(4 + 9, 2), "  ");
            EXPECT_EQ(log[4 + 19], 'Z');
            log.replace(4, 20, "#");
        }

        EXPECT_EQ(log, c.log);
    }
}

TEST(Msg, LogThatCannotOpenLosesNothingOnTheTerminal)
{
    reset();
    MSG_options("+fi=/proc/no/such/log");
    EXPECT_EQ(shown_by([] { EXPECT_EQ(MSG_out(kMsgPrint, "still here\n"), 1); }), "still here\n");
}

TEST(Msg, WordsWithoutAValueAreHarmless)
{
    reset();
    MSG_options("line,line=,line=-3,page,nopage");
    EXPECT_EQ(MSG_get_mask(), kDefault);
}

TEST(Msg, BatchYieldsToTheUsersLevel)
{
    // in one process per test nothing has been asked for yet
    if (MSG_explicit() == 0) {
        MSG_set_mask(10, kDefault);
        RES_convert(nullptr, nullptr, kResBatch);
        EXPECT_EQ(MSG_get_mask(), 0xFFU);
        EXPECT_EQ(PRM_is_batch(), 1);
    }
    MSG_options("mess");
    EXPECT_EQ(MSG_get_mask(), 0xFFFU);
    RES_convert(nullptr, nullptr, kResBatch);
    EXPECT_EQ(MSG_get_mask(), 0xFFFU);
    PRM_set(kPrmBatch, 0);
}

TEST(Msg, PagerCountsTheNewlinesOfTheFormat)
{
    type_in("\n\n\n\n\n\n");
    reset();
    MSG_options("warn,line=10,page");
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(shown_by([] { MSG_out(kMsgPrint, "%s\n", "not\ncounted"); }), "not\ncounted\n");
    }
    EXPECT_EQ(shown_by([] { MSG_out(kMsgPrint, "eleventh\n"); }),
              "eleventh\nPress return to continue\n");
    MSG_set_paging(1);
}

} // namespace
