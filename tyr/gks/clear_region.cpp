#include "tyr/gks/device_private.h"
#include "tyr/gks/recorder_private.h"
#include "tyr/gks/state_private.h"

using namespace tyr;

int gclear_region(const float rect[4])
{
    if (device_traits().keeps_calls) {
        device_keep_region(rect);
        return 0;
    }
    record(kObjClearRegion, 1, 4, rect);
    const float corners[4] = {rect[0], rect[2], rect[1], rect[3]};
    const DevicePoint low = device_point(corners);
    const DevicePoint high = device_point(corners + 2);
    const float on_device[4] = {low.x, high.x, low.y, high.y};
    device_clear_region(on_device);
    return 0;
}
