#include "programs/profiler/text_layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "programs/profiler/times.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/met/wind.h"

namespace {

using tyr::ProfilerInput;
using Lines = std::vector<std::string>;

constexpr int kHandle = 2;
constexpr int kGood = 0;
constexpr int kGoodByNeighbours = 2;
constexpr float kWindLimit = 200.0F; ///< 999999 stands for a missing value
constexpr float kMetres = 1000.0F;   ///< in a kilometre
constexpr size_t kHeadLines = 5;     ///< station, kind, place, time, counts
constexpr size_t kLongestLine = 1024;
constexpr int kMinutesPerHour = 60;
constexpr int kMinutesPerDay = 1440;

struct Report {
    ProfilerRecord record;
    DateRec date;
};

struct State {
    std::vector<Report> reports; ///< one a station
    DateRec date;                ///< of the last one read
};

State state;

/// The next line from `at` on, without its end and trailing blanks.
std::string next_line(std::string_view text, size_t *at)
{
    const size_t end = std::min(text.find('\n', *at), text.size());
    std::string line(text.substr(*at, std::min(end - *at, kLongestLine)));
    *at = end + 1;
    line.erase(line.find_last_not_of(" \t\r") + 1);
    return line;
}

/// The lines of the next block that aren't empty. A block without its `$` is cut, and isn't one.
bool next_block(std::string_view text, size_t *at, Lines *lines)
{
    lines->clear();
    while (*at < text.size()) {
        std::string line = next_line(text, at);
        if (line == "$") {
            return true;
        }
        if (!line.empty()) {
            lines->push_back(std::move(line));
        }
    }
    return false;
}

bool read_date(const std::string &line, DateRec *date)
{
    constexpr int kFirstOfThe1900s = 70;
    std::array<int, 5> f = {};
    if (std::sscanf(line.c_str(), "%4d %4d %4d %4d %4d", &f[0], &f[1], &f[2], &f[3], &f[4]) != 5 ||
        f[0] < 0 || f[0] > 99 || f[1] < 1 || f[1] > 12 || f[2] < 1 || f[2] > 31 || f[3] < 0 ||
        f[3] > 23 || f[4] < 0 || f[4] > 59) {
        return false;
    }
    *date = {};
    date->year = f[0] + (f[0] >= kFirstOfThe1900s ? 1900 : 2000);
    date->month = f[1];
    date->day = f[2];
    date->hour = f[3];
    date->minute = f[4];
    return true;
}

/// Reads the head of a block: station, place and time.
bool read_head(const Lines &lines, Report *report)
{
    ProfilerRecord &r = report->record;
    PRF_init_record(&r);
    if (lines.size() < kHeadLines || lines[1].find("WINDS") == std::string::npos) {
        return false;
    }
    const std::vector<std::string> words = STR_fields(lines[0], ' ');
    const auto word =
        std::find_if(words.begin(), words.end(), [](const std::string &w) { return !w.empty(); });
    if (word == words.end()) {
        return false;
    }
    STR_copy(r.id, sizeof r.id, *word);
    const bool has_place =
        std::sscanf(lines[2].c_str(), "%15f %15f %15f", &r.lat, &r.lon, &r.elev) == 3;
    return has_place && std::fabs(r.lat) <= 90.0F && std::fabs(r.lon) <= 360.0F &&
           read_date(lines[3], &report->date);
}

/// Reads a gate's row. @return whether it is one
bool read_gate(const std::string &line, ProfilerLevel *level)
{
    float height = 0.0F;
    float speed = 0.0F;
    float direction = 0.0F;
    int quality = 0;
    if (std::sscanf(line.c_str(), "%15f %15f %15f %9d", &height, &speed, &direction, &quality) !=
            4 ||
        !(height >= 0.0F && height < 100.0F)) {
        return false;
    }
    *level = {
        std::round(height * kMetres), kMissing, kMissing, kMissing, kMissing, kMissing, quality};
    const bool is_good = quality == kGood || quality == kGoodByNeighbours;
    if (is_good && speed >= 0.0F && speed < kWindLimit && direction >= 0.0F &&
        direction <= 360.0F) {
        MET_wind_uv(&level->u, &level->v, direction, speed);
    }
    return true;
}

/// Adds a level, or puts it into the place of one of its height that has no wind.
void add_level(ProfilerRecord *record, const ProfilerLevel &level)
{
    ProfilerLevel *end = record->level + record->num_level;
    ProfilerLevel *same = std::find_if(record->level, end,
                                       [&level](const ProfilerLevel &l) { return l.z == level.z; });
    if (same != end) {
        *same = is_missing(same->u) ? level : *same;
    } else if (record->num_level < kMaxProfilerLevels) {
        record->level[record->num_level++] = level;
    }
}

/// The gates of a block. The heights above the last wind of the modes so far go: they would hide
/// the mode that reaches higher.
void read_gates(const Lines &lines, ProfilerRecord *record)
{
    while (record->num_level > 0 && is_missing(record->level[record->num_level - 1].u)) {
        --record->num_level;
    }
    const auto head = std::find_if(lines.begin(), lines.end(), [](const std::string &line) {
        return line.find("HT") != std::string::npos && line.find("SPD") != std::string::npos;
    });
    const float top = record->num_level > 0 ? record->level[record->num_level - 1].z : -1.0F;
    for (auto line = head; line != lines.end(); ++line) {
        ProfilerLevel level;
        // a gate without a wind below that top has nothing to say
        if (line != head && read_gate(*line, &level) && (level.z > top || !is_missing(level.u))) {
            add_level(record, level);
        }
    }
}

int minute_of_day(const DateRec &date)
{
    return date.hour * kMinutesPerHour + std::max(date.minute, 0);
}

int distance(const Report &report, int wanted)
{
    const int apart = std::abs(minute_of_day(report.date) - wanted);
    return wanted == kMissingInt ? 0 : std::min(apart, kMinutesPerDay - apart);
}

std::vector<Report> read_blocks(std::string_view text)
{
    std::vector<Report> reports;
    Lines lines;
    for (size_t at = 0; next_block(text, &at, &lines);) {
        Report report;
        if (!read_head(lines, &report)) {
            continue;
        }
        const auto same = std::find_if(reports.begin(), reports.end(), [&](const Report &r) {
            return STR_casecmp(r.record.id, report.record.id) == 0 &&
                   r.date.day == report.date.day &&
                   minute_of_day(r.date) == minute_of_day(report.date);
        });
        Report &into = same != reports.end() ? *same : reports.emplace_back(report);
        read_gates(lines, &into.record);
    }
    return reports;
}

/// One report a station remains, the one nearest the time asked for, unless all are.
void choose_times(std::vector<Report> *reports)
{
    if (tyr::wants_all_times()) {
        return;
    }
    const int wanted = tyr::wanted_minute();
    std::stable_sort(reports->begin(), reports->end(), [wanted](const Report &a, const Report &b) {
        return distance(a, wanted) < distance(b, wanted);
    });
    std::vector<Report> chosen;
    for (const Report &report : *reports) {
        if (std::none_of(chosen.begin(), chosen.end(), [&report](const Report &c) {
                return STR_casecmp(c.record.id, report.record.id) == 0;
            })) {
            chosen.push_back(report);
        }
    }
    *reports = std::move(chosen);
}

} // namespace

bool tyr::probe_consensus(const ProfilerInput &input)
{
    size_t at = 0;
    for (int shown = 0; shown < 2 && at < input.bytes.size();) {
        const std::string line = next_line(input.bytes, &at);
        if (line.empty()) {
            continue;
        }
        const size_t first = line.find_first_not_of(' ');
        if (++shown == 2) {
            return line.compare(first, 9, "WINDS rev") == 0 ||
                   line.compare(first, 6, "WINDS ") == 0;
        }
    }
    return false;
}

int tyr::open_consensus(const ProfilerInput &input)
{
    state.reports = read_blocks(input.bytes);
    if (state.reports.empty()) {
        MSG_out(kMsgWarn, "PROF_open: %s: no whole block of winds\n", input.name.c_str());
        return -1;
    }
    choose_times(&state.reports);
    return kHandle;
}

void tyr::read_consensus_header(const ProfilerInput &, PrfFileInfo *info)
{
    info->num_station = static_cast<int32_t>(state.reports.size());
    info->date = state.reports.front().date;
    TIME_format(&info->date, info->date_label);
}

int tyr::read_consensus_record(const ProfilerInput &, int64_t index, ProfilerRecord *record)
{
    if (index < 0 || index >= static_cast<int64_t>(state.reports.size())) {
        return -1;
    }
    const Report &report = state.reports[static_cast<size_t>(index)];
    *record = report.record;
    state.date = report.date;
    return 1;
}

bool tyr::consensus_record_date(DateRec *date)
{
    *date = state.date;
    return true;
}

void tyr::close_consensus()
{
    state = {};
}
