#include "tyr/x11/x11_default.h"
#include "tyr/x11/x11_handles.h"
#include "tyr/x11/x11_state_private.h"

using namespace tyr;

X11State &tyr::x11()
{
    static X11State state;
    return state;
}

bool tyr::x11_can_draw()
{
    return x11().display != nullptr && x11().target != 0;
}

std::string gx_default(const char *option)
{
    const char *value = gis_x11() && x11().display != nullptr
                            ? XGetDefault(x11().display, ginq_app_name(), option)
                            : nullptr;
    return value != nullptr ? value : "";
}

Display *ginq_display()
{
    return x11().display;
}

int ginq_screen()
{
    return x11().screen;
}

Window ginq_window()
{
    return x11().window;
}

Pixmap ginq_pixmap()
{
    return x11().pixmap;
}

Drawable ginq_target()
{
    return x11().target;
}

GC ginq_gc()
{
    return x11().common;
}

Visual *ginq_visual()
{
    return x11().visual;
}

unsigned ginq_red_mask()
{
    return x11().red_mask;
}

unsigned ginq_green_mask()
{
    return x11().green_mask;
}

unsigned ginq_blue_mask()
{
    return x11().blue_mask;
}

void gset_pixmap(Pixmap id)
{
    x11().pixmap = id;
}

void gset_target(Drawable id)
{
    x11().target = id != 0 ? id : x11().pixmap;
}
