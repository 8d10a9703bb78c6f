#pragma once

#include <array>
#include <string>
#include <vector>

#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/raw/raw.h"

/// What the commands over raw files share: their settings and the files of their words.

namespace tyr {

struct RawMath {
    float fill = kMissing; ///< value of a station that has none
    bool is_fill_written = false;
    bool has_no_attributes = false;
    std::vector<std::string> identifiers; ///< the only ones that count; empty for all
    RawHeader header = {};                ///< of the file to write
    int pass = 0;                         ///< files applied so far
};

RawMath &raw_math();

/// Takes the texts of another header where the output's are still empty.
void fill_header(const RawHeader &other);

/// The header words of a command from place `at` on.
void take_header_words(char **words, int count, int at);

/// The file of a command's word. One that is written is dropped unless it is kept.
class MathFile {
  public:
    MathFile(const char *word, RawMode mode);
    ~MathFile();
    MathFile(const MathFile &) = delete;
    MathFile &operator=(const MathFile &) = delete;

    explicit operator bool() const { return handle_ != -1; }
    int handle() const { return handle_; }
    int column() const { return column_; }
    const char *format() const { return format_; } ///< null for none

    /// The next value that counts, Missing replaced. @return false at the end
    bool next(RawValue *value) const;
    /// Closes the file. @return 1; 0 unless all of it went out
    int keep();

  private:
    std::array<char, kFileNameRoom> name_{};
    int handle_ = -1;
    int column_ = kRawAllWords;
    char *format_ = nullptr;
};

} // namespace tyr
