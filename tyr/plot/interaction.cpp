#include "tyr/plot/interaction.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "tyr/base/msg.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/gks.h"
#include "tyr/place/domain_text.h"
#include "tyr/place/region.h"
#include "tyr/x11/x11_band.h"
#include "tyr/x11/zoom.h"

using namespace tyr;

namespace {

constexpr unsigned kTitleMask = 0x200;
constexpr int kDomainMask = 0x100;

struct State {
    DomainCallback zoom = nullptr;
    DomainCallback size = nullptr;
    int zooms = 0;      ///< since the first view
    DomainRec first{};  ///< the first view, put by at the first zoom
    float box_x = 0.0F; ///< where the button went down, world coordinates
    float box_y = 0.0F;
    bool has_box = false; ///< between press and release
};

State state;

void call(DomainCallback function, DomainRec *domain)
{
    gsel_norm_tran(0);
    const int cursor = gset_cursor_sync(kCursorBusy);
    if (function != nullptr) {
        function(domain);
    }
    gsel_norm_tran(2);
    gupdate_ws();
    gset_cursor_sync(cursor);
}

/// The domain in force, kept at the first zoom.
DomainRec begin_zoom()
{
    DomainRec domain;
    DOM_get(&domain);
    DOM_print(kDomainMask, &domain);
    if (state.zooms++ == 0) {
        state.first = domain;
    }
    return domain;
}

/// A map whose centre and size are the box's.
DomainRec map_of_box(float x, float y)
{
    DomainRec domain = begin_zoom();
    const float width = std::fabs(x - state.box_x);
    const float height = std::fabs(y - state.box_y);
    MAP_xy_to_ll(&domain.clat, &domain.clon, (x + state.box_x) / 2.0F, (y + state.box_y) / 2.0F);
    const auto spacing = [](float side, int count) {
        return side / static_cast<float>(std::max(count - 1, 1));
    };
    domain.dx = domain.dy = std::max(spacing(width, domain.nx), spacing(height, domain.ny));
    DOM_set_priority(height);
    return domain;
}

/// A plot space from the box's corner, with its span of data.
DomainRec space_of_box(float x, float y)
{
    const int proj = DOM_get_proj();
    const auto [xa, xb] = std::minmax(x, state.box_x);
    const auto [ya, yb] = std::minmax(y, state.box_y);
    float far_a = 0.0F;
    float far_b = 0.0F;
    MAP_xy_to_ll(&far_a, &far_b, xb, yb);
    float near_a = xa;
    float near_b = ya;
    if (proj != kProjPolarPlot) {
        MAP_xy_to_ll(&near_a, &near_b, xa, ya);
    }
    DomainRec domain = begin_zoom();
    domain.clat = near_a;
    domain.clon = near_b;
    domain.dx = proj == kProjSkewT || proj == kProjPolarPlot ? xb - xa : far_a - near_a;
    domain.dy = proj == kProjPolarPlot ? yb - ya : far_b - near_b;
    return domain;
}

int zoom_to_box(float x, float y)
{
    if (x == state.box_x || y == state.box_y) {
        return -1;
    }
    DomainRec domain = is_map_projection(DOM_get_proj()) ? map_of_box(x, y) : space_of_box(x, y);
    MSG_out(kTitleMask, "New domain: ");
    DOM_print(kDomainMask, &domain);
    call(state.zoom, &domain);
    state.has_box = false;
    return 0;
}

int zoom_back()
{
    if (ginq_zoom() != 1 || state.zooms == 0) {
        return 0;
    }
    MSG_out(kTitleMask, "Original domain: ");
    DomainRec domain = state.first;
    if (is_map_projection(domain.proj)) {
        DOM_set_priority(static_cast<float>(domain.ny - 1) * domain.dy);
    }
    DOM_print(kDomainMask, &domain);
    call(state.zoom, &domain);
    state.zooms = 0;
    state.has_box = false;
    return 0;
}

} // namespace

void PLT_set_zoom_callback(DomainCallback function)
{
    state.zoom = function;
}

void PLT_set_size_callback(DomainCallback function)
{
    state.size = function;
}

int PLT_zoom_event(const char *event, float x, float y)
{
    const std::string_view word = event;
    if (word == "B1-P-Shft") {
        state.has_box = true;
        state.box_x = x;
        state.box_y = y;
        gset_band(kBandBox);
        return 0;
    }
    // Shift may still be held when the button goes up
    if (state.has_box && (word == "B1-R" || word == "B1-R-Shft")) {
        return zoom_to_box(x, y);
    }
    if (word == "u-Alt") {
        return zoom_back();
    }
    if (word == "r-Alt") {
        DomainRec domain;
        DOM_get(&domain);
        call(state.zoom, &domain);
        return 0;
    }
    state.has_box = false;
    return 0;
}

int PLT_size_event(const char *event, float, float)
{
    if (std::string_view(event) == "size") {
        DomainRec domain;
        DOM_get(&domain);
        call(state.size, &domain);
    }
    return 0;
}
