#include "tyr/base/sys.h"

#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <initializer_list>

#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

struct State {
    timeval start{};
    float slept = 0.0F; ///< running total of SYS_sleep, seconds
} state;

} // namespace

const char *SYS_version()
{
    return "5.59-LINUX-X11";
}

void SYS_exit(int code)
{
    std::exit(code);
}

int SYS_detach()
{
    std::fflush(nullptr);
    const pid_t pid = fork();
    if (pid < 0) {
        return 0;
    }
    if (pid > 0) {
        _exit(kExitNormal);
    }
    std::signal(SIGINT, SIG_DFL);
    const int null_device = open("/dev/null", O_RDWR);
    if (null_device < 0) {
        return 0;
    }
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        dup2(null_device, stream);
    }
    if (null_device > STDERR_FILENO) {
        close(null_device);
    }
    setpgid(0, 0);
    return 1;
}

int SYS_sleep(float seconds)
{
    if (!(seconds > 0.0F)) {
        return -1;
    }
    state.slept += seconds;
    const double whole = std::floor(static_cast<double>(seconds));
    timespec wait{};
    wait.tv_sec = static_cast<time_t>(whole);
    wait.tv_nsec = static_cast<long>((static_cast<double>(seconds) - whole) * 1e9);
    nanosleep(&wait, nullptr);
    return 0;
}

void SYS_timer_reset()
{
    gettimeofday(&state.start, nullptr);
    state.slept = 0.0F;
}

float SYS_timer_read()
{
    timeval now{};
    gettimeofday(&now, nullptr);
    if (now.tv_usec == 0) {
        return state.slept;
    }
    return static_cast<float>(static_cast<double>(now.tv_sec - state.start.tv_sec) +
                              static_cast<double>(now.tv_usec - state.start.tv_usec) * 1e-6);
}
