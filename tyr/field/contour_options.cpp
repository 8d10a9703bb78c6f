#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/field/contour_private.h"
#include "tyr/field/number_list_private.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/labels.h"
#include "tyr/plot/levels.h"

using namespace tyr;

namespace tyr {

std::vector<float> number_list(const char *text, const char *separators)
{
    std::vector<float> list;
    while (list.size() < 8) {
        char *end = nullptr;
        const float value = std::strtof(text, &end);
        if (end == text || !std::isfinite(value)) {
            break;
        }
        list.push_back(value);
        if (*end != '\0' && std::strchr(separators, *end) != nullptr) {
            ++end;
        }
        text = end;
    }
    return list;
}

int whole(float value)
{
    return static_cast<int>(std::clamp(value, -1.0e6F, 1.0e6F));
}

ContourState &contours()
{
    static ContourState state;
    return state;
}

namespace {

constexpr float kOffsetX = 0.012F; ///< of the window's height, an offset of 1
constexpr float kOffsetY = 0.02F;
constexpr const char *kPairSeparators = ":,x/ ";
constexpr int kBarOn = 3;
constexpr int kBarOff = -2;

struct KindWord {
    const char *word;
    int kind, dash;
};
constexpr KindWord kKindWords[] = {
    {"value",  kContValues, 0 },
    {"gvalue", kContValues, 0 },
    {"cf",     kContFilled, 0 },
    {"lcf",    kContBoth,   0 },
    {"ln",     kContLines,  0 },
    {"dln",    kContLines,  1 },
    {"ndln",   kContLines,  -1},
};

/// The numbers of a label option: "n" as step and radius by its digits, else one by one. Whole
/// numbers, so that a dot parts them too.
void set_labels(const std::vector<int> &n)
{
    ContourSettings &s = contours().set;
    if (n.empty()) {
        return;
    }
    s.label_step = n.size() == 1 ? n[0] / 10 : n[0];
    s.extreme_radius = std::clamp(n.size() == 1 ? n[0] % 10 : n[1], 0, 100);
    if (n.size() > 2) {
        s.label_columns = s.label_rows = std::max(n[2], 1);
    }
    if (n.size() > 3) {
        s.label_rows = std::max(n[3], 1);
    }
}

std::vector<int> whole_list(const char *text)
{
    std::vector<int> list;
    for (const char *p = text; list.size() < 4;) {
        char *end = nullptr;
        const long value = std::strtol(p, &end, 10);
        if (end == p) {
            break;
        }
        list.push_back(static_cast<int>(std::clamp(value, -100000L, 100000L)));
        if (*end != '.' && *end != ':' && *end != ',') {
            break;
        }
        p = end + 1;
    }
    return list;
}

void set_skip(const char *text)
{
    const std::vector<float> n = number_list(text, kPairSeparators);
    if (!n.empty()) {
        contours().set.skip_x = std::max(whole(n[0]), 1);
        contours().set.skip_y = std::max(whole(n.size() > 1 ? n[1] : n[0]), 1);
    }
}

void set_offset(const char *text)
{
    const std::vector<float> n = number_list(text, kPairSeparators);
    if (n.size() > 1) {
        contours().set.offset_x = n[0] * kOffsetX;
        contours().set.offset_y = n[1] * kOffsetY;
    }
}

void set_scale(float value)
{
    contours().set.scale = value > 0.0F ? value : 1.0F;
}

bool set_plain_word(const char *word)
{
    ContourSettings &s = contours().set;
    const auto is = [word](const char *known) { return STR_casecmp(word, known) == 0; };
    for (const KindWord &row : kKindWords) {
        if (is(row.word)) {
            s.kind = row.kind;
            s.dash = row.dash;
            return true;
        }
    }
    if (is("bar") || is("nobar")) {
        PLT_set_bar_mode(is("bar") ? kBarOn : kBarOff);
    } else if (is("nolr")) {
        PRM_set_draw(kDrawTextLr, 0);
    } else if (is("rlab") || is("hlab")) {
        s.turn_labels = is("rlab");
    } else if (is("labs")) {
        PLT_set_label_mode(kLabelsSimple);
    } else if (word[0] == '%') {
        s.format = word;
    } else {
        return false;
    }
    return true;
}

void set_keyed_word(const char *word)
{
    ContourSettings &s = contours().set;
    const char *equals = std::strchr(word, '=');
    if (equals == nullptr) {
        return;
    }
    const std::string key(word, equals);
    const char *text = equals + 1;
    const std::vector<float> n = number_list(text, ",");
    const auto is = [&key](const char *known) { return STR_casecmp(key.c_str(), known) == 0; };
    if (is("cof")) {
        CONT_set_fill_colors(text, 1);
    } else if (is("lab")) {
        set_labels(whole_list(text));
    } else if (is("sk")) {
        set_skip(text);
    } else if (is("xy")) {
        set_offset(text);
    } else if (is("fi")) {
        s.pattern = std::clamp(ATTR_fill_code(text), 0, 19);
    } else if (n.empty()) {
        return;
    } else if (is("in")) {
        CONT_set_interval(n[0]);
    } else if (is("cb")) {
        CONT_set_base(n[0]);
    } else if (is("mn")) {
        s.lowest = n[0];
    } else if (is("mx")) {
        s.highest = n[0];
    } else if (is("sc")) {
        set_scale(n[0]);
    }
}

/// The text behind a word and one character more; null where `word` isn't that word.
const char *behind(const char *word, const char *known)
{
    const size_t n = std::strlen(known);
    if (STR_ncasecmp(word, known, static_cast<int>(n)) != 0) {
        return nullptr;
    }
    return word[n] == '\0' ? word + n : word + n + 1;
}

void apply_param(const char *word)
{
    ContourSettings &s = contours().set;
    const auto is = [word](const char *known) { return STR_casecmp(word, known) == 0; };
    const auto number = [word](const char *known, float &out) {
        const char *text = behind(word, known);
        const std::vector<float> n = text ? number_list(text, ",") : std::vector<float>{};
        out = n.empty() ? out : n[0];
        return text != nullptr;
    };
    float most = static_cast<float>(s.most_lines);
    if (is("rlab") || is("hlab")) {
        s.turn_labels = is("rlab");
    } else if (is("grid")) {
        s.boxes = true;
    } else if (is("mapcon") || is("conmap")) {
        s.map_first = is("mapcon");
    } else if (number("conmin", s.lowest) || number("conmax", s.highest)) {
        return;
    } else if (number("maxl", most)) {
        s.most_lines = whole(most);
    } else if (const char *fill = behind(word, "fill")) {
        s.pattern = std::clamp(ATTR_fill_code(fill), 0, 19);
    } else if (const char *skip = behind(word, "plt_skip")) {
        set_skip(skip);
    } else if (const char *offset = behind(word, "plt_off")) {
        set_offset(offset);
    } else if (const char *label =
                   STR_ncasecmp(word, "label", 5) == 0 ? nullptr : behind(word, "lab")) {
        set_labels(whole_list(label));
    }
}

} // namespace

void read_contour_params()
{
    for (const std::string &word : RES_list("plot_param")) {
        apply_param(word.c_str());
    }
}

} // namespace tyr

void CONT_set_options(const char *text)
{
    if (text == nullptr) {
        return;
    }
    contours().set.options += std::string(contours().set.options.empty() ? "" : ":") + text;
    // "sk=2:3" and "xy=1:2" come apart as two words: the second is put back
    std::vector<std::string> words;
    for (const std::string &word : STR_fields(text, ':')) {
        const bool is_number =
            !word.empty() && word.find_first_not_of("+-.0123456789") == word.npos;
        const bool is_pair = !words.empty() && (STR_has_prefix(words.back(), "sk=") ||
                                                STR_has_prefix(words.back(), "xy="));
        if (is_number && is_pair) {
            words.back() += ":" + word;
        } else {
            words.push_back(word);
        }
    }
    for (const std::string &word : words) {
        if (!set_plain_word(word.c_str())) {
            set_keyed_word(word.c_str());
        }
    }
}
