#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace tyr {

/// Types of values in a classic file; formats 1 and 2 have the first six.
enum ClassicType : int64_t {
    kClassicByte = 1,
    kClassicChar = 2,
    kClassicShort = 3,
    kClassicInt = 4,
    kClassicFloat = 5,
    kClassicDouble = 6,
};

/// Bytes of a value of a type of format 1, 2 or 5; 0 for none of them.
int64_t classic_type_size(int64_t type);

struct ClassicDimension {
    std::string_view name;
    int64_t length = 0; ///< 0 of the record dimension
};

struct ClassicAttribute {
    std::string_view name;
    int64_t type = 0;
    int64_t count = 0;
    std::string_view bytes; ///< its values, big-endian
};

struct ClassicVariable {
    std::string_view name;
    bool is_record = false;
    int64_t type = 0;
    int64_t begin = 0;
    int64_t bytes = 0;               ///< of one record, or of all
    std::size_t first_dimension = 0; ///< in the header's `shape`
    std::size_t rank = 0;
    std::size_t first_attribute = 0; ///< in the header's `attributes`
    std::size_t attribute_count = 0;
};

/// The header of a netCDF classic file, formats 1, 2 and 5. Names and values are views of the file.
/// Source of the layout: Unidata, NetCDF User's Guide, appendix on file formats.
struct ClassicHeader {
    bool is_classic = false; ///< the file begins with the magic
    bool is_whole = false;   ///< the header can be read to its end
    /// Nothing stands in it that readers may take one way or the other: padding of zeros, lengths
    /// of zero but for one record dimension that stands foremost, names that are there.
    bool is_plain = true;
    int64_t version = 0;
    int64_t records = 0; ///< as the header tells
    int64_t size = 0;    ///< bytes of the header
    std::vector<ClassicDimension> dimensions;
    std::vector<ClassicAttribute> attributes; ///< the file's own are left out
    std::vector<ClassicVariable> variables;
    std::vector<int64_t> shape; ///< dimensions of all variables, one behind the other

    std::span<const int64_t> shape_of(const ClassicVariable &v) const
    {
        return std::span(shape).subspan(v.first_dimension, v.rank);
    }
    std::span<const ClassicAttribute> attributes_of(const ClassicVariable &v) const
    {
        return std::span(attributes).subspan(v.first_attribute, v.attribute_count);
    }
    /// Bytes from one record to the next.
    int64_t record_bytes() const;
};

/// Walks the header once. It is stricter than the library, which may chew on a damaged header for
/// minutes.
ClassicHeader read_classic_header(std::string_view bytes);

} // namespace tyr
