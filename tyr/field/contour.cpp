#include "tyr/field/contour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <string>

#include "tyr/base/ask.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/field/contour_private.h"
#include "tyr/geo/domain.h"
#include "tyr/gks/gks.h"
#include "tyr/grid_math/sample.h"
#include "tyr/map/map_entry.h"
#include "tyr/map/map_layer.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/dump.h"
#include "tyr/plot/interaction.h"
#include "tyr/plot/labels.h"
#include "tyr/plot/levels.h"
#include "tyr/plot/plot_session.h"
#include "tyr/plot/view.h"
#include "tyr/start/convert.h"
#include "tyr/var/variable.h"

using namespace tyr;

namespace {

constexpr int kNoPlot = 99;
constexpr int kDashedLines = 13; ///< types of a variable or plot: lines all dashed, lines with
constexpr int kDashedLow = 14;   ///< those below the base dashed
constexpr int kUnderField = 5, kOverField = 6;
constexpr int kLevelText = 74;
constexpr int kMostLevels = 1000000;

struct SavedRow {
    int kind = kMissingInt, dash = 0;
    float interval = kMissing, base = kMissing;
};
std::array<SavedRow, kMaxVariables> saved;

void set_kind(int type)
{
    ContourSettings &s = contours().set;
    s.kind = type == kDashedLines || type == kDashedLow ? int{kContLines} : type;
    s.dash = type == kDashedLines ? 1 : type == kDashedLow ? -1 : 0;
}

std::string real(const char *spec, float value)
{
    std::array<char, kRealTextRoom> text;
    STR_format_real(text.data(), spec, value);
    return text.data();
}

void set_row(int mode, int index)
{
    const VarRec *record = index >= 0 && index < kMaxVariables ? VAR_get(index) : nullptr;
    if (record == nullptr) {
        return;
    }
    if (record->type >= kContLines && record->type <= kContValues) {
        set_kind(record->type);
    }
    if (mode > 0) {
        const SavedRow &row = saved[static_cast<size_t>(index)];
        contours().set.kind = row.kind;
        contours().set.dash = row.dash;
        CONT_set_interval(row.interval);
        CONT_set_base(row.base);
    }
    CONT_set_options(record->format);
}

/// Interval: from the resource, else asked for; a negative one counts as 0.
void settle_interval()
{
    const ContourState &c = contours();
    const LevelView view = CONT_view();
    if (PRM_get(kPrmPlotType) == kContValues || c.set.kind == kContValues || view.has_levels ||
        !is_missing(view.interval)) {
        return;
    }
    float interval = kMissing;
    const char *resource = RES_get("con_interval");
    if (resource != nullptr && *resource != '\0') {
        RES_get_value("con_interval", &interval, kResReal);
    } else if (PRM_is_batch() == 0) {
        MSG_out(kMsgPrint, "Maximum value: %f\n", static_cast<double>(c.high));
        MSG_out(kMsgPrint, "Minimum value: %f\n\n", static_cast<double>(c.low));
        interval = ASK_real("Enter the contour interval: ");
    }
    CONT_set_interval(interval > 0.0F && std::isfinite(interval) ? interval : 0.0F);
}

void read_base_words()
{
    ContourSettings &s = contours().set;
    for (const std::string &word : RES_list("con_base")) {
        if (word.empty()) {
            continue;
        }
        const bool is_limit = word[0] == '>' || word[0] == '<';
        const float value = std::strtof(word.c_str() + (is_limit ? 1 : 0), nullptr);
        if (!std::isfinite(value)) {
            continue;
        }
        if (word[0] != '<') {
            CONT_set_base(value);
        }
        if (word[0] == '>') {
            s.lowest = value;
        } else if (word[0] == '<') {
            s.highest = value;
        }
    }
    CONT_set_limits(s.highest, s.lowest);
    const char *scale = RES_get("plot_scale");
    if (scale != nullptr && *scale != '\0') {
        RES_get_value("plot_scale", &s.scale, kResReal);
        s.scale = s.scale > 0.0F ? s.scale : 1.0F;
    }
    if (const char *format = RES_get("plot_format")) {
        CONT_set_options(format);
    }
}

void ask_kind()
{
    struct Answer {
        const char *word;
        int type;
    };
    constexpr Answer kAnswers[] = {
        {"none",   kNoPlot     },
        {"value",  kContValues },
        {"gvalue", kContValues },
        {"cf",     kContFilled },
        {"lcf",    kContBoth   },
        {"ln",     kContLines  },
        {"dln",    kDashedLines},
        {"ndln",   kDashedLow  }
    };
    std::array<char, 32> answer = {};
    ASK_text("Color fill (C) or Line (L) contours: ", answer.data(),
             static_cast<int>(answer.size()));
    for (const Answer &row : kAnswers) {
        if (STR_casecmp(answer.data(), row.word) == 0) {
            set_kind(row.type);
            return;
        }
    }
    set_kind(answer[0] != '\0' && std::string("cCyY").find(answer[0]) != std::string::npos
                 ? kContFilled
                 : kContLines);
}

void settle_kind()
{
    if (contours().set.kind != kMissingInt) {
        return;
    }
    const int type = static_cast<int>(PRM_get(kPrmPlotType));
    if (type >= kContLines && type <= kContValues) {
        set_kind(type);
    } else if (PRM_is_batch() != 0) {
        set_kind(kContFilled);
    } else {
        ask_kind();
    }
}

void put_labels(const GridRec &grid)
{
    const ContourState &c = contours();
    PLT_label_ul(grid.info);
    PLT_label_ur(grid.date);
    PLT_label_lr(("LO: " + real("5.3.1", c.low) + "  HI: " + real("5.3.1", c.high)).c_str());
    if (c.plan.is_list) {
        std::string text = "LEVELS: ";
        for (int i = 0; i < c.plan.count; ++i) {
            const std::string one = (i > 0 ? "," : "") + real("1.1.1", c.plan.level(i));
            if (text.size() + one.size() > kLevelText) {
                break;
            }
            text += one;
        }
        PLT_label_ll(text.c_str());
    } else if (c.set.kind != kContValues) {
        PLT_label_ll(("INTERVAL: " + real("5.1.1", c.plan.interval)).c_str());
    }
}

} // namespace

namespace tyr {

float LevelPlan::level(int i) const
{
    return is_list ? CONT_level(i) : first + interval * static_cast<float>(i);
}

int LevelPlan::row(int i) const
{
    if (is_list) {
        return i;
    }
    const int rows = std::max(CONT_view().rows, 1);
    // counted as CONT_value_attr and the colour bar do: an unset base is 0, not the first level
    const float zero = is_missing(CONT_view().base) ? 0.0F : CONT_view().base;
    const float start = std::floor((first - zero) / interval + 0.01F);
    const float place = std::fmod(start, static_cast<float>(rows));
    const int row = (std::isfinite(place) ? static_cast<int>(place) : 0) + i % rows;
    return (row + rows) % rows;
}

} // namespace tyr

int CONT_plan_levels(GridRec *grid)
{
    ContourState &c = contours();
    const LevelView view = CONT_view();
    LevelPlan &p = c.plan;
    p = {};
    if (view.has_levels) {
        p = {CONT_level(0), CONT_level(view.levels - 1),
             view.interval, is_missing(view.base) ? CONT_level(0) : view.base,
             view.levels,   true};
        return 0;
    }
    if (is_missing(c.high)) {
        GRD_max_min(grid, &c.high, &c.low);
    }
    if (is_missing(c.high) || is_missing(c.low)) {
        return -1;
    }
    p.interval = view.interval;
    const char *resource = RES_get("con_interval");
    if (is_missing(p.interval) && resource != nullptr && *resource != '\0') {
        RES_get_value("con_interval", &p.interval, kResReal);
    }
    if (is_missing(p.interval) && c.set.kind == kContValues) {
        return 0;
    }
    if (!(p.interval > 0.0F) || !std::isfinite(p.interval)) {
        p.interval = CONT_nice_interval(view.rows - 1, c.high, c.low);
    }
    CONT_set_interval(p.interval);
    p.base = view.base;
    const float b = is_missing(p.base) ? 0.0F : p.base;
    const float steps = (c.high - b) / p.interval;
    p.first = c.high < c.low ? c.high : b + p.interval * std::floor((c.low - b) / p.interval);
    p.last = c.high < c.low ? c.low : b + p.interval * std::floor(steps + 1.0F);
    p.last += c.high - b == p.interval ? p.interval : 0.0F;
    const float count = (p.last - p.first + 0.01F) / p.interval;
    p.count = count >= 1.0F ? static_cast<int>(std::min(count, float{kMostLevels})) : 0;
    p.base = is_missing(p.base) ? p.first : p.base;
    return 0;
}

void CONT_setup(int mode, int index, GridRec *grid, DomainRec *domain, ContourCallback callback)
{
    if (PRM_get(kPrmPlotType) == kNoPlot || grid == nullptr) {
        return;
    }
    ContourState &c = contours();
    CONT_reset();
    c = {};
    c.grid = grid;
    c.callback = callback;
    set_row(mode, index);
    read_contour_params();
    CONT_set_fill_colors(nullptr, 0);
    if (grid->values != nullptr) {
        if (domain != nullptr && is_missing(domain->clat)) {
            *domain = grid->domain;
        }
        MSG_out(kMsgMess, "Contouring data for %s\n\n", grid->info);
        GRD_max_min(grid, &c.high, &c.low);
        CONT_set_range(c.low, c.high);
    }
    settle_interval();
    read_base_words();
    settle_kind();
    CONT_plan_levels(grid);
    DOM_set_map_mode(c.set.kind == kContFilled || c.set.kind == kContBoth ? 1 : 0);
    put_labels(*grid);
    if (mode == 0 && index >= 0 && index < kMaxVariables) {
        const LevelView view = CONT_view();
        saved[static_cast<size_t>(index)] = {c.set.kind, c.set.dash, view.interval, view.base};
    }
}

int CONT_plot(DomainRec *domain)
{
    ContourState &c = contours();
    if (PRM_get(kPrmPlotType) == kNoPlot || domain == nullptr || c.grid == nullptr) {
        return -1;
    }
    const bool again = ginq_open() != 0;
    if ((again ? PLT_restart(DOM_aspect(domain)) : PLT_begin(DOM_aspect(domain))) != 0) {
        return -1;
    }
    PLT_set_callback(c.callback);
    PLT_set_zoom_callback(CONT_plot);
    PLT_set_size_callback(CONT_plot);
    PLT_set_domain(domain);
    CONT_setup(0, 0, c.grid, domain, c.callback);
    if (c.set.map_first) {
        MAP_draw(kUnderField);
        CONT_draw(c.grid);
    } else {
        CONT_draw(c.grid);
        MAP_draw(kOverField);
    }
    PLT_draw_labels();
    if (PLT_get_bar_mode() > 0) {
        PLT_color_bar(1, "");
    }
    PLT_dump(0);
    if (!again) {
        PLT_end();
    }
    return 0;
}

void CONT_plot_grid(GridRec *grid, DomainRec *domain, ContourCallback callback)
{
    if (PRM_get(kPrmPlotType) == kNoPlot || grid == nullptr || domain == nullptr) {
        return;
    }
    DomainRec where = is_missing(domain->clat) ? grid->domain : *domain;
    contours().grid = grid;
    contours().callback = callback;
    CONT_plot(&where);
    contours().set.kind = kMissingInt;
}
