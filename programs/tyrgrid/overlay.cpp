#include "programs/tyrgrid/overlay.h"

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <string>
#include <utility>

#include "programs/tyrgrid/source.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"
#include "tyr/field/contour.h"
#include "tyr/field/vector.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/grid_math/grid_operands.h"
#include "tyr/map/map_entry.h"
#include "tyr/map/map_layer.h"
#include "tyr/place/domain_text.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/dump.h"
#include "tyr/plot/interaction.h"
#include "tyr/plot/labels.h"
#include "tyr/plot/plot_session.h"
#include "tyr/plot/view.h"
#include "tyr/var/expression.h"
#include "tyr/var/type_words.h"
#include "tyr/var/var_name.h"
#include "tyr/x11/frames.h"

namespace tyr {

namespace {

/// One field of the picture: a grid, or the two of a wind, and its record in the variable list.
struct Layer {
    OwnGrid first, second;
    int record = 0;
    bool is_wind = false;
};

struct State {
    std::deque<Layer> layers;
    bool is_drawn = false;
};

State state;

bool is_filled(const Layer &layer)
{
    const int type = VAR_get(layer.record)->type;
    return !layer.is_wind && (type == kTypeFill || type == kTypeFillAndLine);
}

/// A type that a layer can be drawn in, where the expression and the resource tell none.
void settle_type(Layer *layer)
{
    VarRec *record = VAR_get(layer->record);
    const int wish = static_cast<int>(PRM_get(kPrmPlotType));
    const int low = layer->is_wind ? kTypeVector : kTypeLine;
    const int high = layer->is_wind ? kTypeStream : kTypeGridValue;
    const auto fits = [&](int type) { return type >= low && type <= high; };
    if (record->type == kTypeValue && !layer->is_wind) {
        record->type = kTypeGridValue;
    } else if (!fits(record->type)) {
        const bool is_first = layer == &state.layers.front();
        record->type = fits(wish)       ? wish
                       : layer->is_wind ? int{kTypeVector}
                       : is_first       ? int{kTypeFill}
                                        : int{kTypeLine};
    }
}

bool gather_variables(GridShelf *shelf, const char *expression)
{
    const GridFinder find = [shelf](const VarRec &wanted, GridRec *out) {
        return shelf->find(wanted, out);
    };
    VAR_set_default_type(kTypeGrid);
    VAR_decode(nullptr, expression);
    for (int next = 0; next < VAR_count();) {
        Layer &layer = state.layers.emplace_back();
        layer.record = next;
        GridRec out[2];
        const int count = GRD_evaluate_item(&next, find, shelf->where(), out);
        if (count == 0) {
            return false;
        }
        layer.is_wind = count == 2;
        std::swap(layer.first.rec, out[0]);
        std::swap(layer.second.rec, out[1]);
        if (count < 0) {
            state.layers.pop_back();
        }
    }
    return true;
}

bool gather_numbers(GridShelf *shelf)
{
    Sources sources(shelf);
    if (!sources.gather()) {
        return false;
    }
    VAR_reset();
    const int count = std::min(static_cast<int>(sources.grids.size()), kMaxVariables);
    VAR_set_count(count);
    for (int i = 0; i < count; ++i) {
        Layer &layer = state.layers.emplace_back();
        layer.record = i;
        if (!sources.take(&sources.grids[static_cast<size_t>(i)], &layer.first.rec)) {
            return false;
        }
    }
    return true;
}

void draw_field(Layer *layer, DomainRec *domain, bool *is_bar_due)
{
    CONT_setup(state.is_drawn ? 1 : 0, layer->record, &layer->first.rec, domain, nullptr);
    CONT_draw(&layer->first.rec);
    if (is_filled(*layer) && *is_bar_due && PLT_get_bar_mode() >= 0) {
        gsel_norm_tran(1);
        PLT_color_bar(1, "");
        PLT_label_ll(""); // the bar stands there
        *is_bar_due = false;
    }
}

void draw_wind(Layer *layer, DomainRec *domain)
{
    const VarRec &record = *VAR_get(layer->record);
    const std::string word = record.type == kTypeBarb     ? "barb:"
                             : record.type == kTypeStream ? "strm:"
                                                          : "vect:";
    VECT_set_kind(record.type, (word + record.format).c_str());
    VECT_setup(state.is_drawn ? 1 : 0, layer->record, &layer->first.rec, &layer->second.rec, domain,
               nullptr);
    VECT_draw(&layer->first.rec, &layer->second.rec);
    if (record.type == kTypeVector && VECT_get_legend() != 0) {
        VECT_legend();
    }
}

void draw_layers(DomainRec *domain)
{
    const bool is_map_over = std::any_of(state.layers.begin(), state.layers.end(), is_filled);
    PLT_set_domain(domain);
    PLT_map_setup();
    PLT_clear_bar();
    PLT_clear_labels();
    MAP_draw(is_map_over ? kMapUnder : kMapUnder | kMapUnmarked);
    bool is_bar_due = true;
    int line = 0;
    for (Layer &layer : state.layers) {
        PLT_set_label_line(line++);
        GPH_sel_tran(2);
        layer.is_wind ? draw_wind(&layer, domain) : draw_field(&layer, domain, &is_bar_due);
    }
    DOM_set_map_mode(is_map_over ? 1 : 0);
    MAP_draw(is_map_over ? kMapOver | kMapUnmarked : kMapOver);
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

} // namespace

int draw_grids(GridShelf *shelf)
{
    const char *expression = RES_get("variable");
    if (!(expression != nullptr ? gather_variables(shelf, expression) : gather_numbers(shelf)) ||
        state.layers.empty()) {
        return kExitNothing;
    }
    for (Layer &layer : state.layers) {
        settle_type(&layer);
    }
    DomainRec domain = state.layers.front().first.rec.domain;
    if (RES_get("plot_domain") != nullptr || RES_get("region") != nullptr) {
        constexpr int kPlotFirst = 1;
        DOM_from_resources(&domain, kPlotFirst);
    }
    if (!DOM_is_usable(&domain)) {
        MSG_out(kMsgError, "Invalid domain\n");
        return kExitDomain;
    }
    if (RES_get("con_interval") == nullptr) {
        RES_put("con_interval", "0"); // a nice one; nobody is asked
    }
    plot(&domain);
    return PLT_dump_failed() ? kExitNoDump : kExitNormal;
}

} // namespace tyr
