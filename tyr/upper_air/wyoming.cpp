#include "tyr/upper_air/wyoming.h"

#include <array>
#include <optional>

#include "base/missing.h"
#include "base/str.h"
#include "tyr/upper_air/words.h"
#include "var/number.h"

namespace tyr {

namespace {

constexpr size_t kColumn = 7;
constexpr float kKnotsOfMetres = 3600.0F / 1852.0F;
constexpr float kMostPressure = 1100.0F;

/// Columns in the order that they always have.
enum Column : size_t { kPres, kHght, kTemp, kDwpt, kRelh, kMixr, kDrct, kSknt };

/// One table, while it is read.
struct Table {
    UpaReport report;
    std::vector<SoundLevel> levels;
    DateRec date;
    bool metric = false;
};

bool holds(std::string_view text, std::string_view word)
{
    return text.find(word) != std::string_view::npos;
}

/// The line without html tags.
std::string plain(std::string_view line)
{
    std::string out;
    bool in_tag = false;
    for (const char c : line) {
        in_tag = in_tag || c == '<';
        if (!in_tag) {
            out += c;
        }
        in_tag = in_tag && c != '>';
    }
    return out;
}

/// "12Z 22 Dec 2018" at the end of the heading.
DateRec heading_date(std::string_view text)
{
    DateRec date;
    TIME_parse(std::string(VAR_trim(text)).c_str(), &date);
    std::string_view year = VAR_trim(text);
    year = year.substr(std::min(year.size(), year.rfind(' ') + 1));
    if (date.month > 0) {
        date.year = VAR_take_int(&year).value_or(date.year);
    }
    return date;
}

/// The number and the identifier, which stations outside America lack.
void read_heading(std::string_view line, Table *table)
{
    constexpr std::string_view kAt = " Observations at ";
    const size_t at = line.find(kAt);
    table->date = heading_date(line.substr(at + kAt.size()));
    WordCursor words(line.substr(0, at));
    std::string_view number = words.word();
    const std::string first(number);
    table->report.wmo = VAR_take_int(&number).value_or(kMissingInt);
    const std::string second(words.word());
    const bool has_id = second.size() >= 3 && second.size() <= 4 &&
                        STR_is_int(second.c_str()) == 0 &&
                        second.find_first_of("abcdefghijklmnopqrstuvwxyz") == std::string::npos;
    STR_copy(table->report.id, sizeof table->report.id, has_id ? second : first);
}

/// One line of the table; false for one that isn't a level.
bool read_level(const std::string &line, bool metric, SoundLevel *level)
{
    const auto column = [&](Column which) {
        const size_t start = kColumn * which;
        std::string_view field =
            start < line.size() ? std::string_view(line).substr(start, kColumn) : "";
        const std::optional<float> value = VAR_take_real(&field);
        return value && VAR_trim(field).empty() ? *value : kMissing;
    };
    *level = {column(kPres), column(kHght), column(kTemp),
              column(kDwpt), column(kDrct), column(kSknt)};
    if (metric && !is_missing(level->spd)) {
        level->spd *= kKnotsOfMetres;
    }
    return level->p > 0 && level->p <= kMostPressure;
}

float number_behind(std::string_view line)
{
    line = line.substr(line.find(':') + 1);
    return VAR_take_real(&line).value_or(kMissing);
}

/// A line of the list behind the table.
void read_station_line(std::string_view line, Table *table)
{
    if (holds(line, "Station identifier:")) {
        const std::string_view id = VAR_trim(line.substr(line.find(':') + 1));
        STR_copy(table->report.id, sizeof table->report.id, id);
    } else if (holds(line, "Station latitude:")) {
        table->report.lat = number_behind(line);
    } else if (holds(line, "Station longitude:")) {
        table->report.lon = number_behind(line);
    } else if (holds(line, "Station elevation:")) {
        table->report.elev = number_behind(line);
        table->report.mand[kUpaSurface].z = table->report.elev;
    }
}

void finish_table(Table *table, ForeignFile *file, Refusals &refusals)
{
    if (table->levels.empty()) {
        return;
    }
    if (file->reports.size() == kMostForeign) {
        refusals.tell("more reports than can be held");
        return;
    }
    const float elevation = table->report.elev;
    sort_levels(table->levels, &table->report, refusals);
    if (is_missing(elevation)) {
        table->report.elev = table->report.mand[kUpaSurface].z;
    }
    if (file->date.month == kMissingInt && table->date.month > 0) {
        file->date = table->date;
    }
    file->reports.push_back(table->report);
}

} // namespace

ForeignFile read_wyoming(std::string_view text, Refusals &refusals)
{
    ForeignFile file;
    Table table;
    UPA_clear_report(&table.report);
    enum { kOutside, kHeader, kLevels } place = kOutside;
    for (WordCursor lines(text); !lines.at_end();) {
        const std::string_view raw = lines.line();
        const std::string line = plain(raw);
        if (holds(line, " Observations at ")) {
            finish_table(&table, &file, refusals);
            table = Table{};
            UPA_clear_report(&table.report);
            read_heading(line, &table);
            place = kOutside;
        } else if (holds(line, "PRES   HGHT")) {
            place = kHeader;
        } else if (place == kHeader && holds(line, "hPa")) {
            table.metric = holds(line, "m/s");
        } else if (line.substr(0, 3) == "---") {
            place = place == kHeader && holds(raw, "---") ? kLevels : place;
        } else if (place == kLevels &&
                   (holds(raw, "</PRE>") || VAR_trim(line).empty() || holds(line, "Station"))) {
            place = kOutside;
        } else if (place == kLevels) {
            SoundLevel level;
            if (read_level(line, table.metric, &level)) {
                table.levels.push_back(level);
            } else {
                refusals.tell("no level in the line \"" + line.substr(0, 40) + "\"");
            }
        }
        if (place == kOutside) {
            read_station_line(line, &table);
        }
    }
    finish_table(&table, &file, refusals);
    return file;
}

} // namespace tyr
