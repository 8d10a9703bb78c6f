#pragma once

#include <cstdarg>
#include <cstdio>
#include <string>
#include <string_view>

#include "tyr/base/whole_file.h"
#include "tyr/paper/fixed_private.h"

namespace tyr {

/// The output of a file device: a file, a pipe (`|command`), the end of a file (`+file`) or the
/// standard output. It keeps its first error to itself until it is closed and asked. Numbers are
/// written alike in every locale.
class Output {
  public:
    enum class Kind { file, append, pipe };

    Output() = default;
    Output(const Output &) = delete;
    Output &operator=(const Output &) = delete;

    /// Opens a target; what was open is dropped. False when that fails; errno tells why.
    bool open(const char *target);
    bool is_open() const { return stream_ != nullptr; }
    std::FILE *stream() const { return stream_; }
    Kind kind() const { return kind_; }
    /// The target without its `|` or `+`.
    const std::string &name() const { return name_; }

    Output &operator<<(std::string_view text);
    Output &operator<<(int number);
    Output &operator<<(Fixed number);
    /// One byte.
    void byte(unsigned value);
    /// As printf, whatever the locale. Nothing happens when nothing is open.
    void vprint(const char *format, std::va_list args);
    void print(const char *format, ...) __attribute__((format(printf, 2, 3)));

    /// Writes what is left and closes. False with a message in the name of `routine` if anything
    /// didn't go out, or if the command of a pipe failed.
    bool close(const char *routine);

  private:
    void reserve(size_t more);
    void flush();

    std::FILE *stream_ = nullptr;
    WholeFile whole_; ///< of a file: it stands under its name when it is closed
    Kind kind_ = Kind::file;
    std::string name_;
    std::string buffer_;
    int error_ = 0; ///< errno of the first write that failed
    void (*old_sigpipe_)(int) = nullptr;
};

/// Tells what was opened: "Spooling to", "Appending to" or "Creating".
void tell_target(const Output &output);

/// Reports in the name of gopen_ws that an output can't be opened, with the target and errno's why.
void report_unopened(const char *what, const std::string &target);

/// Date of the output as a line with its newline, "Sun Nov 22 12:00:00 2026"; SOURCE_DATE_EPOCH
/// takes the place of the clock.
std::string creation_date();

/// Depth that file devices report.
inline constexpr int kFileDepth = 10;

/// One line of a comment: control characters become blanks.
std::string comment_text(std::string_view text);

} // namespace tyr
