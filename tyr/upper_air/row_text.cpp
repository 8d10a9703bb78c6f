#include "tyr/upper_air/row_text.h"

#include <algorithm>
#include <vector>

#include "base/missing.h"
#include "base/str.h"
#include "tyr/upper_air/coded_text.h"
#include "tyr/upper_air/groups.h"
#include "tyr/upper_air/upa_types.h"
#include "var/number.h"

namespace tyr {

namespace {

constexpr int kFixedEntries = 28;
constexpr int kSlotLines = 4;
constexpr int kListLines = 8; // of the two lists of type 3
constexpr float kSlot3Pressure = 850.0F;

/// Slots behind which a line ends.
bool ends_line(int type, int slot)
{
    return type == kUpaFixed ? slot == 5 || slot == 9 || slot == 13 : slot % 4 == 0;
}

/// The slots 1 to 16. In type 3 the level in the place of 925 hPa may be that of 850 hPa.
void read_slots(WordCursor &words, int type, UpaReport *report)
{
    for (int slot = kUpa1000; slot <= kUpa10; ++slot) {
        read_slot(words, &report->mand[slot]);
        SoundLevel &level = report->mand[slot];
        if (type == kUpaFixed && slot == kUpa925 &&
            (level.p == kSlot3Pressure || is_missing(level.p))) {
            report->mand[kUpa850] = level;
            MET_clear_level(&level);
            ++slot;
        }
    }
}

void read_sig_list(WordCursor &words, int type, UpaReport *report)
{
    const int most = type == kUpaFixed ? kFixedEntries : kUpaSignificant;
    UpaSigLevel level = {kMissing, kMissing, kMissing};
    while (type != kUpaFixed || report->num_sig < most) {
        const bool ended = words.peek().substr(0, 1) == "$";
        if (ended || !read_sig(words, &level)) {
            break;
        }
        if (report->num_sig < most) {
            report->sig[report->num_sig++] = level;
        }
    }
    if (type == kUpaFixed) {
        words.skip_words(most - report->num_sig - 1);
    }
}

void read_wind_list(WordCursor &words, int type, UpaReport *report)
{
    const int most = type == kUpaFixed ? kFixedEntries : kUpaWinds;
    UpaWindLevel level = {kMissing, kMissing, kMissing};
    while ((type != kUpaFixed || report->num_wnd < most) && read_wind(words, &level)) {
        if (report->num_wnd < most) {
            report->wnd[report->num_wnd++] = level;
        }
    }
}

std::vector<UpaSigLevel> sig_to_write(int type, const UpaReport &report)
{
    std::vector<UpaSigLevel> levels;
    for (int i = 0; i < std::min(report.num_sig, kUpaSignificant); ++i) {
        const bool doubled = type == kUpaFixed && stands_in_slot(report, i);
        if (report.sig[i].p > 0 && !doubled) {
            levels.push_back(report.sig[i]);
        }
    }
    if (levels.empty() && !is_missing(report.mand[kUpaSurface].p)) {
        levels.push_back(surface_sig(report));
    }
    return levels;
}

std::vector<UpaWindLevel> winds_to_write(const UpaReport &report)
{
    std::vector<UpaWindLevel> levels;
    std::copy_if(report.wnd, report.wnd + std::clamp(report.num_wnd, 0, kUpaWinds),
                 std::back_inserter(levels), fits_wind_entry);
    const SoundLevel &surface = report.mand[kUpaSurface];
    if (levels.empty() && !is_missing(surface.p) && !is_missing(surface.dir)) {
        levels.push_back(surface_wind(report));
    }
    return levels;
}

/// A list, seven entries to a line; type 3 fills up to 28 entries.
template <class Level>
void write_list(WordWriter &out, int type, const std::vector<Level> &levels,
                void (*write)(WordWriter &, const Level &))
{
    const size_t entries = type == kUpaFixed ? kFixedEntries : levels.size();
    for (size_t i = 0; i < entries; ++i) {
        if (i < levels.size()) {
            write(out, levels[i]);
        } else {
            out.word(kNoGroup);
        }
        if ((i + 1) % kEntriesPerLine == 0) {
            out.end_line();
        }
    }
}

std::string heading(int type, const UpaReport &report)
{
    if (type != kUpaPlaced) {
        return heading_word(report);
    }
    std::string word = STR_print("%5.5d:%s", report.wmo, heading_word(report).c_str());
    if (!is_missing(report.lat) && !is_missing(report.lon)) {
        word += STR_print(":%.2f:%.2f", report.lat, report.lon);
    }
    return word;
}

} // namespace

void read_placed_heading(std::string_view word, UpaReport *report)
{
    report->wmo = VAR_take_int(&word).value_or(kMissingInt);
    if (word.substr(0, 1) != ":") {
        return;
    }
    word.remove_prefix(1);
    const std::string_view id = word.substr(0, word.find(':'));
    STR_copy(report->id, sizeof report->id, id);
    word.remove_prefix(id.size());
    for (float *place : {&report->lat, &report->lon}) {
        if (word.substr(0, 1) != ":") {
            return;
        }
        word.remove_prefix(1);
        *place = VAR_take_real(&word).value_or(kMissing);
    }
}

void skip_fixed_rows(WordCursor &words)
{
    std::string_view line;
    for (int i = 0; i < kSlotLines; ++i) {
        line = words.line();
    }
    // three groups a level: where the last of them begins with '-', tropopause and maximum wind
    // stand on the next line
    WordCursor groups(line);
    int behind = kListLines; // words behind the last '-' group
    while (!groups.peek().empty()) {
        behind = groups.word().front() == '-' ? 0 : behind + 1;
    }
    const int rest = behind <= 2 ? kListLines + 1 : kListLines;
    for (int i = 0; i < rest; ++i) {
        words.line();
    }
}

void read_row_text(WordCursor &words, int type, UpaReport *report)
{
    read_slots(words, type, report);
    read_upper_slots(words, report);
    read_sig_list(words, type, report);
    read_wind_list(words, type, report);
}

void write_row_text(WordWriter &out, int type, const UpaReport &report)
{
    out.word(heading(type, report));
    for (int slot = kUpa1000; slot <= kUpa10; ++slot) {
        const bool left_out =
            type == kUpaFixed && slot == kUpa925 && is_missing(report.mand[slot].p);
        if (!left_out) {
            write_slot(out, report.mand[slot], kNoGroup);
        }
        if (ends_line(type, slot)) {
            out.end_line();
        }
    }
    write_upper_slots(out, report);
    write_list(out, type, sig_to_write(type, report), write_sig);
    if (type != kUpaFixed) {
        out.word(kNoGroup);
        out.end_line();
    }
    write_list(out, type, winds_to_write(report), write_wind);
    out.end_open_line();
    if (type != kUpaFixed) {
        out.word("$");
        out.end_line();
    }
}

} // namespace tyr
