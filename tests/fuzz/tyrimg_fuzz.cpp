// Any bytes as a file of the system's own image format, read, and written again.

#include "fuzz/input.h"
#include "tyr/image/tyrimg_private.h"

using namespace tyr;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    const std::string path = fuzz_file(fuzz_text(data, size));
    ImageRec image;
    if (tyr_read(path.c_str(), &image, 1, 1) == 1 && image.width * image.height <= kFuzzPixels &&
        tyr_read(path.c_str(), &image, 0, 1) == 1) {
        IMG_print(kMsgPrint, &image);
        IMG_write_tyr("/dev/null", &image, image.width % 2);
        IMG_free(&image);
    }
    return 0;
}
