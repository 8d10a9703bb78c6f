// Any bytes as a GIF, read, and written again.

#include "fuzz/input.h"
#include "tyr/image/gif.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    const std::string path = fuzz_file(fuzz_text(data, size));
    ImageRec image;
    IMG_init(&image);
    if (GIF_read(path.c_str(), &image, 1) == 1 && image.width * image.height <= kFuzzPixels) {
        GIF_read(path.c_str(), &image, 0);
        gset_gif_interlace(image.width % 2);
        gset_gif_transparent(image.height % 2);
        GIF_write("/dev/null", &image);
    }
    IMG_free(&image);
    return 0;
}
