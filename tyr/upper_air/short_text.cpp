#include "tyr/upper_air/short_text.h"

#include <algorithm>
#include <span>
#include <vector>

#include "base/missing.h"
#include "base/str.h"
#include "tyr/upper_air/coded_text.h"
#include "tyr/upper_air/groups.h"
#include "tyr/upper_air/upa_types.h"
#include "var/number.h"

namespace tyr {

namespace {

/// Slots by line; 0 ends a line.
constexpr int kShortSlots[] = {1, 3, 4, 5, 0};
constexpr int kLongerSlots[] = {1, 3, 4, 5, 0, 6, 7, 9, 11, 0};

/// Heights of the wind groups, thousand feet.
constexpr int kShortHeights[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12, 14, 15, 16, 18};
constexpr int kLongerHeights[] = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9, 10,
                                  12, 14, 16, 20, 25, 30, 35, 40, 45, 50};
constexpr int kFirstWindLine = 11;

/// What tells the two forms apart.
struct Form {
    std::span<const int> slots;
    std::span<const int> heights;
    int entries; // of significant levels
    int num_mand;
    float top; // lowest pressure that is written
};
constexpr Form kShort{kShortSlots, kShortHeights, 14, 5, 500.0F};
constexpr Form kLonger{kLongerSlots, kLongerHeights, 21, 11, 100.0F};

const Form &form_of(int type)
{
    return type == kUpaShort ? kShort : kLonger;
}

constexpr size_t kPressureWord = 3;

void read_sig_list(WordCursor &words, const Form &form, UpaReport *report)
{
    std::string_view word = words.word();
    const int told = VAR_take_int(&word).value_or(0);
    report->num_sig = std::clamp(told, 0, form.entries);
    for (int i = 0; i < report->num_sig; ++i) {
        report->sig[i].p = sig_pressure(words.word(kPressureWord));
        UPA_decode_td(std::string(words.word()).c_str(), &report->sig[i].t, &report->sig[i].td);
    }
    words.skip_words(2 * (form.entries - report->num_sig));
}

void read_wind_list(WordCursor &words, const Form &form, UpaReport *report)
{
    report->num_wnd = static_cast<int>(form.heights.size());
    for (int i = 0; i < report->num_wnd; ++i) {
        UpaWindLevel &level = report->wnd[i];
        level.z = 1000.0F * static_cast<float>(form.heights[static_cast<size_t>(i)]);
        UPA_decode_wind(std::string(words.word()).c_str(), &level.dir, &level.spd);
    }
}

std::vector<UpaSigLevel> levels_to_write(const Form &form, UpaReport *report)
{
    std::vector<UpaSigLevel> levels;
    for (int i = 0; i < std::min(report->num_sig, kUpaSignificant); ++i) {
        if (stands_in_slot(*report, i)) {
            report->sig[i].p = kMissing;
        }
        if (report->sig[i].p >= form.top && levels.size() < static_cast<size_t>(form.entries)) {
            levels.push_back(report->sig[i]);
        }
    }
    if (levels.empty() && !is_missing(report->mand[kUpaSurface].p)) {
        levels.push_back(surface_sig(*report));
    }
    return levels;
}

void write_sig_list(WordWriter &out, const Form &form, UpaReport *report)
{
    const std::vector<UpaSigLevel> levels = levels_to_write(form, report);
    out.word(STR_print("%2d", static_cast<int>(levels.size())));
    for (int i = 0; i < form.entries; ++i) {
        if (static_cast<size_t>(i) < levels.size()) {
            const UpaSigLevel &level = levels[static_cast<size_t>(i)];
            out.word(STR_print("%3.3d", VAR_whole(level.p) % 1000));
            out.word(group_or(UPA_encode_td(level.t, level.td), kNinesGroup));
        } else {
            out.word("000");
            out.word("00000");
        }
        if ((i + 1) % kEntriesPerLine == 0) {
            out.end_line();
        }
    }
}

void write_wind_list(WordWriter &out, const Form &form, const UpaReport &report)
{
    std::vector<UpaWindLevel> levels(report.wnd, report.wnd + std::min(report.num_wnd, kUpaWinds));
    if (levels.empty() && !is_missing(report.mand[kUpaSurface].p)) {
        levels.push_back(surface_wind(report));
    }
    int written = 0;
    for (const int thousands : form.heights) {
        const auto height = 1000.0F * static_cast<float>(thousands);
        const auto level = std::find_if(levels.begin(), levels.end(),
                                        [=](const UpaWindLevel &l) { return l.z == height; });
        const bool found = level != levels.end();
        out.word(group_or(found ? UPA_encode_wind(level->dir, level->spd) : -1, kNinesGroup));
        if (++written == kFirstWindLine) {
            out.end_line();
        }
    }
    out.end_line();
}

} // namespace

void read_short_text(WordCursor &words, int type, UpaReport *report)
{
    const Form &form = form_of(type);
    report->num_mand = form.num_mand;
    for (const int slot : form.slots) {
        if (slot != 0) {
            read_slot(words, &report->mand[slot]);
        }
    }
    read_sig_list(words, form, report);
    read_wind_list(words, form, report);
}

void write_short_text(WordWriter &out, int type, UpaReport *report)
{
    const Form &form = form_of(type);
    out.word(heading_word(*report));
    for (const int slot : form.slots) {
        if (slot == 0) {
            out.end_line();
        } else {
            write_slot(out, report->mand[slot], kNinesGroup);
        }
    }
    write_sig_list(out, form, report);
    write_wind_list(out, form, *report);
}

} // namespace tyr
