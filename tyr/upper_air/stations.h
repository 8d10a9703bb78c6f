#pragma once

#include "timefile/date.h"
#include "tyr/upper_air/report.h"

// The current file of upper-air reports, station by station, with the user's choice of one.

/// Room of a station's name as it is asked for, with the end.
inline constexpr int kUpaNameRoom = 12;

/// Opens a file of any form that can be read; its date becomes the current date, which is shown at
/// `mess`. @return 1; 0 (told)
int UPA_open_file(const char *name);
void UPA_close_file();
/// Back to the first station.
void UPA_rewind();

/// Date of the current file.
void UPA_get_date(DateRec *date);

/// The next station's report. @return 0, or -1 at the end
int UPA_next_station(UpaReport *report);

/// The report of a station: by identifier, without case, or WMO number. @return 1; 0 (told)
int UPA_get_station(const char *name, UpaReport *report);

/// Shows all identifiers, 15 to a line, at `print`.
void UPA_list_stations();

/// Finds the station of the resource `identifier`, or asks for one up to four times; without the
/// resource the stations are listed first. The resource "list" lists them and ends the program with
/// code 0, as the answer "exit" does. Ends it with code 31 when nothing was found. Works once,
/// until UPA_ask_station sets the ask flag again.
/// @return 1 with the report; 0 when the station doesn't have to be asked for
int UPA_select_station(UpaReport *report);
/// Sets the flag that says whether the station must still be asked for; it is set at start.
void UPA_ask_station(int flag);

/// Sets the default file name convention "upa_cvt" and settings slot 14 to 20; an entry of
/// `in_file` then names another convention, or "upa" puts the default back.
void UPA_file_names();
