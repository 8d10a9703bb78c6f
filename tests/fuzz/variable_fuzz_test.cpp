// Replays the corpora of variable expressions, levels and the files behind them, and thousands of
// damages of each seed; under the sanitizers nothing may show.

#include <string>

#include <gtest/gtest.h>

#include "fuzz/replay.h"
#include "support/temp_dir.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/var/base_stack.h"
#include "tyr/var/catalogue.h"
#include "tyr/var/sources.h"
#include "tyr/var/units.h"
#include "tyr/var/var_file.h"
#include "tyr/var/var_menu.h"

// Each target has the one name that the fuzzer calls; here they need names of their own.
#define LLVMFuzzerTestOneInput variable_target
#include "fuzz/variable_fuzz.cpp"
#undef LLVMFuzzerTestOneInput
#define LLVMFuzzerTestOneInput level_target
#include "fuzz/level_fuzz.cpp"
#undef LLVMFuzzerTestOneInput

namespace {

constexpr int kDamages = 3000;

class VariableFuzz : public testing::Test {
  protected:
    void SetUp() override
    {
        PRM_clear(kMissingInt);
        MSG_set_mask(0, 0); // refusals are expected by the thousand
        RES_put("file_path", folder_.path().c_str());
        folder_.write("variable.lup", read_file(TYR_SOURCE_DIR "/data/variable.lup"));
        folder_.write("test.var", "ping P 1 pong\npong P 1 ping\ntwo T 1 a:knt,b{ping}\n"
                                  "deep D 1 two,c,two\nself S 1 self:knt\n");
        VAR_read_varfile();
        VAR_open_file("test.var");
    }

    TempDir folder_;
};

} // namespace

TEST_F(VariableFuzz, Expressions)
{
    EXPECT_GT(fuzz_replay(variable_target, "variable", kDamages), 10 * kDamages);
    EXPECT_EQ(VAR_base_index(), -1);
}

TEST_F(VariableFuzz, LevelsAndTimes)
{
    EXPECT_GT(fuzz_replay(level_target, "level", kDamages), 10 * kDamages);
}

TEST_F(VariableFuzz, DamagedDataFiles)
{
    const char *names[]{"profiler.var", "variable.lup", "source.lup", "mod_name.lup", "units.lup"};
    std::mt19937 random(20261122U);
    for (const char *name : names) {
        SCOPED_TRACE(name);
        const std::string whole = read_file(std::string(TYR_SOURCE_DIR "/data/") + name);
        ASSERT_FALSE(whole.empty());
        for (int i = 0; i < 60; ++i) {
            std::string bytes = i < 20 ? whole.substr(0, whole.size() * i / 20) : whole;
            for (int change = 0; i >= 20 && change < 40; ++change)
                bytes[random() % bytes.size()] = static_cast<char>(random());
            folder_.write(name, i % 3 == 0 ? fuzz_damage(bytes, random) : bytes);
            VAR_read_varfile();
            VAR_open_file("profiler.var");
            VAR_read_menu();
            const char text[] = "wbrb,hel,205,ens\\[3\\]temp";
            variable_target(reinterpret_cast<const uint8_t *>(text), sizeof text);
            char out[kModelTextSize];
            VAR_source(out, 98);
            VAR_model(out, 7096 + i % 2);
            UNIT_forget();
            UNIT_convert("C", "F", 20.0F);
            UNIT_convert("m/s", "knt", 20.0F);
        }
    }
}
