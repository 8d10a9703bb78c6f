#include "tyr/plot/levels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/gks/colour_table.h"

namespace {

constexpr int kLineWidth = 80;
constexpr float kBandTolerance = 0.01F; ///< keeps a value on a level in the band that begins there

constexpr const char *kDefaultFill =
    "Magenta,LMagenta,Blue,LBlue,Cyan,LCyan,Green,LGreen,Brown,Yellow,Red,LRed,DGray,LGray,White";

/// One band: its look, the level it begins at, and a label in place of the level's number.
struct Row {
    AttrRec attr;
    float level = kMissing;
    std::string label;
};

struct State {
    float interval = kMissing;
    float base = kMissing;
    float low = kMissing, high = kMissing;
    float min = kMissing, max = kMissing;
    std::vector<Row> rows;
    bool is_set = false;
    bool is_cut = false; ///< there were more rows than fit
};

State state;

bool has_levels()
{
    return !state.rows.empty() && !is_missing(state.rows.front().level);
}

Row plain_row(int colour)
{
    Row row;
    ATTR_init(&row.attr);
    row.attr.color = colour;
    return row;
}

std::optional<float> whole_number(const std::string &text)
{
    char *end = nullptr;
    const float value = std::strtof(text.c_str(), &end);
    return !text.empty() && *end == '\0' && std::isfinite(value) ? std::optional(value)
                                                                 : std::nullopt;
}

/// A number with whatever behind it: "10" and "10dBZ" are the level 10.
std::optional<float> leading_number(const std::string &text)
{
    char *end = nullptr;
    const float value = std::strtof(text.c_str(), &end);
    return end != text.c_str() && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

void add(const Row &row)
{
    if (state.rows.size() < kMaxBands) {
        state.rows.push_back(row);
    } else if (!state.is_cut) {
        state.is_cut = true;
        MSG_out(kMsgWarn, "CONT_set_fill_colors: Only the first %d rows are taken\n", kMaxBands);
    }
}

/// "first-last": a row a colour index, up or down.
bool add_range(const std::string &word)
{
    const size_t dash = word.find('-', 1);
    if (dash == std::string::npos || word.find('=') < dash) {
        return false;
    }
    Row row = plain_row(kMissingInt);
    ATTR_parse(word.substr(0, dash).c_str(), &row.attr);
    const int first = row.attr.color;
    const int last = CLR_lookup(word.substr(dash + 1).c_str());
    if (first < 0 || last < 0) {
        return false;
    }
    const int step = first <= last ? 1 : -1;
    for (int i = 0; i <= std::min(std::abs(last - first), kMaxBands - 1); ++i) {
        row.attr.color = first + i * step;
        add(row);
    }
    return true;
}

/// Cuts ":la=text" off an attribute text. @return the text of the label
std::string take_label(std::string &attributes)
{
    const size_t at = (":" + attributes).find(":la=");
    if (at == std::string::npos) {
        return {};
    }
    std::string label = attributes.substr(at + 3);
    attributes.erase(at > 0 ? at - 1 : 0);
    return label.substr(0, kLevelLabelRoom - 1);
}

void add_word(std::string word)
{
    if (word.empty()) {
        return;
    }
    Row row = plain_row(kMissingInt);
    if (const std::optional<float> value = whole_number(word)) {
        row.attr.color = static_cast<int>(std::clamp(*value, -1.0F, 508.0F));
        row.level = *value;
        add(row);
        return;
    }
    row.label = take_label(word);
    const size_t colon = word.find(':');
    if (const auto level = leading_number(word.substr(0, colon));
        level && colon != std::string::npos) {
        row.level = *level;
        if (row.label.empty()) {
            row.label = word.substr(0, std::min<size_t>(colon, kLevelLabelRoom - 1));
        }
        word.erase(0, colon + 1);
    } else if (add_range(word)) {
        return;
    }
    ATTR_parse(word.c_str(), &row.attr);
    add(row);
}

bool add_file(const char *name)
{
    std::array<char, kFileNameRoom> path;
    FILE_join(RES_get("file_path"), name, path.data());
    const FilePtr file(FILE_open(path.data(), "r"));
    if (!file) {
        MSG_out(192, "CONT_set_fill_colors: Unable to read contour level file: %s\n", path.data());
        return false;
    }
    std::array<char, kLineWidth + 1> line;
    while (STR_read_cut_line(file.get(), line.data(), kLineWidth) != -1) {
        STR_clean_line(line.data());
        if (line[0] != '#' && line[0] != '@') {
            add_word(line.data());
        }
    }
    return true;
}

/// Fills levels that the list leaves out between known ones, by position.
void interpolate_levels()
{
    const size_t n = state.rows.size();
    size_t known = 0;
    for (size_t i = 1; i < n; ++i) {
        if (is_missing(state.rows[i].level)) {
            continue;
        }
        const float step =
            (state.rows[i].level - state.rows[known].level) / static_cast<float>(i - known);
        for (size_t k = known + 1; k < i; ++k) {
            state.rows[k].level = state.rows[known].level + step * static_cast<float>(k - known);
        }
        known = i;
    }
    // rows behind the last known level go on with the last step
    const float step = known > 0 ? state.rows[known].level - state.rows[known - 1].level : 1.0F;
    for (size_t k = known + 1; k < n; ++k) {
        state.rows[k].level = state.rows[k - 1].level + step;
    }
}

void finish_levels()
{
    if (!has_levels()) {
        return;
    }
    interpolate_levels();
    if (state.rows.size() > 1) {
        state.interval = state.rows[1].level - state.rows[0].level;
    }
    state.low = state.rows.front().level;
    state.high = state.rows.back().level;
}

/// `color_fill`, unless it asks for the default.
std::string wanted_fill(const char *text, int force)
{
    const char *resource = RES_get("color_fill");
    if (force == 0 && resource && resource[0] != '\0' && STR_casecmp(resource, "miss") != 0 &&
        STR_ncasecmp(resource, "def", 3) != 0) {
        return resource;
    }
    return text ? text : "";
}

void set_unless_missing(float &field, float value)
{
    field = is_missing(value) ? field : value;
}

} // namespace

void CONT_reset()
{
    state = {};
}

void CONT_set_base(float base)
{
    set_unless_missing(state.base, base);
}

void CONT_set_interval(float interval)
{
    set_unless_missing(state.interval, interval);
}

void CONT_set_limits(float max, float min)
{
    set_unless_missing(state.max, max);
    set_unless_missing(state.min, min);
}

void CONT_set_range(float low, float high)
{
    set_unless_missing(state.low, low);
    set_unless_missing(state.high, high);
}

int CONT_get_levels(float *out)
{
    if (!has_levels()) {
        return 0;
    }
    for (size_t i = 0; out && i < state.rows.size(); ++i) {
        out[i] = state.rows[i].level;
    }
    return static_cast<int>(state.rows.size());
}

int CONT_set_fill_colors(const char *text, int force)
{
    if (state.is_set) {
        return -1;
    }
    state.is_set = true;
    state.rows.clear();
    std::string words = wanted_fill(text, force);
    if (words.empty() && CLR_fill_count() != 0) {
        for (int i = 0; i < std::min(CLR_fill_count(), kMaxBands); ++i) {
            state.rows.push_back(plain_row(i));
        }
        return -1;
    }
    words = words.empty() ? kDefaultFill : words;
    const std::vector<std::string> list = STR_fields(words, ',');
    if (list.size() == 1 && list[0].find('-') == std::string::npos) {
        if (!add_file(list[0].c_str())) {
            return 0;
        }
    } else {
        std::for_each(list.begin(), list.end(), add_word);
    }
    const auto end = std::find_if(state.rows.begin(), state.rows.end(),
                                  [](const Row &row) { return row.attr.color == kColourEnd; });
    state.rows.erase(end, state.rows.end());
    finish_levels();
    return 0;
}

void CONT_value_attr(float value, AttrRec *out)
{
    ATTR_init(out);
    out->color = kColourNone;
    const int rows = static_cast<int>(state.rows.size());
    if (is_missing(value) || rows == 0 || (!is_missing(state.min) && value < state.min) ||
        (!is_missing(state.max) && value > state.max)) {
        return;
    }
    if (!has_levels()) {
        const float base = is_missing(state.base) ? 0.0F : state.base;
        if (is_missing(state.interval) || state.interval == 0.0F) {
            return;
        }
        const float band = std::floor((value - base) / state.interval + kBandTolerance);
        if (!std::isfinite(band)) {
            return;
        }
        const int row = static_cast<int>(std::fmod(band, static_cast<float>(rows)));
        *out = state.rows[static_cast<size_t>(row < 0 ? row + rows : row)].attr;
        return;
    }
    if (value < state.rows.front().level) {
        return;
    }
    int i = 0;
    while (i + 1 < rows && state.rows[static_cast<size_t>(i) + 1].level <= value) {
        ++i;
    }
    *out = state.rows[static_cast<size_t>(i)].attr;
}

float CONT_nice_interval(int count, float high, float low)
{
    const float v = (high - low) / static_cast<float>(count == 0 ? 1 : count);
    if (v == 0.0F) {
        return 1.0F;
    }
    for (const float scale : {1.0F, 10.0F, 100.0F, 1000.0F, 10000.0F}) {
        if (v >= 1.0F / scale) {
            return std::ceil(v * scale) / scale;
        }
    }
    return v;
}

LevelView CONT_view()
{
    return {state.interval,
            state.base,
            state.low,
            state.high,
            CONT_get_levels(nullptr),
            static_cast<int>(state.rows.size()),
            has_levels()};
}

AttrRec CONT_row(int i)
{
    const int rows = static_cast<int>(state.rows.size());
    return rows == 0 ? plain_row(kColourNone).attr : state.rows[static_cast<size_t>(i % rows)].attr;
}

float CONT_level(int i)
{
    return i >= 0 && i < static_cast<int>(state.rows.size())
               ? state.rows[static_cast<size_t>(i)].level
               : kMissing;
}

const char *CONT_label(int i)
{
    return i >= 0 && i < static_cast<int>(state.rows.size())
               ? state.rows[static_cast<size_t>(i)].label.c_str()
               : "";
}
