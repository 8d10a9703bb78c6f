#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/gks/attribute_private.h"
#include "tyr/gks/device_private.h"
#include "tyr/gks/font_private.h"
#include "tyr/gks/recorder.h"
#include "tyr/gks/state_private.h"

using namespace tyr;

namespace {

constexpr const char *kDefaultFont = "modern.fnt";
constexpr const char *kDefaultList = "tyr.fnl";
constexpr size_t kMaxEntries = 40;
constexpr size_t kMaxListedEntries = 10; // of a list named by `fi:`
constexpr size_t kIdLength = 9;
constexpr size_t kNameLength = 105;
constexpr size_t kMaxFileSize = size_t{1} << 20;
constexpr int kStreamEnd = 254; // in a file, ends the strokes

struct Entry {
    std::string id, file;
};

struct State {
    std::vector<Entry> list;
    StrokeFont font;
    bool is_of_server = false;
};

State state;

/// Words of a text, one after the other.
class Words {
  public:
    explicit Words(std::string_view text) : rest_(text) {}

    std::string_view next()
    {
        skip_blank();
        const auto end = std::find_if(rest_.begin(), rest_.end(), is_blank);
        const auto length = static_cast<size_t>(end - rest_.begin());
        const std::string_view word = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return word;
    }

    std::optional<int> number()
    {
        const std::string_view word = next();
        int value = 0;
        const auto result = std::from_chars(word.data(), word.data() + word.size(), value);
        if (word.empty() || result.ec != std::errc() || result.ptr != word.data() + word.size()) {
            return std::nullopt;
        }
        return value;
    }

    std::string_view rest_of_line()
    {
        skip_blank();
        const std::string_view line = rest_.substr(0, rest_.find('\n'));
        rest_.remove_prefix(line.size());
        return line;
    }

  private:
    static bool is_blank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }
    void skip_blank()
    {
        while (!rest_.empty() && is_blank(rest_.front())) {
            rest_.remove_prefix(1);
        }
    }

    std::string_view rest_;
};

bool read_strokes(Words &words, StrokeFont &font)
{
    const std::optional<int> first = words.number();
    if (!first) {
        return false;
    }
    // in the labelled form something else stands in the place of the first character's 255
    const bool labelled = *first != kStrokeEnd;
    if (labelled) {
        words.next();
    }
    font.strokes.push_back(static_cast<unsigned char>(*first & 0xFF));
    while (font.strokes.size() < kMaxStrokeData) {
        const std::optional<int> number = words.number();
        if (!number || *number < 0 || *number > 255) {
            return false;
        }
        if (*number == kStreamEnd) {
            font.strokes.push_back(kStrokeEnd);
            return true;
        }
        font.strokes.push_back(static_cast<unsigned char>(*number));
        if (labelled && *number == kStrokeEnd) {
            words.next();
        }
    }
    return false;
}

/// Greatest x of a character's pairs.
unsigned char measure(const StrokeFont &font, int offset)
{
    unsigned char width = 0;
    for (size_t i = static_cast<size_t>(offset); i < font.strokes.size(); i += 2) {
        const unsigned char x = font.strokes[i];
        if (x == kStrokeEnd) {
            break;
        }
        width = std::max<unsigned char>(width, x >= kPenUp ? x - kPenUp : x);
    }
    return width;
}

bool read_offsets(Words &words, StrokeFont &font)
{
    for (size_t code = 0; code < font.offset.size(); code++) {
        const std::optional<int> offset = words.number();
        if (!offset || *offset < -1 || *offset >= static_cast<int>(font.strokes.size())) {
            return false;
        }
        font.offset[code] = *offset;
        font.width[code] = *offset == -1 ? 0 : measure(font, *offset);
    }
    return true;
}

std::string path_of(const std::string &name)
{
    char path[kFileNameRoom];
    FILE_join(RES_get("file_path"), name.c_str(), path);
    return path;
}

/// All bytes of a file up to the limit; nothing when it can't be opened.
std::optional<std::string> read_text(const std::string &path)
{
    const FilePtr file(FILE_open(path.c_str(), "r"));
    if (!file) {
        return std::nullopt;
    }
    std::string text(kMaxFileSize, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file.get()));
    return text;
}

void add_entry(std::string_view id, std::string_view file)
{
    std::string name(file);
    STR_clean_line(name.data());
    name.resize(std::min(name.find('\0'), name.size()));
    state.list.push_back({std::string(id.substr(0, kIdLength)), name.substr(0, kNameLength)});
}

void read_listed(const char *name)
{
    const std::string path = path_of(name);
    const std::optional<std::string> text = read_text(path);
    if (!text) {
        MSG_out(kMsgWarn, "gsetup_fonts: unable to load font list file: %s\n", path.c_str());
        return;
    }
    Words words(*text);
    while (state.list.size() < kMaxListedEntries) {
        const std::string_view id = words.next();
        const std::string_view file = words.next();
        if (file.empty()) {
            break;
        }
        add_entry(id, file);
    }
}

void read_default_list()
{
    const std::optional<std::string> text = read_text(path_of(kDefaultList));
    if (!text) {
        return;
    }
    Words words(*text);
    while (state.list.size() < kMaxEntries) {
        const std::string_view id = words.next();
        const std::string_view file = words.rest_of_line();
        if (file.empty()) {
            break;
        }
        add_entry(id, file);
    }
}

} // namespace

void StrokeFont::clear()
{
    strokes.clear();
    offset.fill(-1);
    width.fill(0);
}

bool tyr::parse_font(std::string_view text, StrokeFont &font)
{
    font.clear();
    Words words(text);
    if (!read_strokes(words, font) || !read_offsets(words, font)) {
        font.clear();
        return false;
    }
    font.width[' '] = kBlankWidth;
    return true;
}

const StrokeFont &tyr::font_current()
{
    return state.font;
}

bool tyr::font_is_of_server()
{
    return state.is_of_server;
}

int gsetup_fonts()
{
    state.list.clear();
    const char *resource = RES_get("font_list");
    const std::string list = resource != nullptr ? resource : device_default("font_list");
    if (resource == nullptr && list.empty()) {
        read_default_list();
    } else if (STR_has_prefix(list, "fi:")) {
        read_listed(list.c_str() + 3);
    } else {
        for (const std::string &word : STR_fields(list, ',')) {
            if (state.list.size() < kMaxEntries) {
                add_entry("", word);
            }
        }
    }
    const int number = kernel().text.font;
    if (state.list.empty() || number < 1 || number > static_cast<int>(state.list.size())) {
        return read_font(kDefaultFont);
    }
    return read_font(state.list[number - 1].file.c_str());
}

int read_font(const char *name)
{
    if (!kernel().ws.open) {
        return -1;
    }
    if (name[0] == '#' && device_traits().is_screen) {
        if (!device_load_font(name + 1)) {
            MSG_out(kMsgWarn, "read_font: unable to load font: %s\n", name + 1);
            return -1;
        }
        state.is_of_server = true;
        return 0;
    }
    state.is_of_server = false;
    state.font.clear();
    // fonts of the X11 server mean nothing on paper: the default stands in for them
    const std::string path = path_of(name[0] == '#' ? kDefaultFont : name);
    const std::optional<std::string> text = read_text(path);
    if (!text || !parse_font(*text, state.font)) {
        MSG_out(kMsgWarn, "read_font: unable to load font file: %s\n", path.c_str());
        return -1;
    }
    return 0;
}

int gset_fontprec(const int rec[2])
{
    const int number = rec[0];
    if (number == kernel().text.font) {
        return 0;
    }
    kernel().text.font = number;
    pass_on(kObjFont, rec);
    if (device_traits().keeps_calls || state.list.empty()) {
        return 0;
    }
    if (number < 1 || number > static_cast<int>(state.list.size())) {
        MSG_out(kMsgWarn, "gset_fontprec: invalid font id: %d\n", number);
        return -1;
    }
    read_font(state.list[number - 1].file.c_str());
    return 0;
}

int gfont_number(const char *word)
{
    if (word == nullptr) {
        return 1;
    }
    if (std::isdigit(static_cast<unsigned char>(word[0])) != 0) {
        return static_cast<int>(std::strtol(word, nullptr, 10));
    }
    const auto found = std::find_if(state.list.begin(), state.list.end(), [&](const Entry &entry) {
        return STR_casecmp(entry.id.c_str(), word) == 0;
    });
    return found == state.list.end() ? 1 : static_cast<int>(found - state.list.begin()) + 1;
}
