#pragma once

#include <string>

/// A profiler file, read into memory once: every layout reads from there, whatever it came in.

namespace tyr {

struct ProfilerInput {
    std::string name;  ///< as it was given
    std::string bytes; ///< what the file holds, a gzip file's unpacked
};

/// Reads a file (a gzip file unpacked, at most kMostInputBytes either way).
/// @return empty, or the reason why it can't be had; `input` is then empty but for its name
std::string read_input(const char *name, ProfilerInput *input);

/// No observation file comes near: what is larger is something else, or made to fill the memory.
inline constexpr size_t kMostInputBytes = size_t{512} << 20;

} // namespace tyr
