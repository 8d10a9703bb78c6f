#pragma once

#include <span>
#include <string>
#include <string_view>

/// For words that nobody knows: the known ones that were probably meant.

namespace tyr {

/// Letters to add, drop or change until one text is the other, without regard to case.
size_t edit_distance(std::string_view a, std::string_view b);

/// The known words nearest to a word, at most three, between commas; empty where none is near.
std::string nearest_words(std::string_view word, std::span<const std::string_view> known);

/// Tells at warn, once for each place and word, that a word of the user means nothing there:
/// "plot_param: noredrw is not known; near it: noredraw".
void warn_unknown(std::string_view where, std::string_view word,
                  std::span<const std::string_view> known);

} // namespace tyr
