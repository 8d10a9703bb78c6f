// Any bytes as an XWD file, read, and written again in each way.

#include "fuzz/input.h"
#include "tyr/image/gif.h"
#include "tyr/image/tyrimg.h"
#include "tyr/image/xwd.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    static std::FILE *const nowhere = std::fopen("/dev/null", "w");
    std::FILE *const errors = stderr; // this reader tells its failures there
    stderr = nowhere;
    const std::string path = fuzz_file(fuzz_text(data, size));
    ImageRec image;
    IMG_init(&image);
    if (IMG_read_xwd(path.c_str(), &image, 1) == 1 && image.width * image.height <= kFuzzPixels) {
        image.depth = 0;
        if (IMG_read_xwd(path.c_str(), &image, 0) == 1) {
            IMG_write_xwd("/dev/null", &image);
            IMG_write_tyr("/dev/null", &image, 1);
            GIF_write("/dev/null", &image);
        }
    }
    IMG_free(&image);
    stderr = errors;
    return 0;
}
