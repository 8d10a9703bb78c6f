#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "timefile/date.h"
#include "tyr/upper_air/report.h"

// Forms of upper-air reports that others publish; a file is read at once. One family: bulletin.h,
// wyoming.h, spc.h.

namespace tyr {

/// What a file of others held.
struct ForeignFile {
    std::vector<UpaReport> reports;
    DateRec date; ///< of the first report that tells one; the month is missing without any
};

/// Reports of one file beyond this are told and left out.
inline constexpr size_t kMostForeign = 5000;

/// Tells what can't be used, at warn, with the file's name: the first lines one by one, then how
/// many more there were.
class Refusals {
  public:
    explicit Refusals(std::string name) : name_(std::move(name)) {}
    Refusals(const Refusals &) = delete;
    Refusals &operator=(const Refusals &) = delete;
    ~Refusals();

    void tell(const std::string &reason);
    const std::string &name() const { return name_; }

  private:
    std::string name_;
    int count_ = 0;
};

/// kUpaBulletin, kUpaWyoming or kUpaSpc by what the first lines of a text hold; -1 for none.
int foreign_type(std::string_view text);

/// Reads a text of that type. What can't be used is told and passed over.
ForeignFile read_foreign(int type, std::string_view text, const std::string &name);

/// Sorts the levels of a table into a report, by falling pressure and rising height: those at a
/// mandatory pressure into its slot, the first with a temperature into the surface's and the first
/// place of the list, others into the list of significant levels, and winds with a height into the
/// list of winds. Levels beyond the lists are told.
void sort_levels(std::vector<SoundLevel> levels, UpaReport *report, Refusals &refusals);

/// Cuts a word of blanks or of a separator off a text.
std::string_view take_field(std::string_view *text, char separator);

} // namespace tyr
