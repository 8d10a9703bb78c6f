#pragma once

// Scanner of fixed-format records: like sscanf, but with a place in the line, fixed-width fields
// and markers for missing values.

/// One scanned line. `scanp` leaves `position` alone; SCAN_advance moves it.
struct ScanRec {
    char *text = nullptr; ///< the line; not owned
    int length = 0;
    int position = 0; ///< where the next scanp starts
    int consumed = 0; ///< characters taken by the last scanp
    int stored = 0;   ///< results stored by the last scanp
    int fields = 0;   ///< fields matched by the last scanp
    int complete = 0; ///< 1 if the last scanp reached the end of its format
};

/// Room that any char array handed to scanp needs at most: fields are cut at 79 characters.
inline constexpr int kScanFieldRoom = 80;

/// Starts at the beginning of a text, which must outlive the record.
void SCAN_init(ScanRec *scan, const char *text);
int SCAN_get_pos(const ScanRec *scan);
/// Positions are held within 0 and the length.
void SCAN_set_pos(ScanRec *scan, int position);
void SCAN_skip(ScanRec *scan, int n);
void SCAN_advance(ScanRec *scan); ///< by what the last scanp consumed
const char *SCAN_here(const ScanRec *scan);
/// Character i behind the position; 0 outside the text.
char SCAN_peek(const ScanRec *scan, int i);
/// Changes character i behind the position, inside the text only; the text must be writable.
void SCAN_poke(ScanRec *scan, int i, char c);
/// Moves the position to the text's next occurrence and returns 1, or returns 0.
int SCAN_find(ScanRec *scan, const char *text);

/// Matches the text at the position against a format and returns the number of fields matched;
/// -1 for an empty format or a position at or behind the end.
///
/// A blank takes a run of blanks, newlines, carriage returns or tabs, at least one; any other
/// character must stand in the text. A field is `%`, then `*` (match, store nothing), `<` (width
/// is only an upper bound), digits (width, exact without `<`), `!marker!` (accepted where the field
/// has nothing to read: stores Missing), and a conversion:
///   d int; D int with blanks around; f float; F float with blanks around;
///   s non-blanks; S anything; c width characters, no terminator; N digits; A letters;
///   w white space; W white space without newline; [set] or [^set], where /A letters, /N digits
///   and // a slash; (a|b) the first alternative that stands in the text; n characters consumed.
/// Arguments: int*, float* or char*; a char array needs its width plus one, at most kScanFieldRoom.
int scanp(ScanRec *scan, const char *format, ...);
