#include "tyr/plot/params.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/image/gif.h"
#include "tyr/map/map_grid.h"
#include "tyr/names/date_label.h"
#include "tyr/names/name_conv.h"
#include "tyr/paper/grey.h"
#include "tyr/paper/postscript.h"
#include "tyr/place/city.h"
#include "tyr/plot/area.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/dump.h"
#include "tyr/plot/labels.h"
#include "tyr/x11/frames.h"

namespace {

constexpr int kPagingOff = 0;
constexpr int kPagingOn = 1;
constexpr int kBarOn = 2;
constexpr int kBarOff = -2;
constexpr int kDefaultShadow = 4;
constexpr int kDefaultMaxBad = 5;
constexpr float kMostPanels = 8.0F;
constexpr size_t kDumpWord = 3;

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

void set_full_with_labels()
{
    PLT_set_full(0.0F);
    PLT_set_labels_inside(1);
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

void set_dump(DumpKind kind, const char *word)
{
    PLT_set_dump(kind, std::strlen(word) > kDumpWord ? value_of(word, kDumpWord) : nullptr);
}

void set_colour_postscript()
{
    gps_set_color(1);
    gset_invert(1);
}

enum class Test { kExact, kPrefix };

struct Word {
    const char *word;
    Test test;
    void (*apply)(const char *value, const char *word);
};

constexpr Test kExact = Test::kExact;
constexpr Test kPrefix = Test::kPrefix;

/// In the order of the tests: an earlier word hides a later one that shares its beginning.
constexpr Word kWords[] = {
    {"full",        kExact,  [](const char *,  const char *) { PLT_set_full(0.0F); }                                 },
    {"fullab",      kExact,  [](const char *,  const char *) { set_full_with_labels(); }                             },
    {"nopage",      kExact,  [](const char *,  const char *) { MSG_set_paging(kPagingOff); }                         },
    {"page",        kExact,  [](const char *,  const char *) { MSG_set_paging(kPagingOn); }                          },
    {"noredraw",    kExact,  [](const char *,  const char *) { gset_recording(0); }                                  },
    {"id",          kExact,  [](const char *,  const char *) { CTY_set_id_type(kCityById); }                         },
    {"wmo",         kExact,  [](const char *,  const char *) { CTY_set_id_type(kCityByWmo); }                        },
    {"cod_wmo",     kExact,  [](const char *,  const char *) { CTY_set_id_type(kCityByCodedWmo); }                   },
    {"tz",          kPrefix, [](const char *v, const char *) { TIME_set_zone(v); }                                   },
    {"over",        kPrefix, [](const char *v, const char *) { set_overlay(v); }                                     },
    {"lalo",        kPrefix, [](const char *v, const char *) { set_lalo(v); }                                        },
    {"gridx",       kPrefix,
     [](const char *,                          const char *w) {
         const int factor = std::atoi(w + std::strlen("gridx"));
         wishes.grid_refinement = factor >= 1 ? factor : wishes.grid_refinement;
     }                                                                                          },
    {"plt_skip",    kPrefix,
     [](const char *v,                         const char *) { set_pair(v, "%d:%d", wishes.contour_skip); }          },
    {"plt_off",     kPrefix,
     [](const char *v,                         const char *) { set_pair(v, "%f:%f", wishes.contour_offset); }        },
    {"plt_grid",    kPrefix,
     [](const char *v,                         const char *) { wishes.value_thinning = v[0] ? std::atoi(v) : 1; }    },
    {"loc_pr",      kPrefix,
     [](const char *v,                         const char *) { wishes.location_precision = v[0] ? std::atoi(v) : 4; }},
    {"vp_size",     kPrefix, [](const char *v, const char *) { set_view(v); }                                        },
    {"font",        kPrefix, [](const char *v, const char *) { GPH_set_default_font(v); }                            },
    {"gif_inter",   kExact,  [](const char *,  const char *) { gset_gif_interlace(1); }                              },
    {"gif_norm",    kExact,  [](const char *,  const char *) { gset_gif_interlace(0); }                              },
    {"gif_trans",   kExact,  [](const char *,  const char *) { gset_gif_transparent(1); }                            },
    {"inv",         kExact,  [](const char *,  const char *) { gset_invert(1); }                                     },
    {"lcmap",       kExact,  [](const char *,  const char *) { gset_local_cmap(1); }                                 },
    {"nolcmap",     kExact,  [](const char *,  const char *) { gset_local_cmap(0); }                                 },
    {"rwclr",       kExact,  [](const char *,  const char *) { gset_rw_colors(1); }                                  },
    {"norwclr",     kExact,  [](const char *,  const char *) { gset_rw_colors(0); }                                  },
    {"nolooptitle", kExact,  [](const char *,  const char *) { gset_frame_title(0); }                                },
    {"pscolor",     kExact,  [](const char *,  const char *) { set_colour_postscript(); }                            },
    {"psrev",       kExact,  [](const char *,  const char *) { gps_set_reverse(1); }                                 },
    {"clear",       kExact,  [](const char *,  const char *) { gset_wish(1); }                                       },
    {"new",         kExact,  [](const char *,  const char *) { gset_wish(2); }                                       },
    {"kill",        kExact,  [](const char *,  const char *) { gset_wish(9); }                                       },
    {"bar",         kPrefix, [](const char *v, const char *) { set_bar(v); }                                         },
    {"nobar",       kExact,  [](const char *,  const char *) { PLT_set_bar_mode(kBarOff); }                          },
    {"nohdr",       kExact,  [](const char *,  const char *) { wishes.grib_index = 0; }                              },
    {"shadow",      kPrefix,
     [](const char *v,                         const char *) { GPH_set_shadow(number_or(v, 1, kDefaultShadow)); }    },
    {"max_bad",     kPrefix,
     [](const char *v,                         const char *) { wishes.max_bad = number_or(v, 1, kDefaultMaxBad); }   },
    {"min_size",    kPrefix,
     [](const char *v,                         const char *) { FILE_set_min_size(number_or(v, 1, 0)); }              },
    {"grdfmt",      kPrefix,
     [](const char *v,                         const char *) { wishes.grid_format = v[0] ? v : wishes.grid_format; } },
    {"labm",        kPrefix, [](const char *,  const char *) { PLT_set_label_mode(kLabelsMinimal); }                 },
    {"labs",        kPrefix, [](const char *,  const char *) { PLT_set_label_mode(kLabelsSimple); }                  },
    {"labn",        kPrefix, [](const char *,  const char *) { PLT_set_label_mode(kLabelsNormal); }                  },
    {"labc",        kPrefix, [](const char *,  const char *) { PLT_set_label_mode(kLabelsComplete); }                },
    {"gif",         kPrefix, [](const char *,  const char *w) { set_dump(kDumpGif, w); }                             },
    {"png",         kPrefix, [](const char *,  const char *w) { set_dump(kDumpPng, w); }                             },
    {"img",         kPrefix, [](const char *,  const char *w) { set_dump(kDumpImage, w); }                           },
    {"xwd",         kPrefix, [](const char *,  const char *w) { set_dump(kDumpXwd, w); }                             },
};

void apply_word(const char *word)
{
    for (const Word &row : kWords) {
        const size_t length = std::strlen(row.word);
        const bool fits = row.test == kExact
                              ? STR_casecmp(word, row.word) == 0
                              : STR_ncasecmp(word, row.word, static_cast<int>(length)) == 0;
        if (fits) {
            row.apply(value_of(word, length), word);
            return;
        }
    }
}

} // namespace

void PLT_read_params()
{
    for (const std::string &word : RES_list("plot_param")) {
        apply_word(word.c_str());
    }
    for (const std::string &word : RES_list("out_file")) {
        if (STR_has_prefix(word, "gif")) {
            set_dump(kDumpGif, word.c_str());
        } else if (STR_has_prefix(word, "png")) {
            set_dump(kDumpPng, word.c_str());
        }
    }
}

const PlotWishes &PLT_wishes()
{
    return wishes;
}
