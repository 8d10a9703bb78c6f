#include "tyr/var/units.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/nearest.h"
#include "tyr/base/number.h"
#include "tyr/base/str.h"
#include "tyr/var/data_file.h"

namespace {

constexpr unsigned kFileTrace = 0x80000000;
constexpr int kMaxUnit = 15; // characters of a unit text
constexpr const char *kUnitsFile = "units.lup";

/// A unit text in its two parts: the number in front, and the unit as the file has it.
struct Unit {
    float scale = 1.0F;
    std::string name;
};

using tyr::UnitConversion;

struct State {
    std::string from; // the pair last looked up
    std::string to;
    UnitConversion conversion;
};
State state;

std::string unit_text(const char *text)
{
    std::string unit(std::string_view(text == nullptr ? "" : text).substr(0, kMaxUnit));
    std::replace(unit.begin(), unit.end(), '_', ' ');
    return unit;
}

bool is_same(const std::string &a, const std::string &b)
{
    return STR_casecmp(a.c_str(), b.c_str()) == 0;
}

std::string file_name(std::string_view unit)
{
    std::string name(unit);
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

std::string_view skip_blanks(std::string_view text)
{
    const size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view{} : text.substr(first);
}

/// Takes the number in front of a unit text apart: a power, a number, or a minus.
Unit read_unit(std::string_view text, const char *which)
{
    std::string_view rest = text;
    if (const std::optional<float> number = VAR_take_real(&rest)) {
        std::string_view behind = rest;
        if (!rest.empty() && rest[0] == '^') {
            behind.remove_prefix(1);
            if (const std::optional<float> exponent = VAR_take_real(&behind)) {
                Unit unit{static_cast<float>(std::pow(double{*number}, double{*exponent})),
                          file_name(skip_blanks(behind))};
                MSG_out(kMsgDebugC, "%s^: %f^%f %f %s\n", which, double{*number}, double{*exponent},
                        double{unit.scale}, unit.name.c_str());
                return unit;
            }
        }
        Unit unit{*number, file_name(skip_blanks(rest))};
        MSG_out(kMsgDebugC, "%s: %f %s\n", which, double{unit.scale}, unit.name.c_str());
        return unit;
    }
    if (!text.empty() && text[0] == '-') {
        Unit unit{-1.0F, file_name(text.substr(1))};
        MSG_out(kMsgDebugC, "%s-: %f %s\n", which, double{unit.scale}, unit.name.c_str());
        return unit;
    }
    return {1.0F, file_name(text)};
}

/// Reads the conversion "*scale+offset" or "*scale-offset", every piece optional.
void read_conversion(std::string_view text, UnitConversion *conversion)
{
    if (!text.empty() && text[0] == '*') {
        text.remove_prefix(1);
        conversion->scale = VAR_take_real(&text).value_or(1.0F);
        MSG_out(kMsgDebugC, "SC: %f %s\n", double{conversion->scale}, std::string(text).c_str());
    }
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) {
        const bool is_minus = text[0] == '-';
        text.remove_prefix(1);
        const float offset = VAR_take_real(&text).value_or(0.0F);
        conversion->offset = is_minus ? -offset : offset;
        MSG_out(kMsgDebugC, is_minus ? "OF-: %f %s\n" : "OF: %f %s\n", double{conversion->offset},
                std::string(text).c_str());
    }
}

/// Tells of a unit that no line of the file has; a known one that no line leads to is left alone.
void warn_unknown_unit(const std::set<std::string> &names, const std::string &unit)
{
    const auto is_unit = [&unit](const std::string &name) { return is_same(name, unit); };
    if (!unit.empty() && std::none_of(names.begin(), names.end(), is_unit)) {
        tyr::warn_unknown("unit", unit, std::vector<std::string_view>(names.begin(), names.end()));
    }
}

/// Finds a pair in the file, case ignored as everywhere with units; without it nothing changes.
void find_pair(FILE *file, const std::string &from, const std::string &to,
               UnitConversion *conversion)
{
    std::string line;
    std::set<std::string> names;
    while (VAR_next_line(file, &line)) {
        std::istringstream words(line);
        std::string first;
        std::string second;
        std::string third;
        words >> first >> second >> third;
        if (first.empty() || first[0] == '#') {
            continue;
        }
        names.insert({first, second});
        if (!is_same(first, from) || !is_same(second, to)) {
            continue;
        }
        read_conversion(third, conversion);
        MSG_out(kMsgDebugC, "%s %s %s %f %f\n", first.c_str(), second.c_str(), third.c_str(),
                double{conversion->scale}, double{conversion->offset});
        return;
    }
    warn_unknown_unit(names, to);
}

} // namespace

UnitConversion tyr::find_unit_conversion(const char *from, const char *to)
{
    const std::string from_text = unit_text(from);
    const std::string to_text = unit_text(to);
    if (is_same(from_text, to_text) || (!from_text.empty() && to_text.empty())) {
        return {};
    }
    if (is_same(from_text, state.from) && is_same(to_text, state.to)) {
        return state.conversion;
    }
    const Unit in = read_unit(from_text, "ISC");
    const Unit out = read_unit(to_text, "OSC");
    UnitConversion conversion{in.scale, out.scale, 1.0F, 0.0F};
    if (is_same(in.name, out.name)) {
        return conversion;
    }
    const FilePtr file = VAR_open_data(kUnitsFile);
    if (file == nullptr) {
        MSG_out(kFileTrace, "Unable to open units file: %s\n", VAR_data_path(kUnitsFile).c_str());
        return {0.0F, 1.0F, 0.0F, 0.0F};
    }
    find_pair(file.get(), in.name, out.name, &conversion);
    state = {from_text, to_text, conversion};
    return conversion;
}

float UNIT_convert(const char *from, const char *to, float value)
{
    if (is_missing(value)) {
        return kMissing;
    }
    return tyr::find_unit_conversion(from, to).apply(value);
}

void UNIT_scale_text(const char *unit, const char *suffix, char *out, float factor)
{
    const Unit parts = read_unit(unit_text(unit), "ISC");
    std::array<char, 2 * kUnitTextRoom> text{};
    std::snprintf(text.data(), text.size(), "%.0e %.*s%.*s",
                  static_cast<double>(parts.scale) * static_cast<double>(factor), kMaxUnit,
                  parts.name.c_str(), kMaxUnit, suffix);
    STR_copy(out, kUnitTextRoom, text.data());
}

void UNIT_forget()
{
    state = State{};
}
