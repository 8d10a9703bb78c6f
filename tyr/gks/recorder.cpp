#include "tyr/gks/recorder.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <list>
#include <memory>
#include <string>

#include "tyr/base/str.h"
#include "tyr/gks/device_private.h"
#include "tyr/gks/recorder_private.h"

using namespace tyr;

namespace {

constexpr int kCallsBetweenEvents = 500;

struct Stored {
    RedrawObject object{};
    std::unique_ptr<std::byte[]> block;
};

struct State {
    std::list<Stored> objects;
    ObjectStart start;
    int calls = 0;
    void (*pump)() = nullptr;
};

State state;

void free_argument(const RedrawObject &object)
{
    if (object.kind == kObjFunction) {
        std::free(static_cast<ObjectFunction *>(object.data)->argument);
    }
}

bool is_marker(const Stored &stored, int kind, int id)
{
    return stored.object.kind == kind && stored.object.value == id;
}

void relink()
{
    RedrawObject *before = nullptr;
    for (Stored &stored : state.objects) {
        stored.object.next = nullptr;
        if (before != nullptr) {
            before->next = &stored.object;
        }
        before = &stored.object;
    }
}

} // namespace

void gobj_init()
{
    gobj_clear();
    state.calls = 0;
    const char *wish = std::getenv("tyrredraw");
    const std::string text = wish != nullptr ? wish : device_default("redraw");
    if (STR_casecmp(text.c_str(), "no") == 0) {
        gset_recording(0);
    }
}

void *gobj_new(int kind, int value, int size, const void *data)
{
    if (++state.calls % kCallsBetweenEvents == 0) {
        gobj_pump();
    }
    if (!kernel().ws.recording) {
        return nullptr;
    }
    Stored stored;
    stored.object = {kind, nullptr, value, nullptr};
    if (size > 0) {
        stored.block = std::make_unique<std::byte[]>(static_cast<size_t>(size));
        if (data != nullptr) {
            std::memcpy(stored.block.get(), data, static_cast<size_t>(size));
        }
        stored.object.data = stored.block.get();
    }
    RedrawObject *last = state.objects.empty() ? nullptr : &state.objects.back().object;
    state.objects.push_back(std::move(stored));
    if (last != nullptr) {
        last->next = &state.objects.back().object;
    }
    return state.objects.back().object.data;
}

void gobj_add_function(void (*function)(void *), void *argument)
{
    const ObjectFunction call{function, argument};
    if (gobj_new(kObjFunction, 1, sizeof call, &call) == nullptr) {
        std::free(argument);
    }
}

void gobj_clear()
{
    for (const Stored &stored : state.objects) {
        free_argument(stored.object);
    }
    state.objects.clear();
    const KernelState &k = kernel();
    state.start = {k.tran, k.line, k.marker, k.fill, k.text};
}

RedrawObject *gobj_first()
{
    return state.objects.empty() ? nullptr : &state.objects.front().object;
}

int gobj_count()
{
    return static_cast<int>(state.objects.size());
}

const ObjectStart &tyr::gobj_start()
{
    return state.start;
}

void gobj_set_pump(void (*pump)())
{
    state.pump = pump;
}

void gobj_pump()
{
    if (state.pump != nullptr) {
        state.pump();
    }
}

void gobj_remove_segment(int id)
{
    auto first = state.objects.begin();
    while (first != state.objects.end() && !is_marker(*first, kObjSegmentBegin, id)) {
        ++first;
    }
    auto last = first;
    while (last != state.objects.end() && !is_marker(*last, kObjSegmentEnd, id)) {
        free_argument(last->object);
        ++last;
    }
    if (last != state.objects.end()) {
        ++last;
    }
    state.objects.erase(first, last);
    relink();
}

void tyr::record(ObjectKind kind, int value)
{
    gobj_new(kind, value, 0, nullptr);
}

void tyr::record(ObjectKind kind, int value, int n, const float *numbers)
{
    gobj_new(kind, value, n * static_cast<int>(sizeof(float)), numbers);
}

void tyr::record(ObjectKind kind, const int pair[2])
{
    gobj_new(kind, 1, 2 * static_cast<int>(sizeof(int)), pair);
}
