#include <dlfcn.h>

#include "tyr/base/msg.h"
#include "tyr/base/netcdf_library_private.h"

namespace {

/// As distributions name it: the calls used here are the same in all of these.
constexpr const char *kNames[] = {"libnetcdf.so.19", "libnetcdf.so.22", "libnetcdf.so.18",
                                  "libnetcdf.so"};

struct State {
    tyr::NetcdfLibrary calls;
    bool is_loaded = false;
    bool was_tried = false;
};

State state;

template <class Function> bool bind(void *library, const char *name, Function *function)
{
    *function = reinterpret_cast<Function>(dlsym(library, name));
    return *function != nullptr;
}

/// Whether every function was found.
bool bind_all(void *library, tyr::NetcdfLibrary *calls)
{
    bool is_whole = true;
#define TYR_NETCDF_BIND(name) is_whole = bind(library, "nc_" #name, &calls->name) && is_whole;
    TYR_NETCDF_CALLS(TYR_NETCDF_BIND)
#undef TYR_NETCDF_BIND
    return is_whole;
}

void load()
{
    state.was_tried = true;
    for (const char *name : kNames) {
        void *library = dlopen(name, RTLD_LAZY | RTLD_LOCAL);
        if (library == nullptr) {
            continue;
        }
        if (bind_all(library, &state.calls)) {
            state.is_loaded = true; // it stays: libraries of this kind don't unload well
            return;
        }
        dlclose(library);
    }
    MSG_out(kMsgWarn, "CDF_open: the library libnetcdf isn't there, or another than this one\n");
}

} // namespace

bool tyr::has_netcdf_library()
{
    if (!state.was_tried) {
        load();
    }
    return state.is_loaded;
}

const tyr::NetcdfLibrary &tyr::nc()
{
    return state.calls;
}
