#include "tyr/base/file.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tyr/base/str.h"

namespace {

constexpr mode_t kDirMode = 0755;
constexpr size_t kMaxPipes = 64;

struct State {
    std::array<FILE *, kMaxPipes> pipes{}; ///< streams of FILE_open that are pipes; null for none
} state;

std::string home_of(const std::string &user)
{
    if (user.empty()) {
        const char *home = std::getenv("HOME");
        if (home && *home) {
            return home;
        }
    }
    const passwd *entry = user.empty() ? getpwuid(getuid()) : getpwnam(user.c_str());
    return entry && entry->pw_dir ? entry->pw_dir : "";
}

std::string expand(const char *name)
{
    std::string text = name ? name : "";
    if (text.empty() || text[0] != '~') {
        return text;
    }
    const size_t slash = std::min(text.find('/'), text.size());
    const std::string home = home_of(text.substr(1, slash - 1));
    return home.empty() ? text : home + text.substr(slash);
}

bool has_mode(const char *name, mode_t kind)
{
    struct stat info {};
    return stat(expand(name).c_str(), &info) == 0 && (info.st_mode & S_IFMT) == kind;
}

bool exists(const std::string &path)
{
    struct stat info {};
    return stat(path.c_str(), &info) == 0;
}

FILE *open_pipe(const char *command, bool for_reading)
{
    const auto place = std::find(state.pipes.begin(), state.pipes.end(), nullptr);
    if (place == state.pipes.end()) {
        return nullptr;
    }
    std::fflush(nullptr);
    *place = popen(command, for_reading ? "r" : "w");
    // a command that ends early is a write error that FILE_close tells, not the end of the program
    std::signal(SIGPIPE, SIG_IGN);
    return *place;
}

} // namespace

FILE *FILE_open(const char *name, const char *mode)
{
    const bool for_reading = mode[0] == 'r';
    if (FILE_is_std(name)) {
        return for_reading ? stdin : stdout;
    }
    if (name[0] == '|') {
        return open_pipe(name + 1, for_reading);
    }
    std::string path = expand(name);
    if (!for_reading) {
        FILE_make_dirs(path.data(), 1);
    }
    return std::fopen(path.c_str(), mode);
}

int FILE_close(FILE *stream)
{
    if (!stream) {
        return 0;
    }
    if (stream == stdin || stream == stdout || stream == stderr) {
        return stream != stdin && (std::fflush(stream) != 0 || std::ferror(stream)) ? -1 : 0;
    }
    const bool failed = std::ferror(stream) != 0;
    const auto pipe = std::find(state.pipes.begin(), state.pipes.end(), stream);
    const bool is_pipe = pipe != state.pipes.end();
    if (is_pipe) {
        *pipe = nullptr;
    }
    const int result = is_pipe ? pclose(stream) : std::fclose(stream);
    return failed || result != 0 ? -1 : 0;
}

int FILE_exists(const char *name)
{
    return FILE_is_std(name) || exists(expand(name));
}

int FILE_is_std(const char *name)
{
    return !name || !*name || std::strcmp(name, "-") == 0 || STR_casecmp(name, "std") == 0 ||
           STR_casecmp(name, "stdn") == 0;
}

int FILE_is_path(const char *name)
{
    return name && (*name == '/' || *name == '.' || *name == '~');
}

int FILE_is_dir(const char *name)
{
    return has_mode(name, S_IFDIR);
}

int FILE_is_regular(const char *name)
{
    return has_mode(name, S_IFREG);
}

int FILE_is_fifo(const char *name)
{
    return has_mode(name, S_IFIFO);
}

int FILE_is_device(const char *name)
{
    return has_mode(name, S_IFCHR) || has_mode(name, S_IFBLK);
}

long FILE_size(const char *name)
{
    struct stat info {};
    return stat(expand(name).c_str(), &info) == 0 ? static_cast<long>(info.st_size) : -1;
}

long FILE_mtime(const char *name)
{
    struct stat info {};
    return stat(expand(name).c_str(), &info) == 0 ? static_cast<long>(info.st_mtime) : -1;
}

int FILE_remove(const char *name)
{
    return unlink(expand(name).c_str()) == 0 ? 0 : -1;
}

char *FILE_join(const char *directory, const char *name, char *out)
{
    if (FILE_is_std(name) || FILE_is_path(name)) {
        STR_copy(out, kFileNameRoom, name ? name : "");
        return out;
    }
    std::string path = directory ? directory : "";
    if (!path.empty() && path.back() != '/') {
        path += '/';
    }
    STR_copy(out, kFileNameRoom, path + name);
    return out;
}

void FILE_add_slash(char *path)
{
    const size_t n = std::strlen(path);
    if (n > 0 && path[n - 1] != '/') {
        path[n] = '/';
        path[n + 1] = '\0';
    }
}

void FILE_expand(const char *name, char *out)
{
    STR_copy(out, kFileNameRoom, expand(name));
}

int FILE_make_dirs(char *path, int leave)
{
    STR_replace_char(path, '\\', '/');
    std::string_view wanted = path;
    for (int i = 0; i < leave; ++i) {
        const size_t slash = wanted.rfind('/');
        if (slash == std::string_view::npos) {
            return 1;
        }
        wanted = wanted.substr(0, slash);
    }
    const std::string directory(wanted);
    if (directory.empty() || exists(directory)) {
        return 1;
    }
    for (size_t end = directory.find('/', 1); end != std::string::npos;
         end = directory.find('/', end + 1)) {
        mkdir(directory.substr(0, end).c_str(), kDirMode);
    }
    mkdir(directory.c_str(), kDirMode);
    return exists(directory);
}
