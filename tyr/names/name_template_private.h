#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tyr/base/date.h"

// The language of file name templates: its elements, and the two texts that are made from it. What
// a user typed is taken apart by timefile/name_take.h.

namespace tyr {

enum class TemplateKind {
    literal,
    star,      ///< anything
    open,      ///< `{`: a part that the user's input needn't supply
    close,     ///< `}`
    percent,   ///< `%%`
    date,      ///< Y y m b d j h n; the number is a step
    extension, ///< `%e`
    path,      ///< a path letter; `name` is its resource
    resource,  ///< `%{name}`
    word,      ///< `%{name}` inside a name: neither in front of it all nor followed by `/`
    key        ///< any other letter; the number is a width
};

struct TemplateElement {
    TemplateKind kind;
    char letter;      ///< of a literal the character itself
    int number = 0;   ///< step or width; 0 for none
    std::string name; ///< resource of a path or resource element
    size_t end = 0;   ///< place in the template behind the element
};

std::vector<TemplateElement> template_elements(std::string_view text);

/// What the elements of a template stand for, the date apart.
struct TemplateValues {
    std::array<std::string, 256> keys; ///< by letter
    std::string extension;
    std::optional<std::string> extracted; ///< takes the place of every path
    DateRec user;                         ///< the user's hour
};

/// The finest date step so far, in seconds; kMissingInt for none.
int finer_step(int so_far, int step);
/// Seconds of the unit of a date element; 0 for years and months.
int date_element_unit(char letter);

/// What stands for a date element in a mask.
const char *date_element_mask(char letter);

/// The value of a path or resource element.
std::string template_path(const TemplateElement &element);

/// A name for a date. The fields written go to `file_date`, the finest step to `step`.
std::string compose_name(std::string_view text, const TemplateValues &values, const DateRec &date,
                         DateRec &file_date, int &step);

} // namespace tyr
