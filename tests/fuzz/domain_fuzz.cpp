// Any bytes as a domain text; the domain projected and shown.

#include "fuzz/input.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/place/domain_text.h"
#include "tyr/plot/view.h"

using namespace tyr;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin_plot();
    const std::string text = fuzz_text(data, size);
    DomainRec domain;
    DOM_init(&domain);
    if (DOM_decode(text.c_str(), &domain) < 0 || !DOM_is_usable(&domain)) {
        return 0;
    }
    PLT_set_domain(&domain);
    for (const float place : {-90.0F, 0.0F, 45.5F, 90.0F, 1e30F}) {
        float x = 0.0F;
        float y = 0.0F;
        MAP_ll_to_xy(&x, &y, place, 3.0F * place);
        float lat = 0.0F;
        float lon = 0.0F;
        MAP_xy_to_ll(&lat, &lon, x, y);
    }
    DOM_print(0, &domain);
    return 0;
}
