#include "tyr/x11/x11_band.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "tyr/x11/x11_band_private.h"
#include "tyr/x11/x11_primitives.h"
#include "tyr/x11/x11_state_private.h"

using namespace tyr;

namespace {

using Place = std::array<short, 2>;

enum FixedAxis { kFixedNone, kFixedX, kFixedY };

struct State {
    int kind = kBandNone;
    bool is_down = false; ///< between press and release
    Place start{};
    std::optional<Place> end; ///< none until a figure has been drawn
    std::array<Place, 3> fan{};
    int fan_points = 0;
    int fixed = kFixedNone;
    std::optional<std::array<Place, 2>> limits;
};

State state;

Place place_of(float x, float y)
{
    return {static_cast<short>(std::trunc(gwc_to_dc_x(x) + 0.5F)),
            static_cast<short>(std::trunc(gwc_to_dc_y(y) + 0.5F))};
}

Place pixel(int x, int y)
{
    return {static_cast<short>(std::clamp(x, -30000, 30000)),
            static_cast<short>(std::clamp(y, -30000, 30000))};
}

Place within_limits(Place p)
{
    if (state.limits) {
        const auto &[low, high] = *state.limits;
        p[0] = std::clamp(p[0], low[0], high[0]);
        p[1] = std::clamp(p[1], low[1], high[1]);
    }
    return p;
}

void draw_fan()
{
    const Window window = x11().window;
    for (int i = 1; i < state.fan_points; i++) {
        gdraw_band_line(window, state.fan[0].data(), state.fan[static_cast<size_t>(i)].data());
    }
}

/// The figure with its present end.
void draw()
{
    const Window window = x11().window;
    switch (state.kind) {
    case kBandLine:
        gdraw_band_line(window, state.start.data(), state.end->data());
        break;
    case kBandBox:
        gdraw_band_box(window, state.start.data(), state.end->data());
        break;
    case kBandFan:
        draw_fan();
        break;
    default:
        break;
    }
}

/// Takes a new end; the first point of a fan follows it where its axis isn't fixed.
void set_end(Place end)
{
    state.end = end;
    if (state.fixed != kFixedX) {
        state.fan[0][0] = end[0];
    }
    if (state.fixed != kFixedY) {
        state.fan[0][1] = end[1];
    }
}

bool is_up()
{
    return state.kind != kBandNone && state.is_down && x11().window != 0;
}

} // namespace

void gset_band(int kind)
{
    state.kind = kind;
}

void gset_band_points(const float *world, int n, int fixed)
{
    state.fan_points = std::clamp(n, 0, static_cast<int>(state.fan.size()));
    for (int i = 0; i < state.fan_points; i++) {
        state.fan[static_cast<size_t>(i)] = place_of(world[2 * i], world[2 * i + 1]);
    }
    state.fixed = fixed;
}

void gset_band_limits(const float world[4])
{
    const Place a = place_of(world[0], world[2]);
    const Place b = place_of(world[1], world[3]);
    state.limits = {
        Place{std::min(a[0], b[0]), std::min(a[1], b[1])},
        Place{std::max(a[0], b[0]), std::max(a[1], b[1])}
    };
}

void tyr::band_reset()
{
    state = State{};
}

void tyr::band_press(int x, int y)
{
    state.start = pixel(x, y);
    state.end.reset();
    state.is_down = true;
}

void tyr::band_move(int x, int y)
{
    if (!is_up()) {
        return;
    }
    if (ginq_gc_function() != GXxor) {
        gset_gc_function(GXxor);
    }
    if (state.end) {
        draw(); // erases it
    }
    set_end(within_limits(pixel(x, y)));
    draw();
    gsync();
}

void tyr::band_release(int x, int y)
{
    if (is_up()) {
        if (state.end) {
            gset_gc_function(GXxor);
            draw();
        }
        gset_gc_function(GXcopy);
        set_end(within_limits(pixel(x, y)));
        draw();
        gsync();
    }
    band_reset();
}
