#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "programs/profiler/records.h"

/// BUFR messages beyond our own walk (edition 4, compressed data, sequences, delayed replication,
/// other elements), decoded by ecCodes where the program was built with it.

namespace tyr {

struct LibraryReport {
    ProfilerRecord record;
    DateRec date;
};

/// Name and version of the library; empty where the program was built without it.
std::string bufr_library_version();

/// Whether a message of the bytes is one that our own walk can't follow.
bool bufr_needs_library(std::string_view bytes);

/// Every profile of every message. Messages among them that the library can't
/// decode are told at `warn`.
/// A level's wind that its quality mark calls bad is Missing.
std::vector<LibraryReport> bufr_library_read(std::string_view bytes, const char *name);

} // namespace tyr
