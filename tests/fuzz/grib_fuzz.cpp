// Any bytes as a stream of GRIB products, read to its end by descriptions and by values.

#include <span>

#include "fuzz/input.h"
#include "tyr/grib/grib.h"
#include "tyr/grib/grib_stream_private.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr int kMostFields = 40;
    fuzz_begin();
    GRIB_set_max_bad(size % 2 == 0 ? -1 : 3);
    for (const int mode : {2, 0}) {
        tyr::GribStream stream(std::span(data, size), "input");
        tyr::GribHeader header;
        stream.read_header(&header);
        GridRec grid;
        GRD_init(&grid);
        for (int i = 0; i < kMostFields && stream.read_grid(&grid, mode, &i) >= 0; ++i) {
            GRD_free(&grid);
        }
        stream.rewind();
        while (stream.next_product() && stream.product_end(true) > 0) {
        }
    }
    return 0;
}
