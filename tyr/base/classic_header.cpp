#include <algorithm>
#include <limits>

#include "tyr/base/classic_header_private.h"

using namespace tyr;

namespace {

enum ListTag { kAbsent = 0, kDimensionTag = 10, kVariableTag = 11, kAttributeTag = 12 };

constexpr int64_t kPad = 4;
constexpr int64_t kMostEntries = 65536;
constexpr int64_t kLongestName = 256;     ///< the library's own limit for writing
constexpr int64_t kMostDimensions = 1024; ///< of a variable

int64_t padded(int64_t bytes)
{
    return (bytes + kPad - 1) / kPad * kPad;
}

struct Widths {
    int count = 4;  ///< bytes of a count
    int offset = 4; ///< bytes of a file offset
};

/// Reads big-endian numbers; fails for good at the first that isn't there.
class HeaderCursor {
  public:
    explicit HeaderCursor(std::string_view bytes) : bytes_(bytes) {}

    bool ok() const { return ok_; }
    bool is_plain() const { return is_plain_; }
    int64_t size() const { return static_cast<int64_t>(bytes_.size()); }
    int64_t at() const { return static_cast<int64_t>(at_); }
    void fail() { ok_ = false; }
    void expect(bool is_usual) { is_plain_ = is_plain_ && is_usual; }

    int64_t number(int bytes)
    {
        ok_ = ok_ && bytes_.size() - at_ >= static_cast<size_t>(bytes);
        uint64_t value = 0;
        for (int i = 0; ok_ && i < bytes; ++i) {
            value = value << 8 | static_cast<unsigned char>(bytes_[at_++]);
        }
        return static_cast<int64_t>(value);
    }

    /// A count that has to be sane before it drives a loop.
    int64_t count(int bytes, int64_t most)
    {
        const int64_t n = number(bytes);
        if (n < 0 || n > most) {
            ok_ = false;
        }
        return ok_ ? n : 0;
    }

    /// Bytes, filled up to the next multiple of four.
    std::string_view text(int64_t bytes)
    {
        const int64_t left = size() - at();
        ok_ = ok_ && bytes >= 0 && bytes <= left && padded(bytes) <= left;
        if (!ok_) {
            return {};
        }
        const std::string_view all = bytes_.substr(at_, static_cast<size_t>(padded(bytes)));
        at_ += all.size();
        const std::string_view own = all.substr(0, static_cast<size_t>(bytes));
        expect(all.find_first_not_of('\0', own.size()) == std::string_view::npos);
        return own;
    }

    std::string_view name(const Widths &w)
    {
        const std::string_view name = text(count(w.count, kLongestName));
        expect(!name.empty() && name.find('\0') == std::string_view::npos);
        return name;
    }

  private:
    std::string_view bytes_;
    size_t at_ = 0;
    bool ok_ = true;
    bool is_plain_ = true;
};

int64_t list_length(HeaderCursor &in, const Widths &w, ListTag expected)
{
    const int64_t tag = in.number(4);
    const int64_t n = in.count(w.count, kMostEntries);
    if (tag != expected && (tag != kAbsent || n != 0)) {
        in.fail();
    }
    return in.ok() ? n : 0;
}

void read_dimensions(HeaderCursor &in, const Widths &w, ClassicHeader *header)
{
    int64_t unlimited = 0;
    for (int64_t n = list_length(in, w, kDimensionTag); n > 0 && in.ok(); --n) {
        ClassicDimension dimension;
        dimension.name = in.name(w);
        dimension.length = in.count(w.count, std::numeric_limits<int64_t>::max());
        unlimited += dimension.length == 0 ? 1 : 0;
        header->dimensions.push_back(dimension);
    }
    in.expect(unlimited <= 1);
}

/// @param[out] out  null where they aren't wanted
void read_attributes(HeaderCursor &in, const Widths &w, std::vector<ClassicAttribute> *out)
{
    for (int64_t n = list_length(in, w, kAttributeTag); n > 0 && in.ok(); --n) {
        ClassicAttribute attribute;
        attribute.name = in.name(w);
        attribute.type = in.number(4);
        attribute.count = in.count(w.count, in.size());
        attribute.bytes = in.text(classic_type_size(attribute.type) * attribute.count);
        in.expect(attribute.type >= kClassicByte && attribute.type <= kClassicDouble);
        if (out != nullptr) {
            out->push_back(attribute);
        }
    }
}

/// @return the number of values in the variable, of one record or of all
int64_t read_shape(HeaderCursor &in, const Widths &w, ClassicHeader *header, ClassicVariable *var)
{
    int64_t elements = 1;
    const int64_t rank = in.count(w.count, kMostDimensions);
    var->first_dimension = header->shape.size();
    for (int64_t i = 0; i < rank && in.ok(); ++i) {
        const int64_t most = static_cast<int64_t>(header->dimensions.size()) - 1;
        const int64_t id = in.count(w.count, most);
        if (!in.ok()) {
            break;
        }
        header->shape.push_back(id);
        const int64_t length = header->dimensions[static_cast<size_t>(id)].length;
        if (length == 0 && i == 0) {
            var->is_record = true;
        } else if (__builtin_mul_overflow(elements, length, &elements)) {
            in.fail();
        }
        in.expect(length != 0 || i == 0);
    }
    var->rank = header->shape.size() - var->first_dimension;
    return elements;
}

void read_variable(HeaderCursor &in, const Widths &w, ClassicHeader *header)
{
    ClassicVariable var;
    var.name = in.name(w);
    const int64_t elements = read_shape(in, w, header, &var);
    var.first_attribute = header->attributes.size();
    read_attributes(in, w, &header->attributes);
    var.attribute_count = header->attributes.size() - var.first_attribute;
    var.type = in.number(4);
    in.number(w.count);
    var.begin = in.count(w.offset, std::numeric_limits<int64_t>::max());
    const int64_t size = classic_type_size(var.type);
    if (size == 0 || __builtin_mul_overflow(elements, size, &var.bytes)) {
        in.fail();
    }
    in.expect(var.type >= kClassicByte && var.type <= kClassicDouble);
    header->variables.push_back(var);
}

} // namespace

int64_t tyr::classic_type_size(int64_t type)
{
    switch (type) {
    case kClassicByte:
    case kClassicChar:
    case 7: // unsigned byte
        return 1;
    case kClassicShort:
    case 8: // unsigned short
        return 2;
    case kClassicInt:
    case kClassicFloat:
    case 9: // unsigned int
        return 4;
    case kClassicDouble:
    case 10: // 64-bit int
    case 11: // unsigned 64-bit int
        return 8;
    default:
        return 0;
    }
}

int64_t ClassicHeader::record_bytes() const
{
    const auto is_record = [](const ClassicVariable &v) { return v.is_record; };
    // a lone record variable isn't padded
    const bool is_lone = std::count_if(variables.begin(), variables.end(), is_record) == 1;
    int64_t sum = 0;
    for (const ClassicVariable &v : variables) {
        const int64_t bytes = is_lone ? v.bytes : padded(std::min(v.bytes, INT64_MAX - kPad));
        if (v.is_record && __builtin_add_overflow(sum, bytes, &sum)) {
            return INT64_MAX;
        }
    }
    return sum;
}

ClassicHeader tyr::read_classic_header(std::string_view bytes)
{
    constexpr int64_t kMagic = 'C' << 16 | 'D' << 8 | 'F';
    HeaderCursor in(bytes);
    ClassicHeader header;
    header.is_classic = in.number(3) == kMagic;
    if (!header.is_classic) {
        return header;
    }
    Widths w;
    header.version = in.number(1);
    if (header.version == 2 || header.version == 5) {
        w.offset = 8;
    }
    if (header.version == 5) {
        w.count = 8;
    }
    header.records = in.number(w.count); // the library may tell another number
    read_dimensions(in, w, &header);
    read_attributes(in, w, nullptr);
    for (int64_t n = list_length(in, w, kVariableTag); n > 0 && in.ok(); --n) {
        read_variable(in, w, &header);
    }
    header.is_whole = in.ok();
    header.is_plain = in.is_plain();
    header.size = in.at();
    return header;
}
