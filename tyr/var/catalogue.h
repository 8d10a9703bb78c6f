#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

inline constexpr int kMaxCatalogue = 750;      ///< entries
inline constexpr size_t kVarTextSize = 80;     ///< room for VAR_str: description and units
inline constexpr size_t kVarNameTextSize = 10; ///< room for VAR_abbr

/// One line of "variable.lup"; numbers that it doesn't give are kMissingInt.
struct CatalogueEntry {
    std::array<int, 5> numbers;
    std::string abbreviation; ///< up to 9 characters
    std::string description;  ///< up to 49 characters
};

/// How much a label tells.
enum LabelMode : int {
    kLabelMinimal = -2, ///< the abbreviation
    kLabelSimple = -1,  ///< level and time in front of it
    kLabelNormal = 0,   ///< the description in its place
    kLabelComplete = 1  ///< the format behind it
};

/// Loads the catalogue "variable.lup", found by `file_path`, anew. Returns 1, or 0 after a message.
int VAR_read_varfile();

/// All entries, in the file's order. Loads the catalogue if needed.
const std::vector<CatalogueEntry> &VAR_catalogue();

/// Entry with this first number; null if there is none.
const CatalogueEntry *VAR_find_number(int number);
/// Entry with this abbreviation, case ignored, a '+' in front passed over; null if there is none.
const CatalogueEntry *VAR_find_abbr(const char *abbreviation);

/// Reads the label mode from the words of `plot_param`: "labmin", "labsimp", "labnorm", "labcomp",
/// compared over four characters. Without such a word the mode is normal.
void VAR_label_options();
/// The label mode in force.
LabelMode VAR_label_mode();

/// Text of a variable number, taken modulo 1000: its description, or in the minimal and simple
/// label modes its abbreviation, "v%d" if the catalogue hasn't got it; then " (units)" if there are
/// any (null: none).
/// @param[out] out  kVarTextSize bytes. Returns out
char *VAR_str(char *out, int number, const char *units);

/// Abbreviation of a whole variable number, empty if there is none.
/// @param[out] out  kVarNameTextSize bytes. Returns out
char *VAR_abbr(char *out, int number);
