#include "tyr/var/catalogue.h"

#include <algorithm>
#include <string_view>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/number.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/var/data_file.h"

namespace {

constexpr const char *kCatalogueFile = "variable.lup";
constexpr size_t kMaxAbbreviation = 9;
constexpr size_t kMaxDescription = 49;

struct State {
    std::vector<CatalogueEntry> entries;
    std::string tried; // path that was last read or couldn't be
    LabelMode mode = kLabelNormal;
};
State state;

struct ModeWord {
    const char *text;
    LabelMode mode;
};
constexpr ModeWord kModeWords[] = {
    {"labmin",  kLabelMinimal },
    {"labsimp", kLabelSimple  },
    {"labnorm", kLabelNormal  },
    {"labcomp", kLabelComplete}
};

std::array<int, 5> read_numbers(std::string_view text)
{
    std::array<int, 5> numbers{};
    numbers.fill(kMissingInt);
    for (int &number : numbers) {
        const std::optional<int> value = VAR_take_int(&text);
        if (!value.has_value()) {
            break;
        }
        number = *value;
        if (text.empty() || text[0] != ',') {
            break;
        }
        text.remove_prefix(1);
    }
    return numbers;
}

/// An entry from its line; false for a line that has none.
bool read_entry(std::string_view line, CatalogueEntry *entry)
{
    line = VAR_trim(line);
    if (line.empty() || line[0] == '#') {
        return false;
    }
    const size_t first = line.find_first_of(" \t");
    if (first == std::string_view::npos) {
        return false;
    }
    entry->numbers = read_numbers(line.substr(0, first));
    line = VAR_trim(line.substr(first));
    const size_t second = line.find_first_of(" \t");
    entry->abbreviation = line.substr(0, std::min(second, kMaxAbbreviation));
    entry->description = second == std::string_view::npos
                             ? std::string_view{}
                             : VAR_trim(VAR_trim(line.substr(second)).substr(0, kMaxDescription));
    return true;
}

bool has_plus(const char *abbreviation)
{
    return abbreviation != nullptr && *abbreviation == '+';
}

} // namespace

int VAR_read_varfile()
{
    state.entries.clear();
    state.tried = VAR_data_path(kCatalogueFile);
    const FilePtr file = VAR_open_data(kCatalogueFile);
    if (file == nullptr) {
        MSG_out(kMsgWarnA, "VAR_read_varfile: Unable to open file: %s\n", state.tried.c_str());
        return 0;
    }
    std::string line;
    CatalogueEntry entry;
    while (VAR_next_line(file.get(), &line)) {
        if (!read_entry(line, &entry)) {
            continue;
        }
        if (state.entries.size() == kMaxCatalogue) {
            MSG_out(kMsgWarnA,
                    "VAR_read_varfile: More than %d entries in %s, the rest is left out\n",
                    kMaxCatalogue, state.tried.c_str());
            break;
        }
        state.entries.push_back(entry);
    }
    return 1;
}

const std::vector<CatalogueEntry> &VAR_catalogue()
{
    if (state.entries.empty() && state.tried != VAR_data_path(kCatalogueFile)) {
        VAR_read_varfile();
    }
    return state.entries;
}

const CatalogueEntry *VAR_find_number(int number)
{
    if (number == kMissingInt) {
        return nullptr;
    }
    for (const CatalogueEntry &entry : VAR_catalogue()) {
        if (entry.numbers[0] == number) {
            return &entry;
        }
    }
    return nullptr;
}

const CatalogueEntry *VAR_find_abbr(const char *abbreviation)
{
    const char *word = has_plus(abbreviation) ? abbreviation + 1 : abbreviation;
    for (const CatalogueEntry &entry : VAR_catalogue()) {
        if (STR_casecmp(entry.abbreviation.c_str(), word) == 0) {
            return &entry;
        }
    }
    return nullptr;
}

void VAR_label_options()
{
    state.mode = kLabelNormal;
    for (const std::string &word : RES_list("plot_param")) {
        for (const ModeWord &known : kModeWords) {
            if (STR_ncasecmp(word.c_str(), known.text, 4) == 0) {
                state.mode = known.mode;
            }
        }
    }
}

LabelMode VAR_label_mode()
{
    return state.mode;
}

char *VAR_str(char *out, int number, const char *units)
{
    const int n = number == kMissingInt ? 0 : number % 1000;
    std::string text("v");
    text += std::to_string(n);
    if (const CatalogueEntry *entry = VAR_find_number(n)) {
        text = state.mode < kLabelNormal ? entry->abbreviation : entry->description;
    } else {
        MSG_out(kMsgDebugC, "VAR_str: no var: %d\n", n);
    }
    if (units != nullptr && *units != '\0') {
        text.append(" (").append(units).append(")");
    }
    STR_copy(out, kVarTextSize, text);
    return out;
}

char *VAR_abbr(char *out, int number)
{
    const CatalogueEntry *entry = VAR_find_number(number);
    if (entry == nullptr) {
        MSG_out(kMsgDebugC, "VAR_abbr: no var: %d\n", number);
    }
    STR_copy(out, kVarNameTextSize, entry == nullptr ? "" : entry->abbreviation);
    return out;
}
