#include "tyr/plot/style.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "tyr/base/number_format.h"
#include "tyr/base/str.h"
#include "tyr/gks/gks.h"
#include "tyr/plot/symbol.h"
#include "tyr/plot/view.h"
#include "tyr/var/type_words.h"

using namespace tyr;

namespace {

constexpr float kTextHeight = 0.018F; ///< of the window height
constexpr float kXStep = 0.012F;      ///< offsets, of the window height
constexpr float kYStep = 0.02F;
constexpr float kWideXStep = 0.015F;
constexpr float kSmallestScale = 0.01F;
constexpr float kLargestScale = 1000.0F;
constexpr size_t kKeyLength = 3;

struct Place {
    const char *word;
    float x, y; ///< in steps
};

constexpr Place kPlaces[] = {
    {"ul", -kXStep, kYStep },
    {"uc", 0.0F,    kYStep },
    {"ur", kXStep,  kYStep },
    {"tl", -kXStep, kXStep },
    {"tc", 0.0F,    kXStep },
    {"tr", kXStep,  kXStep },
    {"cl", -kXStep, 0.0F   },
    {"cc", 0.0F,    0.0F   },
    {"cr", kXStep,  0.0F   },
    {"bl", -kXStep, -kXStep},
    {"bc", 0.0F,    -kXStep},
    {"br", kXStep,  -kXStep},
    {"ll", -kXStep, -kYStep},
    {"lc", 0.0F,    -kYStep},
    {"lr", kXStep,  -kYStep},
};

struct Mark {
    const char *word;
    int code;
};

constexpr Mark kMarks[] = {
    {"dot",    8},
    {"pnt",    1},
    {"plus",   2},
    {"star",   3},
    {"crcl",   4},
    {"circle", 4},
    {"x",      5},
    {"sqr",    6},
    {"square", 6},
    {"tri",    7},
    {"itri",   9}
};

const Place *find_place(const char *word)
{
    for (const Place &place : kPlaces) {
        if (STR_casecmp(word, place.word) == 0) {
            return &place;
        }
    }
    return nullptr;
}

int align_of(float offset)
{
    return offset < 0.0F ? kAlignRight : offset > 0.0F ? kAlignLeft : kAlignCentre;
}

void set_place(PlotStyle *style, float x, float y)
{
    style->x_offset = x;
    style->y_offset = y;
    style->h_align = align_of(x);
    style->v_align = kAlignHalf;
}

float number(const char *text)
{
    return static_cast<float>(std::atof(text));
}

int mark_code(const char *word)
{
    for (const Mark &row : kMarks) {
        if (STR_ncasecmp(word, row.word, static_cast<int>(std::strlen(row.word))) == 0) {
            return row.code;
        }
    }
    return std::atoi(word);
}

void set_alignment(PlotStyle *style, const char *letters)
{
    const auto is = [](char c, char lower) { return (c | 0x20) == lower; };
    const char h = letters[0];
    const char v = h != '\0' ? letters[1] : '\0';
    style->h_align = is(h, 'l') ? kAlignLeft : is(h, 'r') ? kAlignRight : kAlignCentre;
    style->v_align = is(v, 't')   ? kAlignTop
                     : is(v, 'c') ? kAlignCap
                     : is(v, 's') ? kAlignBase
                     : is(v, 'b') ? kAlignBottom
                                  : kAlignHalf;
}

void merge_resource(PlotStyle *style, const char *resource)
{
    AttrRec attr;
    ATTR_init(&attr);
    if (ATTR_from_resource(resource, "green", &attr) == 1) {
        ATTR_merge(&style->attr, &attr);
    }
}

void set_xy(PlotStyle *style, const char *text)
{
    float a = 0.0F;
    float b = 0.0F;
    std::sscanf(text, "%f%f", &a, &b);
    set_place(style, a * kXStep, b * kYStep);
}

void set_scale(PlotStyle *style, float scale)
{
    style->scale = scale < kSmallestScale || scale > kLargestScale ? 1.0F : scale;
}

/// A piece "key=value". @return the plot type it names, 0 for none
int parse_keyed(PlotStyle *style, const std::string &piece)
{
    const std::string key = piece.substr(0, kKeyLength);
    const char *value = piece.c_str() + std::min(piece.size(), kKeyLength);
    const auto is = [&key](const char *word) { return STR_casecmp(key.c_str(), word) == 0; };
    if (is("xy=")) {
        set_xy(style, value);
    } else if (is("rs=")) {
        merge_resource(style, value);
    } else if (is("co=") || is("wi=") || is("fo=") || is("te=") || is("hi=")) {
        ATTR_parse((":" + piece).c_str(), &style->attr);
    } else if (is("fm=")) {
        STR_copy(style->format, sizeof style->format, value);
        return kTypeValue;
    } else if (is("sc=")) {
        set_scale(style, number(value));
    } else if (is("tx=")) {
        STR_copy(style->fixed_text, sizeof style->fixed_text, value);
    } else if (is("ta=")) {
        set_alignment(style, value);
    } else if (is("mk=")) {
        style->mark = mark_code(value);
    } else if (is("sf=") || is("wf=")) {
        STR_copy(style->symbol_file, sizeof style->symbol_file, value);
    } else if (is("mn=")) {
        style->min = number(value);
    } else if (is("mx=")) {
        style->max = number(value);
    } else if (is("sk=")) {
        style->skip = std::atoi(value);
    }
    return 0;
}

int parse_piece(PlotStyle *style, const std::string &piece)
{
    if (piece.empty()) {
        return 0;
    }
    if (piece[0] == '%') {
        STR_copy(style->format, sizeof style->format, piece);
        return kTypeValue;
    }
    if (const int code = VAR_plot_code(piece.c_str()); code >= 0) {
        return code;
    }
    if (const Place *place = find_place(piece.c_str())) {
        set_place(style, place->x, place->y);
        return 0;
    }
    return parse_keyed(style, piece);
}

/// A real by its format, where what is rounded to zero has no sign.
std::string print_unsigned_zero(const char *format, float value)
{
    constexpr const char *kUsual = "%1.0f";
    std::string text = print_real(format, kUsual, value);
    const bool is_zero = text.find_first_not_of(" -.0") == std::string::npos;
    return is_zero && text.find('-') != std::string::npos ? print_real(format, kUsual, 0.0F) : text;
}

} // namespace

int PLT_parse_format(PlotStyle *style, const char *tokens)
{
    int type = 0;
    for (const std::string &piece : STR_fields(tokens ? tokens : "", ':')) {
        if (const int named = parse_piece(style, piece); named != 0) {
            type = named;
        }
    }
    return type;
}

void PLT_apply_option(PlotStyle *style, const char *word)
{
    const auto value = [word](size_t from) { return std::strlen(word) > from ? word + from : ""; };
    const auto begins = [word](const char *prefix) {
        return STR_ncasecmp(word, prefix, static_cast<int>(std::strlen(prefix))) == 0;
    };
    if (const Place *place = find_place(word)) {
        const bool is_centre_row = place->y == 0.0F;
        style->x_offset = is_centre_row
                              ? std::copysign(place->x == 0.0F ? 0.0F : kWideXStep, place->x)
                              : place->x;
        style->y_offset = place->y;
    } else if (begins("skip")) {
        style->skip = std::atoi(value(5));
    } else if (begins("text")) {
        STR_copy(style->fixed_text, sizeof style->fixed_text, value(5));
    } else if (begins("mark")) {
        style->mark = STR_casecmp(value(5), "cld") == 0 ? kSkyMark : ATTR_marker_code(value(5));
    } else if (STR_casecmp(word, "line") == 0) {
        style->line = 1;
    } else if (begins("ybar")) {
        style->ybar = std::atoi(value(5));
    } else if (begins("xy=")) {
        float a = 0.0F;
        float b = 0.0F;
        std::sscanf(value(3), "%f:%f", &a, &b);
        style->x_offset = a * kXStep;
        style->y_offset = b * kYStep;
    }
}

void PLT_apply_style(PlotStyle *style)
{
    if (style->attr.color == kMissingInt) {
        ATTR_from_resource("color_data", "green", &style->attr);
    }
    GPH_set_text_attr(nullptr, 1.0F);
    GPH_set_text_attr(&style->attr, DOM_window_height() * style->scale * kTextHeight);
    const std::array<int, 2> align = {style->h_align, style->v_align};
    gset_text_align(align.data());
    GPH_set_line_attr(nullptr);
    GPH_set_line_attr(&style->attr);
    GPH_set_marker_attr(nullptr, 1.0F);
    GPH_set_marker_attr(&style->attr, style->scale);
    GPH_set_fill_attr(nullptr);
    GPH_set_fill_attr(&style->attr);
    if (style->symbol_file[0] != '\0') {
        WX_symb_file(style->symbol_file);
    }
}

void PLT_format_number(char *out, int room, const char *format, float value)
{
    if (format[0] != '%' || format[1] != 'z') {
        STR_copy(out, static_cast<size_t>(room), print_unsigned_zero(format, value));
        return;
    }
    std::string text = print_unsigned_zero((std::string("%") + (format + 2)).c_str(), value);
    const size_t zero = text.find_first_not_of(" -");
    if (zero != std::string::npos && text.compare(zero, 2, "0.") == 0) {
        text.erase(zero, 1);
    }
    STR_copy(out, static_cast<size_t>(room), text);
}

void PLT_format_integer(char *out, int room, const char *format, int value)
{
    STR_copy(out, static_cast<size_t>(room), print_integer(format, "%d", value));
}
