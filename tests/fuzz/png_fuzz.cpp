// Any bytes as a PNG, read, and written again.

#include "fuzz/input.h"
#include "tyr/image/png.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    const std::string path = fuzz_file(fuzz_text(data, size));
    ImageRec image;
    IMG_init(&image);
    if (IMG_read_png(path.c_str(), &image, 1) == 1 && image.width * image.height <= kFuzzPixels &&
        IMG_read_png(path.c_str(), &image, 0) == 1) {
        IMG_write_png("/dev/null", &image);
    }
    IMG_free(&image);
    return 0;
}
