// Messages that our own walk hands over: several times, compressed data, subsets, edition 4.

#include <cmath>

#include "profiler/bufr_reading.h"
#include "programs/profiler/bufr_library.h"

namespace {

constexpr BufrDescriptor kDelayed = {1, 3, 0};
constexpr BufrDescriptor kCount = {0, 31, 1};
constexpr BufrDescriptor kHeight = {0, 7, 7};
constexpr BufrDescriptor kDirection = {0, 11, 1};
constexpr BufrDescriptor kSpeed = {0, 11, 2};
constexpr uint64_t kAllOnes = ~uint64_t{0};

/// A number as a message holds it, and its bits (WMO table B, version 13).
struct Coded {
    uint64_t value;
    int bits;
};
using Subset = std::vector<Coded>;

struct Gate {
    int height;    ///< m above the sea
    int direction; ///< degrees; -1 missing
    int speed;     ///< tenths of m/s
};

const std::vector<BufrDescriptor> kHead = {{0, 1, 1}, {0, 1, 2}, {0, 5, 2}, {0, 6, 2}, {0, 7, 1}};
const std::vector<BufrDescriptor> kProfile = {{0, 4, 1},  {0, 4, 2}, {0, 4, 3}, {0, 4, 4},
                                              {0, 4, 5},  kDelayed,  kCount,    kHeight,
                                              kDirection, kSpeed};

/// A station of block 6, 51.97 N, 4.93 E, 2 m.
Subset station(int number)
{
    return {{6, 7},
            {static_cast<uint64_t>(number), 10},
            {9000 + 5197, 15},
            {18000 + 493, 16},
            {400 + 2, 15}};
}

/// A time of the 1st of April 2021 and the gates of its profile.
void add_profile(Subset *subset, int hour, int minute, const std::vector<Gate> &gates)
{
    subset->insert(subset->end(), {{2021, 12},
                                   {4, 4},
                                   {1, 6},
                                   {static_cast<uint64_t>(hour), 5},
                                   {static_cast<uint64_t>(minute), 6},
                                   {gates.size(), 8}});
    for (const Gate &g : gates) {
        subset->push_back({static_cast<uint64_t>(g.height + 1000), 17});
        subset->push_back({g.direction < 0 ? 511U : static_cast<uint64_t>(g.direction), 9});
        subset->push_back({static_cast<uint64_t>(g.speed), 12});
    }
}

std::string in_turn(const std::vector<Subset> &subsets)
{
    BitText bits;
    for (const Subset &subset : subsets) {
        for (const Coded &c : subset) {
            bits.put(c.value, c.bits);
        }
    }
    return bits.bytes();
}

/// Element by element: the least value, the bits of what is added, and that for each subset.
std::string compressed(const std::vector<Subset> &subsets)
{
    BitText bits;
    for (size_t i = 0; i < subsets[0].size(); ++i) {
        const int width = subsets[0][i].bits;
        const uint64_t missing = kAllOnes >> (64 - width);
        uint64_t least = missing;
        uint64_t most = 0;
        for (const Subset &s : subsets) {
            least = std::min(least, s[i].value);
            most = std::max(most, s[i].value);
        }
        const int added = least == most ? 0 : width;
        bits.put(least, width).put(static_cast<uint64_t>(added), 6);
        for (const Subset &s : subsets) {
            bits.put(s[i].value == missing ? kAllOnes : s[i].value - least, added);
        }
    }
    return bits.bytes();
}

struct Expected {
    const char *id;
    int hour, minute;
    std::vector<Gate> gates;
};

class BufrOfOthers : public Bufr {
  protected:
    void SetUp() override
    {
        if (tyr::bufr_library_version().empty()) {
            GTEST_SKIP() << "built without ecCodes";
        }
    }

    void expect_reports(const BufrMessage &message, const std::vector<Expected> &expected)
    {
        const std::string bytes = bufr_bytes(message);
        ASSERT_TRUE(tyr::bufr_needs_library(bytes));
        const auto reports = tyr::bufr_library_read(bytes, "made.bufr");
        ASSERT_EQ(reports.size(), expected.size());
        for (size_t i = 0; i < expected.size(); ++i) {
            SCOPED_TRACE(i);
            const ProfilerRecord &r = reports[i].record;
            EXPECT_STREQ(r.id, expected[i].id);
            EXPECT_NEAR(r.lat, 51.97F, 1e-4F);
            EXPECT_NEAR(r.lon, 4.93F, 1e-4F);
            EXPECT_EQ(reports[i].date.year, 2021);
            EXPECT_EQ(reports[i].date.hour, expected[i].hour);
            EXPECT_EQ(reports[i].date.minute, expected[i].minute);
            expect_gates(r, expected[i].gates);
        }
    }

  private:
    static void expect_gates(const ProfilerRecord &r, const std::vector<Gate> &gates)
    {
        constexpr double kRadian = 57.29577951308232;
        ASSERT_EQ(static_cast<size_t>(r.num_level), gates.size());
        for (size_t i = 0; i < gates.size(); ++i) {
            SCOPED_TRACE(i);
            EXPECT_NEAR(r.level[i].z, gates[i].height - 2.0, 1e-3);
            if (gates[i].direction < 0) {
                EXPECT_EQ(r.level[i].u, kMissing);
                continue;
            }
            const double speed = gates[i].speed / 10.0;
            EXPECT_NEAR(r.level[i].u, -speed * std::sin(gates[i].direction / kRadian), 1e-3);
            EXPECT_NEAR(r.level[i].v, -speed * std::cos(gates[i].direction / kRadian), 1e-3);
        }
    }
};

const std::vector<Gate> kLow = {{200, 90, 50}, {300, 180, 65}, {400, -1, 70}};
const std::vector<Gate> kHigh = {{250, 270, 102}, {350, 359, 118}, {450, 33, 7}};

TEST_F(BufrOfOthers, SeveralTimesOfAMessageAreReports)
{
    Subset subset = station(348);
    add_profile(&subset, 11, 30, kLow);
    add_profile(&subset, 12, 0, {kHigh[0]});
    add_profile(&subset, 12, 30, kHigh);
    expect_reports(
        {.descriptors = kHead + kProfile + kProfile + kProfile, .data = in_turn({subset})},
        {{"06348", 11, 30, kLow}, {"06348", 12, 0, {kHigh[0]}}, {"06348", 12, 30, kHigh}});
}

TEST_F(BufrOfOthers, SubsetsAreStations)
{
    Subset first = station(348);
    Subset second = station(610);
    add_profile(&first, 12, 0, kLow);
    add_profile(&second, 12, 15, kHigh);
    const std::vector<Expected> expected = {{"06348", 12, 0, kLow}, {"06610", 12, 15, kHigh}};
    expect_reports(
        {.descriptors = kHead + kProfile, .data = in_turn({first, second}), .subsets = 2},
        expected);
    expect_reports({.descriptors = kHead + kProfile,
                    .data = compressed({first, second}),
                    .subsets = 2,
                    .flag = 0xC0},
                   expected);
}

TEST_F(BufrOfOthers, CompressedSubsetsWithSeveralTimes)
{
    Subset first = station(348);
    Subset second = station(610);
    add_profile(&first, 11, 0, kLow);
    add_profile(&first, 12, 0, kHigh);
    add_profile(&second, 11, 0, kHigh);
    add_profile(&second, 12, 0, kLow);
    expect_reports({.descriptors = kHead + kProfile + kProfile,
                    .data = compressed({first, second}),
                    .subsets = 2,
                    .flag = 0xC0},
                   {{"06348", 11, 0, kLow},
                    {"06348", 12, 0, kHigh},
                    {"06610", 11, 0, kHigh},
                    {"06610", 12, 0, kLow}});
}

TEST_F(BufrOfOthers, UnequalCountsOfGates)
{
    Subset first = station(348);
    Subset second = station(610);
    add_profile(&first, 12, 0, kLow);
    add_profile(&second, 12, 0, {kHigh[0]});
    expect_reports(
        {.descriptors = kHead + kProfile, .data = in_turn({first, second}), .subsets = 2},
        {{"06348", 12, 0, kLow}, {"06610", 12, 0, {kHigh[0]}}});
}

TEST_F(BufrOfOthers, ACutMessageIsToldAndTheNextIsRead)
{
    Subset subset = station(348);
    add_profile(&subset, 12, 0, kLow);
    const std::string whole =
        bufr_bytes({.descriptors = kHead + kProfile, .data = in_turn({subset})});
    BufrMessage cut = {.descriptors = kHead + kProfile, .data = in_turn({subset}).substr(0, 12)};
    std::vector<tyr::LibraryReport> reports;
    const std::string told =
        told_by([&] { reports = tyr::bufr_library_read(bufr_bytes(cut) + whole, "made.bufr"); });
    EXPECT_EQ(reports.size(), 1U);
    EXPECT_NE(told.find("made.bufr"), std::string::npos) << told;
    EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 1) << told;
}

} // namespace
