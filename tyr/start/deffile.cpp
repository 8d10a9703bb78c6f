#include "tyr/start/deffile.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"

namespace {

constexpr size_t kMaxWords = 10;
constexpr size_t kMaxIfs = 12;
constexpr int kLineLength = 249;
constexpr const char *kDefaultName = ".tyrdef";
constexpr const char *const kNamesInDirectory[] = {"tyr.cfg", ".tyrdef", "Tyr.res"};

/// What an open IF says of the lines under it.
enum class Branch { skipped, taken, closed };

struct State {
    FilePtr file;
    std::string name; ///< stands for the program's name in the patterns; empty for none
    std::vector<std::string> words;
    std::vector<Branch> ifs;
    int ifs_too_deep = 0; ///< open IFs for which there was no room
} state;

bool is_active()
{
    return state.ifs_too_deep == 0 && std::all_of(state.ifs.begin(), state.ifs.end(),
                                                  [](Branch b) { return b == Branch::taken; });
}

auto find_word(const std::string &word)
{
    return std::find_if(state.words.begin(), state.words.end(), [&](const std::string &w) {
        return STR_casecmp(w.c_str(), word.c_str()) == 0;
    });
}

Branch test(const std::string &word)
{
    return find_word(word) != state.words.end() ? Branch::taken : Branch::skipped;
}

void open_if(const std::string &word)
{
    if (state.ifs.size() == kMaxIfs) {
        if (state.ifs_too_deep++ == 0) {
            MSG_out(kMsgWarn, "DEF_get: more than %zu ifs in one another: %s\n", kMaxIfs,
                    word.c_str());
        }
        return;
    }
    state.ifs.push_back(test(word));
}

void else_if(const std::string &word)
{
    if (state.ifs_too_deep > 0) {
        return;
    }
    if (state.ifs.empty()) {
        MSG_out(kMsgWarn, "DEF_get: elif without an if\n");
        return;
    }
    Branch &top = state.ifs.back();
    top = top == Branch::skipped ? test(word) : Branch::closed;
}

void else_branch()
{
    if (state.ifs_too_deep > 0) {
        return;
    }
    if (state.ifs.empty()) {
        MSG_out(kMsgWarn, "DEF_get: else without an if\n");
        return;
    }
    Branch &top = state.ifs.back();
    top = top == Branch::skipped ? Branch::taken : Branch::closed;
}

void end_if()
{
    if (state.ifs_too_deep > 0) {
        --state.ifs_too_deep;
    } else if (state.ifs.empty()) {
        MSG_out(kMsgWarn, "DEF_get: end without an if\n");
    } else {
        state.ifs.pop_back();
    }
}

/// Serves the keywords of branches; true if the line was one.
bool take_branch(const std::string &keyword, const std::string &word)
{
    if (keyword == "IF" && !word.empty()) {
        open_if(word);
    } else if (keyword == "ELIF" && !word.empty()) {
        else_if(word);
    } else if (keyword == "ELSE") {
        else_branch();
    } else if (keyword == "END") {
        end_if();
    } else {
        return false;
    }
    return true;
}

void take_definition(const std::string &keyword, const std::string &word)
{
    if (keyword == "DEF") {
        DEF_define(word.c_str());
    } else if (keyword == "UNDEF") {
        const auto place = find_word(word);
        if (place != state.words.end()) {
            state.words.erase(place);
        }
    }
}

/// The next word of a line, which is left behind it.
std::string next_word(std::string_view &line)
{
    constexpr std::string_view kBlanks = " \t\r\v\f\n";
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(kBlanks));
    line.remove_prefix(word.size());
    return std::string(word);
}

/// The value of a resource line: one word, or the text between double quotes.
std::string line_value(std::string_view line)
{
    std::string word = next_word(line);
    if (word.empty() || word[0] != '"') {
        return word;
    }
    const std::string_view quoted(line.data() - word.size() + 1, line.size() + word.size() - 1);
    const std::string_view inside = quoted.substr(0, quoted.find('"'));
    return inside.empty() ? word : std::string(inside);
}

/// Name that a pattern is matched against.
std::string target(std::string_view option_name)
{
    std::array<char, kProgramNameRoom> program;
    RES_program_name(program.data());
    std::string text = program.data();
    if (!state.name.empty()) {
        text = state.name[0] == '+' ? text + '.' + state.name.substr(1) : state.name;
    }
    text += '.';
    return text.append(option_name);
}

bool matches(std::string_view pattern, std::string_view text)
{
    while (!pattern.empty()) {
        if (pattern.front() != '*') {
            if (text.empty() || text.front() != pattern.front()) {
                return false;
            }
            pattern.remove_prefix(1);
            text.remove_prefix(1);
            continue;
        }
        pattern.remove_prefix(1);
        const std::string_view literal = pattern.substr(0, pattern.find('*'));
        const size_t place = literal.empty() ? std::string_view::npos : text.find(literal);
        if (place == std::string_view::npos) {
            return false;
        }
        text.remove_prefix(place + literal.size());
        pattern.remove_prefix(literal.size());
    }
    return text.empty();
}

} // namespace

int DEF_open(const char *name)
{
    std::string path = name && *name ? name : kDefaultName;
    if (FILE_is_dir(path.c_str())) {
        const std::string directory = path;
        for (const char *inside : kNamesInDirectory) {
            path = directory + '/' + inside;
            if (FILE_exists(path.c_str())) {
                break;
            }
        }
    }
    state.file.reset(FILE_open(path.c_str(), "r"));
    return state.file ? 0 : -1;
}

void DEF_close()
{
    state.file.reset();
}

int DEF_get(char *name, char *value)
{
    if (!state.file) {
        return -1;
    }
    std::array<char, kLineLength + 1> line;
    while (STR_read_cut_line(state.file.get(), line.data(), kLineLength) >= 0) {
        if (line[0] == '#') {
            continue;
        }
        std::string_view rest = line.data();
        std::string first = next_word(rest);
        const std::string text = line_value(rest);
        if (take_branch(first, text) || text.empty() || !is_active()) {
            continue;
        }
        take_definition(first, text);
        STR_lower(first.data());
        if (first.back() == ':') {
            first.pop_back();
        }
        STR_copy(name, kDefNameRoom, first);
        STR_copy(value, kDefValueRoom, text);
        return 1;
    }
    return -1;
}

int DEF_define(const char *word)
{
    if (state.words.size() == kMaxWords) {
        MSG_out(kMsgWarn, "DEF_define: more than %zu words: %s\n", kMaxWords, word);
        return -1;
    }
    state.words.emplace_back(word);
    return 0;
}

void DEF_clear()
{
    state.words.clear();
    state.ifs.clear();
    state.ifs_too_deep = 0;
}

void DEF_set_name(const char *name)
{
    state.name = name ? name : "";
}

int DEF_match(const char *option_name, const char *pattern)
{
    return matches(pattern, target(option_name));
}

int DEF_match_other(const char *pattern)
{
    const char *component = DEF_last_component(pattern);
    return component != pattern && matches(pattern, target(component));
}

const char *DEF_last_component(const char *pattern)
{
    const std::string_view text = pattern;
    const size_t place = text.find_last_of(".*");
    return place == std::string_view::npos ? pattern : pattern + place + 1;
}

int DEF_env(const char *name, const char *environment, char *out)
{
    const std::string plain = std::string("tyr") + name;
    const std::string full = "tyr" + target(name);
    for (const char *variable : {full.c_str(), environment ? environment : "", plain.c_str()}) {
        if (const char *value = *variable ? std::getenv(variable) : nullptr) {
            STR_copy(out, kDefEnvRoom, value);
            return 1;
        }
    }
    return 0;
}
