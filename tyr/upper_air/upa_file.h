#pragma once

#include "timefile/date.h"
#include "tyr/upper_air/report.h"
#include "tyr/upper_air/upa_types.h"

// Files of upper-air reports, in nine forms that are written and seven that are read (upa_types.h
// has the codes; the headers of the forms tell what each can't hold). One file at a time.

inline constexpr int kUpaDateRoom = 40;
inline constexpr int kUpaShortDateRoom = 24;

struct UpaFileHeader {
    char date_text[kUpaDateRoom];       ///< "12Z 06 MAR 99" and what else TIME_parse reads
    char short_date[kUpaShortDateRoom]; ///< netCDF attribute `yymmddhh`
    const char *history;                ///< netCDF attribute; null for a standard text
    DateRec date;                       ///< the file date
};

/// How much UPA_read reads. 0 to 23 is one slot of UpaSlot, into mand[0].
enum UpaWhat : int {
    kUpaWhole = 30,
    kUpaHeading = 31, ///< id and what the heading of a text form holds; netCDF: id and wmo
    kUpaPlace = 32    ///< netCDF: id, region, wmo, lat, lon, elev; text forms: as kUpaHeading
};

/// The form of a file by its first word, one of 1 to 5, 11 and 12; -1 for none of them. The magic
/// words are "TYRUPA", "TYRUPA+" and "TYRUPAx"; words of the same lengths that begin with 'W',
/// which older programs wrote, count too. Types 1 and 2, which have no magic, begin with a date's
/// digit; their third line tells them apart, and one without any report is type 1.
int UPA_file_type(const char *name);

/// Opens a file for reading (mode 0) or writing (mode 1); one that is open is closed. With *type 0
/// the type is found out, which mode 0 alone allows: by UPA_file_type, and failing that the forms
/// of others, 61 to 63, by what they hold. A digest or an XML file can't be read, which is told.
///
/// Texts are read whole, to 256 megabytes. A netCDF file that is cut short or damaged is told and
/// not opened.
/// @return the stream's descriptor or the netCDF id; -1 on failure
int UPA_open(const char *name, int mode, int *type);

/// Closes; an XML file gets its end first. @return 0; -1 for no open file, or (told) when not all
/// could be written
int UPA_close(int handle);

/// Reads the header from the start of the file; netCDF reports can't be read before. A netCDF file
/// without the global attribute `version` counts longitude positive to the west: from then on, for
/// this process, `lon` is negated on reading. @return 0, or -1 for no file to read
int UPA_read_header(int handle, UpaFileHeader *header);
/// Writes it, which comes before the first report. The digest takes its date from `date`.
/// @return 0, or -1 for no file to write
int UPA_write_header(int handle, UpaFileHeader *header);

/// Back to the first report. @return 0, or -1 for a type that can't be read
int UPA_rewind_file(int handle);

/// Reads report `*index`, from 0; any order will do. A text that ends inside of a report gives what
/// there is, and one message.
/// @param what  UpaWhat or a slot; anything above 32 reads nothing
/// @return 0; -1 at the end of the file
int UPA_read(int handle, UpaReport *report, int what, int *index);

/// Writes report `*index` (netCDF: as that record; others: behind the last) and adds 1 to `*index`.
/// Types 1 and 2 set pressures of `report` to Missing (short_text.h).
/// @return 0; -1 for no file to write. The binary digest writes too, but gives -1 and no step.
int UPA_write(int handle, UpaReport *report, void *unused, int *index);
