#include "tyr/field/overlay.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/field/contour.h"
#include "tyr/field/vector.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/map/map_entry.h"
#include "tyr/map/map_layer.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/dump.h"
#include "tyr/plot/interaction.h"
#include "tyr/plot/labels.h"
#include "tyr/plot/plot_session.h"
#include "tyr/plot/view.h"
#include "tyr/var/type_words.h"
#include "tyr/var/variable.h"
#include "tyr/x11/frames.h"

namespace tyr {

namespace {

struct State {
    std::deque<FieldLayer> *layers = nullptr;
    bool is_drawn = false; ///< settings of the layers are saved
};

State state;

bool is_map(const FieldLayer &layer)
{
    return layer.is_map();
}

bool is_filled(const FieldLayer &layer)
{
    const int type = VAR_get(layer.record)->type;
    return !layer.is_wind && !layer.is_map() && (type == kTypeFill || type == kTypeFillAndLine);
}

/// The bar stands at the lower left, where a layer tells its interval: that goes behind its name.
void move_interval(int line)
{
    const std::string interval = PLT_get_label(kLabelLowerLeft, line);
    if (!interval.empty()) {
        PLT_label_ul((PLT_get_label(kLabelUpperLeft, line) + ("  " + interval)).c_str());
        PLT_label_ll("");
    }
}

void draw_field(FieldLayer *layer, DomainRec *domain, bool *is_bar_due)
{
    CONT_setup(state.is_drawn ? 1 : 0, layer->record, &layer->first.rec, domain, nullptr);
    CONT_draw(&layer->first.rec);
    if (is_filled(*layer) && *is_bar_due && PLT_get_bar_mode() >= 0) {
        gsel_norm_tran(1);
        PLT_color_bar(1, "");
        *is_bar_due = false;
    }
}

/// Columns of a grid that a domain shows, about.
float columns_across(const DomainRec &grid, const DomainRec &domain)
{
    constexpr float kDegree = 1.11F; // 100 km
    const auto spacing = [](const DomainRec &d) {
        return std::fabs(d.dx) * (d.proj == kProjLatLon ? kDegree : 1.0F);
    };
    const float columns =
        spacing(domain) * static_cast<float>(domain.nx - 1) / std::fmax(spacing(grid), 1e-6F);
    return std::clamp(columns, 1.0F, static_cast<float>(std::max(grid.nx, 1)));
}

/// Words for signs that don't cover one another, where the user tells neither how many nor of what
/// size.
std::string sign_words(const FieldLayer &layer, const VarRec &record, const DomainRec &domain)
{
    constexpr float kSigns = 25.0F; // across the picture
    constexpr float kLines = 60.0F; // starts of streamlines
    constexpr float kBarb = 0.75F;  // of the distance of two
    const std::string format = record.format;
    const std::vector<std::string> words = RES_list("plot_param");
    const bool is_told = format.find("sk=") != std::string::npos ||
                         std::any_of(words.begin(), words.end(), [](const std::string &word) {
                             return STR_has_prefix(word, "wv_skip");
                         });
    const bool is_line = record.type == kTypeStream;
    const float columns = columns_across(layer.first.rec.domain, domain);
    const float skip = std::fmax(1.0F, std::round(columns / (is_line ? kLines : kSigns)));
    std::string text = is_told ? "" : STR_print("sk=%.0f:", static_cast<double>(skip));
    if (!is_told && !is_line && format.find("sc=") == std::string::npos) {
        const float size = record.type == kTypeBarb ? skip * kBarb : skip;
        text += STR_print("sc=%.2f:", static_cast<double>(size));
    }
    return text;
}

void draw_wind(FieldLayer *layer, DomainRec *domain)
{
    const VarRec &record = *VAR_get(layer->record);
    // the legend counts in m/s and stands where other layers have their labels
    const bool is_legend =
        state.layers->size() == 1 && std::strcmp(layer->first.rec.units, "m/s") == 0;
    const char *arrows = is_legend ? "vect:vbar:" : "vect:";
    const std::string word = (record.type == kTypeBarb     ? "barb:"
                              : record.type == kTypeStream ? "strm:"
                                                           : arrows) +
                             sign_words(*layer, record, *domain);
    VECT_set_kind(record.type, (word + record.format).c_str());
    VECT_setup(state.is_drawn ? 1 : 0, layer->record, &layer->first.rec, &layer->second.rec, domain,
               nullptr);
    VECT_draw(&layer->first.rec, &layer->second.rec);
    if (record.type == kTypeVector && VECT_get_legend() != 0) {
        VECT_legend();
    }
}

/// Draws the layers, each with a line of labels.
void draw_fields(DomainRec *domain, bool is_any_filled)
{
    bool is_bar_due = true;
    int line = 0;
    for (FieldLayer &layer : *state.layers) {
        GPH_sel_tran(2);
        if (layer.is_map()) {
            DOM_set_map_mode(is_any_filled ? 1 : 0);
            MAP_draw(kMapUnmarked);
            continue;
        }
        PLT_set_label_line(line);
        PLT_set_label_count(line + 1);
        layer.is_wind ? draw_wind(&layer, domain) : draw_field(&layer, domain, &is_bar_due);
        if (!is_bar_due) {
            move_interval(line);
        }
        ++line;
    }
}

void draw_layers(DomainRec *domain)
{
    const std::deque<FieldLayer> &all = *state.layers;
    const bool is_any_filled = std::any_of(all.begin(), all.end(), is_filled);
    const int unmarked = std::any_of(all.begin(), all.end(), is_map) ? 0 : int{kMapUnmarked};
    PLT_set_domain(domain);
    PLT_map_setup();
    PLT_clear_bar();
    PLT_clear_labels();
    MAP_draw(is_any_filled ? kMapUnder : kMapUnder | unmarked);
    draw_fields(domain, is_any_filled);
    DOM_set_map_mode(is_any_filled ? 1 : 0);
    MAP_draw(is_any_filled ? kMapOver | unmarked : kMapOver);
    PLT_draw_labels();
    DOM_set(domain);
    PLT_dump(kCurrentFrame);
}

void take_event(int, const char *event, float x, float y)
{
    PLT_zoom_event(event, x, y);
    PLT_size_event(event, x, y);
}

int plot(DomainRec *domain)
{
    const bool is_first = ginq_open() == 0;
    const float aspect = DOM_aspect(domain);
    if ((is_first ? PLT_begin(aspect) : PLT_restart(aspect)) != 0) {
        return -1;
    }
    if (is_first) {
        PLT_set_callback(take_event);
        PLT_set_zoom_callback(plot);
        PLT_set_size_callback(plot);
    }
    draw_layers(domain);
    state.is_drawn = true;
    if (is_first) {
        PLT_end();
    }
    return 0;
}

/// Bands and lines of no told interval take a nice one; nobody is asked.
void settle_interval(VarRec *record)
{
    const char *told = RES_get("con_interval");
    const std::string format = record->format;
    if ((told != nullptr && *told != '\0') || record->type < kTypeLine ||
        record->type > kTypeFillAndLine || format.find("in=") != std::string::npos) {
        return;
    }
    const std::string whole = format.empty() ? "in=0" : "in=0:" + format;
    if (whole.size() < sizeof record->format) {
        STR_copy(record->format, sizeof record->format, whole);
    }
}

} // namespace

void settle_layer_types(std::deque<FieldLayer> *layers)
{
    const auto first = std::find_if_not(layers->begin(), layers->end(), is_map);
    for (FieldLayer &layer : *layers) {
        if (layer.is_map()) {
            continue;
        }
        VarRec *record = VAR_get(layer.record);
        const int wish = static_cast<int>(PRM_get(kPrmPlotType));
        const int low = layer.is_wind ? kTypeVector : kTypeLine;
        const int high = layer.is_wind ? kTypeStream : kTypeGridValue;
        const auto fits = [&](int type) { return type >= low && type <= high; };
        if (record->type == kTypeValue && !layer.is_wind) {
            record->type = kTypeGridValue;
        } else if (!fits(record->type)) {
            record->type = fits(wish)          ? wish
                           : layer.is_wind     ? kTypeVector
                           : &layer == &*first ? kTypeFill
                                               : kTypeLine;
        }
        settle_interval(record);
    }
}

int plot_layers(std::deque<FieldLayer> *layers, DomainRec *domain)
{
    if (layers->empty()) {
        return -1;
    }
    state.layers = layers;
    state.is_drawn = false;
    return plot(domain);
}

} // namespace tyr
