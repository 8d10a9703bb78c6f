// Replays the corpora of the readers of upper-air reports, and damages of each seed.

#include <gtest/gtest.h>

#include "fuzz/replay.h"

// Each target has the one name that the fuzzer calls; here they need names of their own.
#define LLVMFuzzerTestOneInput upper_air_text_target
#include "fuzz/upper_air_text_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput upper_air_netcdf_target
#include "fuzz/upper_air_netcdf_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput upper_air_foreign_target
#include "fuzz/upper_air_foreign_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput sounding_target
#include "fuzz/sounding_fuzz.cpp"
#undef LLVMFuzzerTestOneInput

namespace {

TEST(UpperAirFuzz, TextForms)
{
    EXPECT_GE(fuzz_replay(upper_air_text_target, "upper_air_text", 200), 1000);
}

TEST(UpperAirFuzz, NetcdfLayouts)
{
    EXPECT_GE(fuzz_replay(upper_air_netcdf_target, "upper_air_netcdf", 500), 1000);
}

TEST(UpperAirFuzz, FormsOfOthers)
{
    EXPECT_GE(fuzz_replay(upper_air_foreign_target, "upper_air_foreign", 400), 1000);
}

TEST(UpperAirFuzz, RawSoundings)
{
    EXPECT_GE(fuzz_replay(sounding_target, "sounding", 1000), 1000);
}

} // namespace
