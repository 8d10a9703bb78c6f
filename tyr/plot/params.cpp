#include "tyr/plot/params.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <vector>

#include "tyr/base/msg.h"
#include "tyr/base/nearest.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/image/gif.h"
#include "tyr/image/image_format_private.h"
#include "tyr/names/date_label.h"
#include "tyr/names/name_conv.h"
#include "tyr/paper/grey.h"
#include "tyr/paper/postscript.h"
#include "tyr/place/city.h"
#include "tyr/plot/area.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/dump.h"
#include "tyr/plot/grid_interval.h"
#include "tyr/plot/labels.h"
#include "tyr/x11/frames.h"

using namespace tyr;

namespace {

constexpr int kPagingOff = 0;
constexpr int kPagingOn = 1;
constexpr int kBarOn = 2;
constexpr int kBarOff = -2;
constexpr int kDefaultShadow = 4;
constexpr int kDefaultMaxBad = 5;
constexpr float kMostPanels = 8.0F;

PlotWishes wishes;

/// Behind a prefix and one more character; empty where the word ends before.
const char *value_of(const char *word, size_t prefix)
{
    return std::strlen(word) > prefix + 1 ? word + prefix + 1 : "";
}

int number_or(const char *text, int least, int otherwise)
{
    const int number = std::atoi(text);
    return number < least ? otherwise : number;
}

void set_overlay(const char *text)
{
    int line = 0;
    int total = 0;
    std::sscanf(text, "%d:%d", &line, &total);
    PLT_set_label_offset(line);
    PLT_set_label_count(total);
}

void set_lalo(const char *text)
{
    float dlat = 0.0F;
    float dlon = 0.0F;
    int crosses = 0;
    int repeat = 0;
    const int n = std::sscanf(text, "%f:%f:%d:%d", &dlat, &dlon, &crosses, &repeat);
    DOM_set_offset(crosses, repeat, dlat, n < 2 ? dlat : dlon);
}

template <class Number> void set_pair(const char *text, const char *format, Number (&pair)[2])
{
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    if (std::sscanf(text, format, &pair[0], &pair[1]) < 2) {
        pair[1] = pair[0];
    }
#pragma GCC diagnostic pop
}

/// "WxH+X+Y": fractions of the surface, or, with W above 1, a division of it into panels.
void set_view(const char *text)
{
    float w = 1.0F;
    float h = 1.0F;
    float x = 0.0F;
    float y = 0.0F;
    const int n = std::sscanf(text, "%fx%f+%f+%f", &w, &h, &x, &y);
    if (w > 1.0F) {
        w = std::clamp(w, 1.0F, kMostPanels);
        h = std::clamp(h, 1.0F, kMostPanels);
        x /= w;
        y = 1.0F - (1.0F + y) / h;
        w = 1.0F / w;
        h = 1.0F / h;
    }
    if (n == 4) {
        GPH_set_view_frac(w, h, x, y);
    }
}

void set_bar(const char *text)
{
    float low = 0.0F;
    float high = 0.0F;
    PLT_set_bar_mode(kBarOn);
    if (std::sscanf(text, "%f:%f", &low, &high) == 2) {
        PLT_set_bar_range(low, high);
    }
}

void set_colour_postscript(int)
{
    gps_set_color(1);
    gset_invert(1);
}

void set_refinement(const char *text)
{
    const int factor = std::atoi(text);
    wishes.grid_refinement = factor >= 1 ? factor : wishes.grid_refinement;
}

void set_contour_skip(const char *text)
{
    set_pair(text, "%d:%d", wishes.contour_skip);
}

void set_contour_offset(const char *text)
{
    set_pair(text, "%f:%f", wishes.contour_offset);
}

void set_thinning(const char *text)
{
    wishes.value_thinning = text[0] != '\0' ? std::atoi(text) : 1;
}

void set_precision(const char *text)
{
    wishes.location_precision = text[0] != '\0' ? std::atoi(text) : 4;
}

void set_shadow(const char *text)
{
    GPH_set_shadow(number_or(text, 1, kDefaultShadow));
}

void set_max_bad(const char *text)
{
    wishes.max_bad = number_or(text, 1, kDefaultMaxBad);
}

void set_min_size(const char *text)
{
    FILE_set_min_size(number_or(text, 1, 0));
}

void set_grid_format(const char *text)
{
    if (text[0] != '\0') {
        wishes.grid_format = text;
    }
}

void set_zone(const char *text)
{
    TIME_set_zone(text);
}

void set_font(const char *text)
{
    GPH_set_default_font(text);
}

void set_grib_index(int flag)
{
    wishes.grib_index = flag;
}

void set_recording(int flag)
{
    gset_recording(flag);
}

void set_full(int with_labels)
{
    PLT_set_full(0.0F);
    if (with_labels != 0) {
        PLT_set_labels_inside(1);
    }
}

/// A word and what it does: set a number, or take the text behind one more character ("tz=EST").
struct Word {
    const char *word;
    void (*set)(int number);
    void (*take)(const char *text); ///< null where a number is set
    int number;
    bool is_prefix; ///< the user's word may go on
};

constexpr Word sets(const char *word, void (*set)(int number), int number)
{
    return {word, set, nullptr, number, false};
}

/// A word may go on behind its beginning.
constexpr Word begins(const char *word, void (*set)(int number), int number)
{
    return {word, set, nullptr, number, true};
}

constexpr Word takes(const char *word, void (*take)(const char *text))
{
    return {word, nullptr, take, 0, true};
}

/// In the order of the tests: an earlier word hides a later one that shares its beginning.
constexpr Word kWords[] = {
    sets("full", set_full, 0),
    sets("fullab", set_full, 1),
    sets("nopage", MSG_set_paging, kPagingOff),
    sets("page", MSG_set_paging, kPagingOn),
    sets("noredraw", set_recording, 0),
    sets("id", CTY_set_id_type, kCityById),
    sets("wmo", CTY_set_id_type, kCityByWmo),
    sets("cod_wmo", CTY_set_id_type, kCityByCodedWmo),
    takes("tz", set_zone),
    takes("over", set_overlay),
    takes("lalo", set_lalo),
    takes("gridx", set_refinement),
    takes("plt_skip", set_contour_skip),
    takes("plt_off", set_contour_offset),
    takes("plt_grid", set_thinning),
    takes("loc_pr", set_precision),
    takes("vp_size", set_view),
    takes("font", set_font),
    sets("gif_inter", gset_gif_interlace, 1),
    sets("gif_norm", gset_gif_interlace, 0),
    sets("gif_trans", gset_gif_transparent, 1),
    sets("inv", gset_invert, 1),
    sets("lcmap", gset_local_cmap, 1),
    sets("nolcmap", gset_local_cmap, 0),
    sets("rwclr", gset_rw_colors, 1),
    sets("norwclr", gset_rw_colors, 0),
    sets("nolooptitle", gset_frame_title, 0),
    sets("pscolor", set_colour_postscript, 1),
    sets("psrev", gps_set_reverse, 1),
    sets("clear", gset_wish, 1),
    sets("new", gset_wish, 2),
    sets("kill", gset_wish, 9),
    takes("bar", set_bar),
    sets("nobar", PLT_set_bar_mode, kBarOff),
    sets("nohdr", set_grib_index, 0),
    takes("shadow", set_shadow),
    takes("max_bad", set_max_bad),
    takes("min_size", set_min_size),
    takes("grdfmt", set_grid_format),
    begins("labm", PLT_set_label_mode, kLabelsMinimal),
    begins("labs", PLT_set_label_mode, kLabelsSimple),
    begins("labn", PLT_set_label_mode, kLabelsNormal),
    begins("labc", PLT_set_label_mode, kLabelsComplete),
};

bool fits(const Word &row, const char *word)
{
    const int length = static_cast<int>(std::strlen(row.word));
    return row.is_prefix ? STR_ncasecmp(word, row.word, length) == 0
                         : STR_casecmp(word, row.word) == 0;
}

void apply(const Word &row, const char *word)
{
    const size_t length = std::strlen(row.word);
    // "gridx2": the number stands right behind the word
    const char *text = row.take == set_refinement ? word + length : value_of(word, length);
    if (row.take != nullptr) {
        row.take(text);
    } else {
        row.set(row.number);
    }
}

/// A dump in the format whose word begins this one; the rest is the file's name.
bool set_dump(const char *word)
{
    for (const ImageFormat &format : image_formats()) {
        if (STR_has_prefix(word, format.word)) {
            PLT_set_dump(format.kind, value_of(word, std::strlen(format.word)));
            return true;
        }
    }
    return false;
}

/// Beginnings of words that others read: values, contours, vectors, grids, soundings, programs.
constexpr std::string_view kElsewhere[] = {
    "ul",   "uc",   "ur",      "tl",     "tc",     "tr",      "cl",      "cc",     "cr",     "bl",
    "bc",   "br",   "ll",      "lc",     "lr",     "skip",    "text",    "mark",   "line",   "ybar",
    "xy=",  "rlab", "hlab",    "grid",   "mapcon", "conmap",  "conmin",  "conmax", "maxl",   "fill",
    "lab",  "vect", "vbar",    "uvgrid", "uvew",   "strm_sc", "wv_skip", "page",   "nopage", "par",
    "miss", "top=", "bottom=", "step=",  "time=",  "lower",   "heads",   "cols=",  "keep",
};

bool is_read_elsewhere(const char *word)
{
    return std::any_of(std::begin(kElsewhere), std::end(kElsewhere), [word](std::string_view k) {
        const bool is_whole = k.size() == 2; // a place
        return is_whole ? STR_casecmp(word, k.data()) == 0
                        : STR_ncasecmp(word, k.data(), static_cast<int>(k.size())) == 0;
    });
}

void warn_unknown_word(const char *word)
{
    std::vector<std::string_view> known(std::begin(kElsewhere), std::end(kElsewhere));
    for (const Word &row : kWords) {
        known.emplace_back(row.word);
    }
    for (const ImageFormat &format : image_formats()) {
        known.emplace_back(format.word);
    }
    const std::string_view text(word);
    warn_unknown("plot_param", text.substr(0, text.find('=')), known);
}

void apply_word(const char *word)
{
    for (const Word &row : kWords) {
        if (fits(row, word)) {
            apply(row, word);
            return;
        }
    }
    if (!set_dump(word) && word[0] != '\0' && !is_read_elsewhere(word)) {
        warn_unknown_word(word);
    }
}

} // namespace

void PLT_read_params()
{
    for (const char *list : {"look_param", "plot_param"}) {
        for (const std::string &word : RES_list(list)) {
            apply_word(word.c_str());
        }
    }
    for (const std::string &word : RES_list("out_file")) {
        if (STR_has_prefix(word, "gif") || STR_has_prefix(word, "png")) {
            set_dump(word.c_str());
        }
    }
}

const PlotWishes &PLT_wishes()
{
    return wishes;
}
