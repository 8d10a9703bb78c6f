#pragma once

#include <string>
#include <string_view>

#include "tyr/names/name_template_private.h"

namespace tyr {

/// What a user's text gave, taken apart by a template.
struct TakenName {
    std::string name;      ///< the full name
    DateRec date;          ///< the fields read, over those that stood
    int step;              ///< finest date step, seconds; kMissingInt for none
    std::string extension; ///< as given, or as read
};

/// Walks a user's text and a template together: what the text leaves out is supplied from the
/// template, a directory of the text replaces the template's path, date digits are read. From the
/// first character on that doesn't fit the rest of the text is copied.
TakenName take_name(std::string_view text, std::string_view input, const TemplateValues &values,
                    const DateRec &date);

} // namespace tyr
