#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tyr/upper_air/report.h"
#include "tyr/upper_air/words.h"

// Files of the five text forms, held in memory.

namespace tyr {

/// The word that opens a file of types 3 to 5; null for others.
const char *upa_magic(int type);

/// The form of a text: 1 to 5; 0 for netCDF, whose layout the library has to tell; -1 for none.
int upa_text_type(std::string_view text);

/// Leaves one level of a whole report, in mand[0], or its heading alone.
/// @param coded  the surface comes from the lists, as the text forms have it there
void keep_level(UpaReport *report, int what, bool coded);

class UpaTextFile {
  public:
    UpaTextFile() = default;
    UpaTextFile(std::string text, int type, std::string name);

    /// The line of the date.
    std::string date_line() const;
    /// See UPA_read. @return 0; -1 behind the last report
    int read(UpaReport *report, int what, int index);

  private:
    std::optional<size_t> find_report(int index);
    void skip_report(WordCursor &words) const;
    void read_heading(std::string_view word, UpaReport *report) const;
    void check_end(const WordCursor &words, int index);

    std::string text_;
    int type_ = 0;
    std::string name_;
    std::vector<size_t> starts_; // where report i stands, as far as the text was walked
    bool told_end_ = false;
};

} // namespace tyr
