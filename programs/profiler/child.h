#pragma once

#include <functional>
#include <string>

namespace tyr {

/// Runs a piece of work in a process of its own, with a bound on its time and without messages:
/// what a library does to itself there (it crashes, it never ends) isn't done to the program.
/// @param work     gets the descriptor to write its result to
/// @param seconds  of processor time
/// @return what it wrote, whole or up to where it fell; empty where no process could be had
std::string run_in_child(const std::function<void(int descriptor)> &work, unsigned seconds);

/// Writes all bytes. False when not all went out.
bool write_all(int descriptor, const void *bytes, size_t size);

} // namespace tyr
