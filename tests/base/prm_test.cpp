#include "tyr/base/missing.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/start/convert.h"

namespace {

TEST(Prm, SlotsHoldNumbersInsideTheTable)
{
    PRM_clear(kMissingInt);
    EXPECT_EQ(PRM_get(kPrmPlotType), kMissingInt);
    EXPECT_EQ(PRM_is_batch(), 0);
    EXPECT_EQ(PRM_set(29, 5), 0);
    EXPECT_EQ(PRM_get(29), 5);
    for (const int slot : {-1, 30, 1000}) {
        EXPECT_EQ(PRM_set(slot, 1), -1);
        EXPECT_EQ(PRM_get(slot), 0);
    }
}

TEST(Prm, DrawListTurnsComponentsOnAndOff)
{
    // text, six texts, data, map, grid, sum, border, all
    const struct {
        const char *value;
        std::vector<int> slots;
    } cases[] = {
        {"none", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {"all", {6, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 17}},
        {"map", {0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 1}},
        {"MAP,data", {0, 0, 0, 0, 0, 0, 0, 1, 1, 0, 0, 0, 2}},
        {"-text", {0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 0, 4}},
        {"text", {6, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 1, 13}},
        {"-text,+text_ur", {1, 0, 0, 1, 0, 0, 0, 1, 1, 1, 1, 0, 6}},
        {"-sum,none,+all", {6, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 17}},
        {"-nothing", {6, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 17}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.value);
        PRM_set_draw(kDrawAll, 1);
        EXPECT_EQ(RES_convert(c.value, nullptr, kResDraw), 1);
        std::vector<int> slots;
        for (int i = 0; i < kDrawSlots; ++i) {
            slots.push_back(PRM_get_draw(i));
        }
        EXPECT_EQ(slots, c.slots);
    }
}

} // namespace
