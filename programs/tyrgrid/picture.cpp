#include "programs/tyrgrid/picture.h"

#include <algorithm>
#include <deque>
#include <utility>

#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/sys.h"
#include "tyr/field/overlay.h"
#include "tyr/grid_files/grid_choice.h"
#include "tyr/grid_math/remap.h"
#include "tyr/place/domain_text.h"
#include "tyr/plot/dump.h"
#include "tyr/var/expression.h"
#include "tyr/var/type_words.h"
#include "tyr/var/var_name.h"

namespace tyr {

namespace {

/// A window that is zoomed draws them again.
std::deque<FieldLayer> layers;

bool gather_variables(GridShelf *shelf, const char *expression)
{
    const GridFinder find = [shelf](const VarRec &wanted, GridRec *out) {
        return shelf->find(wanted, out);
    };
    VAR_set_default_type(kTypeGrid);
    VAR_decode(nullptr, expression);
    for (int next = 0; next < VAR_count();) {
        FieldLayer &layer = layers.emplace_back();
        layer.record = next;
        GridRec out[2];
        const int count = GRD_evaluate_item(&next, find, shelf->where(), out);
        if (count == 0) {
            return false;
        }
        layer.is_wind = count == 2;
        std::swap(layer.first.rec, out[0]);
        std::swap(layer.second.rec, out[1]);
        if (count < 0 && VAR_is_map(layer.record) == 0) {
            layers.pop_back();
        }
    }
    return true;
}

bool gather_numbers(GridShelf *shelf)
{
    GridChoice choice(shelf);
    if (!choice.gather()) {
        return false;
    }
    VAR_reset();
    const int count = std::min(static_cast<int>(choice.grids.size()), kMaxVariables);
    VAR_set_count(count);
    for (int i = 0; i < count; ++i) {
        FieldLayer &layer = layers.emplace_back();
        layer.record = i;
        if (!choice.take(&choice.grids[static_cast<size_t>(i)], &layer.first.rec)) {
            return false;
        }
    }
    return true;
}

} // namespace

int draw_grids(GridShelf *shelf)
{
    const char *expression = RES_get("variable");
    if (!(expression != nullptr ? gather_variables(shelf, expression) : gather_numbers(shelf)) ||
        layers.empty()) {
        return kExitNothing;
    }
    for (FieldLayer &layer : layers) {
        GRD_close_circle(&layer.first.rec);
        GRD_close_circle(&layer.second.rec);
    }
    settle_layer_types(&layers);
    const auto first = std::find_if(layers.begin(), layers.end(),
                                    [](const FieldLayer &layer) { return !layer.is_map(); });
    if (first == layers.end()) {
        MSG_out(kMsgWarn, "%s: no field to draw\n", expression);
        return kExitNothing;
    }
    DomainRec domain = first->first.rec.domain;
    if (RES_get("plot_domain") != nullptr || RES_get("region") != nullptr) {
        constexpr int kPlotFirst = 1;
        DOM_from_resources(&domain, kPlotFirst);
    }
    if (!DOM_is_usable(&domain)) {
        MSG_out(kMsgError, "Invalid domain\n");
        return kExitDomain;
    }
    plot_layers(&layers, &domain);
    return PLT_dump_failed() ? kExitNoDump : kExitNormal;
}

} // namespace tyr
