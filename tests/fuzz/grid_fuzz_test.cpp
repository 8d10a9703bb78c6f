// Replays the corpora of the readers of grid files and of expressions on grids, and damages of each
// seed.

#include <gtest/gtest.h>

#include "fuzz/replay.h"

// Each target has the one name that the fuzzer calls; here they need names of their own.
#define LLVMFuzzerTestOneInput grid_text_target
#include "fuzz/grid_text_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput grid_netcdf_target
#include "fuzz/grid_netcdf_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput grid_coded_target
#include "fuzz/grid_coded_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput grid_expression_target
#include "fuzz/grid_expression_fuzz.cpp"
#undef LLVMFuzzerTestOneInput

namespace {

TEST(GridFuzz, TextFiles)
{
    EXPECT_GE(fuzz_replay(grid_text_target, "grid_text", 300), 1000);
}

TEST(GridFuzz, NetcdfFiles)
{
    EXPECT_GE(fuzz_replay(grid_netcdf_target, "grid_netcdf", 500), 1000);
}

TEST(GridFuzz, CodedProducts)
{
    EXPECT_GE(fuzz_replay(grid_coded_target, "grid_coded", 500), 1000);
}

TEST(GridFuzz, Expressions)
{
    EXPECT_GE(fuzz_replay(grid_expression_target, "grid_expression", 500), 5000);
}

} // namespace
