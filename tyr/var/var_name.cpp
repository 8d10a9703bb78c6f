#include "tyr/var/var_name.h"

#include <cctype>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/number.h"
#include "tyr/base/prm.h"
#include "tyr/base/str.h"
#include "tyr/var/base_stack.h"
#include "tyr/var/catalogue.h"
#include "tyr/var/type_words.h"

namespace {

struct State {
    int default_type = kTypeValue;
};
State state;

/// Measures of an ensemble that a name may ask for.
enum class Ensemble { none, member, probability, mean, deviation };

constexpr long long kMeanBase = 19000000;
constexpr long long kDeviationBase = 19001000;
constexpr long long kControlBase = 19300000;
constexpr long long kNegativeBase = 19320000;
constexpr long long kPositiveBase = 19340000;
constexpr long long kBelowBase = 1910001000; // comparison '<'; the others in steps of 1000
constexpr long long kNegativeValue = 5000;   // further on for values below 0

/// A name taken apart.
struct Name {
    Ensemble kind = Ensemble::none;
    char sign = 'c';    // of a member, or the comparison of a probability
    float value = 0.0F; // the member's number, or the probability's threshold
    std::string base;   // what the catalogue is searched for
};

bool take_prefix(std::string_view *text, std::string_view prefix)
{
    if (text->substr(0, prefix.size()) != prefix) {
        return false;
    }
    text->remove_prefix(prefix.size());
    return true;
}

/// Reads "ensprob[<value]" or "ens[+n]" from the front of a text, with its bracket.
bool take_bracket(std::string_view *text, bool is_probability, Name *name)
{
    std::string_view rest = *text;
    if (rest.empty()) {
        return false;
    }
    const bool has_sign = is_probability || std::isdigit(static_cast<unsigned char>(rest[0])) == 0;
    name->sign = has_sign ? rest[0] : 'c';
    if (has_sign) {
        rest.remove_prefix(1);
    }
    if (is_probability) {
        const std::optional<float> value = VAR_take_real(&rest);
        name->value = value.value_or(0.0F);
        if (!value.has_value()) {
            return false;
        }
    } else {
        const std::optional<int> value = VAR_take_int(&rest);
        name->value = static_cast<float>(value.value_or(0));
        if (!value.has_value()) {
            return false;
        }
    }
    if (!take_prefix(&rest, "]")) {
        return false;
    }
    *text = rest;
    return true;
}

Name read_name(std::string_view text)
{
    Name name;
    std::string_view rest = text;
    if (take_prefix(&rest, "ensmean[]")) {
        name.kind = Ensemble::mean;
    } else if (take_prefix(&rest, "ensdev[]")) {
        name.kind = Ensemble::deviation;
    } else if (take_prefix(&rest, "ensprob[") && take_bracket(&rest, true, &name)) {
        name.kind = Ensemble::probability;
    } else if (take_prefix(&rest, "ens[") && take_bracket(&rest, false, &name)) {
        name.kind = Ensemble::member;
    } else {
        rest = text;
    }
    name.base = rest.substr(0, rest.find('-'));
    return name;
}

/// The number for a probability: comparison and packed threshold behind the variable's number.
long long probability_number(long long number, const Name &name)
{
    const size_t comparison = std::string_view("<>^").find(name.sign);
    if (comparison == std::string_view::npos) {
        return number;
    }
    const long long base = kBelowBase + static_cast<long long>(comparison) * 1000;
    const long long packed = VAR_pack_value(name.value);
    return number * 10000 + (packed >= 0 ? base + packed : base + kNegativeValue - packed);
}

long long ensemble_number(long long number, const Name &name)
{
    const long long member = VAR_whole(name.value) * 1000LL;
    switch (name.kind) {
    case Ensemble::none:
        break;
    case Ensemble::mean:
        return number + kMeanBase;
    case Ensemble::deviation:
        return number + kDeviationBase;
    case Ensemble::probability:
        return probability_number(number, name);
    case Ensemble::member:
        if (name.sign == '-') {
            return number + member + kNegativeBase;
        }
        if (name.sign == '+') {
            return number + member + kPositiveBase;
        }
        return name.sign == 'c' ? number + kControlBase : number;
    }
    return number;
}

bool is_drawn_grid(int type)
{
    return (type >= kTypeLine && type <= kTypeGridValue) ||
           (type >= kTypeVector && type <= kTypeStream);
}

bool is_grid_or_vector(int type)
{
    return type >= kTypeGrid && type <= kTypeStream;
}

/// The type of a record, from its part in the expression, the plot type and the base.
int settle_type(const std::string &name, const VarRec &record)
{
    const auto plot = static_cast<int>(PRM_get(kPrmPlotType));
    const VarBase *base = VAR_base_top();
    const int function = GRD_func_type(name.c_str());
    MSG_out(kMsgDebugC, "TYPE: %d cur:%d def:%d fl: %d plt: %d\n", record.type,
            base == nullptr ? kMissingInt : base->type, state.default_type, record.role, plot);
    const int digit = record.role % 10;
    if (digit == kRoleVector) {
        return is_grid_or_vector(plot) ? plot : kTypeGrid;
    }
    if (digit == kRoleFunction && function != 0) {
        return is_grid_or_vector(plot) ? plot : function;
    }
    if (is_drawn_grid(plot)) {
        return plot;
    }
    if (base != nullptr && is_grid_or_vector(base->type)) {
        return kTypeGrid;
    }
    if (record.type != kMissingInt) {
        return record.type;
    }
    MSG_out(kMsgDebugC, "DATA TYPE: %d\n", state.default_type);
    return state.default_type;
}

/// Takes the numbers, or for a number the name, from the catalogue.
void apply_catalogue(const std::string &base, VarRec *record)
{
    int number = 0;
    std::string_view digits = base;
    if (!base.empty() && std::isdigit(static_cast<unsigned char>(base[0])) != 0) {
        number = VAR_take_int(&digits).value_or(0);
    }
    if (number != 0) {
        record->var_number = number;
    }
    const char *word = base[0] == '+' ? base.c_str() + 1 : base.c_str();
    for (const CatalogueEntry &entry : VAR_catalogue()) {
        if (number != 0 && number == entry.numbers[0]) {
            STR_copy(record->name, kVarNameSize, entry.abbreviation);
            return;
        }
        if (STR_casecmp(word, entry.abbreviation.c_str()) == 0) {
            record->var_number = entry.numbers[0];
            record->var_a = entry.numbers[1];
            record->var_b = entry.numbers[2];
            record->var_c = entry.numbers[3];
            record->var_d = entry.numbers[4];
            return;
        }
    }
}

} // namespace

void VAR_set_default_type(int type)
{
    state.default_type = type;
}

int VAR_name(const char *name, VarRec *record)
{
    const std::string given = name == nullptr ? "" : name;
    if (!STR_copy(record->name, kVarNameSize, given)) {
        MSG_out(kMsgWarn, "VAR_name: Name cut to %d characters: %s\n",
                static_cast<int>(kVarNameSize) - 1, given.c_str());
    }
    if (!given.empty() && given[0] == '#') {
        record->type = kTypeConst;
        return 1;
    }
    record->type = settle_type(given, *record);
    if (given.empty()) {
        return 0;
    }
    const Name parts = read_name(given);
    apply_catalogue(parts.base, record);
    if (parts.kind != Ensemble::none) {
        const long long number = record->var_number == kMissingInt ? 0 : record->var_number;
        const long long coded = ensemble_number(number, parts);
        const bool fits =
            coded >= std::numeric_limits<int>::min() && coded <= std::numeric_limits<int>::max();
        record->var_number = fits ? static_cast<int>(coded) : kMissingInt;
    }
    return record->var_number;
}

int VAR_pack_value(float x)
{
    constexpr double kRounding = 1.000001; // 0.12 as a float lies just below 0.12
    if (x == 0.0F || !std::isfinite(x)) {
        return 0;
    }
    const double a = std::abs(double{x}) * kRounding;
    const int exponent = VAR_whole(std::log10(a) + 5.0) - 5;
    int code = exponent;
    int power = 1 - exponent; // of ten, that leaves two digits
    if (exponent < 0) {
        code = exponent + 10;
        power = 2 - exponent;
    }
    const int packed = code * 100 + VAR_whole(std::fmod(a * std::pow(10.0, power), 100.0));
    return x < 0.0F ? -packed : packed;
}
