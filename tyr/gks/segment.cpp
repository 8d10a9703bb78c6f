#include "tyr/gks/device_private.h"
#include "tyr/gks/recorder_private.h"

using namespace tyr;

namespace {

int mark(const char *word, ObjectKind kind, int id)
{
    if (device_traits().keeps_calls) {
        device_keep(word, id);
        return -1;
    }
    record(kind, id);
    return 0;
}

} // namespace

int gcreate_seg(int id)
{
    return mark("SEG_CR", kObjSegmentBegin, id);
}

int gclose_seg(int id)
{
    return mark("SEG_CL", kObjSegmentEnd, id);
}

int gdelete_seg(int id)
{
    if (device_traits().keeps_calls) {
        device_keep("SEG_DE", id);
        return -1;
    }
    gobj_remove_segment(id);
    return 0;
}
