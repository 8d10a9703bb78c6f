#include "tyr/map/map_entry.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/map/map_entry_private.h"
#include "tyr/map/map_file_private.h"
#include "tyr/map/map_grid.h"
#include "tyr/paper/metafile_reader.h"
#include "tyr/plot/area.h"
#include "tyr/plot/attributes.h"
#include "tyr/plot/value_file.h"
#include "tyr/plot/view.h"
#include "tyr/x11/draw_image.h"

using namespace tyr;

namespace {

constexpr float kMapLabel = 0.018F;   ///< of the window height
constexpr float kSpaceLabel = 0.015F; ///< of the page, in plot spaces
constexpr float kDefaultInterval = 5.0F;
constexpr float kDefaultBlockSize = 1000.0F;
constexpr int kDashed = 4;

enum class Block {
    kPassed = -1, ///< behind an open one
    kUnfit = 0,
    kNone = 1,
    kOpen = 2
};

struct State {
    int mode = kMapUnder | kMapUnmarked;
    int map_mode = 0;
    Block block = Block::kNone;
};

State state;

bool begins(const char *text, const char *prefix)
{
    return std::strncmp(text, prefix, std::strlen(prefix)) == 0;
}

bool take_mark(const char **entry)
{
    int mark = kMapUnmarked;
    if (**entry == '-' || **entry == '+') {
        mark = **entry == '-' ? kMapUnder : kMapOver;
        ++*entry;
    }
    return (state.mode & mark) != 0;
}

bool fits_block(const std::array<float, 5> &v)
{
    const float lat = DOM_get_clat();
    const float lon = DOM_get_clon();
    return lat >= std::min(v[0], v[1]) && lat <= std::max(v[0], v[1]) &&
           lon >= std::min(v[2], v[3]) && lon <= std::max(v[2], v[3]) &&
           DOM_window_height() <= v[4];
}

void start_block(const char *text)
{
    if (state.block == Block::kOpen) {
        state.block = Block::kPassed;
        return;
    }
    std::array<float, 5> v = {0.0F, 0.0F, 0.0F, 0.0F, kDefaultBlockSize};
    const int count = std::sscanf(text, "%f,%f,%f,%f,%f", &v[0], &v[1], &v[2], &v[3], &v[4]);
    if (count < 4 || fits_block(v)) {
        state.block = Block::kOpen;
    } else if (state.block == Block::kNone) {
        state.block = Block::kUnfit;
    }
}

/// A condition: sign, number, and where `second` isn't 0 that sign and a second number.
struct Condition {
    const char *sign;
    char second;
    bool is_least; ///< the first number is the least height, else the greatest
};

constexpr Condition kConditions[] = {
    {"s+", 0,   true },
    {">",  '<', true },
    {"s-", 0,   false},
    {"<",  '>', false},
    {"s+", 0,   true },
    {">",  0,   true }
};

/// Steps over a condition if it stands there; false if it isn't met.
bool take_condition(const Condition &condition, const char **entry)
{
    if (!begins(*entry, condition.sign)) {
        return true;
    }
    const char *text = *entry + std::strlen(condition.sign);
    char *end = nullptr;
    const float first = std::strtof(text, &end);
    if (end == text) {
        return true; // no number: a name that begins so
    }
    const float height = DOM_window_height();
    bool is_met = condition.is_least ? !(height < first) : !(height > first);
    if (condition.second != 0 && *end == condition.second) {
        text = end + 1;
        const float second = std::strtof(text, &end);
        if (end != text) {
            is_met = is_met && (condition.is_least ? !(height > second) : !(height < second));
        }
    }
    const char *colon = std::strchr(end, ':');
    *entry = colon ? colon + 1 : end + std::strlen(end);
    return is_met;
}

std::string path_of(const char *folder, const std::string &name)
{
    std::array<char, kFileNameRoom> path = {};
    FILE_join(RES_get(folder), name.c_str(), path.data());
    return path.data();
}

/// "file:colour:x:y", the parameters left out from the end; an empty colour is none.
int process_image(const char *text)
{
    constexpr size_t kColourRoom = 64;
    const char *colon = std::strchr(text, ':');
    const std::string path =
        path_of("image_path", colon ? std::string(text, colon) : std::string(text));
    PLT_message("Map-image: %s", path.c_str());
    if (gis_x11() == 0) {
        MSG_out(kMsgWarn, "MAP_process: No display for the map image: %s\n", path.c_str());
        return -1;
    }
    std::array<char, kColourRoom> colour{};
    int x = 0;
    int y = 0;
    if (colon != nullptr && std::sscanf(colon, ":%63[^:]:%d:%d", colour.data(), &x, &y) < 1) {
        std::sscanf(colon, "::%d:%d", &x, &y);
    }
    gdraw_image_file(path.c_str(), colour[0] != '\0' ? colour.data() : nullptr, x, y);
    return 0;
}

int process_metafile(const char *name)
{
    PLT_message("Map-metafile: %s", name);
    gread_metafile(name);
    return 0;
}

int process_raw_file(const char *name)
{
    PLT_message("Map-rawfile: %s", path_of("file_path", name).c_str());
    PLT_plot_file(path_of("file_path", name).c_str(), 0);
    return 0;
}

int process_lines(const char *text)
{
    // one character parts the word from the numbers; none is missed
    const char first = *text;
    const bool is_number = std::isdigit(static_cast<unsigned char>(first)) != 0 || first == '.';
    const char *rest = first == '\0' || is_number ? text : text + 1;
    float a = kDefaultInterval;
    float b = kDefaultInterval;
    int used = 0;
    if (std::sscanf(rest, "%f%n", &a, &used) == 1) {
        rest += used;
        b = a;
        used = 0;
        if (std::sscanf(rest, ":%f%n", &b, &used) == 1) {
            rest += used;
        } else {
            b = a;
        }
    }
    rest += *rest == ':' ? 1 : 0;
    PLT_message("Map-lalo: %.1f,%.1f", static_cast<double>(a), static_cast<double>(b));
    AttrRec attr;
    ATTR_init(&attr);
    attr.style = kDashed;
    if (*rest != '\0') {
        ATTR_parse(rest, &attr);
    } else {
        ATTR_from_resource("color_line", "magenta:s4", &attr);
    }
    GPH_set_line_attr(&attr);
    const bool is_map = is_map_projection(DOM_get_proj());
    GPH_set_text_attr(&attr, is_map ? DOM_window_height() * kMapLabel : kSpaceLabel);
    if (attr.color != -1) {
        MAP_draw_lalo(a, b);
    }
    return 0;
}

AttrRec map_attributes(const char *text)
{
    AttrRec attr;
    ATTR_init(&attr);
    if (text) {
        ATTR_parse(text, &attr);
    } else if (state.map_mode == 1) {
        ATTR_from_resource("color_cmap", "black", &attr);
    } else {
        ATTR_from_resource("color_map", "red", &attr);
    }
    return attr;
}

int process_map(const char *entry)
{
    const char *colon = std::strchr(entry, ':');
    GPH_set_line_attr(nullptr);
    GPH_set_fill_attr(nullptr);
    PLT_message("Map: %s", entry);
    const AttrRec attr = map_attributes(colon ? colon + 1 : nullptr);
    GPH_set_line_attr(&attr);
    if (attr.fill != kMissingInt) {
        GPH_set_fill_attr(&attr);
        set_map_fill(true);
    }
    const std::string path =
        path_of("file_path", colon ? std::string(entry, colon) : std::string(entry));
    FilePtr stream;
    if (FILE_is_dir(path.c_str()) == 0) {
        stream.reset(FILE_open(path.c_str(), "r"));
    }
    if (!stream) {
        MSG_out(kMsgWarn, "MAP_process: Map file not found: %s\n", path.c_str());
        return -1;
    }
    if (attr.color != -1 && draw_map_file(stream.get()) == MapFileEnd::kDamaged) {
        MSG_out(kMsgWarn, "MAP_process: Map file is damaged: %s\n", path.c_str());
    }
    return 0;
}

} // namespace

int MAP_process(const char *entry)
{
    if (!entry || !*entry || !take_mark(&entry)) {
        return -1;
    }
    if (*entry == '[') {
        start_block(entry + 1);
        return -1;
    }
    if (state.block == Block::kPassed || state.block == Block::kUnfit) {
        return -1;
    }
    for (const Condition &condition : kConditions) {
        if (!take_condition(condition, &entry)) {
            return -1;
        }
    }
    constexpr size_t kPrefix = 3;
    if (begins(entry, "im:")) {
        return process_image(entry + kPrefix);
    }
    if (begins(entry, "if:")) {
        GPH_sel_tran(1);
        const int result = process_image(entry + kPrefix);
        GPH_sel_tran(2);
        return result;
    }
    if (begins(entry, "mf:")) {
        return process_metafile(entry + kPrefix);
    }
    if (begins(entry, "rf:")) {
        return process_raw_file(entry + kPrefix);
    }
    if (begins(entry, "lalo")) {
        return process_lines(entry + std::strlen("lalo"));
    }
    return process_map(entry);
}

void tyr::start_map_entries(int mode)
{
    state.mode = mode;
    state.block = Block::kNone;
}

void DOM_set_map_mode(int mode)
{
    state.map_mode = mode;
}
