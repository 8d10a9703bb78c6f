#include "support/run.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sstream>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace {

constexpr int kSignalBase = 128;
constexpr int kExecFailed = 127;

std::vector<std::string> clean_environment(const std::vector<std::string> &extra)
{
    std::vector<std::string> result;
    for (char **e = environ; *e; ++e) {
        if (std::strncmp(*e, "tyr", 3) != 0 && std::strncmp(*e, "DISPLAY=", 8) != 0) {
            result.emplace_back(*e);
        }
    }
    result.insert(result.end(), extra.begin(), extra.end());
    return result;
}

std::vector<char *> pointers(std::vector<std::string> &texts)
{
    std::vector<char *> result;
    for (std::string &t : texts) {
        result.push_back(t.data());
    }
    result.push_back(nullptr);
    return result;
}

[[noreturn]] void child(const std::vector<std::string> &words, const RunOptions &options,
                        const std::array<int, 6> &pipes)
{
    dup2(pipes[0], STDIN_FILENO);
    dup2(pipes[3], STDOUT_FILENO);
    dup2(pipes[5], STDERR_FILENO);
    for (const int fd : pipes) {
        close(fd);
    }
    if (!options.folder.empty() && chdir(options.folder.c_str()) != 0) {
        _exit(kExecFailed);
    }
    std::vector<std::string> argv_texts = words;
    std::vector<std::string> env_texts = clean_environment(options.env);
    const std::vector<char *> env_pointers = pointers(env_texts);
    const std::vector<char *> argv = pointers(argv_texts);
    execvpe(argv[0], argv.data(), env_pointers.data());
    _exit(kExecFailed);
}

/// Feeds the input and drains both outputs until all are closed or the time is up.
bool pump(int in, int out, int err, const RunOptions &options, RunResult &result)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(options.seconds);
    size_t sent = 0;
    std::array<pollfd, 3> fds = {{{in, POLLOUT, 0}, {out, POLLIN, 0}, {err, POLLIN, 0}}};
    if (options.input.empty()) {
        close(in);
        fds[0].fd = -1;
    }
    while (fds[1].fd >= 0 || fds[2].fd >= 0) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        if (poll(fds.data(), fds.size(), 100) < 0 && errno != EINTR) {
            return false;
        }
        if (fds[0].fd >= 0 && fds[0].revents) {
            const ssize_t n = write(in, options.input.data() + sent, options.input.size() - sent);
            sent += n > 0 ? static_cast<size_t>(n) : 0;
            if (n < 0 || sent == options.input.size()) {
                close(in);
                fds[0].fd = -1;
            }
        }
        for (const int i : {1, 2}) {
            if (fds[i].fd < 0 || !fds[i].revents) {
                continue;
            }
            std::array<char, 65536> bytes;
            const ssize_t n = read(fds[i].fd, bytes.data(), bytes.size());
            if (n <= 0) {
                close(fds[i].fd);
                fds[i].fd = -1;
            } else {
                (i == 1 ? result.out : result.err).append(bytes.data(), static_cast<size_t>(n));
            }
        }
    }
    if (fds[0].fd >= 0) {
        close(in);
    }
    return true;
}

} // namespace

RunResult run(const std::vector<std::string> &words, const RunOptions &options)
{
    RunResult result;
    std::array<int, 6> pipes;
    if (pipe(&pipes[0]) != 0 || pipe(&pipes[2]) != 0 || pipe(&pipes[4]) != 0) {
        return result;
    }
    signal(SIGPIPE, SIG_IGN);
    const pid_t pid = fork();
    if (pid == 0) {
        signal(SIGPIPE, SIG_DFL);
        child(words, options, pipes);
    }
    close(pipes[0]);
    close(pipes[3]);
    close(pipes[5]);
    if (!pump(pipes[1], pipes[2], pipes[4], options, result)) {
        kill(pid, SIGKILL);
        result.err += "\n(killed: time is up)\n";
    }
    int status = 0;
    waitpid(pid, &status, 0);
    result.code = WIFEXITED(status) ? WEXITSTATUS(status) : kSignalBase + WTERMSIG(status);
    return result;
}

std::string profiler_path()
{
    return TYR_BINARY_DIR "/bin/profiler";
}

bool have_program(const std::string &name)
{
    const char *path = std::getenv("PATH");
    std::stringstream folders(path ? path : "");
    std::string folder;
    while (std::getline(folders, folder, ':')) {
        if (access((std::filesystem::path(folder) / name).c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}
