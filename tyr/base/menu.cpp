#include "tyr/base/menu.h"

#include <array>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "tyr/base/ask.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"

namespace {

constexpr size_t kTwoColumnsFrom = 13;
constexpr int kExitValue = -1;
constexpr const char *kExitText = "Exit program";
constexpr const char *kReturnText = "Return to main menu";

/// The rows of one menu, the return row apart.
struct Shown {
    const MenuRow *return_row = nullptr; ///< null for an empty table
    std::vector<const MenuRow *> rows;
};

Shown collect(const MenuRow *rows, int menu)
{
    Shown shown;
    if (!rows->text) {
        return shown;
    }
    shown.return_row = rows;
    for (const MenuRow *row = rows + 1; row->text; ++row) {
        if (!row->show || row->show[menu] == 1) {
            shown.rows.push_back(row);
        }
    }
    return shown;
}

constexpr const char *kSeparator = " --------------------               ";

bool is_separator(const MenuRow &row)
{
    return row.text[0] == '-';
}

/// One entry, filled to the width of a column.
std::string entry(size_t number, const MenuRow &row)
{
    return is_separator(row) ? kSeparator : STR_print(" %2zu: %-30s", number, row.text);
}

void print_rows(const std::vector<const MenuRow *> &rows)
{
    const bool two_columns = rows.size() >= kTwoColumnsFrom;
    const size_t half = two_columns ? (rows.size() + 1) / 2 : rows.size();
    for (size_t i = 0; i < half; ++i) {
        std::string line = entry(i + 1, *rows[i]);
        if (two_columns && !is_separator(*rows[i])) { // a separator brings its blank
            line += ' ';
        }
        if (two_columns && i + half < rows.size()) {
            line += entry(i + half + 1, *rows[i + half]);
        }
        MSG_out(kMsgPrint, "%s\n", line.c_str());
    }
}

void print_extras(const Shown &shown, int flags)
{
    const char *return_text = shown.return_row ? shown.return_row->text : "";
    if ((flags & kMenuHelp) != 0) {
        MSG_out(kMsgPrint, " 99: Help                          \n");
    }
    if ((flags & kMenuExit) != 0 && (flags & kMenuReturn) != 0) {
        const bool two_columns = shown.rows.size() >= kTwoColumnsFrom;
        MSG_out(kMsgPrint, two_columns ? "  0: %-30s " : "  0: %-30s\n", return_text);
        MSG_out(kMsgPrint, " -1: Exit program                  \n");
    } else if ((flags & kMenuExit) != 0) {
        MSG_out(kMsgPrint, "  0: Exit program                  \n");
    } else if ((flags & kMenuReturn) != 0) {
        MSG_out(kMsgPrint, "  0: %-30s\n", return_text);
    }
}

bool is_same(const char *a, const char *b)
{
    return a && b && STR_casecmp(a, b) == 0;
}

std::string ask(const Shown &shown, const char *prompt)
{
    std::array<char, kAskWordRoom> answer;
    for (;;) {
        ASK_word(prompt, answer.data());
        if (std::string("?") != answer.data()) {
            return answer.data();
        }
        std::string words;
        for (const MenuRow *row : shown.rows) {
            if (row->word && *row->word) {
                words.append(words.empty() ? "" : ",").append(row->word);
            }
        }
        MSG_out(kMsgPrint, "%s\n\n", words.c_str());
    }
}

/// What an exit or return word stands for under the flags.
std::optional<int> leave_value(const std::string &answer, int flags)
{
    const bool exits = is_same(answer.c_str(), kExitText) || is_same(answer.c_str(), "exit");
    const bool returns = is_same(answer.c_str(), kReturnText) || is_same(answer.c_str(), "main");
    const bool offers_exit = (flags & kMenuExit) != 0;
    const bool offers_return = (flags & kMenuReturn) != 0;
    if (offers_exit && exits) {
        return offers_return ? kExitValue : 0;
    }
    if (offers_return && returns) {
        return 0;
    }
    return std::nullopt;
}

int choose(const MenuRow &row, char *answer)
{
    STR_copy(answer, kMenuAnswerRoom, row.word ? row.word : "");
    return row.value;
}

} // namespace

void MENU_show(const char *title, const MenuRow *rows, int menu, int flags)
{
    const Shown shown = collect(rows, menu);
    MSG_out(kMsgPrint, "%s\n", title);
    print_rows(shown.rows);
    print_extras(shown, flags);
    MSG_out(kMsgPrint, "\n");
}

int MENU_select(const char *title, const MenuRow *rows, int menu, const char *prompt, char *answer,
                int flags)
{
    MENU_show(title, rows, menu, flags);
    const Shown shown = collect(rows, menu);
    const std::string typed = ask(shown, prompt);
    STR_copy(answer, kMenuAnswerRoom, typed);
    if (const std::optional<int> value = leave_value(typed, flags)) {
        return *value;
    }
    if (STR_is_int(typed.c_str())) {
        const int lowest = (flags & kMenuExit) != 0 ? -1 : (flags & kMenuReturn) != 0 ? 0 : 1;
        const long number = std::strtol(typed.c_str(), nullptr, 10);
        if (number < lowest || number > static_cast<long>(shown.rows.size())) {
            return kMissingInt;
        }
        return number > 0 ? choose(*shown.rows[number - 1], answer) : static_cast<int>(number);
    }
    if (shown.return_row && (is_same(typed.c_str(), shown.return_row->word) ||
                             is_same(typed.c_str(), shown.return_row->text))) {
        return choose(*shown.return_row, answer);
    }
    for (const MenuRow *row : shown.rows) {
        if (is_same(typed.c_str(), row->word) || is_same(typed.c_str(), row->text)) {
            return choose(*row, answer);
        }
    }
    return kMissingInt;
}
