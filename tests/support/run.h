#pragma once

#include <string>
#include <vector>

/// What a finished command left behind.
struct RunResult {
    int code = -1;   ///< exit code; 128 + signal where a signal ended it
    std::string out; ///< standard output
    std::string err; ///< standard error
};

/// How a command is run.
struct RunOptions {
    std::string input;            ///< text of standard input
    std::vector<std::string> env; ///< NAME=value, over one without tyr variables and DISPLAY
    std::string folder;           ///< working folder; empty for the current one
    int seconds = 60;             ///< it is killed after so long
};

/// Runs a command (first word: program path) to its end and gathers its output. Children that
/// the command leaves in the background are waited for only as long as they hold its streams.
RunResult run(const std::vector<std::string> &words, const RunOptions &options = {});

/// Path of the built program `profiler`.
std::string profiler_path();

/// True when a program of that name is on the PATH.
bool have_program(const std::string &name);
