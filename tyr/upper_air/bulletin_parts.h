#pragma once

#include <span>
#include <string>
#include <vector>

#include "tyr/upper_air/report.h"

// The groups of one part of a bulletin, decoded into the ascent that the part belongs to.

namespace tyr {

/// A wind by pressure, whose height has to wait for the mandatory levels.
struct PressureWind {
    float p, dir, spd;
};

/// What the parts of one ascent have told so far.
struct Ascent {
    int wmo = 0;
    int day = 0;
    int hour = 0;
    std::string parts; ///< the words of the parts that were read
    UpaReport report = {};
    std::vector<UpaSigLevel> sig;
    std::vector<UpaWindLevel> winds;
    std::vector<PressureWind> pressure_winds;
};

/// How the groups of a part are to be read.
struct PartContext {
    bool upper = false;   ///< a part C or D, above 100 hPa
    bool metric = false;  ///< speeds in m/s
    char last_wind = '/'; ///< the indicator of the highest level with a wind
};

/// Five digits or slashes.
bool is_group(const std::string &word);

/// The groups behind the part's heading. @return the number of groups read; less than all where one
/// couldn't be
size_t decode_mandatory(std::span<const std::string> groups, const PartContext &part,
                        Ascent *ascent);
size_t decode_significant(std::span<const std::string> groups, const PartContext &part,
                          Ascent *ascent);
size_t decode_winds(std::span<const std::string> groups, const PartContext &part, Ascent *ascent);

/// The report of an ascent: its lists in order, as far as they find room. @return the number of
/// levels left out
int finish_ascent(Ascent *ascent);

} // namespace tyr
