#pragma once

#include <cstdio>
#include <string>

#include <sys/types.h>

/// Files that stand under their name only when they are complete: written under a temporary name
/// in the same folder (".NAME.PID.N"), renamed when they are kept. A run that fails or is killed by
/// INT, TERM or HUP leaves the old file as it was and no temporary one.

namespace tyr {

class WholeFile {
  public:
    WholeFile() = default;
    WholeFile(WholeFile &&other) noexcept;
    WholeFile &operator=(WholeFile &&other) noexcept;
    WholeFile(const WholeFile &) = delete;
    WholeFile &operator=(const WholeFile &) = delete;
    /// Drops what wasn't kept.
    ~WholeFile();

    /// Opens a file for writing. Standard streams, pipes (`|command`), devices and FIFOs are opened
    /// straight, and so is a file in a folder that takes no new one. A link stays a link: the file
    /// that it names is replaced. The mode of an old file is kept.
    /// @return whether it could be opened; errno tells why not
    bool open(const char *name);
    /// Opens a file that is added to; one that isn't there begins empty. drop() cuts it back to
    /// the length that it had.
    bool open_to_add(const char *name);
    /// As open() for a library that opens files by name: it writes to path() and closes that before
    /// keep() or drop().
    bool open_by_name(const char *name);

    /// Where the bytes go: the temporary name, or the file's own where it is written straight.
    std::string path() const;
    std::FILE *stream() const { return stream_; }
    explicit operator bool() const { return stream_ != nullptr; }

    /// Closes the file and puts it in its place.
    /// @return 0; -1 if anything didn't go out, and then the old file stays; errno tells why
    int keep();
    /// Closes the file and takes it away; one that was opened straight stays as far as it came.
    void drop();

  private:
    int finish(bool is_kept);

    std::FILE *stream_ = nullptr;
    std::string target_;  ///< the name that it is to have
    int slot_ = -1;       ///< in the list of temporary files; -1 if it is written straight
    off_t added_to_ = -1; ///< the length of a file that is added to
};

/// From here on no file that is open is kept: the run has failed.
void abandon_whole_files();

} // namespace tyr
