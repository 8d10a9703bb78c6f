#include "tyr/base/nearest.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <numeric>
#include <set>
#include <utility>
#include <vector>

#include "tyr/base/msg.h"

namespace {

constexpr size_t kMostShown = 3;
constexpr size_t kLongestWord = 64;
constexpr size_t kMostTold = 1000; ///< words that are remembered as told

struct State {
    std::set<std::string> told;
};

State state;

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
        const bool is_new = std::none_of(near.begin(), near.end(),
                                         [k](const auto &other) { return other.second == k; });
        if (is_new && distance <= std::max<size_t>(1, std::max(sought.size(), k.size()) / 2)) {
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

void tyr::warn_unknown(std::string_view where, std::string_view word,
                       std::span<const std::string_view> known)
{
    const std::string start = std::string(where) + ": " + std::string(word.substr(0, kLongestWord));
    if (state.told.size() >= kMostTold || !state.told.insert(start).second) {
        return;
    }
    const std::string near = nearest_words(word, known);
    MSG_out(kMsgWarn, "%s is not known%s%s\n", start.c_str(),
            near.empty() ? "" : "; near it: ", near.c_str());
}
