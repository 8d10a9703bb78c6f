#pragma once

#include <string>

/// Names of places out of the lists' own spellings.

std::string trimmed(const std::string &text);
std::string upper(std::string text);

/// A place's name for a label: capitals at the beginnings of words, no kind of airport, no blanks,
/// no accents.
std::string make_name(std::string text);
