#pragma once

#include <string>
#include <vector>

#include "support/run.h"

/// Runs the program on this checkout's data, away from any installed resource file.
RunResult run_profiler(const std::vector<std::string> &words, const RunOptions &options = {});

/// The same for any of the programs, by its name.
RunResult run_program(const std::string &name, const std::vector<std::string> &words,
                      const RunOptions &options = {});

/// Writes the sample observations into a folder. @return the paths, oldest first
std::vector<std::string> make_samples(const std::string &folder, const std::string &layout = "12",
                                      int hours = 13);

/// Waits until a file that a detached process writes ends with a text. @return whether it did
bool wait_for_end(const std::string &path, const std::string &end);
