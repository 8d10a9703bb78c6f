#include "tyr/var/level.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/nearest.h"
#include "tyr/base/number.h"
#include "tyr/base/prm.h"
#include "tyr/base/str.h"
#include "tyr/var/base_stack.h"

namespace {

constexpr int kDefaultClass = 1;
constexpr int kGivenClass = 2;
constexpr double kFoot = 0.3048; // m

// First numbers of layers that begin at a named level.

struct Level {
    int kind;
    int value;
};

struct Keyword {
    const char *text;
    int kind;
};
constexpr Keyword kKeywords[] = {
    {"none",      kLevelNone      },
    {"snd",       kLevelNone      },
    {"sfc",       kLevelSurface   },
    {"sf",        kLevelSurface   },
    {"frz",       kLevelFreezing  },
    {"lcl",       kLevelLcl       },
    {"sea",       kLevelSea       },
    {"se",        kLevelSea       },
    {"sl",        kLevelSea       },
    {"mwnd",      kLevelMaxWind   },
    {"trop",      kLevelTropopause},
    {"whole",     kLevelWhole     },
    {"top_frz",   204             },
    {"gcld_bot",  206             },
    {"gcld_top",  207             },
    {"blcld_bot", 209             },
    {"blcld_top", 210             },
    {"blcld_lyr", 211             },
    {"lcld_bot",  212             },
    {"lcld_top",  213             },
    {"lcld_lyr",  214             },
    {"cld_ceil",  215             },
    {"mcld_bot",  222             },
    {"mcld_top",  223             },
    {"mcld_lyr",  224             },
    {"hcld_bot",  232             },
    {"hcld_top",  233             },
    {"hcld_lyr",  234             },
    {"conv_bot",  242             },
    {"conv_top",  243             },
    {"conv_lyr",  244             },
    {"wbzero",    245             },
    {"maxepot",   246             },
    {"equilib",   247             },
    {"sconv_bot", 248             },
    {"sconv_top", 249             },
    {"dconv_bot", 251             },
    {"dconv_top", 252             },
    {"sclw_bot",  253             },
    {"sclw_top",  254             },
};

/// What a unit makes of one number, and of two.
struct Unit {
    const char *text;
    int single;
    int layer;
    bool is_feet;
};
constexpr int kNone = kMissingInt;
constexpr Unit kUnits[] = {
    {"ft",    kLevelHeight,     kLevelHeightLayer,     true },
    {"ft_ag", kLevelHeightAg,   kLevelHeightAgLayer,   true },
    {"m",     kLevelHeight,     kLevelHeightLayer,     false},
    {"m_ag",  kLevelHeightAg,   kLevelHeightAgLayer,   false},
    {"k",     kLevelTheta,      kLevelThetaLayer,      false},
    {"mb",    kLevelPressure,   kLevelPressureLayer,   false},
    {"hpa",   kLevelPressure,   kLevelPressureLayer,   false},
    {"mb_ag", kLevelPressureAg, kLevelPressureAgLayer, false},
    {"lev",   kLevelHybrid,     kNone,                 false},
    {"pv",    kLevelVorticity,  kNone,                 false},
    {"sig",   kLevelSigma,      kLevelSigmaLayer,      false},
    {"eta",   kLevelEta,        kLevelEtaLayer,        false},
};

const Unit *find_unit(const std::string &text)
{
    for (const Unit &unit : kUnits) {
        if (STR_casecmp(text.c_str(), unit.text) == 0) {
            return &unit;
        }
    }
    return nullptr;
}

/// One part of a level: a number and a unit, or a word.
struct Part {
    std::string text;
    std::optional<float> number;
    std::string unit;

    int whole() const { return number.has_value() ? VAR_whole(*number) : kMissingInt; }
    bool begins(const char *word) const { return STR_has_prefix(text, word); }
    bool is(const char *word) const { return STR_casecmp(text.c_str(), word) == 0; }
};

Part read_part(std::string_view text)
{
    Part part;
    part.text = text;
    part.number = VAR_take_real(&text);
    if (part.number.has_value()) {
        part.unit = VAR_trim(text);
    }
    return part;
}

/// Products of small integers from texts of any size stay within int.
int pack(long long high, long long low)
{
    return VAR_whole(static_cast<double>(high * 1000 + low));
}

int pressure_layer(int first, int second)
{
    return pack(second / 10, first / 10);
}

int height_layer(int first, int second)
{
    return pack(second / 100, first / 100);
}

int fraction_layer(float first, float second)
{
    return pack(VAR_whole(1000.0F * second), VAR_whole(1000.0F * first));
}

int fraction(float number)
{
    return VAR_whole(number * 10000.0F);
}

/// Index of the surface in "sfc[n", 0 without one.
int surface_index(const std::string &text)
{
    constexpr size_t kBracket = 3;
    if (text.size() <= kBracket || text[kBracket] != '[') {
        return 0;
    }
    std::string_view rest = std::string_view(text).substr(kBracket + 1);
    return std::clamp(VAR_take_int(&rest).value_or(0), 0, 999);
}

std::optional<Level> keyword_level(const char *text)
{
    for (const Keyword &known : kKeywords) {
        if (STR_casecmp(text, known.text) == 0) {
            return Level{known.kind, 0};
        }
    }
    if (STR_casecmp(text, "miss") == 0) {
        return Level{kMissingInt, kMissingInt};
    }
    return std::nullopt;
}

/// "s0.995" and "s0.9-0.8".
std::optional<Level> sigma_level(std::string_view rest)
{
    if (rest.empty() || std::isdigit(static_cast<unsigned char>(rest[0])) == 0) {
        return std::nullopt;
    }
    const std::optional<float> first = VAR_take_real(&rest);
    if (!first.has_value()) {
        return std::nullopt;
    }
    if (!rest.empty() && rest[0] == '-') {
        rest.remove_prefix(1);
        if (const std::optional<float> second = VAR_take_real(&rest)) {
            return Level{kLevelSigmaLayer, fraction_layer(*first, *second)};
        }
    }
    return Level{kLevelSigma, fraction(*first)};
}

/// A letter in front of one number or two: "p850-700", "h500", "a0-3000", "k300-310".
std::optional<Level> prefixed_level(std::string_view text)
{
    const int letter = std::tolower(static_cast<unsigned char>(text[0]));
    std::string_view rest = text.substr(1);
    if (letter == 's') {
        return sigma_level(rest);
    }
    if (std::string_view("phak").find(static_cast<char>(letter)) == std::string_view::npos) {
        return std::nullopt;
    }
    const std::optional<int> first = VAR_take_int(&rest);
    if (!first.has_value()) {
        return std::nullopt;
    }
    std::optional<int> second;
    if (!rest.empty() && rest[0] == '-') {
        rest.remove_prefix(1);
        second = VAR_take_int(&rest);
    }
    const bool is_layer = second.has_value();
    const int other = second.value_or(0);
    switch (letter) {
    case 'p':
        if (is_layer) {
            return Level{kLevelPressureLayer,
                         pressure_layer(std::max(*first, other), std::min(*first, other))};
        }
        return Level{kLevelPressure, *first};
    case 'h':
        if (is_layer) {
            return Level{kLevelHeightLayer, height_layer(*first, other)};
        }
        return Level{kLevelHeight, *first};
    case 'a':
        if (is_layer) {
            return Level{kLevelHeightAgLayer, height_layer(*first, other)};
        }
        return Level{kLevelHeightAg, *first};
    default:
        if (is_layer) {
            return Level{kLevelThetaLayer, pack(other, *first)};
        }
        return Level{kLevelTheta, *first};
    }
}

/// The two parts of a text, and the sign between them; the first character is never that sign,
/// but a sign behind it is.
struct Split {
    std::string first;
    std::string second;
    char sign = '\0';
};

std::optional<Split> split_at(std::string_view text, char sign, size_t from)
{
    const size_t place = text.find(sign, from);
    if (place == std::string_view::npos || place + 1 >= text.size()) {
        return std::nullopt;
    }
    std::string_view second = text.substr(place + 1);
    second = second.substr(0, second.find(' '));
    if (second.empty()) {
        return std::nullopt;
    }
    return Split{std::string(text.substr(0, place)), std::string(second), sign};
}

std::optional<Split> split_parts(std::string_view text)
{
    if (text.size() > 1 && (text[1] == '-' || text[1] == '+')) {
        return split_at(text, text[1], 1);
    }
    if (std::optional<Split> parts = split_at(text, '-', 2)) {
        return parts;
    }
    return split_at(text, '+', 2);
}

std::optional<Level> single_level(const Part &part)
{
    if (!part.number.has_value()) {
        if (part.begins("sfc")) {
            return Level{kLevelSurface, surface_index(part.text)};
        }
        return std::nullopt;
    }
    if (part.unit.empty()) {
        return Level{kLevelPressure, part.whole()};
    }
    const Unit *unit = find_unit(part.unit);
    if (unit == nullptr) {
        return std::nullopt;
    }
    if (unit->single == kLevelSigma || unit->single == kLevelEta) {
        return Level{unit->single, fraction(*part.number)};
    }
    const double metres = unit->is_feet ? *part.number * kFoot : double{*part.number};
    return Level{unit->single, VAR_whole(metres)};
}

/// Sets the kind of a layer from the unit of one part, and turns feet into metres. False for a
/// unit that no layer has.
bool apply_unit(const Part &part, int *kind, int *number)
{
    if (part.unit.empty()) {
        return true;
    }
    const Unit *unit = find_unit(part.unit);
    if (unit == nullptr || unit->layer == kNone) {
        return false;
    }
    *kind = unit->layer;
    if (unit->is_feet && *number != kMissingInt) {
        *number = VAR_whole(*number * kFoot);
    }
    return true;
}

int layer_value(int kind, const Part &low, int first, const Part &high, int second, char sign)
{
    switch (kind) {
    case kLevelHeightLayer:
    case kLevelHeightAgLayer:
        if (kind == kLevelHeightLayer && low.is("trop")) {
            first = sign == '+' ? kAboveTropopause : kBelowTropopause;
        } else if (low.begins("sfc")) {
            first = 0;
        }
        return height_layer(first, second);
    case kLevelPressureLayer:
        if (low.begins("sfc")) {
            first =
                low.text.size() > 3 ? kFromSurfaceIndex + surface_index(low.text) : kFromSurface;
        } else if (low.is("maxt")) {
            first = kFromMaxTemp;
        } else if (low.is("trop")) {
            first = kFromTropopause;
        } else if (first < second) {
            std::swap(first, second);
        }
        return pressure_layer(first, second);
    case kLevelSigmaLayer:
    case kLevelEtaLayer:
        return fraction_layer(low.number.value_or(1.0F), high.number.value_or(0.0F));
    default:
        return pack(second, first);
    }
}

std::optional<Level> layer_level(const Split &split)
{
    const Part low = read_part(split.first);
    const Part high = read_part(split.second);
    const bool is_named = low.begins("sfc") || low.is("maxt") || low.is("trop");
    if (!high.number.has_value() || !(low.number.has_value() || is_named)) {
        return std::nullopt;
    }
    int kind = kLevelPressureLayer;
    int first = low.whole();
    int second = high.whole();
    if (!apply_unit(low, &kind, &first) || !apply_unit(high, &kind, &second)) {
        return std::nullopt;
    }
    return Level{kind, layer_value(kind, low, first, high, second, split.sign)};
}

std::optional<Level> parse_level(const std::string &text)
{
    if (const std::optional<Level> level = keyword_level(text.c_str())) {
        return level;
    }
    if (const std::optional<Level> level = prefixed_level(text)) {
        return level;
    }
    if (text == "-") {
        return Level{kLevelDash, 0};
    }
    if (const std::optional<Split> parts = split_parts(text)) {
        return layer_level(*parts);
    }
    return single_level(read_part(text));
}

/// The level of the settings: its class.
int requested_level(int *kind, int *value)
{
    *kind = static_cast<int>(PRM_get(kPrmLevelKind));
    *value = static_cast<int>(PRM_get(kPrmLevelValue));
    return kDefaultClass;
}

int default_level(int *kind, int *value)
{
    if (const VarBase *base = VAR_base_top()) {
        *kind = base->level_kind;
        *value = base->level_value;
        return base->level_class;
    }
    if (PRM_get(kPrmLevelKind) == kMissingInt) {
        return kGivenClass;
    }
    return requested_level(kind, value);
}

} // namespace

int VAR_level(const char *text, int *kind, int *value)
{
    const std::string given(VAR_trim(text == nullptr ? "" : text));
    if (given.empty()) {
        return default_level(kind, value);
    }
    if (STR_casecmp(given.c_str(), "level") == 0) {
        return requested_level(kind, value);
    }
    if (const std::optional<Level> level = parse_level(given)) {
        *kind = level->kind;
        *value = level->value;
    }
    MSG_out(kMsgDebugC, "Level: %s = %d %ld\n", given.c_str(), *kind, static_cast<long>(*value));
    return kGivenClass;
}

void tyr::warn_unless_level(const char *text)
{
    const std::string given(VAR_trim(text == nullptr ? "" : text));
    if (given.empty() || STR_casecmp(given.c_str(), "level") == 0 || parse_level(given)) {
        return;
    }
    std::vector<std::string> known;
    std::string_view unit = given;
    if (VAR_take_real(&unit).has_value()) { // the number with each unit
        const std::string number = given.substr(0, given.size() - unit.size());
        for (const Unit &row : kUnits) {
            known.push_back(number + row.text);
        }
        known.push_back(number);
    } else {
        for (const Keyword &row : kKeywords) {
            known.emplace_back(row.text);
        }
    }
    warn_unknown("level", given, std::vector<std::string_view>(known.begin(), known.end()));
}
