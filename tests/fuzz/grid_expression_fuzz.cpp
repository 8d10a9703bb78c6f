// Any bytes as a variable expression, worked out on small grids of a latitude-longitude and a
// Lambert map.

#include <algorithm>
#include <cstdint>
#include <string>

#include "fuzz/input.h"
#include "tyr/base/missing.h"
#include "tyr/grid_math/evaluate.h"
#include "tyr/var/expression.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace fuzz_expression {

/// Every variable is there; an odd level is on the one map and an even one on the other.
inline bool find(const VarRec &wanted, GridRec *out)
{
    GRD_init(out);
    const bool is_lambert = wanted.level_value % 2 == 0;
    out->domain.proj = is_lambert ? kProjLambert : kProjLatLon;
    out->domain.clat = 40.0F;
    out->domain.clon = out->domain.plon = -95.0F;
    out->domain.nx = 5;
    out->domain.ny = 4;
    out->domain.dx = out->domain.dy = 2.0F;
    out->ltype = wanted.level_kind;
    out->level = wanted.level_value;
    out->var = wanted.var_number;
    if (GRD_alloc(out) == 0) {
        return false;
    }
    for (int i = 0; i < 20; ++i) {
        out->values[i] = i % 7 == 3 ? kMissing : 250.0F + 3.0F * static_cast<float>(i);
    }
    return true;
}

} // namespace fuzz_expression

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    const std::string text = fuzz_text(data, size);
    GridRec out[2];
    GRD_evaluate(text.c_str(), fuzz_expression::find, "grids", out);
    GRD_free(&out[0]);
    GRD_free(&out[1]);
    VAR_decode(nullptr, text.c_str());
    for (int next = 0, last = -1; next < VAR_count() && next != last;) {
        last = next;
        GRD_evaluate_item(&next, fuzz_expression::find, "grids", out);
        GRD_free(&out[0]);
        GRD_free(&out[1]);
    }
    return 0;
}
