#ifdef TYR_HAVE_ECCODES

#include "programs/profiler/eccodes_calls.h"

#include <dlfcn.h>

#include "tyr/base/msg.h"

namespace {

constexpr const char *kNames[] = {"libeccodes.so.0", "libeccodes.so"};

struct State {
    tyr::EccodesCalls calls;
    bool is_loaded = false;
    bool was_tried = false;
};

State state;

template <class Function> bool bind(void *library, const char *name, Function *function)
{
    *function = reinterpret_cast<Function>(dlsym(library, name));
    return *function != nullptr;
}

bool load(const char *name)
{
    void *library = dlopen(name, RTLD_LAZY | RTLD_LOCAL);
    bool is_whole = library != nullptr;
#define TYR_ECCODES_BIND(call)                                                                     \
    is_whole = is_whole && bind(library, "codes_" #call, &state.calls.call);
    TYR_ECCODES_CALLS(TYR_ECCODES_BIND)
#undef TYR_ECCODES_BIND
    return is_whole;
}

} // namespace

bool tyr::has_eccodes()
{
    if (!state.was_tried) {
        state.was_tried = true;
        for (const char *name : kNames) {
            state.is_loaded = state.is_loaded || load(name);
        }
        if (!state.is_loaded) {
            MSG_out(kMsgWarn, "PROF_read: the library libeccodes isn't there\n");
        }
    }
    return state.is_loaded;
}

const tyr::EccodesCalls &tyr::codes()
{
    return state.calls;
}

#endif
