#include <algorithm>
#include <limits>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tyr/base/classic_extent_private.h"

using namespace tyr;

namespace {

enum ListTag { kAbsent = 0, kDimensionTag = 10, kVariableTag = 11, kAttributeTag = 12 };

constexpr int64_t kPad = 4;
constexpr int64_t kMostEntries = 65536;
constexpr int64_t kLongestName = 256;     ///< the library's own limit for writing
constexpr int64_t kMostDimensions = 1024; ///< of a variable

/// Reads big-endian numbers; fails for good at the first that isn't there.
class HeaderCursor {
  public:
    explicit HeaderCursor(std::string_view bytes) : bytes_(bytes) {}

    bool ok() const { return ok_; }
    int64_t size() const { return static_cast<int64_t>(bytes_.size()); }
    void fail() { ok_ = false; }

    int64_t number(int bytes)
    {
        uint64_t value = 0;
        for (int i = 0; i < bytes && ok_; ++i) {
            ok_ = at_ < bytes_.size();
            value = value << 8 | (ok_ ? static_cast<unsigned char>(bytes_[at_++]) : 0U);
        }
        return ok_ ? static_cast<int64_t>(value) : 0;
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

    void skip(int64_t bytes)
    {
        const int64_t padded = (bytes + kPad - 1) / kPad * kPad;
        const int64_t left = size() - static_cast<int64_t>(at_);
        ok_ = ok_ && bytes >= 0 && padded >= 0 && padded <= left;
        at_ += ok_ ? static_cast<size_t>(padded) : 0;
    }

  private:
    std::string_view bytes_;
    size_t at_ = 0;
    bool ok_ = true;
};

struct Widths {
    int count = 4;  ///< bytes of a count
    int offset = 4; ///< bytes of a file offset
};

struct Variable {
    bool is_record = false;
    int64_t begin = 0;
    int64_t bytes = 0; ///< of one record, or of all
};

int64_t type_size(int64_t type)
{
    switch (type) {
    case 1: // byte
    case 2: // char
    case 7: // unsigned byte
        return 1;
    case 3: // short
    case 8: // unsigned short
        return 2;
    case 4: // int
    case 5: // float
    case 9: // unsigned int
        return 4;
    case 6:  // double
    case 10: // 64-bit int
    case 11: // unsigned 64-bit int
        return 8;
    default:
        return 0;
    }
}

int64_t list_length(HeaderCursor &in, const Widths &w, ListTag expected)
{
    const int64_t tag = in.number(4);
    const int64_t n = in.count(w.count, kMostEntries);
    if (tag != expected && (tag != kAbsent || n != 0)) {
        in.fail();
    }
    return in.ok() ? n : 0;
}

void skip_name(HeaderCursor &in, const Widths &w)
{
    in.skip(in.count(w.count, kLongestName));
}

std::vector<int64_t> read_dimensions(HeaderCursor &in, const Widths &w)
{
    std::vector<int64_t> lengths;
    for (int64_t n = list_length(in, w, kDimensionTag); n > 0 && in.ok(); --n) {
        skip_name(in, w);
        lengths.push_back(in.count(w.count, std::numeric_limits<int64_t>::max()));
    }
    return lengths;
}

void skip_attributes(HeaderCursor &in, const Widths &w)
{
    for (int64_t n = list_length(in, w, kAttributeTag); n > 0 && in.ok(); --n) {
        skip_name(in, w);
        const int64_t size = type_size(in.number(4));
        const int64_t length = in.count(w.count, in.size());
        in.skip(size * length);
    }
}

Variable read_variable(HeaderCursor &in, const Widths &w, const std::vector<int64_t> &dimensions)
{
    Variable var;
    skip_name(in, w);
    int64_t elements = 1;
    const int64_t rank = in.count(w.count, kMostDimensions);
    for (int64_t i = 0; i < rank && in.ok(); ++i) {
        const int64_t id = in.count(w.count, static_cast<int64_t>(dimensions.size()) - 1);
        if (!in.ok()) {
            break;
        }
        const int64_t length = dimensions[static_cast<size_t>(id)];
        if (length == 0 && i == 0) {
            var.is_record = true;
        } else if (__builtin_mul_overflow(elements, length, &elements)) {
            in.fail();
        }
    }
    skip_attributes(in, w);
    const int64_t size = type_size(in.number(4));
    in.number(w.count);
    var.begin = in.count(w.offset, std::numeric_limits<int64_t>::max());
    if (size == 0 || __builtin_mul_overflow(elements, size, &var.bytes)) {
        in.fail();
    }
    return var;
}

void measure(const std::vector<Variable> &vars, int64_t file_size, ClassicExtent &extent)
{
    extent.fixed_part = true;
    int64_t record_bytes = 0;
    int64_t record_end = 0;
    const auto records =
        std::count_if(vars.begin(), vars.end(), [](const Variable &v) { return v.is_record; });
    for (const Variable &v : vars) {
        if (v.bytes > file_size || v.begin > file_size) {
            extent.fixed_part = extent.fixed_part && v.is_record;
            record_end = v.is_record ? std::numeric_limits<int64_t>::max() / 2 : record_end;
        } else if (!v.is_record) {
            extent.fixed_part = extent.fixed_part && v.begin + v.bytes <= file_size;
        } else {
            // a lone record variable isn't padded
            record_bytes += records == 1 ? v.bytes : (v.bytes + kPad - 1) / kPad * kPad;
            record_end = std::max(record_end, v.begin + v.bytes);
        }
    }
    if (record_bytes > 0 && record_end <= file_size) {
        extent.whole_records = 1 + (file_size - record_end) / record_bytes;
    }
}

} // namespace

ClassicExtent tyr::classic_extent(std::string_view bytes)
{
    constexpr int64_t kMagic = 'C' << 16 | 'D' << 8 | 'F';
    HeaderCursor in(bytes);
    ClassicExtent extent;
    extent.is_classic = in.ok() && in.number(3) == kMagic;
    if (!extent.is_classic) {
        return extent;
    }
    Widths w;
    const int64_t version = in.number(1);
    if (version == 2 || version == 5) {
        w.offset = 8;
    }
    if (version == 5) {
        w.count = 8;
    }
    in.number(w.count); // the number of records is the library's to tell
    const std::vector<int64_t> dimensions = read_dimensions(in, w);
    skip_attributes(in, w);
    std::vector<Variable> vars;
    for (int64_t n = list_length(in, w, kVariableTag); n > 0 && in.ok(); --n) {
        vars.push_back(read_variable(in, w, dimensions));
    }
    extent.is_whole = in.ok();
    if (extent.is_whole) {
        measure(vars, in.size(), extent);
    }
    return extent;
}

ClassicExtent tyr::classic_file_extent(const char *path)
{
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    struct stat info = {};
    ClassicExtent extent;
    if (file >= 0 && fstat(file, &info) == 0 && S_ISREG(info.st_mode) && info.st_size > 0) {
        const auto size = static_cast<size_t>(info.st_size);
        void *bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
        if (bytes != MAP_FAILED) {
            extent = classic_extent({static_cast<const char *>(bytes), size});
            munmap(bytes, size);
        }
    }
    if (file >= 0) {
        close(file);
    }
    return extent;
}
