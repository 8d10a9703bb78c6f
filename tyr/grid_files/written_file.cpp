#include <cstdio>
#include <filesystem>

#include <unistd.h>

#include "tyr/base/file.h"
#include "tyr/base/str.h"
#include "tyr/grid_files/written_file_private.h"

namespace tyr {

namespace {

namespace fs = std::filesystem;

/// The place that a link stands for; the name itself where it is none.
std::string behind_links(const std::string &name)
{
    std::error_code error;
    const fs::path path = fs::weakly_canonical(name, error);
    return error || !fs::is_symlink(name, error) ? name : path.string();
}

} // namespace

WrittenFile::WrittenFile(std::string name, bool append, int number) : path_(name)
{
    if (FILE_is_std(name.c_str()) != 0 || name[0] == '|') {
        return;
    }
    const bool is_there = FILE_exists(name.c_str()) == 1;
    if (is_there && FILE_is_regular(name.c_str()) != 1) {
        return;
    }
    if (append) {
        old_size_ = is_there ? FILE_size(name.c_str()) : 0;
        return;
    }
    name_ = behind_links(name);
    path_ = STR_print("%s.part%d_%d", name_.c_str(), static_cast<int>(getpid()), number);
}

bool WrittenFile::finish(bool is_good) const
{
    if (!is_good && old_size_ >= 0) {
        std::error_code error;
        fs::resize_file(path_, static_cast<std::uintmax_t>(old_size_), error);
    }
    if (name_.empty()) {
        return is_good;
    }
    if (is_good && std::rename(path_.c_str(), name_.c_str()) == 0) {
        return true;
    }
    FILE_remove(path_.c_str());
    return false;
}

} // namespace tyr
