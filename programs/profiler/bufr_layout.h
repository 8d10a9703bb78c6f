#pragma once

#include "programs/profiler/layout.h"

/// The layout of BUFR messages: a stream, report after report.

namespace tyr {

bool probe_bufr(const ProfilerInput &input);
int open_bufr(const ProfilerInput &input);
void read_bufr_header(const ProfilerInput &input, PrfFileInfo *info);
int read_bufr_record(const ProfilerInput &input, int64_t index, ProfilerRecord *record);
bool bufr_record_date(DateRec *date);
void rewind_bufr();
void close_bufr();

inline constexpr int kLayoutBufr = 31;

inline constexpr LayoutRow kBufrLayout = {
    kLayoutBufr, probe_bufr,       open_bufr,   read_bufr_header, read_bufr_record,
    nullptr,     bufr_record_date, rewind_bufr, close_bufr,
};

} // namespace tyr
