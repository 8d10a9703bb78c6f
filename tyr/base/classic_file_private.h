#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tyr/base/classic_header_private.h"

namespace tyr {

/// A netCDF file of format 1 or 2 in memory, read without the library and with its results. The
/// bytes stay as they are for as long as it is used. Every place is held against the dimensions
/// and against the bytes.
class ClassicFile {
  public:
    /// Takes a file as the format's definition lays it out, ranges one behind the other; whatever
    /// is odd in it is left to the library. @return empty then
    static std::optional<ClassicFile> open(ClassicHeader header, std::string_view bytes);

    /// Ids as the library counts them; -1 for none.
    int dimension(std::string_view name) const;
    int variable(std::string_view name) const;

    /// The record dimension, or -1.
    int record_dimension() const;
    int64_t length(int dimension) const;
    int variable_count() const { return static_cast<int>(header_.variables.size()); }
    /// Null for a bad id.
    const ClassicVariable *at(int variable) const;

    /// Values of a range, as floats; larger ones come out as the largest float. Start and count
    /// have at least the variable's rank. False for characters and outside the variable.
    bool floats(int variable, std::span<const std::size_t> start,
                std::span<const std::size_t> count, float *out) const;
    /// Characters of a range; false for numbers and outside the variable.
    bool text(int variable, std::span<const std::size_t> start, std::span<const std::size_t> count,
              char *out) const;
    /// One value.
    std::optional<double> number(int variable, std::span<const std::size_t> start) const;

    /// Null where the variable hasn't got it.
    const ClassicAttribute *attribute(int variable, std::string_view name) const;

  private:
    /// Hands each row of values that lie side by side to `take(bytes, count)`.
    template <class Take>
    bool each_row(const ClassicVariable &v, std::span<const std::size_t> start,
                  std::span<const std::size_t> count, Take take) const;
    bool is_inside(const ClassicVariable &v, std::span<const std::size_t> start,
                   std::span<const std::size_t> count) const;
    bool is_usual() const;
    void sort_names();

    ClassicHeader header_;
    std::string_view bytes_;
    int64_t record_bytes_ = 0;
    std::vector<int> by_name_; ///< variables in the order of their names
};

/// A value of a numeric type as it stands in the file.
double classic_number(const char *bytes, int64_t type);

} // namespace tyr
