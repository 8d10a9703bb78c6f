// Replays the corpora of the GRIB targets and damages of each seed.

#include <gtest/gtest.h>

#include "fuzz/replay.h"

// Each target has the one name that the fuzzer calls; here they need names of their own.
#define LLVMFuzzerTestOneInput grib_target
#include "fuzz/grib_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput grib_section_target
#include "fuzz/grib_section_fuzz.cpp"
#undef LLVMFuzzerTestOneInput

TEST(GribFuzz, Streams)
{
    EXPECT_GT(fuzz_replay(grib_target, "grib", 500), 0);
}

TEST(GribFuzz, Sections)
{
    EXPECT_GT(fuzz_replay(grib_section_target, "grib_section", 300), 0);
}
