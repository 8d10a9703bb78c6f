#include <cstdlib>

#include "support/capture.h"
#include "tyr/base/ask.h"
#include "tyr/base/menu.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/sys.h"

namespace {

/// Runs with the text as standard input; returns what was shown.
template <typename Action> std::string with_input(const std::string &text, Action action)
{
    type_in(text);
    return shown_by(action);
}

TEST(Ask, ReadsOneWord)
{
    const std::string long_line = std::string(10000, 'x') + "\nabc\n";
    const std::string cut_line(79, 'x');
    const struct {
        const char *name;
        std::string input;
        int size;
        std::string answer;
        int asked; ///< how often
    } cases[] = {
        {"word", "abc\n", 20, "abc", 1},
        {"ends at a blank", "  abc def\r\n", 20, "abc", 1},
        {"cut to the size", "abcdef\n", 4, "abc", 1},
        {"size below two", "abcdef\n", 0, "a", 1},
        {"empty lines", "\n  \nabc\n", 20, "abc", 3},
        {"set in between", "set asked = some value\nabc\n", 20, "abc", 2},
        {"long line is one line", long_line, 4096, cut_line, 1},
        {"no newline at the end", "abc", 20, "abc", 1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        char answer[4097];
        const std::string shown =
            with_input(c.input, [&] { EXPECT_EQ(ASK_text("? ", answer, c.size), answer); });
        EXPECT_EQ(answer, c.answer);
        EXPECT_EQ(shown.size(), 2U * static_cast<size_t>(c.asked));
    }
    EXPECT_STREQ(RES_get("asked"), "some value");
}

TEST(Ask, ReadsNumbersAndAsksAgain)
{
    with_input("\nset a=2\nnone\n-12\n", [] { EXPECT_EQ(ASK_int("? "), -12); });
    with_input("1.5e1 m\n", [] { EXPECT_FLOAT_EQ(ASK_real("? "), 15.0F); });
    with_input("99999999999999\n", [] { EXPECT_EQ(ASK_int("? "), 2147483647); });
    with_input("abc\n", [] {
        char *word = ASK_word("? ", nullptr);
        EXPECT_STREQ(word, "abc");
        std::free(word);
    });
    with_input(std::string(60, 'w') + "\n", [] {
        char word[kAskWordRoom];
        EXPECT_EQ(std::string(ASK_word("? ", word)), std::string(19, 'w'));
    });
}

TEST(Ask, SetAloneListsTheResources)
{
    RES_put("a_resource", "shown");
    char answer[20];
    const std::string shown = with_input("SET\nabc\n", [&] { ASK_text("? ", answer, 20); });
    EXPECT_NE(shown.find("a_resource: shown\n"), std::string::npos);
}

TEST(Ask, ExitAndTheEndOfInputEndTheRun)
{
    for (const char *input : {"Exit\n", "exit now\n", "", "\n\n"}) {
        const auto ask = [&] {
            with_input(input, [] { ASK_int("? "); });
            std::exit(99);
        };
        EXPECT_EXIT(ask(), testing::ExitedWithCode(0), "") << input;
    }
}

constexpr int kFirst[] = {1, 0};
constexpr int kSecond[] = {0, 1};
constexpr MenuRow kRows[] = {
    {"Return to previous menu", "prev", 0, kFirst},
    {"Wind barbs", "wbrb", 11, kFirst},
    {"----", "", 12, kFirst},
    {"Hidden", "hide", 13, kSecond},
    {"Speed", "spd", 14, kFirst},
    {nullptr, nullptr, 0, nullptr},
};

TEST(Menu, SelectsByNumberWordOrText)
{
    const struct {
        const char *typed;
        int flags, value;
        const char *answer;
    } cases[] = {
        {"1", 0, 11, "wbrb"},
        {"3", 0, 14, "spd"},
        {"4", 0, kMissingInt, "4"},
        {"0", 0, kMissingInt, "0"},
        {"0", 2, 0, "0"},
        {"-1", 1, -1, "-1"},
        {"0", 1, 0, "0"},
        {"SPD", 0, 14, "spd"},
        {"speed", 0, 14, "spd"},
        {"hide", 0, kMissingInt, "hide"},
        {"prev", 0, 0, "prev"},
        {"main", 2, 0, "main"},
        {"main", 3, 0, "main"},
        {"main", 1, kMissingInt, "main"},
        {"99999999999999999999", 0, kMissingInt, "9999999999999999999"},
        {"us,ne", 3, kMissingInt, "us,ne"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.typed);
        char answer[kMenuAnswerRoom];
        with_input(std::string(c.typed) + "\n", [&] {
            EXPECT_EQ(MENU_select("Title", kRows, 0, "? ", answer, c.flags), c.value);
        });
        EXPECT_STREQ(answer, c.answer);
    }
}

TEST(Menu, QuestionMarkListsTheWords)
{
    char answer[kMenuAnswerRoom];
    const std::string shown = with_input(
        "?\n1\n", [&] { EXPECT_EQ(MENU_select("Title", kRows, 0, "? ", answer, 0), 11); });
    EXPECT_NE(shown.find("? wbrb,spd\n\n? "), std::string::npos);
}

TEST(Menu, ShowsOneColumnAndItsExtras)
{
    const std::string rows = "Title\n"
                             "  1: Wind barbs                    \n"
                             " --------------------               \n"
                             "  3: Speed                         \n";
    const struct {
        int flags;
        const char *tail;
    } cases[] = {
        {0, "\n"},
        {1, "  0: Exit program                  \n\n"},
        {2, "  0: Return to previous menu       \n\n"},
        {3, "  0: Return to previous menu       \n -1: Exit program                  \n\n"},
        {4, " 99: Help                          \n\n"},
    };
    for (const auto &c : cases) {
        const std::string shown = with_input("", [&] { MENU_show("Title", kRows, 0, c.flags); });
        EXPECT_EQ(shown, rows + c.tail) << c.flags;
    }
}

TEST(Menu, ThirteenRowsStandInTwoColumns)
{
    std::string texts[14];
    MenuRow rows[15] = {}; // an empty row ends them
    for (int i = 0; i < 14; ++i) {
        texts[i] = "row " + std::to_string(i);
        rows[i] = {texts[i].c_str(), "", 0, nullptr};
    }
    rows[2].text = "-";
    const std::string shown = with_input("", [&] { MENU_show("T", rows, 0, 3); });
    const std::string pad(25, ' '); // entries are filled to 30 characters
    EXPECT_NE(shown.find("  1: row 1" + pad + "   8: row 8" + pad + "\n"), std::string::npos)
        << shown;
    EXPECT_NE(shown.find("\n --------------------                 9: row 9"), std::string::npos);
    EXPECT_NE(shown.find("\n  7: row 7" + pad + " \n"), std::string::npos);
    EXPECT_NE(shown.find("  0: row 0" + pad + "  -1: Exit program                  \n"),
              std::string::npos);
}

TEST(Sys, TimerCountsSleeps)
{
    SYS_timer_reset();
    EXPECT_EQ(SYS_sleep(0.0F), -1);
    EXPECT_EQ(SYS_sleep(-1.0F), -1);
    EXPECT_EQ(SYS_sleep(0.02F), 0);
    EXPECT_GE(SYS_timer_read(), 0.019F);
    EXPECT_LT(SYS_timer_read(), 30.0F);
}

TEST(Sys, DetachedChildGoesOnWithTheNullDevice)
{
    const TempDir folder;
    const std::string path = folder.file("child");
    const auto detach = [&] {
        std::printf("written once\n");
        if (SYS_detach() != 1) {
            std::_Exit(2);
        }
        std::printf("not seen\n");
        if (FILE *f = std::fopen(path.c_str(), "w")) {
            std::fputs("child", f);
            std::fclose(f);
        }
        std::_Exit(3);
    };
    EXPECT_EXIT(detach(), testing::ExitedWithCode(0), "");
    for (int i = 0; i < 200 && read_file(path) != "child"; ++i) {
        SYS_sleep(0.02F);
    }
    EXPECT_EQ(read_file(path), "child");
}

} // namespace
