#include "tyr/gks/recorder.h"
#include "tyr/paper/metafile.h"

namespace {

int mark(const char *word, ObjectKind kind, int id)
{
    if (gis_metafile()) {
        gmeta_printf("%s %d\n", word, id);
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
    if (gis_metafile()) {
        gmeta_printf("SEG_DE %d\n", id);
        return -1;
    }
    gobj_remove_segment(id);
    return 0;
}
