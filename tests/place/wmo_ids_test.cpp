#include "tyr/place/wmo_ids.h"
#include "tyr/place/wmo_ranges_private.h"

using namespace tyr;

TEST(WmoIds, NumbersBecomeCodedNames)
{
    const struct {
        const char *name;
        int wmo;
        const char *id;
    } cases[] = {
        {"American block", 72469, "K2469"},
        {"two letters", 3772, "EG772"},
        {"one letter", 20046, "U0046"},
        {"one letter, far", 25913, "U5913"},
        {"first of a range", 1000, "EN000"},
        {"last of a range", 1499, "EN499"},
        {"between ranges", 1500, "01500"},
        {"region of nobody", 89001, "89001"},
        {"second range of a prefix", 41100, "OE100"},
        {"Australia", 94767, "Y4767"},
        {"zero", 0, "00000"},
        {"below zero", -1, "-00001"},
        {"too large", 100000, "100000"},
        {"none", 99999, "99999"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        char out[kWmoIdRoom];
        EXPECT_EQ(CTY_wmo_to_id(out, c.wmo), 0);
        EXPECT_STREQ(out, c.id);
    }
    char out[kWmoIdRoom];
    CTY_wmo_to_id(out, -2147483647);
    EXPECT_STREQ(out, "-2147483647"); // ten digits and a sign fill the room
}

TEST(WmoIds, CodedNamesBecomeNumbers)
{
    const struct {
        const char *name;
        const char *id;
        int result, wmo;
    } cases[] = {
        {"American block", "K2462", 0, 72462},
        {"five digits", "03772", 0, 3772},
        {"one letter", "U0046", 0, 20046},
        {"one letter, far block", "U5913", 0, 25913},
        {"in the first range", "OE400", 0, 40400},
        {"in the second range", "OE100", 0, 41100},
        {"in no range", "PH999", 0, 91999},
        {"letters", "ABCDE", -1, kNoWmo},
        {"prefix of nobody", "QQ123", -1, kNoWmo},
        {"letter within the digits", "K24A2", -1, kNoWmo},
        {"too short", "K246", -1, kNoWmo},
        {"too long", "K24621", -1, kNoWmo},
        {"empty", "", -1, kNoWmo},
        {"blank", "     ", -1, kNoWmo},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        int wmo = 5;
        EXPECT_EQ(CTY_id_to_wmo(c.id, &wmo), c.result);
        EXPECT_EQ(wmo, c.wmo);
    }
    int wmo = 0;
    EXPECT_EQ(CTY_id_to_wmo(std::string(10000, 'K').c_str(), &wmo), -1);
}

TEST(WmoIds, EveryNumberOfARegionComesBack)
{
    // Two of the regions share letters and last digits: what comes back is named the same.
    int differing = 0;
    for (const WmoRange &range : kWmoRanges) {
        for (int wmo = range.first; wmo <= range.last; ++wmo) {
            char id[kWmoIdRoom];
            char again[kWmoIdRoom];
            int back = 0;
            CTY_wmo_to_id(id, wmo);
            ASSERT_EQ(CTY_id_to_wmo(id, &back), 0) << id;
            CTY_wmo_to_id(again, back);
            ASSERT_STREQ(again, id) << wmo;
            differing += back != wmo ? 1 : 0;
        }
    }
    EXPECT_EQ(differing, 0);
}
