#include "tyr/raw_math/raw_math.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/raw_math/raw_math_private.h"

using namespace tyr;

namespace {

constexpr int kOpPlace = 1;     ///< of "a op b = out"
constexpr int kSecondPlace = 2; ///< b
constexpr int kSignPlace = 3;   ///< =
constexpr int kOutPlace = 4;
constexpr size_t kMissLength = 4;

constexpr const char *kTableForms[] = {"sum", "max", "min", "copy", "merge"};
constexpr const char *kOperations[] = {"add", "sub", "mul", "div", "mod", "ge", "le"};
constexpr const char *kTurned[] = {"sub", "div", "mod"}; ///< "p" in front: the constant comes first

template <size_t N> bool is_one_of(const char *word, const char *const (&words)[N])
{
    return std::any_of(std::begin(words), std::end(words),
                       [word](const char *known) { return STR_casecmp(word, known) == 0; });
}

bool is_sign(const char *word)
{
    return std::string_view(word) == "=";
}

int refuse()
{
    MSG_out(kMsgWarn, "RAW_math_command: Invalid operation\n");
    return 0;
}

void read_settings()
{
    RawMath &math = raw_math();
    math = {};
    for (const std::string &word : RES_list("parameter")) {
        if (STR_ncasecmp(word.c_str(), "miss", static_cast<int>(kMissLength)) == 0) {
            math.fill = word.size() > kMissLength + 1 ? std::strtof(&word[kMissLength + 1], nullptr)
                                                      : kMissing;
        } else if (STR_casecmp(word.c_str(), "outmiss") == 0) {
            math.is_fill_written = true;
        } else if (STR_casecmp(word.c_str(), "noattr") == 0) {
            math.has_no_attributes = true;
        }
    }
    math.identifiers = RES_list("identifier");
}

/// The number behind a "#"; Missing where there is none.
float constant_of(const char *word)
{
    char *end = nullptr;
    const float number = std::strtof(word + 1, &end);
    return end == word + 1 || *end != '\0' ? kMissing : number;
}

int combine_files(int count, char **words)
{
    if (count < 2 || is_sign(words[1])) {
        return refuse();
    }
    TableRec table;
    if (RAW_make_table(&table, words[1]) == 0) {
        return 0;
    }
    int at = 2;
    for (; at < count && !is_sign(words[at]); ++at) {
        if (RAW_table_apply(&table, words[0], words[at]) == 0) {
            return 0;
        }
    }
    take_header_words(words, count, at + 2);
    return at + 1 < count ? RAW_table_save(&table, words[at + 1], 0) : 1;
}

int apply_constant(int count, char **words)
{
    const bool is_first = words[0][0] == '#';
    const char *op = words[kOpPlace];
    const float number = constant_of(is_first ? words[0] : words[kSecondPlace]);
    if (is_missing(number)) {
        return refuse();
    }
    raw_math().header = {};
    take_header_words(words, count, kOutPlace + 1);
    const std::string turned =
        is_first && is_one_of(op, kTurned) ? "p" + std::string(op) : std::string(op);
    return RAW_scalar_math(turned.c_str(), is_first ? words[kSecondPlace] : words[0], number,
                           words[kOutPlace]);
}

int combine_two(int count, char **words)
{
    if (count <= kOutPlace || !is_one_of(words[kOpPlace], kOperations) ||
        !is_sign(words[kSignPlace])) {
        return refuse();
    }
    if (words[0][0] == '#' || words[kSecondPlace][0] == '#') {
        return apply_constant(count, words);
    }
    TableRec table;
    if (RAW_make_table(&table, words[0]) == 0 ||
        RAW_table_apply(&table, words[kOpPlace], words[kSecondPlace]) == 0) {
        return 0;
    }
    take_header_words(words, count, kOutPlace + 1);
    return RAW_table_save(&table, words[kOutPlace], 1);
}

} // namespace

int RAW_math_command(int count, char **words)
{
    read_settings();
    for (int i = 0; i < count; ++i) {
        MSG_out(kMsgDebugC, "Cmd: %d %s\n", i, words[i]);
    }
    if (count < 1) {
        return refuse();
    }
    if (is_one_of(words[0], kTableForms)) {
        return combine_files(count, words);
    }
    if (STR_casecmp(words[0], "ext") == 0) {
        return count > kSignPlace && is_sign(words[2]) ? RAW_extract(words[1], words[kSignPlace])
                                                       : refuse();
    }
    if (STR_casecmp(words[0], "series") == 0) {
        return count > 1 && !is_sign(words[1]) ? RAW_series(words + 1, count - 1) : refuse();
    }
    return combine_two(count, words);
}
