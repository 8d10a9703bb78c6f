#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "tyr/paper/fixed_private.h"

namespace {

/// Holds the text against the C library's for all digits that devices write.
void expect_as_printf(double value)
{
    for (const int digits : {0, 1, 2, 3, 6, 9}) {
        char text[tyr::kFixedRoom];
        char wanted[tyr::kFixedRoom];
        const std::string told(text, tyr::write_fixed({value, digits}, text));
        std::snprintf(wanted, sizeof wanted, "%.*f", digits, value);
        ASSERT_EQ(told, wanted) << std::bit_cast<uint64_t>(value) << " with " << digits;
    }
}

} // namespace

TEST(Fixed, TiesRoundAsPrintfRoundsThem)
{
    for (int i = -4000; i <= 4000; ++i) {
        expect_as_printf(static_cast<float>(i) / 8.0F); // 0.125, 0.375, 0.5: exact ties
        expect_as_printf(static_cast<float>(i) / 1024.0F);
        expect_as_printf(static_cast<float>(i) * 0.01F); // just beside one
    }
}

TEST(Fixed, OddValuesReadAsPrintfWritesThem)
{
    for (const double v : {0.0,
                           -0.0,
                           -0.001,
                           0.004999999,
                           0.005,
                           0.1,
                           -0.05,
                           1e9,
                           -1e15,
                           9.99999e14,
                           1e15,
                           1e22,
                           9007199254740993.0,
                           8388607.5,
                           16777215.0,
                           static_cast<double>(FLT_MAX),
                           -static_cast<double>(FLT_MAX),
                           static_cast<double>(FLT_MIN),
                           static_cast<double>(FLT_TRUE_MIN),
                           DBL_MAX,
                           DBL_MIN,
                           2.675,
                           1.005}) {
        expect_as_printf(v);
    }
    expect_as_printf(HUGE_VAL);
    expect_as_printf(-HUGE_VAL);
}

TEST(Fixed, AnyFloatAndDoubleReadsAsPrintfWritesIt)
{
    std::mt19937_64 random(20261123U);
    for (int i = 0; i < 100000; ++i) {
        const auto bits = static_cast<uint32_t>(random());
        const float value = std::bit_cast<float>(bits);
        if (value == value) {
            expect_as_printf(value);
        }
        expect_as_printf(static_cast<float>(random() % 2000000) / 1000.0F); // on a page
        expect_as_printf(static_cast<double>(random() % 2000000) / 1000.0);
    }
}
