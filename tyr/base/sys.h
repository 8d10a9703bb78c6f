#pragma once

// The system's own list of call numbers has a macro of the name SYS_exit, and standard headers pull
// it in: it is read here first and put away.
#include <sys/syscall.h>
#undef SYS_exit

// The process: its end, its way into the background, its timer.

/// Exit codes.
enum ExitCode {
    kExitNormal = 0,
    kExitNoDetach = 1,
    kExitNoGraphics = 4,
    kExitQueue = 7,
    kExitNoFile = 10,
    kExitNothing = 11,
    kExitNoDump = 12,
    kExitNoAnswer = 13,
    kExitNoStation = 31,
    kExitDomain = 43
};

/// The version word, "5.59-LINUX-X11".
const char *SYS_version();
/// Ends the process, flushing the standard streams.
[[noreturn]] void SYS_exit(int code);
/// Puts the process in the background: forks, the parent ends with code 0, the child goes on in a
/// process group of its own with the null device as its standard streams. Returns 1, or 0 on
/// failure (the caller then ends with kExitNoDetach).
int SYS_detach();
/// Sleeps and adds to the running total. Returns 0; -1 for zero or less.
int SYS_sleep(float seconds);
/// Notes the time and clears the running total of SYS_sleep.
void SYS_timer_reset();
/// Seconds since SYS_timer_reset; the running total where the clock shows no microseconds.
float SYS_timer_read();
