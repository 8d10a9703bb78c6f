#include "tyr/var/var_file.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "tyr/base/msg.h"
#include "tyr/base/number.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/var/data_file.h"
#include "tyr/var/match.h"

namespace {

constexpr size_t kMaxAbbreviation = 8;
constexpr size_t kMaxTitle = 79;

struct State {
    FilePtr file;
    std::string model; // texts that conditions are matched against
    std::string level;
    std::string time;
};
State state;

/// Takes the next word off the front of a line.
std::string_view take_word(std::string_view *line)
{
    *line = VAR_trim(*line);
    const std::string_view word = line->substr(0, line->find_first_of(" \t"));
    line->remove_prefix(word.size());
    return word;
}

/// Adds a piece of a definition without its blanks. True if a backslash at its end says that the
/// next line goes on with it; the backslash is dropped.
bool add_definition(std::string_view piece, std::string *definition)
{
    for (const char c : piece) {
        if (c != ' ' && c != '\t') {
            definition->push_back(c);
        }
    }
    const bool goes_on = !definition->empty() && definition->back() == '\\';
    if (goes_on) {
        definition->pop_back();
    }
    return goes_on;
}

/// A test "mo=pattern", "le=pattern" or "ft=pattern".
bool holds(const std::string &test)
{
    const std::string pattern = test.size() > 3 ? test.substr(3) : "";
    if (STR_has_prefix(test, "mo=")) {
        return VAR_match(pattern.c_str(), state.model.c_str()) == 1;
    }
    if (STR_has_prefix(test, "le=")) {
        return VAR_match(pattern.c_str(), state.level.c_str()) == 1;
    }
    if (STR_has_prefix(test, "ft=")) {
        return VAR_match(pattern.c_str(), state.time.c_str()) == 1;
    }
    return test == "1";
}

std::string text_of(const char *text)
{
    return text == nullptr ? "" : text;
}

} // namespace

int VAR_open_file(const char *name)
{
    std::string file = text_of(name);
    if (file.empty()) {
        std::array<char, kProgramNameRoom> program{};
        file = std::string(RES_program_name(program.data())) + ".var";
    }
    state.file = VAR_open_data(file.c_str());
    if (state.file != nullptr) {
        return 1;
    }
    MSG_out(kMsgWarnA, "VAR_open_file: Unable to open var file: %s\n",
            VAR_data_path(file.c_str()).c_str());
    return 0;
}

void VAR_close_file()
{
    state.file.reset();
}

bool VAR_file_rewind()
{
    if (state.file == nullptr) {
        return false;
    }
    std::rewind(state.file.get());
    return true;
}

bool VAR_file_next(VarFileEntry *entry)
{
    std::string line;
    while (state.file != nullptr && VAR_next_line(state.file.get(), &line)) {
        std::string_view rest = line;
        *entry = VarFileEntry{};
        entry->abbreviation = take_word(&rest).substr(0, kMaxAbbreviation);
        entry->title = take_word(&rest).substr(0, kMaxTitle);
        std::replace(entry->title.begin(), entry->title.end(), '_', ' ');
        entry->condition = take_word(&rest);
        bool goes_on = add_definition(rest, &entry->definition);
        while (goes_on && entry->definition.size() < kMaxVarDefinition &&
               VAR_next_line(state.file.get(), &line)) {
            goes_on = add_definition(line, &entry->definition);
        }
        if (!entry->condition.empty() && entry->abbreviation[0] != '#') {
            return true;
        }
    }
    return false;
}

void VAR_set_condition_texts(const char *model, const char *level, const char *time)
{
    state.model = text_of(model);
    state.level = text_of(level);
    state.time = text_of(time);
}

int VAR_condition(const char *condition)
{
    for (const std::string &alternative : STR_fields(text_of(condition), ',')) {
        const std::vector<std::string> tests = STR_fields(alternative, '&');
        if (!tests.empty() && std::all_of(tests.begin(), tests.end(), holds)) {
            return 1;
        }
    }
    return 0;
}

int VAR_lookup(const char *name, char *definition)
{
    if (name == nullptr || *name == '\0' || !VAR_file_rewind()) {
        return 0;
    }
    VarFileEntry entry;
    while (VAR_file_next(&entry)) {
        if (entry.abbreviation != name) {
            continue;
        }
        if (entry.definition.size() >= kMaxVarDefinition) {
            MSG_out(kMsgWarn, "VAR_lookup: Definition of %s is longer than %d characters\n", name,
                    static_cast<int>(kMaxVarDefinition) - 1);
            return 0;
        }
        STR_copy(definition, kMaxVarDefinition, entry.definition);
        MSG_out(kMsgDebugC, "VAR_lookup: %s\n", definition);
        return 1;
    }
    MSG_out(kMsgDebugC, "VAR_lookup: not found\n");
    return 0;
}

int VAR_print_list()
{
    MSG_out(kMsgPrint, " Abbr    Description\n");
    VAR_file_rewind();
    VarFileEntry entry;
    while (VAR_file_next(&entry)) {
        MSG_out(kMsgPrint, "%-8s %-50s\n", entry.abbreviation.c_str(), entry.title.c_str());
    }
    return -1;
}
