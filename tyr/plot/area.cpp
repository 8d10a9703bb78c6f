#include "tyr/plot/area.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>

#include "tyr/gks/gks.h"

namespace {

constexpr int kMessageRoom = 512;

struct State {
    std::array<float, 4> margins = {0.0F, 0.0F, 0.04F, 0.04F};
    std::array<float, 4> viewport = {};
    float full = 0.0F;
    float foot = 0.0F;
    bool labels_inside = false;
};

State state;

} // namespace

void PLT_set_margins(float left, float right, float bottom, float top)
{
    state.margins = {left, right, bottom, top};
}

void PLT_set_full(float margin)
{
    PLT_set_margins(0.0F, 0.0F, margin, margin);
    state.full = margin;
}

float PLT_get_full()
{
    return state.full;
}

void PLT_get_margins(float out[4])
{
    std::copy(state.margins.begin(), state.margins.end(), out);
}

void PLT_get_viewport(float out[4])
{
    std::copy(state.viewport.begin(), state.viewport.end(), out);
}

void PLT_set_viewport(const float in[4])
{
    std::copy_n(in, 4, state.viewport.begin());
}

void PLT_set_foot(float height)
{
    state.foot = height;
}

float PLT_get_foot()
{
    return state.labels_inside ? 0.0F : state.foot;
}

void PLT_set_labels_inside(int flag)
{
    state.labels_inside = flag != 0;
}

int PLT_labels_inside()
{
    return state.labels_inside ? 1 : 0;
}

int PLT_is_light()
{
    return ginq_invert();
}

void PLT_message(const char *format, ...)
{
    std::array<char, kMessageRoom> text;
    va_list args;
    va_start(args, format);
    std::vsnprintf(text.data(), text.size(), format, args);
    va_end(args);
    gmessage(1, text.data());
}
