#include "support/terminal.h"

#include <array>
#include <csignal>
#include <cstdlib>

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kPatience = 10000; ///< ms
constexpr int kStep = 100;       ///< ms

} // namespace

Terminal::Terminal(const std::vector<std::string> &words)
{
    std::vector<std::string> texts = words;
    std::vector<char *> argv;
    for (std::string &t : texts) {
        argv.push_back(t.data());
    }
    argv.push_back(nullptr);
    pid_ = forkpty(&fd_, nullptr, nullptr, nullptr);
    if (pid_ == 0) {
        execv(argv[0], argv.data());
        _exit(127);
    }
}

Terminal::~Terminal()
{
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    close(fd_);
}

bool Terminal::read_some()
{
    pollfd p = {fd_, POLLIN, 0};
    if (poll(&p, 1, kStep) <= 0) {
        return true;
    }
    std::array<char, 4096> bytes;
    const ssize_t n = read(fd_, bytes.data(), bytes.size());
    if (n <= 0) {
        return false;
    }
    screen_.append(bytes.data(), static_cast<size_t>(n));
    return true;
}

bool Terminal::wait_for(const std::string &text)
{
    for (int waited = 0; waited < kPatience; waited += kStep) {
        const size_t at = screen_.find(text, seen_);
        if (at != std::string::npos) {
            seen_ = at + text.size();
            return true;
        }
        if (!read_some()) {
            break;
        }
    }
    return screen_.find(text, seen_) != std::string::npos;
}

void Terminal::type(const std::string &line)
{
    const std::string text = line + "\n";
    if (write(fd_, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        std::abort();
    }
}

int Terminal::finish()
{
    for (int waited = 0; waited < kPatience && read_some(); waited += kStep) {
    }
    int status = 0;
    for (int waited = 0; waited < kPatience; waited += kStep) {
        if (waitpid(pid_, &status, WNOHANG) == pid_) {
            pid_ = -1;
            return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        }
        usleep(kStep * 1000);
    }
    return -1;
}
