#include "programs/profiler/times.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "tyr/base/missing.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/names/name_conv.h"

namespace {

constexpr int kMinutesPerHour = 60;

} // namespace

bool tyr::wants_all_times()
{
    const std::vector<std::string> words = RES_list("plot_param");
    return RES_get("level") == nullptr &&
           std::any_of(words.begin(), words.end(), [](const std::string &word) {
               return STR_casecmp(word.c_str(), "time=all") == 0;
           });
}

int tyr::wanted_minute()
{
    DateRec name;
    FILE_get_date(&name);
    const bool has_hour = name.hour >= 0;
    for (const std::string &word : RES_list("plot_param")) {
        int hour = 0;
        int minute = 0;
        if (std::sscanf(word.c_str(), "time=%2d:%2d", &hour, &minute) == 2) {
            return hour * kMinutesPerHour + minute;
        }
        if (has_hour && std::sscanf(word.c_str(), "time=:%2d", &minute) == 1) {
            return name.hour * kMinutesPerHour + minute;
        }
    }
    return has_hour ? name.hour * kMinutesPerHour + std::max(name.minute, 0) : kMissingInt;
}
