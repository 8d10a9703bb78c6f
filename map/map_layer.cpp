#include "map/map_layer.h"

#include "base/prm.h"
#include "gks/gks.h"
#include "gks/session.h"
#include "map/domain.h"
#include "map/map_grid.h"
#include "map/view.h"
#include "plot/attributes.h"
#include "plot/labels.h"
#include "var/variable.h"

namespace {

constexpr int kUnderMarked = 1;
constexpr int kOverMarked = 2;
constexpr int kUnmarked = 4;
constexpr float kMapLabel = 0.018F; ///< of the window height
constexpr float kSpaceLabel = 0.015F;
constexpr int kDashed = 4;

struct State {
    int map_mode = 0;
    bool is_filled = false;
    int map_variable = 0; ///< 1 the list holds "map", -1 it holds "panel"
};

State state;

bool is_filled_type(long type)
{
    return type == 15 || type == 16 || type == 52;
}

void draw_lines(const DomainRec &domain)
{
    float dlat = 0.0F;
    float dlon = 0.0F;
    DOM_get_offset(&dlat, &dlon);
    if (!(dlat > 0.0F)) {
        return;
    }
    AttrRec attr;
    ATTR_init(&attr);
    const bool is_map = is_map_projection(domain.proj);
    if (is_map) {
        attr.style = kDashed;
    }
    ATTR_from_resource("color_line", is_map ? "magenta:s4" : "red", &attr);
    GPH_set_line_attr(nullptr);
    GPH_set_line_attr(&attr);
    GPH_set_text_attr(&attr, is_map ? DOM_window_height() * kMapLabel : kSpaceLabel);
    if (attr.color != -1) {
        MAP_draw_lalo(dlat, dlon);
    }
}

} // namespace

void PLT_map_setup()
{
    state.is_filled = is_filled_type(PRM_get(kPrmPlotType));
    state.map_variable = 0;
    for (int i = 0; i < VAR_count(); ++i) {
        if (VAR_is_map(i) != 0) {
            state.map_variable = 1;
        } else if (state.map_variable != 1 && VAR_is_panel(i) != 0) {
            state.map_variable = -1;
        }
    }
}

void PLT_map_under()
{
    gsel_norm_tran(2);
    PLT_set_label_line(0);
    MAP_draw(state.is_filled || state.map_variable == 1 ? kUnderMarked : kUnderMarked | kUnmarked);
}

void PLT_map_over()
{
    if (state.is_filled && state.map_variable != 1) {
        DOM_set_map_mode(1);
        MAP_draw(kOverMarked | kUnmarked);
    } else {
        MAP_draw(kOverMarked);
    }
    PLT_draw_labels();
}

void DOM_set_map_mode(int mode)
{
    state.map_mode = mode;
}

int MAP_draw(int mode)
{
    if (PRM_get_draw(kDrawMap) == 0) {
        return 0;
    }
    gsel_norm_tran(2);
    GPH_set_line_attr(nullptr);
    GPH_set_font(nullptr);
    const DomainRec domain = *DOM_get(nullptr);
    draw_lines(domain);
    static_cast<void>(mode);
    return 0;
}
