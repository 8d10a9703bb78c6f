#pragma once

/// Reports of BUFR messages that are made here.

#include <algorithm>
#include <map>
#include <sstream>

#include "programs/profiler/reader.h"
#include "programs/profiler/walk.h"
#include "support/bufr_message.h"
#include "support/capture.h"
#include "support/program.h"
#include "support/run.h"
#include "support/shared_data.h"
#include "tyr/base/missing.h"

const std::string kStar = "*** IUPT01 KBOU 221200 ***\n";

const std::vector<BufrDescriptor> kPlace = {{0, 1, 1}, {0, 1, 2}, {0, 5, 2}, {0, 6, 2}, {0, 7, 1}};
inline constexpr BufrDescriptor kStep = {0, 7, 5};
inline constexpr BufrDescriptor kU = {0, 11, 3};
inline constexpr BufrDescriptor kV = {0, 11, 4};

/// Block 72, 40.01 N, 95.5 W, 300 m.
inline BitText place(int station)
{
    BitText bits;
    bits.put(72, 7).put(static_cast<uint64_t>(station), 10);
    bits.put(9000 + 4001, 15).put(18000 - 9550, 16).put(400 + 300, 15);
    return bits;
}

/// A wind component in m/s, in 13 bits.
inline uint64_t component(double value)
{
    return static_cast<uint64_t>(value * 10.0 + 4096.5);
}

inline std::vector<BufrDescriptor> operator+(std::vector<BufrDescriptor> head,
                                             const std::vector<BufrDescriptor> &tail)
{
    head.insert(head.end(), tail.begin(), tail.end());
    return head;
}

inline std::string one_station(int station)
{
    return bufr_bytes({.descriptors = kPlace, .data = place(station).bytes()});
}

/// Reads a file to its end; `most` reports at the most.
inline std::vector<ProfilerRecord> read_all(const std::string &path, size_t most = 1000)
{
    std::vector<ProfilerRecord> records;
    if (PRF_open_file(path.c_str()) != 1) {
        return records;
    }
    ProfilerRecord record;
    while (records.size() < most && PRF_next_station(&record) == 1) {
        records.push_back(record);
    }
    PRF_close_file();
    return records;
}

inline std::vector<std::string> ids(const std::vector<ProfilerRecord> &records)
{
    std::vector<std::string> all;
    for (const ProfilerRecord &r : records) {
        all.emplace_back(r.id);
    }
    return all;
}

class Bufr : public testing::Test {
  protected:
    std::vector<ProfilerRecord> read(const std::string &bytes)
    {
        return read_all(dir_.write("a.bufr", bytes));
    }
    /// The only report of a message.
    ProfilerRecord read_one(const std::vector<BufrDescriptor> &descriptors, const BitText &bits)
    {
        const auto all =
            read(kStar + bufr_bytes({.descriptors = descriptors, .data = bits.bytes()}));
        EXPECT_EQ(all.size(), 1U);
        return all.empty() ? ProfilerRecord{} : all[0];
    }

    TempDir dir_;
};
