#pragma once

#include <optional>
#include <string_view>

/// Takes a decimal number from the front of a text, behind blanks, and moves the text behind it.
/// Nothing, and an unmoved text, where none stands; no words, no hexadecimal forms.
std::optional<float> VAR_take_real(std::string_view *text);

/// The same for a whole number; one beyond the range of int is cut to it.
std::optional<int> VAR_take_int(std::string_view *text);

/// Integer part of a number, cut to the range of int; 0 for no number.
int VAR_whole(double x);

/// The text without blanks at its ends.
std::string_view VAR_trim(std::string_view text);
