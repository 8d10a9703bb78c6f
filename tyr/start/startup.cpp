#include "tyr/start/startup.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/start/convert.h"
#include "tyr/start/deffile.h"
#include "tyr/start/installed_data.h"
#include "tyr/start/loop_window_private.h"

using namespace tyr;

namespace {

constexpr size_t kKeyLength = 49;
constexpr const char *kSources = ".:/home/tyr/etc:/usr/local/tyr/etc";

using Options = std::span<const OptionRec>;
using Arguments = std::span<char *const>;

bool begins_with_key(std::string_view word, size_t dashes)
{
    return word.size() > dashes && word.find_first_not_of('-') == dashes &&
           std::isalpha(static_cast<unsigned char>(word[dashes])) != 0;
}

/// A keyed word of the command line and the value that goes with it.
struct Keyed {
    std::string key;
    const char *value = nullptr; ///< null for none
    bool takes_next = false;     ///< the value is the next word
};

Keyed read_keyed(Arguments arguments, size_t at, size_t dashes)
{
    const char *word = arguments[at] + dashes;
    Keyed keyed;
    const char *equals = std::strchr(word, '=');
    keyed.key = std::string(word, equals ? static_cast<size_t>(equals - word) : std::strlen(word));
    keyed.key.resize(std::min(keyed.key.size(), kKeyLength));
    if (equals) {
        keyed.value = equals + 1;
    } else if (at + 1 < arguments.size() && !begins_with_key(arguments[at + 1], 1)) {
        keyed.value = arguments[at + 1];
        keyed.takes_next = true;
    }
    return keyed;
}

bool names_program(std::string_view key)
{
    return std::string_view("name").starts_with(key);
}

bool names_defaults(std::string_view key)
{
    return key.starts_with("default") || key.starts_with("df");
}

/// The first pass serves only the name of the program and the list of resource files.
void read_name_and_defaults(Arguments arguments)
{
    for (size_t i = 1; i < arguments.size(); ++i) {
        if (!begins_with_key(arguments[i], 1)) {
            continue;
        }
        const Keyed keyed = read_keyed(arguments, i, 1);
        if (keyed.value && names_program(keyed.key)) {
            RES_put("name", keyed.value);
            DEF_set_name(keyed.value);
        } else if (keyed.value && names_defaults(keyed.key)) {
            RES_put("default", keyed.value);
        }
        i += keyed.takes_next ? 1 : 0;
    }
}

void read_resource_file(const std::string &source, Options options)
{
    std::array<char, kDefNameRoom> pattern;
    std::array<char, kDefValueRoom> value;
    DEF_open(source.c_str());
    while (DEF_get(pattern.data(), value.data()) >= 0) {
        bool hit = false;
        for (size_t i = 0; i < options.size(); ++i) {
            const OptionRec &option = options[i];
            if (*option.name && DEF_match(option.name, pattern.data())) {
                MSG_out(kMsgDebugD, "RESRC: %s=%s\n", option.name, value.data());
                RES_set(static_cast<int>(i), option.name, value.data(), option.type);
                hit = true;
            }
        }
        if (!hit && DEF_match_other(pattern.data())) {
            RES_put(DEF_last_component(pattern.data()), value.data());
        }
    }
    DEF_close();
}

void read_sources(Options options)
{
    const char *given = RES_get("default");
    const std::string list = given ? given : kSources;
    std::vector<std::string> sources = STR_fields(list, ':');
    if (sources.empty()) {
        sources.emplace_back();
    }
    // words alone are meant for the usual files
    const bool has_files = std::any_of(sources.begin(), sources.end(),
                                       [](const std::string &s) { return !s.starts_with('+'); });
    if (!has_files) {
        const std::vector<std::string> usual = STR_fields(kSources, ':');
        sources.insert(sources.end(), usual.begin(), usual.end());
    }
    // an installation elsewhere has its resource file where the list's last folder would be
    const std::string beside = given && has_files ? "" : installed_data_folder();
    if (!beside.empty() && beside != sources.back()) {
        sources.push_back(beside);
    }
    DEF_clear();
    for (const std::string &source : sources) {
        if (source.starts_with('+')) {
            DEF_define(source.c_str() + 1);
        } else if (source.starts_with('#')) {
            loop_exchange(source.substr(1), options);
        } else {
            read_resource_file(source, options);
        }
    }
}

void read_environment(Options options)
{
    std::array<char, kDefEnvRoom> value;
    for (size_t i = 0; i < options.size(); ++i) {
        const OptionRec &option = options[i];
        if (*option.name && DEF_env(option.name, option.environment, value.data())) {
            RES_set(static_cast<int>(i), option.name, value.data(), option.type);
        }
    }
}

constexpr size_t kNoOption = static_cast<size_t>(-1);

/// The first keyed option that a test of the option holds for.
template <typename Test> size_t find_keyed(Options options, Test test)
{
    for (size_t i = 0; i < options.size(); ++i) {
        if (options[i].key && OPT_key_place(options[i].key) == 0 && test(options[i])) {
            return i;
        }
    }
    return kNoOption;
}

size_t find_exact(Options options, const std::string &key)
{
    const size_t by_key = find_keyed(options, [&](const OptionRec &option) {
        return STR_casecmp(option.key, key.c_str()) == 0;
    });
    return by_key != kNoOption ? by_key : find_keyed(options, [&](const OptionRec &option) {
        return STR_casecmp(option.name, key.c_str()) == 0;
    });
}

size_t find_by_prefix(Options options, const std::string &key)
{
    return find_keyed(options,
                      [&](const OptionRec &option) { return STR_has_prefix(option.name, key); });
}

/// True for the keys that the first pass has served, in any case of letters.
bool is_served(std::string key)
{
    STR_lower(key.data());
    return names_program(key) || names_defaults(key);
}

bool is_flag(int type)
{
    return type == kResFlag || type == kResBatch || type == kResHelp;
}

/// Stores a keyed option; returns how many further words it took.
size_t store_keyed(Arguments arguments, size_t at, size_t dashes, Options options)
{
    Keyed keyed = read_keyed(arguments, at, dashes);
    size_t found = find_exact(options, keyed.key);
    if (found == kNoOption) {
        if (is_served(keyed.key)) {
            return keyed.takes_next ? 1 : 0;
        }
        found = find_by_prefix(options, keyed.key);
    }
    if (found == kNoOption) {
        RES_put(keyed.key.c_str(), keyed.value);
        return keyed.takes_next ? 1 : 0;
    }
    const OptionRec &option = options[found];
    if (keyed.takes_next && is_flag(option.type)) {
        keyed.value = nullptr;
        keyed.takes_next = false;
    }
    RES_set(static_cast<int>(found), option.name, keyed.value, option.type);
    loop_tell(option.name, keyed.value);
    return keyed.takes_next ? 1 : 0;
}

size_t find_place(Options options, int place)
{
    for (size_t i = 0; i < options.size(); ++i) {
        if (options[i].key && OPT_key_place(options[i].key) == place) {
            return i;
        }
    }
    return kNoOption;
}

void store_positional(const char *word, int count, Options options)
{
    size_t found = count <= kListPlace ? find_place(options, count) : kNoOption;
    if (found == kNoOption) {
        found = find_place(options, kListPlace);
    }
    if (found == kNoOption) {
        return;
    }
    const OptionRec &option = options[found];
    const bool joins = OPT_key_place(option.key) == kListPlace && count >= 2;
    (joins ? RES_append : RES_set)(static_cast<int>(found), option.name, word, option.type);
    loop_tell(option.name, word);
}

void read_command_line(Arguments arguments, Options options)
{
    int positional = 0;
    for (size_t i = 1; i < arguments.size(); ++i) {
        const std::string_view word = arguments[i];
        const size_t dashes = begins_with_key(word, 1) ? 1 : begins_with_key(word, 2) ? 2 : 0;
        if (dashes > 0) {
            i += store_keyed(arguments, i, dashes, options);
        } else if (word != "--") {
            store_positional(arguments[i], ++positional, options);
        }
    }
}

/// Data that no source told a folder of stand beside the program.
void find_own_data()
{
    if (!RES_has_value("file_path")) {
        if (const std::string beside = installed_data_folder(); !beside.empty()) {
            RES_put("file_path", beside.c_str());
        }
    }
}

/// The one moment at which values act.
void convert_all(Options options)
{
    for (const ResourceRec &resource : RES_all()) {
        if (resource.index < 0 || static_cast<size_t>(resource.index) >= options.size()) {
            continue;
        }
        const OptionRec &option = options[resource.index];
        const char *value = resource.has_value ? RES_get(resource.name.c_str()) : nullptr;
        if (resource.type == kResList && option.destination) {
            int ignored = 0;
            STR_split(value, '\n', option.count ? option.count : &ignored,
                      static_cast<char ***>(option.destination));
        } else {
            RES_convert(value, option.destination, resource.type);
        }
    }
}

} // namespace

int RES_init(const char *program, const char *, int count, char **arguments, OptionRec *options)
{
    size_t known = 0;
    while (options[known].name) {
        ++known;
    }
    const Options all(options, known);
    const Arguments words(arguments, static_cast<size_t>(std::max(count, 0)));
    RES_set_program(program);
    if (const char *defaults = std::getenv("tyrdefault")) {
        RES_put("default", defaults);
    }
    read_name_and_defaults(words);
    read_sources(all);
    read_environment(all);
    read_command_line(words, all);
    loop_quit();
    find_own_data();
    convert_all(all);
    return 0;
}
