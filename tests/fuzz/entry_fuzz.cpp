// Any bytes as an entry of the list of maps, and as a list.

#include "fuzz/input.h"
#include "tyr/geo/domain.h"
#include "tyr/map/map_entry_private.h"
#include "tyr/place/domain_text.h"
#include "tyr/plot/view.h"

using namespace tyr;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin_plot();
    const std::string text = fuzz_text(data, size);
    if (text.find('|') != std::string::npos) {
        return 0; // a command isn't run by chance
    }
    DomainRec domain;
    DOM_decode("ps:-97,39,-97,25,17,2.3,2.3", &domain);
    PLT_set_domain(&domain);
    start_map_entries(kMapUnder + kMapOver + kMapUnmarked);
    MAP_process(text.c_str());
    MAP_process(fuzz_file(text).c_str());
    return 0;
}
