#include <string>

#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/gks/colour_private.h"
#include "tyr/gks/colour_table.h"
#include "tyr/gks/device_private.h"
#include "tyr/gks/state_private.h"
#include "tyr/x11/x11_colour.h"
#include "tyr/x11/x11_default.h"
#include "tyr/x11/x11_window.h"

using namespace tyr;

namespace {

/// Words that leave the background to the screen.
bool is_no_background(const std::string &word)
{
    for (const char *none : {"none", "def", "over"}) {
        if (STR_casecmp(word.c_str(), none) == 0) {
            return true;
        }
    }
    return false;
}

} // namespace

void gcolor_background()
{
    if (device_traits().paper != nullptr) {
        const float *paper = device_traits().paper();
        colour_set_background(paper[0], paper[1], paper[2]);
        return;
    }
    if (!gis_x11()) {
        return;
    }
    const char *resource = RES_get("background");
    std::string word = resource != nullptr ? resource : gx_default("background");
    const bool is_none = is_no_background(word);
    if (is_none) {
        word.clear();
    }
    float rgb[3] = {0.0F, 0.0F, 0.0F};
    const int index = word.empty() ? kColourNone : CLR_lookup(word.c_str());
    const bool is_in_table = index >= 0 && index < CLR_count();
    if (is_in_table) {
        CLR_get_rgb(index, &rgb[0], &rgb[1], &rgb[2]);
    }
    gx_set_background(is_in_table, word, ginq_invert() != 0, rgb);
    colour_set_background(rgb[0], rgb[1], rgb[2]);
    if (gis_display() && !is_none) {
        gx_clear();
    }
}
