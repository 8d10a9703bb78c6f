#pragma once

#include "tyr/names/name_template_private.h"

namespace tyr {

/// The mask of all names, for a shell: only its own wildcards are special, the rest is quoted.
std::string shell_mask(std::string_view text, const TemplateValues &values);

} // namespace tyr
