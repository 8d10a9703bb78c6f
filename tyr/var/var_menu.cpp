#include "tyr/var/var_menu.h"

#include <string>
#include <vector>

#include "tyr/base/menu.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/str.h"
#include "tyr/var/var_file.h"
#include "tyr/var/variable.h"

namespace {

constexpr size_t kMaxTitle = 30;

struct Entry {
    std::string title;
    std::string abbreviation;
};

struct State {
    std::vector<Entry> entries; // without the fixed entry 0
};
State state;

std::vector<MenuRow> menu_rows()
{
    std::vector<MenuRow> rows{
        {"Return to previous menu", "back", 0, nullptr}
    };
    int value = 0;
    for (const Entry &entry : state.entries) {
        rows.push_back({entry.title.c_str(), entry.abbreviation.c_str(), ++value, nullptr});
    }
    rows.push_back({nullptr, nullptr, 0, nullptr});
    return rows;
}

} // namespace

int VAR_read_menu()
{
    state.entries.clear();
    if (!VAR_file_rewind()) {
        return 0;
    }
    VarFileEntry entry;
    while (state.entries.size() + 1 < kMaxVarMenu && VAR_file_next(&entry)) {
        if (VAR_condition(entry.condition.c_str()) == 1) {
            state.entries.push_back({entry.title.substr(0, kMaxTitle), entry.abbreviation});
        }
    }
    return 1;
}

int VAR_menu(const char *title, const char *prompt, char *answer, int flags)
{
    VAR_reset();
    if (PRM_is_batch() == 1) {
        STR_copy(answer, kMenuAnswerRoom,
                 state.entries.empty() ? "def" : state.entries[0].abbreviation);
        return 1;
    }
    const std::vector<MenuRow> rows = menu_rows();
    int choice = MENU_select(title, rows.data(), 0, prompt, answer, flags);
    while (STR_casecmp(answer, "list") == 0) {
        VAR_print_list();
        choice = MENU_select(title, rows.data(), 0, prompt, answer, flags);
    }
    return choice;
}
