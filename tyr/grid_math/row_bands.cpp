#include "tyr/grid_math/row_bands.h"

#include <algorithm>
#include <system_error>
#include <thread>
#include <vector>

namespace {

struct State {
    int threads = 0; // 0: the machine's number
};
State state;

int thread_count()
{
    if (state.threads > 0)
        return state.threads;
    const int machine = static_cast<int>(std::thread::hardware_concurrency());
    return std::clamp(machine, 1, tyr::kMaxGridThreads);
}

} // namespace

void GRD_set_threads(int threads)
{
    state.threads = std::max(threads, 0);
}

void tyr::over_rows(int rows, size_t points, size_t at_least, const RowWork &work)
{
    const int bands = points < at_least ? 1 : std::min(thread_count(), rows);
    std::vector<std::thread> helpers;
    int first = 0;
    for (int band = 1; band < bands; ++band) {
        const int last = static_cast<int>(static_cast<long>(rows) * band / bands);
        try {
            helpers.emplace_back(work, first, last);
        } catch (const std::system_error &) {
            break; // no more threads to be had: this one does the rest
        }
        first = last;
    }
    work(first, rows);
    for (std::thread &helper : helpers)
        helper.join();
}
