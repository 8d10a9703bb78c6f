// The calls that a file keeps: the metafile is the device that takes them.

#include "tyr/gks/device_private.h"
#include "tyr/paper/metafile.h"
#include "tyr/paper/output_private.h"

namespace tyr {

void device_keep(const char *word, int value)
{
    gmeta_printf("%s %d\n", word, value);
}

void device_keep(const char *word, float value)
{
    gmeta_printf("%s %f\n", word, value);
}

void device_keep(const char *word, const int pair[2])
{
    gmeta_printf("%s %d %d\n", word, pair[0], pair[1]);
}

void device_keep(const char *word, const float pair[2])
{
    gmeta_printf("%s %f,%f\n", word, pair[0], pair[1]);
}

void device_keep_rect(const char *word, int number, const float rect[4])
{
    gmeta_rect(word, number, rect);
}

void device_keep_region(const float rect[4])
{
    gmeta_printf("CLR_REG %f %f %f %f\n", rect[0], rect[2], rect[1], rect[3]);
}

void device_keep_colour(int ws, int index, const float rgb[3])
{
    gmeta_printf("CLR %d %d %f %f %f\n", ws, index, rgb[0], rgb[1], rgb[2]);
}

void device_keep_polyline(int n, const float *points)
{
    gmeta_polyline(n, points);
}

void device_keep_area(int n, const float *points)
{
    gmeta_points("FA", n, points, true);
}

void device_keep_markers(int n, const float *points)
{
    gmeta_points("PM", n, points, true);
}

void device_keep_text(const float pos[2], const char *text)
{
    gmeta_printf("TE %f,%f %s\n", pos[0], pos[1], comment_text(text).c_str());
}

} // namespace tyr
