#include <algorithm>
#include <string_view>

#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/names/search.h"
#include "tyr/raw/raw_read_private.h"
#include "tyr/raw_math/raw_math_private.h"

using namespace tyr;

namespace {

struct State {
    RawMath math;
} state;

/// The name that a word stands for, with what follows it.
void resolve(const char *word, std::array<char, kFileNameRoom> *name)
{
    if (FILE_is_std(word) != 0) {
        STR_copy(name->data(), name->size(), word);
        return;
    }
    std::array<char, kFileNameRoom> type{};
    STR_copy(type.data(), type.size(), word);
    FILE_save();
    const bool is_convention = FILE_set_name(type.data()) == 1;
    if (const char *current = RES_get("current")) {
        FILE_current(current, name->data());
    } else {
        FILE_parse_name(is_convention ? "" : word, name->data());
    }
    FILE_restore();
}

void replace(char *text, size_t room, const char *other)
{
    if (text[0] == '\0') {
        STR_copy(text, room, other);
    }
}

} // namespace

RawMath &tyr::raw_math()
{
    return state.math;
}

void tyr::fill_header(const RawHeader &other)
{
    RawHeader &header = state.math.header;
    replace(header.title, sizeof header.title, other.title);
    replace(header.format, sizeof header.format, other.format);
}

void tyr::take_header_words(char **words, int count, int at)
{
    RawHeader &header = state.math.header;
    if (at >= count || std::string_view(words[at]) == "-") {
        return;
    }
    if (words[at][0] != '\0') {
        STR_copy(header.format, sizeof header.format, words[at]);
    }
    if (at + 1 < count && words[at + 1][0] != '\0') {
        STR_copy(header.title, sizeof header.title, words[at + 1]);
    }
}

MathFile::MathFile(const char *word, RawMode mode)
{
    resolve(word, &name_);
    handle_ = RAW_file_open(name_.data(), &column_, &format_, mode);
}

MathFile::~MathFile()
{
    raw_finish(handle_, false);
}

bool MathFile::next(RawValue *value) const
{
    const RawMath &math = state.math;
    for (int got = 0; (got = RAW_read_value(handle_, value, column_, nullptr)) >= 0;) {
        const bool counts =
            math.identifiers.empty() || std::find(math.identifiers.begin(), math.identifiers.end(),
                                                  value->id) != math.identifiers.end();
        if (got == 0 || !counts) {
            continue;
        }
        value->value1 = is_missing(value->value1) ? math.fill : value->value1;
        value->kind = kRawNumber;
        if (!is_missing(value->value1)) {
            return true;
        }
    }
    return false;
}

int MathFile::keep()
{
    const bool is_whole = raw_finish(handle_, true);
    handle_ = -1;
    return is_whole ? 1 : 0;
}
