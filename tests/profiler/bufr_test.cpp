#include "profiler/bufr_reading.h"

namespace {

TEST_F(Bufr, ReadsWhereTheStationStands)
{
    const ProfilerRecord r = read_one(kPlace, place(469));
    EXPECT_STREQ(r.id, "72469");
    EXPECT_NEAR(r.lat, 40.01, 1e-4);
    EXPECT_NEAR(r.lon, -95.5, 1e-4);
    EXPECT_EQ(r.elev, 300.0F);
    EXPECT_EQ(r.num_level, 0);
    EXPECT_EQ(r.sfc_t, kMissing); // nothing of the surface is in this layout
    EXPECT_STREQ(read_one(kPlace, place(7)).id, "72007");
    const std::string behind_optional =
        bufr_bytes({.descriptors = kPlace, .data = place(469).bytes(), .optional = "anything"});
    EXPECT_EQ(ids(read(kStar + behind_optional)), std::vector<std::string>{"72469"});
}

TEST_F(Bufr, LeavesOutValuesFrom200On)
{
    const struct {
        const char *name;
        BufrDescriptor element;
        uint64_t raw;
        int bits;
        float ProfilerLevel::*field;
        float value;
    } cases[] = {
        {"u of all ones, 409.5", kU, 8191, 13, &ProfilerLevel::u, kMissing},
        {"u just below", kU, 4096 + 1999, 13, &ProfilerLevel::u, 199.9F},
        {"u of 200", kU, 4096 + 2000, 13, &ProfilerLevel::u, kMissing},
        {"v of the west", kV, 4096 - 123, 13, &ProfilerLevel::v, -12.3F},
        {"w", {0, 11, 6}, 4096 + 15, 13, &ProfilerLevel::w, 1.5F},
        {"hdev of 199", {0, 11, 50}, 199, 12, &ProfilerLevel::hdev, 199.0F},
        {"hdev of 200", {0, 11, 50}, 200, 12, &ProfilerLevel::hdev, kMissing},
        {"vdev of 7", {0, 11, 51}, 7, 8, &ProfilerLevel::vdev, 7.0F},
        {"vdev of all ones", {0, 11, 51}, 255, 8, &ProfilerLevel::vdev, kMissing},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const ProfilerRecord r =
            read_one(kPlace + std::vector{c.element}, place(469).put(c.raw, c.bits));
        EXPECT_NEAR(r.level[0].*c.field, c.value, 1e-4);
    }
}

TEST_F(Bufr, DecodesEveryRoundOfAReplication)
{
    BitText bits;
    bits.put(400 + 900, 12);
    for (int i = 0; i < 36; ++i) {
        bits.put(static_cast<uint64_t>(i % 16), 4).put(component(i), 13).put(component(-i), 13);
    }
    const ProfilerRecord r = read_one({kStep, {1, 3, 36}, {0, 25, 34}, kU, kV}, bits);
    EXPECT_EQ(r.num_level, 35);
    for (int i = 0; i < 36; ++i) {
        SCOPED_TRACE(i);
        const ProfilerLevel &level = r.level[i];
        EXPECT_EQ(level.z,
                  900.0F * static_cast<float>(std::min(i, 34) + 1)); // the last stays there
        EXPECT_NEAR(level.u, i, 1e-3);
        EXPECT_NEAR(level.v, -i, 1e-3);
        EXPECT_EQ(level.qual, i % 16);
    }
    EXPECT_EQ(r.level[36].u, kMissing);
}

TEST_F(Bufr, FindsTheMessageBehindEveryHeading)
{
    const struct {
        const char *name;
        std::string heading;
    } cases[] = {
        {"star line", kStar},
        {"star line and a byte", "*** x ***\n\n"},
        {"star line and a letter", "*** x ***\nx"},
        {"G line and three more", "GPS\nline a\nline b\nline c\n"},
        {"newline", "\n"},
        {"newline and a star line", "\n" + kStar},
        {"start of heading", "\001\r\r\n865 \r\r\nIUPT01 KBOU 221200\r\r\n"},
        {"a heading of 200 letters", "*" + std::string(200, 'x') + "\n"},
        {"a heading of 79 letters without an end", "*" + std::string(78, 'x')},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const std::string text = c.heading + one_station(469) + c.heading + one_station(470);
        EXPECT_EQ(ids(read(text)), (std::vector<std::string>{"72469", "72470"}));
    }
}

TEST_F(Bufr, ReadsEverySubsetOfAMessage)
{
    BitText bits;
    for (const int station : {101, 102, 103}) {
        bits.put(72, 7).put(static_cast<uint64_t>(station), 10).put(0, 7); // to whole octets
    }
    const std::string message = bufr_bytes(
        {.descriptors = {{0, 1, 1}, {0, 1, 2}, {0, 13, 3}}, .data = bits.bytes(), .subsets = 3});
    EXPECT_EQ(ids(read(kStar + message)), (std::vector<std::string>{"72101", "72102", "72103"}));
    // octets behind the last one, too few for another
    const std::string padded =
        bufr_bytes({.descriptors = kPlace, .data = place(469).bytes() + std::string(3, '\0')});
    EXPECT_EQ(ids(read(kStar + padded + kStar + one_station(470))),
              (std::vector<std::string>{"72469", "72470"}));
}

TEST_F(Bufr, OperatorsChangeWidths)
{
    const struct {
        const char *name;
        std::vector<BufrDescriptor> operators;
        int bits;       ///< of the first U
        int bits_after; ///< of the V behind it
    } cases[] = {
        {"none", {}, 13, 13},
        {"2 01 129 adds 1 to all", {{2, 1, 129}}, 14, 14},
        {"2 01 127 takes 1 off all", {{2, 1, 127}}, 12, 12},
        {"2 01 000 ends it", {{2, 1, 140}, {2, 1, 0}}, 13, 13},
        {"2 06 covers one", {{2, 6, 20}}, 20, 13},
        {"2 06 over 2 01", {{2, 1, 129}, {2, 6, 20}}, 20, 14},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const ProfilerRecord r = read_one(kPlace + c.operators + std::vector{kU, kV},
                                          place(469).put(2000, c.bits).put(3000, c.bits_after));
        EXPECT_NEAR(r.level[0].u, -209.6, 1e-3);
        EXPECT_NEAR(r.level[0].v, -109.6, 1e-3);
    }
    const ProfilerRecord widest =
        read_one({{2, 6, 32}, {0, 25, 34}}, BitText().put(0xFFFFFFFF, 32));
    EXPECT_EQ(widest.level[0].qual, 2147483647);
}

TEST_F(Bufr, TakesMessagesOf100To4000Bytes)
{
    const struct {
        const char *name;
        size_t bytes;
        int told;
        bool is_read;
    } cases[] = {
        {"100", 100, 0, true},
        {"99 told", 104, 99, false},
        {"4000", 4000, 0, true},
        {"4001", 4001, 0, false},
        {"70000 counts as 4464", 70000, 0, false},
        {"65536 + 2000 counts 2000", 2000, 67536, true},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const std::string message = bufr_bytes({.descriptors = kPlace,
                                                .data = place(469).bytes(),
                                                .size = c.told,
                                                .at_least = c.bytes});
        ASSERT_EQ(message.size(), c.bytes);
        const std::string path = dir_.write("a.bufr", kStar + message);
        EXPECT_EQ(read_all(path, 1).size(), c.is_read ? 1U : 0U);
        read_all(path); // uses the message up for the next case
    }
}

TEST_F(Bufr, RefusesWhatItCannotFollowAndNamesTheFile)
{
    const std::string data(250, '\0');
    const struct {
        const char *name;
        BufrMessage message;
        const char *reason;
    } cases[] = {
        {"unknown element",
         {.descriptors = {{0, 2, 1}}, .data = data},
         "element not in the table (2001)"},
        {"delayed replication",
         {.descriptors = {{1, 1, 0}, {0, 31, 1}, kU}, .data = data},
         "delayed replication (101000)"},
        {"sequence", {.descriptors = {{3, 1, 1}}, .data = data}, "sequence descriptor (301001)"},
        {"another operator",
         {.descriptors = {{2, 2, 129}, kU}, .data = data},
         "operator not handled (202129)"},
        {"compressed", {.descriptors = kPlace, .data = data, .flag = 0xC0}, "compressed data"},
        {"edition 4",
         {.descriptors = kPlace, .data = data, .edition = 4},
         "edition not handled (4)"},
        {"no descriptors", {.descriptors = {}, .data = data}, "descriptors (0)"},
        {"101 descriptors",
         {.descriptors = std::vector<BufrDescriptor>(101, kU), .data = data},
         "descriptors (101)"},
        {"101 levels", {.descriptors = {kStep, {1, 1, 102}, kU}, .data = data}, "levels (100)"},
        {"no bit wide", {.descriptors = {{2, 1, 115}, kU}, .data = data}, "bits of an element (0)"},
        {"33 bits wide",
         {.descriptors = {{2, 6, 33}, kU}, .data = data},
         "bits of an element (33)"},
        {"data end early",
         {.descriptors = {{1, 1, 90}, kU, kV, {1, 1, 90}, {0, 8, 22}}, .data = data.substr(0, 60)},
         "the data end early"},
        {"operators alone", {.descriptors = {{2, 1, 129}}, .data = data}, "a report without data"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = dir_.write("bad.bufr", kStar + bufr_bytes(c.message));
        const std::string told = told_by([&] { EXPECT_EQ(read_all(path).size(), 0U); });
        EXPECT_NE(told.find(path + ": BUFR message refused: "), std::string::npos) << told;
        EXPECT_NE(told.find(c.reason), std::string::npos) << told;
        EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 1) << told;
        EXPECT_EQ(ids(read(kStar + one_station(470))),
                  std::vector<std::string>{"72470"}); // forgotten
    }
}

TEST_F(Bufr, AHundredLevelsAreTaken)
{
    BitText bits;
    bits.put(400 + 10, 12);
    for (int i = 0; i < 100; ++i) {
        bits.put(component(i), 13);
    }
    const ProfilerRecord r = read_one({kStep, {1, 1, 100}, kU}, bits);
    EXPECT_EQ(r.num_level, 99);
    EXPECT_NEAR(r.level[99].u, 99.0, 1e-3);
}

TEST_F(Bufr, GoesOnInTheMessageThatAnotherFileBegan)
{
    const std::vector<BufrDescriptor> filler = {{2, 6, 25}, {0, 8, 22}}; // to 11 octets
    const std::string two =
        bufr_bytes({.descriptors = kPlace + filler,
                    .data = place(101).put(0, 25).bytes() + place(102).put(0, 25).bytes(),
                    .subsets = 2});
    const std::string a = dir_.write("a", kStar + two);
    const std::string b = dir_.write("b", kStar + one_station(470));
    EXPECT_EQ(ids(read_all(a, 1)), std::vector<std::string>{"72101"});
    EXPECT_EQ(ids(read_all(b)), (std::vector<std::string>{"72102", "72470"}));
}

TEST_F(Bufr, NothingOfAnOldMessageStandsBehindOneTooLong)
{
    const std::string good = dir_.write("good", kStar + one_station(469));
    const std::string long_one = dir_.write(
        "long",
        kStar + bufr_bytes({.descriptors = kPlace, .data = place(1).bytes(), .at_least = 4400}));
    EXPECT_EQ(read_all(good).size(), 1U);
    EXPECT_EQ(read_all(long_one).size(), 0U);
    EXPECT_EQ(ids(read_all(good)), std::vector<std::string>{"72469"});
}

TEST_F(Bufr, EveryCutOfAFileGivesWholeReportsOnly)
{
    BitText bits = place(469);
    bits.put(400 + 900, 12);
    for (int i = 0; i < 20; ++i) {
        bits.put(component(i), 13).put(component(-i), 13);
    }
    const std::vector<BufrDescriptor> winds = {kStep, {1, 2, 20}, kU, kV};
    const std::string whole =
        kStar + bufr_bytes({.descriptors = kPlace + winds, .data = bits.bytes()});
    testing::internal::CaptureStderr();
    for (size_t cut = 0; cut < whole.size(); ++cut) {
        ASSERT_EQ(read(whole.substr(0, cut)).size(), 0U) << cut;
        const auto both = read(whole + whole.substr(0, cut));
        ASSERT_EQ(both.size(), 1U) << cut;
        ASSERT_NEAR(both[0].level[18].u, 18.0, 1e-3) << cut;
    }
    testing::internal::GetCapturedStderr();
}

// ---- the same messages through another decoder ----

} // namespace
