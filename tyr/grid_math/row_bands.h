#pragma once

// Work over the rows of a grid, on two threads where that pays.

#include <cstddef>
#include <functional>

/// How many threads the loops over grids may use, 1 or more. 0 goes back to the machine's number,
/// at most kMaxGridThreads. The results are the same bytes for any number.
void GRD_set_threads(int threads);

namespace tyr {

inline constexpr int kMaxGridThreads = 2;

/// Points below which a second thread costs more than it gives.
inline constexpr size_t kCheapPoints = 1U << 19U;  ///< of loops that wait for the memory
inline constexpr size_t kCostlyPoints = 1U << 13U; ///< of loops that compute

using RowWork = std::function<void(int first, int last)>;

/// Calls work(first, last) on bands that cover the rows 0 to rows - 1, one band a thread. The
/// bands must not depend on one another, and work doesn't throw.
/// @param points   size of the whole task
/// @param at_least points from which on a second thread is used
void over_rows(int rows, size_t points, size_t at_least, const RowWork &work);

} // namespace tyr
