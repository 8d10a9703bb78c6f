#pragma once

#include "programs/profiler/layout.h"

/// The layout of consensus winds as text, which boundary-layer profilers write: a block a mode and
/// time, each ended by a line of `$`. Blocks of one station and time make one report: the modes in
/// the order of the file, of two levels of one height the first that has a wind. Of several times
/// in a file the one nearest the hour of the file's name is the station's report, or the one that
/// the `plot_param` word `time=hh:mm` (`time=:mm`: in the hour of the name) asks for;
/// all of them with `time=all`.

namespace tyr {

bool probe_consensus(const ProfilerInput &input);
int open_consensus(const ProfilerInput &input);
void read_consensus_header(const ProfilerInput &input, PrfFileInfo *info);
int read_consensus_record(const ProfilerInput &input, int64_t index, ProfilerRecord *record);
bool consensus_record_date(DateRec *date);
void close_consensus();

inline constexpr int kLayoutConsensus = 21;

inline constexpr LayoutRow kConsensusLayout = {
    kLayoutConsensus,      probe_consensus, open_consensus,        read_consensus_header,
    read_consensus_record, nullptr,         consensus_record_date, nullptr,
    close_consensus,
};

} // namespace tyr
