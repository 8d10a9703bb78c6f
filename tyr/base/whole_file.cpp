#include "tyr/base/whole_file.h"

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tyr/base/file.h"
#include "tyr/base/str.h"

using namespace tyr;

namespace {

constexpr size_t kMostFiles = 32;
constexpr mode_t kNewMode = 0666;
constexpr int kEndSignals[] = {SIGINT, SIGTERM, SIGHUP};

/// A temporary file, in a form that a signal's handler can work on.
struct Temporary {
    volatile std::sig_atomic_t is_used = 0;
    pid_t owner = 0;
    std::array<char, PATH_MAX> path{};
};

struct State {
    std::array<Temporary, kMostFiles> files;
    int made = 0; ///< temporary files of this process so far
    bool is_watching = false;
    bool is_abandoned = false;
} state;

/// Takes every temporary file of this process away. Calls nothing that a handler mustn't.
void remove_temporaries()
{
    const int kept = errno;
    for (Temporary &file : state.files) {
        if (file.is_used != 0 && file.owner == getpid()) {
            unlink(file.path.data());
            file.is_used = 0;
        }
    }
    errno = kept;
}

void on_end_signal(int number)
{
    remove_temporaries();
    std::signal(number, SIG_DFL);
    std::raise(number);
}

/// Signals that the program handles, or that it was told to ignore, are left alone.
void watch_the_end()
{
    if (state.is_watching) {
        return;
    }
    state.is_watching = true;
    std::atexit(remove_temporaries);
    for (const int number : kEndSignals) {
        struct sigaction now {};
        if (sigaction(number, nullptr, &now) == 0 && now.sa_handler == SIG_DFL) {
            std::signal(number, on_end_signal);
        }
    }
}

/// The file that a name stands for, through links; the name itself where there is none yet.
std::string resolved(const std::string &path)
{
    std::array<char, PATH_MAX> real;
    return realpath(path.c_str(), real.data()) != nullptr ? std::string(real.data()) : path;
}

/// A free place in the list, with the name of a new temporary file beside the target; -1 for none.
int claim(const std::string &target)
{
    const size_t slash = target.rfind('/');
    const size_t name = slash == std::string::npos ? 0 : slash + 1;
    const std::string path = target.substr(0, name) + "." + target.substr(name) + "." +
                             std::to_string(getpid()) + "." + std::to_string(++state.made);
    for (size_t i = 0; i < state.files.size() && path.size() < PATH_MAX; ++i) {
        if (state.files[i].is_used == 0) {
            STR_copy(state.files[i].path.data(), PATH_MAX, path);
            state.files[i].owner = getpid();
            return static_cast<int>(i);
        }
    }
    return -1;
}

/// Makes the temporary file, with the mode of the old one. @return its stream; null where the
/// folder takes no new file
std::FILE *make(Temporary &file, const struct stat *old)
{
    const mode_t mode = old != nullptr ? old->st_mode & 07777 : kNewMode;
    file.is_used = 1; // before there is one: the end may come in between
    const int descriptor = open(file.path.data(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor < 0) {
        file.is_used = 0;
        return nullptr;
    }
    if (old != nullptr) {
        fchmod(descriptor, mode); // whatever the umask
    }
    return fdopen(descriptor, "wb");
}

} // namespace

WholeFile::WholeFile(WholeFile &&other) noexcept
    : stream_(std::exchange(other.stream_, nullptr)), target_(std::move(other.target_)),
      slot_(std::exchange(other.slot_, -1)), added_to_(std::exchange(other.added_to_, -1))
{
}

WholeFile &WholeFile::operator=(WholeFile &&other) noexcept
{
    if (this != &other) {
        drop();
        stream_ = std::exchange(other.stream_, nullptr);
        target_ = std::move(other.target_);
        slot_ = std::exchange(other.slot_, -1);
        added_to_ = std::exchange(other.added_to_, -1);
    }
    return *this;
}

WholeFile::~WholeFile()
{
    drop();
}

bool WholeFile::open(const char *name)
{
    drop();
    added_to_ = -1;
    target_ = name;
    if (FILE_is_std(name) != 0 || name[0] == '|') {
        stream_ = FILE_open(name, "wb");
        return stream_ != nullptr;
    }
    std::array<char, kFileNameRoom> path{};
    FILE_expand(name, path.data());
    FILE_make_dirs(path.data(), 1);
    target_ = resolved(path.data());
    struct stat old {};
    const bool is_there = stat(target_.c_str(), &old) == 0;
    const bool is_plain = !is_there || (S_ISREG(old.st_mode) && access(target_.c_str(), W_OK) == 0);
    slot_ = is_plain && !target_.empty() ? claim(target_) : -1;
    if (slot_ >= 0) {
        watch_the_end();
        stream_ = make(state.files[static_cast<size_t>(slot_)], is_there ? &old : nullptr);
        if (stream_ != nullptr) {
            return true;
        }
        slot_ = -1;
    }
    stream_ = FILE_open(name, "wb");
    return stream_ != nullptr;
}

bool WholeFile::open_to_add(const char *name)
{
    drop();
    std::array<char, kFileNameRoom> path{};
    FILE_expand(name, path.data());
    target_ = path.data();
    stream_ = FILE_open(name, "ab");
    struct stat old {};
    const bool is_plain = stream_ != nullptr && FILE_is_std(name) == 0 &&
                          fstat(fileno(stream_), &old) == 0 && S_ISREG(old.st_mode);
    added_to_ = is_plain ? old.st_size : -1;
    return stream_ != nullptr;
}

bool WholeFile::open_by_name(const char *name)
{
    if (!open(name)) {
        return false;
    }
    std::fclose(std::exchange(stream_, nullptr));
    return true;
}

std::string WholeFile::path() const
{
    return slot_ >= 0 ? std::string(state.files[static_cast<size_t>(slot_)].path.data()) : target_;
}

int WholeFile::finish(bool is_kept)
{
    const bool is_by_name = stream_ == nullptr;
    if (is_by_name && slot_ < 0) {
        return 0;
    }
    errno = 0;
    int result = is_by_name ? 0 : FILE_close(std::exchange(stream_, nullptr));
    int why = errno;
    const bool is_good = is_kept && result == 0 && !state.is_abandoned;
    const off_t length = std::exchange(added_to_, -1);
    if (length >= 0 && !is_good && truncate(target_.c_str(), length) != 0) {
        result = -1;
    }
    if (slot_ < 0) {
        errno = why;
        return result;
    }
    Temporary &file = state.files[static_cast<size_t>(std::exchange(slot_, -1))];
    if (file.is_used == 0) {
        return result; // taken away at the end already
    }
    if (is_good && std::rename(file.path.data(), target_.c_str()) != 0) {
        result = -1;
        why = errno;
    }
    if (!is_good || result != 0) {
        unlink(file.path.data());
    }
    file.is_used = 0;
    errno = why;
    return result;
}

int WholeFile::keep()
{
    return finish(true);
}

void WholeFile::drop()
{
    finish(false);
}

void tyr::abandon_whole_files()
{
    state.is_abandoned = true;
}
