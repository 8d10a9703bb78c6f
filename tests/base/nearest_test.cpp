#include <gtest/gtest.h>

#include "tyr/base/nearest.h"

namespace {

TEST(Nearest, CountsEdits)
{
    const struct {
        const char *a;
        const char *b;
        size_t distance;
    } cases[] = {
        {"kitten", "sitting", 3},
        {"wbrb", "WBRB", 0},
        {"", "abc", 3},
        {"wspd", "wsdp", 2},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(tyr::edit_distance(c.a, c.b), c.distance) << c.a << " " << c.b;
    }
}

TEST(Nearest, NamesTheLikelyWordsNearestFirst)
{
    constexpr std::string_view kKnown[] = {"city", "wspd", "wbrb", "wbrbc"};
    EXPECT_EQ(tyr::nearest_words("wbrbb", kKnown), "wbrb, wbrbc");
    EXPECT_EQ(tyr::nearest_words("xyzzy", kKnown), "");
}

} // namespace
