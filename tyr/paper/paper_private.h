#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tyr {

/// Paper sizes and geometries, as the file devices share them.

/// Paper in inches; the longer side is the width, as of a sheet that lies on its side.
struct Paper {
    float width, height;
};

/// Least and greatest side of a sheet, in inches; a size beyond them isn't one.
inline constexpr float kMinPaper = 0.6F;
inline constexpr float kMaxPaper = 1000.0F;

/// The paper of a device word: a name (`letter`, `a4`, ...) or `sz=WxH` in inches, case ignored.
/// Nothing when it is neither or the size can't be.
std::optional<Paper> paper_from_word(const std::string &word);

/// True when both sides are within the limits.
bool is_paper(const Paper &paper);

/// How the numbers of a geometry become device units.
struct GeometryForm {
    bool plus_between;   ///< "%dx%d+%d+%d", "+%d+%d"; else the signs belong to the offsets
    double unit;         ///< device units in one unit of the geometry
    double offset_added; ///< added to each offset
    bool y_down = false; ///< a pixmap: y counts from the top, and the surface keeps within it
};

/// Applies a geometry text to the view surface (width, height, offset of the kernel's state). One
/// that begins with P is a panel, `PWxH+X+Y`: fractions of the surface, or with W above 1 the
/// panel X, Y, counted from the top left, of W columns and H rows (1 to 8 each). A geometry that
/// can't be read, or leaves no surface, is reported and changes nothing.
void apply_geometry(const std::string &geometry, const GeometryForm &form);

/// The text of the resource `geometry`, or else of the first environment variable that is set.
std::string geometry_text(const std::vector<const char *> &variables);

/// The words of an environment variable, split at commas.
std::vector<std::string> environment_words(const char *variable);

/// Whether a word is the other one, case ignored.
bool is_word(const std::string &word, const char *other);

/// Number at a place of a word, by strtof; 0 where there is none.
float word_number(const std::string &word, size_t place);

/// The output target: the first word if it isn't empty, else the first environment variable that
/// is set, else the default.
std::string output_target(const std::vector<std::string> &words,
                          const std::vector<const char *> &variables, const char *fallback);

} // namespace tyr
