#include "tyr/names/name_conv.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/names/date_label.h"
#include "tyr/names/name_mask_private.h"
#include "tyr/names/name_take_private.h"
#include "tyr/names/name_template_private.h"

using namespace tyr;

namespace {

constexpr int kLineLength = 160;
constexpr int kHourly = 3600;
constexpr int kNoStep = 100000; ///< stands for the step of a template without date elements
constexpr const char *kConventionFile = "name_conv";
constexpr const char *kDefaultName = "filename";

/// What FILE_save keeps: the convention in force and the name made by it.
struct Convention {
    std::string input;
    std::string output;
    std::string extension;
    int min_size = 0;
    int step = kHourly;
    std::string last;
    bool is_literal = false;
    DateRec date;
};

struct State {
    Convention now;
    Convention saved;
    std::array<std::string, 256> keys;
    int min_size_override = 0;
    bool uses_output = false;
} state;

/// Hands out a name that was made.
void give(const std::string &name, char *out)
{
    if (!STR_copy(out, kFileNameRoom, name)) {
        MSG_out(kMsgWarn, "FILE_compose: File name too long: %.60s...\n", name.c_str());
    }
}

TemplateValues template_values()
{
    TemplateValues values;
    values.keys = state.keys;
    values.extension = state.now.extension;
    TIME_get_hour(&values.user);
    return values;
}

/// Serves the `:k=value` parts of a type, which is cut at the first of them.
void take_keys(char *type)
{
    const std::string text = type;
    for (size_t colon = text.find(':'); colon != std::string::npos;
         colon = text.find(':', colon + 1)) {
        if (colon + 3 >= text.size() || text[colon + 2] != '=' || text[colon + 3] == ':') {
            continue;
        }
        const size_t end = text.find(':', colon + 3);
        const std::string value = text.substr(colon + 3, end - colon - 3);
        const auto letter = static_cast<unsigned char>(text[colon + 1]);
        FILE_set_key(letter, value.c_str());
        MSG_out(kMsgDebugD, "KEY: %c = %s\n", letter, value.c_str());
        if (std::strlen(type) > colon) {
            type[colon] = '\0';
        }
    }
}

/// Reads one line of the convention file. False for a line that is none.
bool read_convention(const char *line, std::string &key, Convention &convention)
{
    std::array<char, kLineLength + 1> name{};
    std::array<char, kLineLength + 1> input{};
    std::array<char, kLineLength + 1> output{};
    int size = 0;
    const int read =
        std::sscanf(line, "%160s %160s %160s %9d", name.data(), input.data(), output.data(), &size);
    if (line[0] == '#' || read < 1) {
        return false;
    }
    key = name.data();
    convention.input = input.data();
    convention.output = std::strcmp(output.data(), "-") == 0 ? "" : output.data();
    convention.min_size = size;
    return true;
}

/// Looks a type up in the open convention file, the first line that fits.
bool find_convention(FILE *file, const std::string &type)
{
    std::array<char, kLineLength + 1> line;
    std::string key;
    while (STR_read_cut_line(file, line.data(), kLineLength) >= 0) {
        state.now.input.clear();
        state.now.output.clear();
        state.now.min_size = 0;
        if (!read_convention(line.data(), key, state.now)) {
            continue;
        }
        if (STR_casecmp(key.c_str(), type.c_str()) == 0) {
            MSG_out(kMsgDebugA, "File name match for: %s\n", type.c_str());
            return true;
        }
        if (STR_has_prefix(type, key)) {
            const size_t underscore = type.rfind('_');
            if (underscore != std::string::npos) {
                state.now.extension = type.substr(underscore + 1);
            }
            MSG_out(kMsgDebugA, "File name partial match for: %s-%s ext: %s\n", type.c_str(),
                    key.c_str(), state.now.extension.c_str());
            return true;
        }
    }
    return false;
}

/// A template that comes without a convention: nothing is written by it, any size counts.
void take_as_template(const char *text)
{
    state.now.input = text;
    state.now.output.clear();
    state.now.min_size = 0;
}

std::string convention_file()
{
    std::array<char, kFileNameRoom> path;
    const char *name = RES_get("name_conv");
    FILE_join(RES_get("file_path"), name && *name ? name : kConventionFile, path.data());
    return path.data();
}

/// The directory that the user's last name stood in, as many levels up as the template has.
std::optional<std::string> extracted_path()
{
    const std::string &last = state.now.last;
    if (!state.now.is_literal || !FILE_is_path(last.c_str())) {
        return std::nullopt;
    }
    size_t levels = 0;
    for (const char c : state.now.input) {
        levels += c == '/' || c == ':' ? 1 : 0;
    }
    size_t cut = last.size();
    for (; levels > 0 && cut > 0; --cut) {
        const size_t place = cut - 1;
        if (last[place] == '/' || (place == 1 && last[place] == ':')) {
            --levels;
        }
    }
    if (levels > 0 || cut == last.size()) {
        return std::nullopt;
    }
    const std::string path = last.substr(0, cut);
    MSG_out(kMsgDebugC, "Extracted path: %s\n", path.c_str());
    return path;
}

} // namespace

int FILE_set_name(char *type)
{
    Convention &now = state.now;
    now.last.clear();
    if (STR_casecmp(type, "none") == 0) {
        take_as_template("");
        return 0;
    }
    if (type[0] == '@') {
        take_as_template(type + 1);
        return 1;
    }
    take_keys(type);
    const std::string path = convention_file();
    const FilePtr file(FILE_open(path.c_str(), "r"));
    if (!file) {
        MSG_out(kMsgWarn, "FILE_set_name: No file name convention file: %s\n", path.c_str());
        take_as_template(type);
        return 0;
    }
    MSG_out(kMsgDebugA, "Opening name convention file: %s\n", path.c_str());
    now.extension.clear();
    if (find_convention(file.get(), type)) {
        return 1;
    }
    MSG_out(kMsgDebugA, "No file name conversion for: %s\n", type);
    take_as_template(type);
    return 0;
}

int FILE_compose(const DateRec *date, char *out)
{
    Convention &now = state.now;
    if (now.input.empty()) {
        give(now.last.empty() ? kDefaultName : now.last, out);
        now.is_literal = true;
        return 1;
    }
    if (FILE_is_std(now.input.c_str())) {
        give("-", out);
        now.is_literal = false;
        return 1;
    }
    TemplateValues values = template_values();
    values.extracted = extracted_path();
    const DateRec wanted = date ? *date : now.date;
    now.step = kMissingInt;
    if (date) {
        now.date = DateRec();
    }
    if (wanted.year == kMissingInt && !now.last.empty()) {
        give(now.last, out);
        now.is_literal = true;
        return 1;
    }
    const std::string name = compose_name(state.uses_output ? now.output : now.input, values,
                                          wanted, now.date, now.step);
    give(name, out);
    if (!name.empty()) {
        now.last = name;
    }
    return 0;
}

int FILE_out_name(const DateRec *date, char *out)
{
    const DateRec wanted = date ? *date : state.now.date;
    if (wanted.year == kMissingInt) {
        return 0;
    }
    state.uses_output = true;
    FILE_compose(&wanted, out);
    state.uses_output = false;
    return *out != '\0';
}

void FILE_list()
{
    const std::string mask = shell_mask(state.now.input, template_values());
    const std::string command = (mask.starts_with('-') ? "ls -x -- " : "ls -x ") + mask;
    MSG_out(kMsgDebug, "SEARCH: %s\n", command.c_str());
    std::fflush(stdout);
    if (std::system(command.c_str()) == -1) {
        MSG_out(kMsgWarn, "FILE_list: Unable to run: %s\n", command.c_str());
    }
}

void FILE_set_key(int letter, const char *text)
{
    std::string value = std::string(text ? text : "").substr(0, kFileKeyRoom - 1);
    for (char &c : value) {
        c = c == ' ' ? '_' : c;
    }
    state.keys[static_cast<unsigned char>(letter)] = value;
}

void FILE_get_key(int letter, char *out)
{
    STR_copy(out, kFileKeyRoom, state.keys[static_cast<unsigned char>(letter)]);
}

void FILE_get_date(DateRec *date)
{
    *date = state.now.date;
}

void FILE_set_date(const DateRec *date)
{
    state.now.date = *date;
}

int FILE_get_step()
{
    return state.now.step < 1 ? kNoStep : state.now.step;
}

void FILE_set_step(int seconds)
{
    state.now.step = seconds;
}

int FILE_get_raw_step()
{
    return state.now.step;
}

void FILE_set_last(const char *name)
{
    state.now.last = name ? name : "";
}

void FILE_get_last(char *out)
{
    STR_copy(out, kFileNameRoom, state.now.last);
}

void FILE_set_min_size(int size)
{
    state.min_size_override = size;
}

int FILE_get_min_size()
{
    return state.min_size_override > 0 ? state.min_size_override : state.now.min_size;
}

int FILE_get_conv_min_size()
{
    return state.now.min_size;
}

void FILE_save()
{
    state.saved = state.now;
}

void FILE_restore()
{
    state.now = state.saved;
}

void FILE_set_literal(int flag)
{
    state.now.is_literal = flag != 0;
}

bool FILE_has_template()
{
    return !FILE_is_std(state.now.input.c_str());
}

void FILE_take_name(const char *input, char *out)
{
    Convention &now = state.now;
    if (input[0] == '@') {
        give(input + 1, out);
        now.is_literal = true;
    } else if (FILE_is_std(input) || (!now.input.empty() && FILE_is_std(now.input.c_str()))) {
        give("-", out);
    } else if (now.input.empty()) {
        give(input, out);
        now.last = input;
        now.is_literal = true;
    } else if (STR_casecmp(input, "none") == 0 ||
               (FILE_is_path(input) && FILE_is_path(now.input.c_str()))) {
        give(input, out);
    } else {
        const TakenName taken = take_name(now.input, input, template_values(), now.date);
        now.date = taken.date;
        now.step = taken.step;
        now.extension = taken.extension;
        give(taken.name, out);
    }
    if (MSG_test(kMsgDebug)) {
        MSG_out(kMsgDebugD, "FILES:%s:%s:%d\n", input, out, now.step);
        TIME_print(kMsgDebug, &now.date);
    }
}
