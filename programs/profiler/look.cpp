#include "programs/profiler/look.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/place/city.h"
#include "tyr/plot/area.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/labels.h"
#include "tyr/plot/value.h"
#include "tyr/var/expression.h"
#include "tyr/var/type_words.h"

namespace {

constexpr float kMostMargin = 0.4F;
constexpr int kBarOn = 2;

/// A number of a list of fractions; `otherwise` where it is none, or no margin.
float margin_of(const std::string &text, float otherwise)
{
    char *end = nullptr;
    const float value = std::strtof(text.c_str(), &end);
    const bool is_margin = end != text.c_str() && value >= 0.0F && value <= kMostMargin;
    return is_margin ? value : otherwise;
}

bool is_speed(const VarRec &variable)
{
    const bool is_barb = variable.type >= kTypeWindBarb && variable.type <= kTypeVectorBarb;
    return is_barb || STR_casecmp(variable.name, "wspd") == 0;
}

/// Levels with their colours, as `color_fill` has them: "0:#07A1A0,10:#0291A4".
std::string speed_levels(bool is_metric)
{
    const char *text = RES_get("speed_step");
    const double knots = text != nullptr ? std::atof(text) : 0.0;
    const double step = is_metric ? knots / 2.0 : knots;
    std::string levels;
    if (!(step > 0.0) || !std::isfinite(step)) {
        return levels;
    }
    double level = 0.0;
    for (const std::string &colour : RES_list("speed_colors")) {
        levels += STR_print("%s%g:%s", levels.empty() ? "" : ",", level, colour.c_str());
        level += step;
    }
    return levels;
}

/// Whether the user put labels of his own where the bar would stand.
bool is_bar_place_taken()
{
    const std::vector<std::string> words = RES_list("label");
    return std::any_of(words.begin(), words.end(), [](const std::string &word) {
        return STR_has_prefix(word, "ll") || STR_has_prefix(word, "lc");
    });
}

/// The text with what its codes stand for; other codes stay for the labels' own.
std::string expand(const std::string &text, const ProfilerRecord &record)
{
    CityRec city;
    const bool is_known = CTY_search(record.id, nullptr, &city) == 1;
    std::string name = is_known ? city.name : record.id;
    std::replace(name.begin(), name.end(), '_', ' ');
    const float height = is_missing(record.elev) && is_known ? city.elev : record.elev;
    const std::string elevation =
        is_missing(height) ? "?" : STR_print("%d", static_cast<int>(std::lround(height)));
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        const char code = text[i] == '%' && i + 1 < text.size() ? text[i + 1] : '\0';
        const std::string *with = code == 'N' ? &name : code == 'E' ? &elevation : nullptr;
        if (with != nullptr || code == 'I') {
            out += with != nullptr ? *with : record.id;
            ++i;
        } else {
            out += text[i] == '_' ? ' ' : text[i];
        }
    }
    return out;
}

} // namespace

void tyr::look_at_margins()
{
    const std::vector<std::string> words = RES_list("section_margins");
    if (words.size() == 4) {
        std::array<float, 4> margins = {};
        PLT_get_margins(margins.data());
        std::transform(words.begin(), words.end(), margins.begin(), margins.begin(), margin_of);
        PLT_set_margins(margins[0], margins[1], margins[2], margins[3]);
    }
    const char *foot = RES_get("section_foot");
    PLT_set_foot(foot != nullptr ? margin_of(foot, 0.0F) : 0.0F);
}

void tyr::look_at_speed()
{
    const bool is_own = RES_has_value("color_fill") || RES_has_value("con_interval");
    if (VAR_count() == 0 || is_own || !is_speed(*VAR_get_list())) {
        return;
    }
    const bool is_metric = STR_casecmp(VAR_get_list()->units, "m/s") == 0;
    if (const std::string levels = speed_levels(is_metric); !levels.empty()) {
        RES_put("color_fill", levels.c_str());
        if (PLT_get_bar_mode() == 0 && !is_bar_place_taken()) {
            PLT_set_bar_mode(kBarOn);
        }
    }
}

void tyr::look_at_station(const ProfilerRecord &record)
{
    int lines = 0;
    for (const std::string &word : RES_list("section_label")) {
        PLT_apply_label(expand(word, record).c_str());
        if (word.size() > 2 && word[2] >= '0' && word[2] < '0' + kLabelLines) {
            lines = std::max(lines, word[2] - '0' + 1);
        }
    }
    if (PLT_labels_inside() != 0) { // each line takes its place below the top
        PLT_set_label_count(lines);
    }
}
