// The same messages through another decoder.

#include "profiler/bufr_reading.h"

namespace {

struct Dumped {
    std::string id;
    std::map<std::string, double> numbers;
    std::vector<double> u, v; ///< of every round; 409.5 where missing
};

/// The decoder has no tables for the versions that these bulletins name; those of version 13
/// describe the elements alike.
std::string with_known_tables(std::string bytes)
{
    for (size_t at = bytes.find("BUFR"); at != std::string::npos; at = bytes.find("BUFR", at + 4)) {
        bytes[at + 8 + 10] = 13;
        bytes[at + 8 + 11] = 0;
    }
    return bytes;
}

std::vector<Dumped> parse_dump(const std::string &text)
{
    std::vector<Dumped> all;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        const size_t equals = line.find('=');
        if (equals == std::string::npos) {
            continue;
        }
        const std::string key = line.substr(line[0] == '#' ? line.find('#', 1) + 1 : 0, equals);
        const std::string name = key.substr(0, key.find('='));
        const std::string word = line.substr(equals + 1);
        const double value = word == "MISSING" ? 409.5 : std::atof(word.c_str());
        if (name == "subsetNumber" ||
            (name == "blockNumber" && (all.empty() || !all.back().id.empty()))) {
            all.emplace_back();
        }
        if (all.empty()) {
            continue;
        }
        Dumped &d = all.back();
        if (name == "blockNumber") {
            d.id = word;
        } else if (name == "stationNumber") {
            d.id += std::string(3 - std::min<size_t>(word.size(), 3), '0') + word;
        } else if (name == "u" || name == "v") {
            (name == "u" ? d.u : d.v).push_back(value);
        } else {
            d.numbers[name] = value;
        }
    }
    return all;
}

/// `low_rounds` of the first group, whose last one the first of the second group takes the place
/// of.
void compare_with_dump(const std::string &path, const TempDir &dir, size_t low_rounds)
{
    const std::string patched = dir.write("patched.bufr", with_known_tables(read_file(path)));
    const RunResult dump = run({"bufr_dump", "-p", patched});
    const std::vector<Dumped> expected = parse_dump(dump.out);
    if (expected.empty() || expected[0].u.empty()) {
        GTEST_SKIP() << "bufr_dump can't decode here: " << dump.err.substr(0, 200);
    }
    const auto all = read_all(path);
    ASSERT_EQ(all.size(), expected.size());
    const auto drawn = [](double value) { return value < 200.0 ? value : kMissing; };
    for (size_t s = 0; s < all.size(); ++s) {
        SCOPED_TRACE(expected[s].id);
        EXPECT_EQ(all[s].id, expected[s].id);
        EXPECT_NEAR(all[s].lat, expected[s].numbers.at("latitude"), 1e-3);
        EXPECT_NEAR(all[s].lon, expected[s].numbers.at("longitude"), 1e-3);
        EXPECT_NEAR(all[s].elev, expected[s].numbers.at("heightOfStation"), 1e-3);
        ASSERT_GT(expected[s].u.size(), low_rounds);
        for (size_t j = 0; j < expected[s].u.size(); ++j) {
            if (j + 1 == low_rounds) {
                continue;
            }
            const ProfilerLevel &level = all[s].level[j < low_rounds ? j : j - 1];
            ASSERT_NEAR(level.u, drawn(expected[s].u[j]), 1e-3) << j;
            ASSERT_NEAR(level.v, drawn(expected[s].v[j]), 1e-3) << j;
        }
    }
}

TEST_F(Bufr, SampleMessagesReadAsAnotherDecoderReadsThem)
{
    if (!have_program("bufr_dump")) {
        GTEST_SKIP() << "bufr_dump isn't installed";
    }
    const auto files = make_samples(dir_.path(), "bufr", 2);
    ASSERT_EQ(files.size(), 2U);
    for (const std::string &file : files) {
        compare_with_dump(file, dir_, 37);
    }
}

TEST_F(Bufr, RealBulletinHoldsSixStations)
{
    const std::string path = shared_data("bufr/iupt01.bufr");
    if (path.empty()) {
        GTEST_SKIP() << "no real observations beside this checkout";
    }
    EXPECT_EQ(ids(read_all(path)),
              (std::vector<std::string>{"74433", "74551", "74731", "74648", "74753", "74466"}));
    if (have_program("bufr_dump")) {
        compare_with_dump(path, dir_, 36);
    }
}

} // namespace
