#include "tyr/plot/attributes.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tyr/base/missing.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/gks/colour_table.h"
#include "tyr/gks/gks.h"

namespace {

constexpr int kSolid = 1;
constexpr int kPattern = 2;
constexpr int kStrokePrecision = 2;
constexpr float kTextSpacing = 0.25F;
constexpr size_t kKeyLength = 3;

struct WordCode {
    const char *word;
    int code;
};

constexpr WordCode kLineStyles[] = {
    {"sol",    1},
    {"dsh",    2},
    {"lsdsh",  3},
    {"llsdsh", 4},
    {"dot",    5}
};

constexpr WordCode kFills[] = {
    {"sol",  0 },
    {"st",   1 },
    {"ost",  2 },
    {"rst",  3 },
    {"lst",  4 },
    {"vln",  5 },
    {"||",   5 },
    {"dlr",  6 },
    {"\\\\", 6 },
    {"drl",  7 },
    {"//",   7 },
    {"hln",  8 },
    {"--",   8 },
    {"hat",  9 },
    {"XX",   9 },
    {"clr",  10},
    {"0%",   10},
    {"1%",   11},
    {"2%",   12},
    {"3%",   13},
    {"4%",   14},
    {"5%",   15},
    {"6%",   16},
    {"7%",   17},
    {"8%",   18},
    {"9%",   19},
};

constexpr WordCode kMarkers[] = {
    {"pnt",    1},
    {".",      1},
    {"plus",   2},
    {"+",      2},
    {"star",   3},
    {"*",      3},
    {"crcl",   4},
    {"circle", 4},
    {"o",      4},
    {"x",      5},
    {"sqr",    6},
    {"square", 6},
    {"#",      6},
    {"tri",    7},
    {"^",      7},
    {"itri",   9},
    {"v",      9},
    {"dot",    8},
};

int style_code(const char *word)
{
    for (const WordCode &row : kLineStyles) {
        if (STR_casecmp(word, row.word) == 0) {
            return row.code;
        }
    }
    return std::atoi(word);
}

float number(const char *text)
{
    return static_cast<float>(std::atof(text));
}

/// A piece "key=value"; @return whether the key is known.
bool parse_keyed(const std::string &piece, AttrRec *a)
{
    if (piece.size() < kKeyLength || piece[kKeyLength - 1] != '=') {
        return false;
    }
    const std::string key = piece.substr(0, kKeyLength);
    const char *value = piece.c_str() + kKeyLength;
    const auto is = [&key](const char *word) { return STR_casecmp(key.c_str(), word) == 0; };
    if (is("co=")) {
        a->color = CLR_lookup(value);
    } else if (is("wi=")) {
        a->width = number(value);
    } else if (is("st=")) {
        a->style = style_code(value);
    } else if (is("fo=")) {
        a->font = gfont_number(value);
    } else if (is("fi=") || is("fp=")) {
        a->fill = ATTR_fill_code(value);
    } else if (is("sc=") || is("hi=")) {
        a->height = number(value);
    } else if (is("te=")) {
        a->expansion = number(value);
    } else {
        return false;
    }
    return true;
}

/// A letter with a number behind it.
void parse_short(const std::string &piece, AttrRec *a)
{
    if (piece.empty()) {
        return;
    }
    const char *value = piece.c_str() + 1;
    switch (piece[0]) {
    case 'w':
        a->width = number(value);
        break;
    case 's':
        a->style = std::atoi(value);
        break;
    case 't':
        a->font = std::atoi(value);
        break;
    case 'f':
        a->fill = value[0] == 'M' ? kMissingInt : std::atoi(value);
        break;
    case 'h':
        a->height = number(value);
        break;
    case 'e':
        a->expansion = number(value);
        break;
    default:
        break;
    }
}

bool wants_colour(const AttrRec &a)
{
    return a.color != kMissingInt && a.color >= 0;
}

} // namespace

void ATTR_init(AttrRec *a)
{
    *a = {kMissingInt, kMissing, kMissing, kMissing, kMissingInt, kMissingInt, kMissingInt};
}

void ATTR_parse(const char *text, AttrRec *a)
{
    const std::vector<std::string> pieces = STR_fields(text ? text : "", ':');
    for (size_t i = 0; i < pieces.size(); ++i) {
        const std::string &piece = pieces[i];
        if (i == 0 && !piece.empty() && piece.find('=') == std::string::npos) {
            a->color = CLR_lookup(piece.c_str());
        } else if (!parse_keyed(piece, a)) {
            parse_short(piece, a);
        }
    }
}

void ATTR_merge(AttrRec *dst, const AttrRec *src)
{
    const auto merge_int = [](int32_t &to, int32_t from) { to = from == kMissingInt ? to : from; };
    const auto merge_real = [](float &to, float from) { to = is_missing(from) ? to : from; };
    merge_int(dst->color, src->color);
    merge_real(dst->width, src->width);
    merge_real(dst->height, src->height);
    merge_real(dst->expansion, src->expansion);
    merge_int(dst->style, src->style);
    merge_int(dst->fill, src->fill);
    merge_int(dst->font, src->font);
}

int ATTR_from_resource(const char *resource, const char *default_text, AttrRec *a)
{
    ATTR_parse(default_text, a);
    const char *value = RES_get(resource);
    if (!value || value[0] == '\0') {
        return 0;
    }
    ATTR_parse(value, a);
    return 1;
}

int ATTR_fill_code(const char *word)
{
    for (const WordCode &row : kFills) {
        if (STR_casecmp(word, row.word) == 0) {
            return row.code;
        }
    }
    return std::atoi(word);
}

int ATTR_marker_code(const char *word)
{
    for (const WordCode &row : kMarkers) {
        if (STR_ncasecmp(word, row.word, static_cast<int>(std::strlen(row.word))) == 0) {
            return row.code;
        }
    }
    return std::atoi(word);
}

void GPH_set_line_attr(const AttrRec *a)
{
    if (!a) {
        gset_linetype(1);
        gset_linewidth(0.0F);
        return;
    }
    if (wants_colour(*a)) {
        gset_line_colr_ind(a->color);
    }
    if (a->style != kMissingInt) {
        gset_linetype(a->style);
    }
    if (!is_missing(a->width)) {
        gset_linewidth(a->width);
    }
}

void GPH_set_fill_attr(const AttrRec *a)
{
    if (!a) {
        gset_fill_int_style(kSolid);
        return;
    }
    if (wants_colour(*a)) {
        gset_fill_colr_ind(a->color);
    }
    if (a->fill == 0) {
        gset_fill_int_style(kSolid);
    } else if (a->fill != kMissingInt) {
        gset_fill_int_style(kPattern);
        gset_fill_style_ind(a->fill);
    }
}

void GPH_set_marker_attr(const AttrRec *a, float scale)
{
    if (!a) {
        gset_marker_width(0.0F);
        return;
    }
    if (wants_colour(*a)) {
        gset_marker_colr_ind(a->color);
    }
    if (a->style != kMissingInt) {
        gset_marker_type(a->style);
    }
    if (!is_missing(a->height)) {
        gset_marker_size(a->height * scale);
    } else if (scale > 0.0F) {
        gset_marker_size(scale);
    }
    if (!is_missing(a->width)) {
        gset_marker_width(a->width);
    }
}

int GPH_set_text_attr(const AttrRec *a, float height)
{
    if (!a) {
        gset_text_width(0.0F);
        gset_expan(1.0F);
        return -1;
    }
    if (wants_colour(*a)) {
        gset_text_colr_ind(a->color);
    }
    gset_char_ht(is_missing(a->height) ? height : a->height * height);
    if (!is_missing(a->width)) {
        gset_text_width(a->width);
    }
    if (!is_missing(a->expansion)) {
        gset_expan(a->expansion);
    }
    if (a->font != kMissingInt) {
        const std::array<int, 2> font = {a->font, kStrokePrecision};
        gset_fontprec(font.data());
    }
    gset_text_spacing(kTextSpacing);
    return 0;
}
