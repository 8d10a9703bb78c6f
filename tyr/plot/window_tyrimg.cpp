#include "tyr/plot/window_tyrimg.h"

#include <string>

#include "tyr/base/str.h"
#include "tyr/image/tyrimg_private.h"
#include "tyr/plot/area.h"
#include "tyr/plot/labels.h"
#include "tyr/x11/x11_image.h"

using namespace tyr;

namespace {

constexpr float kNoMap = 0.7F; ///< a full margin beyond it leaves no picture to place

} // namespace

int IMG_write_window(const char *path)
{
    ImageRec image;
    if (gget_image(&image) == 0) {
        return 0;
    }
    if (!(PLT_get_full() > kNoMap)) {
        DOM_get(&image.domain);
        image_fit_domain(&image.domain, image.width, image.height);
    }
    const std::string info = std::string(PLT_get_label(kLabelUpperLeft, 0)) + " [" +
                             PLT_get_label(kLabelLowerRight, 0) + "]";
    STR_copy(image.info, sizeof image.info, info.c_str());
    STR_copy(image.date_text, sizeof image.date_text, PLT_get_label(kLabelUpperRight, 0));
    const int result = IMG_write_tyr(path, &image, 0);
    IMG_free(&image);
    return result;
}
