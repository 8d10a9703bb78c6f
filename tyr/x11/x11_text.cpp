// Text in a font of the server.

#include <array>
#include <cmath>
#include <cstring>
#include <span>
#include <vector>

#include "tyr/gks/state_private.h"
#include "tyr/x11/x11_colour.h"
#include "tyr/x11/x11_context_private.h"
#include "tyr/x11/x11_primitives.h"
#include "tyr/x11/x11_state_private.h"
#include "tyr/x11/x11_text_private.h"

using namespace tyr;

namespace {

struct State {
    XFontStruct *font = nullptr;
};

State state;

} // namespace

bool gx_load_font(const char *name)
{
    const X11State &x = x11();
    XFontStruct *font = x.display != nullptr ? XLoadQueryFont(x.display, name) : nullptr;
    if (font == nullptr) {
        return false;
    }
    if (state.font != nullptr) {
        XFreeFont(x.display, state.font);
    }
    state.font = font;
    if (gx_context(Family::text) != nullptr) {
        XSetFont(x.display, gx_context(Family::text), font->fid);
    }
    return true;
}

void gx_text(float x, float y, int aside, const char *text, int horizontal, int vertical)
{
    int left = static_cast<int>(std::trunc(x + 0.5F)) + aside;
    int top = static_cast<int>(std::trunc(y + 0.5F)) + aside;
    const X11State &server = x11();
    const GC gc = gx_context(Family::text);
    if (!x11_can_draw() || gc == nullptr || state.font == nullptr) {
        return;
    }
    const int length = static_cast<int>(std::strlen(text));
    const int width = XTextWidth(state.font, text, length);
    switch (horizontal) {
    case kAlignCentre:
        left -= width / 2;
        break;
    case kAlignRight:
        left -= width;
        break;
    default:
        break;
    }
    switch (vertical) {
    case kAlignTop:
    case kAlignCap:
        top += state.font->ascent;
        break;
    case kAlignHalf:
        top += state.font->ascent / 2;
        break;
    case kAlignBottom:
        top -= state.font->descent;
        break;
    default:
        break;
    }
    XDrawString(server.display, server.target, gc, left, top, text, length);
}

void tyr::gx_free_font()
{
    if (state.font != nullptr) {
        XFreeFont(x11().display, state.font);
        state.font = nullptr;
    }
}
