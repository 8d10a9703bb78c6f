#include "tyr/upper_air/held_report.h"

#include <cctype>
#include <cstdlib>

#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/upper_air/analysis.h"
#include "tyr/upper_air/assembly.h"
#include "tyr/upper_air/sounding_store.h"
#include "tyr/upper_air/stations.h"

namespace tyr {

namespace {

constexpr int kMonthOfDays = 31;

bool is_called(const UpaReport &report, const std::string &name)
{
    if (STR_casecmp(report.id, name.c_str()) == 0 && report.id[0] != '\0') {
        return true;
    }
    const bool is_number = std::isdigit(static_cast<unsigned char>(name[0])) != 0;
    return is_number && report.wmo > 0 && std::atoi(name.c_str()) == report.wmo;
}

DateRec current_date()
{
    DateRec now;
    TIME_header_now(&now);
    if (const char *text = RES_get("current")) {
        TIME_parse(text, &now);
    }
    return now;
}

/// Month and year of a date that has a day and an hour alone.
void complete_date(DateRec *date)
{
    if (date->month > 0 || date->day <= 0) {
        return;
    }
    DateRec now = current_date();
    long seconds = TIME_to_seconds(&now);
    for (int back = 0; back <= 2 * kMonthOfDays; ++back, seconds -= kSecondsPerDay) {
        DateRec tried;
        TIME_from_seconds(&seconds, &tried);
        const bool is_ahead = back == 0 && date->hour > tried.hour;
        if (tried.day == date->day && !is_ahead) {
            date->year = tried.year;
            date->month = tried.month;
            date->minute = date->minute == kMissingInt ? 0 : date->minute;
            return;
        }
    }
}

} // namespace

std::string station_of(const UpaReport &report)
{
    if (report.id[0] != '\0') {
        return report.id;
    }
    return report.wmo > 0 ? STR_print("%05d", report.wmo) : std::string("-");
}

bool hold_reports(const std::string &path, std::vector<HeldReport> *held)
{
    if (UPA_open_file(path.c_str()) != 1) {
        return false;
    }
    const size_t before = held->size();
    HeldReport next;
    UPA_get_date(&next.date);
    complete_date(&next.date);
    while (UPA_next_station(&next.report) == 0) {
        held->push_back(next);
    }
    UPA_close_file();
    if (held->size() == before) {
        MSG_out(kMsgWarn, "%s: no report in it\n", path.c_str());
    }
    return held->size() > before;
}

std::vector<HeldReport> chosen_reports(const std::vector<HeldReport> &held,
                                       const std::vector<std::string> &names)
{
    if (names.empty()) {
        return held;
    }
    std::vector<HeldReport> chosen;
    for (const std::string &name : names) {
        const size_t before = chosen.size();
        for (const HeldReport &one : held) {
            if (is_called(one.report, name)) {
                chosen.push_back(one);
            }
        }
        if (chosen.size() == before) {
            MSG_out(kMsgWarn, "%s: no such station\n", name.c_str());
        }
    }
    return chosen;
}

bool is_raw_sounding(const std::string &path)
{
    constexpr std::string_view kMagic = "TYRRAW";
    const FilePtr file(FILE_is_std(path.c_str()) != 0 ? nullptr : FILE_open(path.c_str(), "r"));
    char word[kMagic.size()] = {};
    return file && std::fread(word, 1, sizeof word, file.get()) == sizeof word &&
           std::string_view(word, sizeof word) == kMagic;
}

bool analyse(const HeldReport &held)
{
    UpaReport report = held.report;
    const std::string name = station_of(report);
    THERM_set_date(&held.date);
    if (THERM_process_report(&report) != 1) {
        MSG_out(kMsgWarn, "%s: no level with a temperature\n", name.c_str());
        return false;
    }
    THERM_set_date(&held.date);
    THERM_set_station(name.c_str());
    THERM_compute();
    return true;
}

} // namespace tyr
