#include "programs/profiler/child.h"

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr size_t kMostBytes = size_t{64} << 20;
constexpr size_t kBlock = 65536;

/// The child's side; it never returns.
[[noreturn]] void live(const std::function<void(int)> &work, int descriptor, unsigned seconds)
{
    for (const int number : {SIGINT, SIGTERM, SIGPIPE, SIGALRM, SIGSEGV, SIGBUS, SIGABRT}) {
        std::signal(number, SIG_DFL);
    }
    const rlimit time = {seconds, seconds};
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CPU, &time);
    setrlimit(RLIMIT_CORE, &none);
    const int quiet = open("/dev/null", O_WRONLY);
    dup2(quiet, STDERR_FILENO);
    dup2(quiet, STDOUT_FILENO);
    work(descriptor);
    _exit(0);
}

std::string read_all(int descriptor)
{
    std::string bytes;
    std::array<char, kBlock> block{};
    while (bytes.size() < kMostBytes) {
        const ssize_t count = read(descriptor, block.data(), block.size());
        if (count > 0) {
            bytes.append(block.data(), static_cast<size_t>(count));
        } else if (count == 0 || errno != EINTR) {
            break;
        }
    }
    return bytes;
}

} // namespace

std::string tyr::run_in_child(const std::function<void(int)> &work, unsigned seconds)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return {};
    }
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        live(work, ends[1], seconds);
    }
    close(ends[1]);
    std::string bytes;
    if (child > 0) {
        bytes = read_all(ends[0]);
    }
    close(ends[0]);
    while (child > 0 && waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    return bytes;
}

bool tyr::write_all(int descriptor, const void *bytes, size_t size)
{
    const char *place = static_cast<const char *>(bytes);
    while (size > 0) {
        const ssize_t count = write(descriptor, place, size);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        const size_t done = count > 0 ? static_cast<size_t>(count) : 0;
        place += done;
        size -= done;
    }
    return true;
}
