#include "tyr/base/nearest.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <numeric>
#include <utility>
#include <vector>

namespace {

constexpr size_t kMostShown = 3;
constexpr size_t kLongestWord = 64;

int lower(char c)
{
    return std::tolower(static_cast<unsigned char>(c));
}

} // namespace

size_t tyr::edit_distance(std::string_view a, std::string_view b)
{
    b = b.substr(0, kLongestWord);
    std::array<size_t, kLongestWord + 1> row;
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i + 1;
        for (size_t j = 0; j < b.size(); ++j) {
            const size_t changed = diagonal + (lower(a[i]) == lower(b[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({row[j] + 1, row[j + 1] + 1, changed});
        }
    }
    return row[b.size()];
}

std::string tyr::nearest_words(std::string_view word, std::span<const std::string_view> known)
{
    const std::string_view sought = word.substr(0, kLongestWord);
    std::vector<std::pair<size_t, std::string_view>> near;
    for (const std::string_view k : known) {
        const size_t distance = edit_distance(sought, k);
        if (distance <= std::max<size_t>(1, std::max(sought.size(), k.size()) / 2)) {
            near.emplace_back(distance, k);
        }
    }
    std::stable_sort(near.begin(), near.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    std::string text;
    for (size_t i = 0; i < std::min(near.size(), kMostShown); ++i) {
        text += (i > 0 ? ", " : "") + std::string(near[i].second);
    }
    return text;
}
