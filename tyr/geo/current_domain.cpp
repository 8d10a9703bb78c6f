#include "tyr/geo/current_domain_private.h"
#include "tyr/geo/projections/form_private.h"

namespace tyr {

CurrentDomain &current_domain()
{
    static CurrentDomain state = {.form = &kNoneForm};
    return state;
}

} // namespace tyr
