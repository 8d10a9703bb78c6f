#include "tyr/gks/colour_table.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/nearest.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/gks/gks.h"

namespace {

constexpr const char *kDefaultFile = "tyr.clr";
constexpr int kMaxLine = 100;
constexpr int kNameRoom = 20;
constexpr int kKeptEntries = 16; // names that a new reading leaves in place

struct Entry {
    std::string name;
    float red = 0.0F, green = 0.0F, blue = 0.0F;
};

struct State {
    std::array<Entry, kMaxTableColours> table;
    int count = 0;
    int fill_count = 0;
    std::string unopened; ///< the table last told of
};

State state;

constexpr const char *kNoColourWords[] = {"none", "off", "back"};

struct PrintWord {
    const char *word;
    int index;
};

constexpr PrintWord kPrintWords[] = {
    {"pblk",  kPrintBlack    },
    {"pbblk", kPrintBlack + 1},
    {"ptblk", kPrintBlack + 2},
    {"pwht",  kPrintWhite    },
    {"pbwht", kPrintWhite + 1},
    {"ptwht", kPrintWhite + 2},
    {"pgry",  kPrintGrey     },
    {"pbgry", kPrintGrey + 1 },
    {"ptgry", kPrintGrey + 2 },
};

/// What one file of the list left behind.
struct FileResult {
    int highest; ///< highest table index seen
    int end;     ///< position of its END line, -1 for none
};

bool is_word(const char *word, const char *other)
{
    return STR_casecmp(word, other) == 0;
}

/// Name and colour of an entry line, its number aside.
bool parse_entry(const char *line, Entry &entry)
{
    char name[kNameRoom];
    float red = 0.0F;
    float green = 0.0F;
    float blue = 0.0F;
    unsigned r = 0;
    unsigned g = 0;
    unsigned b = 0;
    if (std::sscanf(line, "%19s %f %f %f", name, &red, &green, &blue) == 4) {
        entry = {name, red, green, blue};
        return true;
    }
    if (std::sscanf(line, "%19s #%2X%2X%2X", name, &r, &g, &b) == 4) {
        entry = {name, static_cast<float>(r) / 255.0F, static_cast<float>(g) / 255.0F,
                 static_cast<float>(b) / 255.0F};
        return true;
    }
    return false;
}

/// Takes one entry line. `position` is the place in the file, which a leading number sets.
void read_entry(const char *line, int base, int &position)
{
    char *rest = nullptr;
    const long number = std::strtol(line, &rest, 10);
    const bool numbered = rest != line;
    if (numbered) {
        if (number < 0 || number + base >= kMaxTableColours) {
            return;
        }
        position = static_cast<int>(number);
    }
    parse_entry(numbered ? rest : line, state.table[position + base]);
}

FileResult read_file(FILE *file, int base, int highest)
{
    FileResult result{highest, -1};
    char line[kMaxLine + 1];
    int position = 0;
    while (STR_read_cut_line(file, line, kMaxLine) >= 0) {
        STR_strip_cr(line);
        STR_strip_trailing(line);
        if (position + base >= kMaxTableColours) {
            continue;
        }
        result.highest = std::max(result.highest, position + base);
        if (line[0] == '#') {
            continue;
        }
        if (is_word(line, "END")) {
            result.end = position;
            continue;
        }
        read_entry(line, base, position);
        position++;
    }
    return result;
}

/// Adds the colour of a "#" word under the word itself.
int add_word(const char *word, int digits)
{
    unsigned r = 0;
    unsigned g = 0;
    unsigned b = 0;
    const int count = digits == 2 ? std::sscanf(word + 1, "%2x%2x%2x", &r, &g, &b)
                                  : std::sscanf(word + 1, "%3u%3u%3u", &r, &g, &b);
    if (count != 3 || std::max({r, g, b}) > 255) {
        return kColourNone;
    }
    return CLR_add(word, static_cast<float>(r) / 255.0F, static_cast<float>(g) / 255.0F,
                   static_cast<float>(b) / 255.0F);
}

/// Tells of a table that can't be opened, once while the same one is asked for.
void warn_unopened(const char *path)
{
    const int why = errno;
    if (state.unopened != path) {
        state.unopened = path;
        MSG_out(kMsgWarn, "color_table: %s: %s\n", path, std::strerror(why));
    }
}

void warn_unknown_colour(const char *word)
{
    std::vector<std::string_view> known(std::begin(kNoColourWords), std::end(kNoColourWords));
    const bool is_none = STR_is_int(word) != 0 || // below 0: no colour by number
                         std::any_of(known.begin(), known.end(), [word](std::string_view k) {
                             return is_word(word, k.data());
                         });
    if (is_none) {
        return;
    }
    for (int i = 0; i < state.count; i++) {
        if (!state.table[i].name.empty()) {
            known.emplace_back(state.table[i].name);
        }
    }
    tyr::warn_unknown("colour", word, known);
}

} // namespace

void CLR_read_table(const char *files)
{
    const bool by_default = files == nullptr || files[0] == '\0';
    const char *resource = RES_get("color_table");
    const bool has_resource = resource != nullptr && resource[0] != '\0';
    const std::string list = !by_default ? files : has_resource ? resource : kDefaultFile;
    for (int i = kKeptEntries; i < kMaxTableColours; i++) {
        state.table[i].name.clear();
    }
    int highest = 0;
    int base = 0;
    bool first = true;
    for (const std::string &name : STR_fields(list, ',')) {
        char path[kFileNameRoom];
        FILE_join(RES_get("file_path"), name.c_str(), path);
        if (const FilePtr file{FILE_open(path, "r")}) {
            const FileResult result = read_file(file.get(), base, highest);
            highest = result.highest;
            state.count = highest + 1;
            if (first && by_default && has_resource) {
                state.fill_count = result.end >= 0 ? result.end : highest;
            }
            base = state.count;
        } else if (has_resource && by_default) {
            warn_unopened(path);
        }
        first = false;
    }
}

int CLR_find(const char *word)
{
    if (word == nullptr || word[0] == '\0') {
        return kColourNone;
    }
    if (is_word(word, "end")) {
        return kColourEnd;
    }
    for (const char *none : kNoColourWords) {
        if (is_word(word, none)) {
            return kColourNone;
        }
    }
    for (const PrintWord &print : kPrintWords) {
        if (is_word(word, print.word)) {
            return print.index;
        }
    }
    for (int i = 0; i < state.count; i++) {
        if (!state.table[i].name.empty() && is_word(word, state.table[i].name.c_str())) {
            return i;
        }
    }
    const size_t length = std::strlen(word);
    if (word[0] == '#' && (length == 7 || length == 10)) {
        return add_word(word, length == 7 ? 2 : 3);
    }
    if (std::isdigit(static_cast<unsigned char>(word[0])) != 0) {
        return static_cast<int>(std::clamp(std::strtol(word, nullptr, 10), 0L, 1000000L));
    }
    return kColourNone;
}

int CLR_lookup(const char *word)
{
    const int index = CLR_find(word);
    if (index == kColourNone && state.count > 0 && word != nullptr && word[0] != '\0') {
        warn_unknown_colour(word);
    }
    return index;
}

int CLR_add(const char *name, float red, float green, float blue)
{
    if (state.count >= kMaxTableColours) {
        return kColourNone;
    }
    const int index = state.count;
    state.table[index] = {std::string(name).substr(0, kNameRoom - 1), red, green, blue};
    const float rgb[3] = {red, green, blue};
    if (ginq_open() != 0) { // otherwise the opening takes the table whole
        gset_colr_rep(1, index, rgb);
    }
    state.count++;
    return index;
}

void CLR_get_rgb(int index, float *red, float *green, float *blue)
{
    const int last = std::max(state.count, 1) - 1;
    const Entry &entry = state.table[std::clamp(index, 0, last)];
    *red = entry.red;
    *green = entry.green;
    *blue = entry.blue;
}

int CLR_count()
{
    return state.count;
}

int CLR_fill_count()
{
    return state.fill_count;
}
