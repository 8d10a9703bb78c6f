#pragma once

#include <string>

#include "tyr/upper_air/report.h"
#include "tyr/upper_air/words.h"

// What the five text forms share: their levels as coded groups.

namespace tyr {

/// The groups of a form: what stands for a group with nothing to tell.
inline constexpr const char *kNoGroup = "X";        // types 3 to 5
inline constexpr const char *kNinesGroup = "99999"; // types 1 and 2

/// Entries of significant and of wind levels that stand on a line.
inline constexpr int kEntriesPerLine = 7;

/// Three groups of a mandatory level.
void read_slot(WordCursor &words, SoundLevel *level);
void write_slot(WordWriter &out, const SoundLevel &level, const char *nothing);

/// The slots from 17 up, whose groups begin with '-', and then tropopause and level of maximum
/// wind. Sets num_mand to 19 and the slots read.
void read_upper_slots(WordCursor &words, UpaReport *report);
void write_upper_slots(WordWriter &out, const UpaReport &report);

/// One significant level; false at the X that ends the list, which is then passed.
bool read_sig(WordCursor &words, UpaSigLevel *level);
/// The pressure's word, by the rule of types 3 to 5, and the TTTDD group.
void write_sig(WordWriter &out, const UpaSigLevel &level);

/// One wind level; false at the X or $ that ends the list.
bool read_wind(WordCursor &words, UpaWindLevel *level);
void write_wind(WordWriter &out, const UpaWindLevel &level);
/// True for a wind level that an entry of two digits of thousand feet can tell.
bool fits_wind_entry(const UpaWindLevel &level);

/// Pressure of a significant level's word, which leaves out the thousand: "013" is 1013,
/// "13" is 13. Missing for no number.
float sig_pressure(std::string_view word);

/// A group by its encoder's result.
const char *group_or(int encoded, const char *nothing);

/// Takes the surface from the first levels of the lists: pressure and
/// temperatures above 500 hPa, wind at height 0.
void take_surface(UpaReport *report);

/// True for a significant level (not the first) whose pressure has a mandatory slot with a height.
bool stands_in_slot(const UpaReport &report, int index);

/// The surface as a level of either list.
UpaSigLevel surface_sig(const UpaReport &report);
UpaWindLevel surface_wind(const UpaReport &report);

/// The word that opens a report: the identifier, or the WMO number or "?" where there is none.
/// Blanks, and the signs that a heading is parted by, become '_'.
std::string heading_word(const UpaReport &report);

} // namespace tyr
