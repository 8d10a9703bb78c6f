#include "tyr/geo/projection_words.h"

#include <cstring>

#include "tyr/base/str.h"
#include "tyr/geo/projections/form_private.h"

using namespace tyr;

namespace {

constexpr int kUnknown = -1;

/// How much of a word a form's word claims: the whole behind "=", else its beginning; 0 for none.
int claim(const char *word, const char *of_form)
{
    if (of_form[0] == '=') {
        return STR_casecmp(word, of_form + 1) == 0 ? static_cast<int>(std::strlen(word)) : 0;
    }
    const int length = static_cast<int>(std::strlen(of_form));
    return STR_ncasecmp(word, of_form, length) == 0 ? length : 0;
}

} // namespace

int DOM_proj_code(const char *word)
{
    int code = kUnknown;
    int most = 0; // "lamb" and "lat" go before "la"
    for (const ProjectionForm *form : projection_forms()) {
        for (const char *of_form : form->words) {
            const int length = of_form != nullptr ? claim(word, of_form) : 0;
            if (length > most) {
                most = length;
                code = form->code;
            }
        }
    }
    return code;
}

namespace tyr {

const char *projection_name(int code)
{
    const ProjectionForm *form = projection_form(code);
    return form != nullptr ? form->name : "";
}

} // namespace tyr
