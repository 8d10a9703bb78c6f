#pragma once

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

// Texts: comparing, editing in place, lists and line reading.

/// Copies a text into a caller's buffer of `room` bytes, cut to fit and always zero-ended.
/// Returns false when it was cut.
bool STR_copy(char *out, size_t room, std::string_view text);

/// A text printed by a format.
std::string STR_print(const char *format, ...) __attribute__((format(printf, 1, 2)));

/// Splits a text at each separator: a run of separators at the end is dropped first, adjacent
/// separators give empty texts, a leading one an empty first text. All strings live in one
/// allocated copy; the caller frees with STR_free_list.
/// Returns 0, or -1 with a count of 0 and a null array for a null or empty text or no memory.
int STR_split(const char *text, char separator, int *count, char ***array);
/// Frees a list of STR_split; a count of 0 or a null array does nothing.
void STR_free_list(int count, char **array);
/// The list of STR_split as strings; empty for an empty text.
std::vector<std::string> STR_fields(std::string_view text, char separator);

/// Compares without case (ASCII); 0 when equal, else the difference of the first unequal
/// characters in lower case; 1 if either is null.
int STR_casecmp(const char *a, const char *b);
/// The same over at most n characters.
int STR_ncasecmp(const char *a, const char *b, int n);
/// True when the text begins with the prefix, without case.
bool STR_has_prefix(std::string_view text, std::string_view prefix);

/// Edits in place; a null text is left alone.
void STR_replace_char(char *text, char from, char to);
void STR_remove_char(char *text, char c);
/// Removes every newline and carriage return, then trailing blanks.
void STR_clean_line(char *text);
void STR_strip_trailing(char *text); ///< trailing blanks
void STR_strip_cr(char *text);       ///< trailing carriage returns
/// Removes each backslash and keeps the character behind it.
void STR_unescape(char *text);
/// ASCII letters to lower case; 0 for a null or empty text, else 1.
int STR_lower(char *text);
/// 1 for an optional `-` and then digits only, at least one.
int STR_is_int(const char *text);

/// Room of the text that STR_format_real writes.
inline constexpr size_t kRealTextRoom = 64;
/// Prints a real with the digits that a label needs. `spec` holds "width.decimals.min"; the
/// decimals shrink with the size of the value, not below min. Returns the length.
int STR_format_real(char *out, const char *spec, float value);

/// Reads a line of at most n characters (buffer of n + 1) up to a newline, which stays in the
/// stream; when a newline stands next it is skipped first. Returns 1, 0 with an empty text for an
/// empty line, -1 with an empty text at the end of the file.
int STR_read_line(FILE *stream, char *buffer, int n);
/// The same, returning the length of the line; -1 at the end of the file.
int STR_read_line_len(FILE *stream, char *buffer, int n);
/// The same for 160 characters (buffer of 161).
int STR_read_line_160(FILE *stream, char *buffer);
/// Passes to the start of the next line. Returns 1, -1 at the end of the file.
int STR_skip_line(FILE *stream);
/// STR_read_line for a reader that wants whole lines: what stands beyond n characters is dropped.
int STR_read_cut_line(FILE *stream, char *buffer, int n);

/// Linear interpolation: (x - x0) (y1 - y0) / (x1 - x0) + y0.
float NUM_interp(float x, float x0, float x1, float y0, float y1);

namespace tyr {

/// A decimal digit, whatever the locale.
constexpr bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

} // namespace tyr
