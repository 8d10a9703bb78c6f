#include "tyr/upper_air/spc.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/missing.h"
#include "base/str.h"
#include "tyr/upper_air/words.h"
#include "var/number.h"

namespace tyr {

namespace {

constexpr size_t kFields = 6;
constexpr float kMostPressure = 1100.0F;

/// "140616/1900": year, month, day and hour, minute, in two digits each.
DateRec title_date(std::string_view text)
{
    std::array<int, 5> parts = {};
    size_t at = 0;
    for (int &part : parts) {
        if (at < text.size() && text[at] == '/') {
            ++at;
        }
        std::string_view digits = text.substr(std::min(at, text.size()), 2);
        part = VAR_take_int(&digits).value_or(-1);
        at += 2;
    }
    DateRec date;
    const bool good = std::all_of(parts.begin(), parts.end(), [](int p) { return p >= 0; });
    if (good && parts[1] >= 1 && parts[1] <= 12 && parts[2] >= 1 && parts[2] <= 31) {
        constexpr int kCentury = 50; // years below are of this one
        date.year = parts[0] + (parts[0] < kCentury ? 2000 : 1900);
        date.month = parts[1];
        date.day = parts[2];
        date.hour = parts[3];
        date.minute = parts[4];
    }
    return date;
}

/// Returns the date.
DateRec read_title(std::string_view line, UpaReport *report)
{
    WordCursor words(line);
    const std::string_view id = words.word();
    STR_copy(report->id, sizeof report->id, id);
    const DateRec date = title_date(words.word());
    std::string_view place = words.word();
    const std::optional<float> lat = VAR_take_real(&place);
    if (lat && place.substr(0, 1) == ",") {
        place.remove_prefix(1);
        if (const std::optional<float> lon = VAR_take_real(&place)) {
            report->lat = *lat;
            report->lon = *lon;
        }
    }
    return date;
}

bool read_level(std::string_view line, SoundLevel *level)
{
    std::array<float, kFields> values = {};
    for (float &value : values) {
        std::string_view field = take_field(&line, ',');
        if (VAR_trim(field) == "nan") { // as some of the programs write what they couldn't work out
            value = kMissing;
            continue;
        }
        const std::optional<float> number = VAR_take_real(&field);
        if (!number || !VAR_trim(field).empty()) {
            return false;
        }
        value = *number <= kMissing ? kMissing : *number;
    }
    *level = {values[0], values[1], values[2], values[3], values[4], values[5]};
    return level->p > 0 && level->p <= kMostPressure;
}

/// The levels up to %END%.
std::vector<SoundLevel> read_levels(WordCursor &lines, Refusals &refusals)
{
    std::vector<SoundLevel> levels;
    while (!lines.at_end()) {
        const std::string_view line = VAR_trim(lines.line());
        if (line.substr(0, 5) == "%END%") {
            return levels;
        }
        SoundLevel level;
        if (read_level(line, &level)) {
            levels.push_back(level);
        } else if (!line.empty()) {
            refusals.tell("no level in the line \"" + std::string(line.substr(0, 40)) + "\"");
        }
    }
    refusals.tell("the file ends without %END%");
    return levels;
}

} // namespace

ForeignFile read_spc(std::string_view text, Refusals &refusals)
{
    ForeignFile file;
    UpaReport report;
    UPA_clear_report(&report);
    DateRec date;
    for (WordCursor lines(text); !lines.at_end();) {
        const std::string_view line = VAR_trim(lines.line());
        if (line.substr(0, 7) == "%TITLE%") {
            UPA_clear_report(&report);
            date = read_title(lines.line(), &report);
        } else if (line.substr(0, 5) == "%RAW%") {
            sort_levels(read_levels(lines, refusals), &report, refusals);
            report.elev = report.mand[kUpaSurface].z;
            if (file.reports.size() == kMostForeign) {
                refusals.tell("more reports than can be held");
                return file;
            }
            if (file.date.month == kMissingInt) {
                file.date = date;
            }
            file.reports.push_back(report);
            UPA_clear_report(&report);
        }
    }
    return file;
}

} // namespace tyr
