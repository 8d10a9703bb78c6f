#pragma once

#include <vector>

#include "programs/profiler/records.h"

/// The program's walk over profiler files: it keeps the open handle, the next index and what the
/// file last opened said of itself.

/// Opens a file and reads its header. @return 1, or 0 where it can't be opened
int PRF_open_file(const char *name);

/// The next record. @return 1, or -1 at the end
int PRF_next_station(ProfilerRecord *record);

/// Back to the first record. @return as PROF_rewind
int PRF_rewind();

/// Closes the file. @return as PROF_close
int PRF_close_file();

/// Searches a file for a station, by id without regard to case, and closes it again.
/// @return 1 with its record, or 0
int PRF_find_station(const char *name, const char *id, ProfilerRecord *record);

/// What the last header read said: date label, date, station count.
const PrfFileInfo &PRF_file_info();

/// Writes the date label where no file has given one.
void PRF_set_date_label(const DateRec *date);

namespace tyr {

/// A station's report and its time.
struct TimedReport {
    ProfilerRecord record;
    DateRec date;
};

/// The most reports of a station that are taken from a file.
inline constexpr size_t kMostTimes = 1000;

/// Every report of a station in a file, in the order of their times.
std::vector<TimedReport> find_times(const char *name, const char *id);

} // namespace tyr
