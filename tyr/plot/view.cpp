#include "tyr/plot/view.h"

#include <array>

#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"

namespace {

constexpr int kDomainTransformation = 2;

std::array<float, 4> window()
{
    std::array<float, 4> rect = {};
    GPH_get_window(kDomainTransformation, rect.data());
    return rect;
}

} // namespace

void PLT_set_domain(const DomainRec *domain)
{
    DOM_set(domain);
    std::array<float, 4> rect = {};
    DOM_get_window(rect.data());
    gset_window(kDomainTransformation, rect.data());
    gsel_norm_tran(kDomainTransformation);
}

float DOM_window_height()
{
    const std::array<float, 4> rect = window();
    return rect[3] - rect[2];
}

float DOM_window_width()
{
    const std::array<float, 4> rect = window();
    return rect[1] - rect[0];
}
