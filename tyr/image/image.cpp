#include "tyr/image/image.h"

#include <array>
#include <string_view>

#include "tyr/base/msg.h"
#include "tyr/gks/gks.h"
#include "tyr/image/image_format_private.h"
#include "tyr/image/image_rec_private.h"

using namespace tyr;

namespace {

constexpr size_t kMagicSize = 6;

/// The first bytes of a file; empty, with a message, where it can't be opened.
bool read_magic(const char *path, std::array<char, kMagicSize> &magic)
{
    const FilePtr file = image_open(path);
    if (!file) {
        MSG_out(kMsgWarn, "IMG_read: Unable to open image file: %s\n", path);
        return false;
    }
    std::fread(magic.data(), 1, magic.size(), file.get());
    return true;
}

} // namespace

int IMG_read(const char *path, ImageRec *image, int header_only)
{
    std::array<char, kMagicSize> magic = {};
    if (!read_magic(path, magic)) {
        return 0;
    }
    IMG_init(image);
    image->depth = gis_x11() ? ginq_depth() : 0;
    const ImageFormat &format = image_format_of(std::string_view(magic.data(), magic.size()));
    const int result = format.read(path, image, header_only);
    if (result != 1) {
        MSG_out(kMsgWarn, "IMG_read: %s: not an image, or a damaged one\n", path);
    }
    if (result == 0) {
        IMG_free(image);
    }
    return result;
}

int IMG_read_file(const char *path, ImageRec *image)
{
    return IMG_read(path, image, 0);
}

int IMG_read_header(const char *path, ImageRec *image)
{
    return IMG_read(path, image, 1);
}
