#include <dlfcn.h>

#include "tyr/base/msg.h"
#include "tyr/picture/cairo_library_private.h"

namespace {

constexpr const char *kNames[] = {"libcairo.so.2", "libcairo.so"};

struct State {
    tyr::CairoLibrary calls;
    bool is_loaded = false;
};

State state;

template <class Function> bool bind(void *library, const char *name, Function *function)
{
    *function = reinterpret_cast<Function>(dlsym(library, name));
    return *function != nullptr;
}

/// Whether every function was found.
bool bind_all(void *library, tyr::CairoLibrary *calls)
{
    bool is_whole = true;
#define TYR_CAIRO_BIND(name) is_whole = bind(library, "cairo_" #name, &calls->name) && is_whole;
    TYR_CAIRO_CALLS(TYR_CAIRO_BIND)
#undef TYR_CAIRO_BIND
    return is_whole;
}

} // namespace

bool tyr::has_cairo()
{
    for (const char *name : kNames) {
        void *library = state.is_loaded ? nullptr : dlopen(name, RTLD_LAZY | RTLD_LOCAL);
        if (library != nullptr && bind_all(library, &state.calls)) {
            state.is_loaded = true; // it stays: libraries of this kind don't unload well
        }
    }
    if (!state.is_loaded) {
        MSG_out(kMsgWarn, "gopen_ws: the library libcairo isn't there, or another than this one\n");
    }
    return state.is_loaded;
}

const tyr::CairoLibrary &tyr::cairo()
{
    return state.calls;
}
