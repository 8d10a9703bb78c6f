// Any bytes as a map file, drawn on each kind of map, as lines and as areas.

#include "fuzz/input.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/map/map_file_private.h"
#include "tyr/place/domain_text.h"
#include "tyr/plot/view.h"

using namespace tyr;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin_plot();
    const std::string path = fuzz_file(fuzz_text(data, size));
    for (const char *text : {"lat:0:-95,40,-95,25,17,2,2", "merc:0:0,15,0,25,17,16.5,16.5",
                             "ps:-97,39,-97,25,17,2.3,2.3"}) {
        DomainRec domain;
        if (DOM_decode(text, &domain) < 0) {
            continue;
        }
        PLT_set_domain(&domain);
        for (const bool filled : {false, true}) {
            set_map_fill(filled);
            std::FILE *file = std::fopen(path.c_str(), "rb");
            MAP_read_file(file);
            std::fclose(file);
        }
    }
    return 0;
}
