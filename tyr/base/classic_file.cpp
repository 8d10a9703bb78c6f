#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <numeric>

#include "tyr/base/classic_file_private.h"

using namespace tyr;

namespace {

constexpr size_t kMostRank = 8;
constexpr size_t kMostVariables = 8192;  ///< of the library, as are the next two
constexpr size_t kMostDimensions = 1024; ///< of a file
constexpr int64_t kMostRecords = std::numeric_limits<int32_t>::max();
constexpr int64_t kMostBytes = std::numeric_limits<int32_t>::max();
static_assert(sizeof(float) == 4 && sizeof(double) == 8);

template <class Bits> Bits big_endian(const char *bytes)
{
    Bits value = 0;
    for (size_t i = 0; i < sizeof(Bits); ++i) {
        value = static_cast<Bits>(value << 8 | static_cast<unsigned char>(bytes[i]));
    }
    return value;
}

int8_t byte_at(const char *p)
{
    return static_cast<int8_t>(*p);
}

int16_t short_at(const char *p)
{
    return static_cast<int16_t>(big_endian<uint16_t>(p));
}

int32_t int_at(const char *p)
{
    return static_cast<int32_t>(big_endian<uint32_t>(p));
}

float float_at(const char *p)
{
    return std::bit_cast<float>(big_endian<uint32_t>(p));
}

double double_at(const char *p)
{
    return std::bit_cast<double>(big_endian<uint64_t>(p));
}

/// A value beyond the floats is the largest of them; not a number stays so.
float narrowed_at(const char *p)
{
    constexpr double kLargest = std::numeric_limits<float>::max();
    const double value = double_at(p);
    return static_cast<float>(value > kLargest ? kLargest : value < -kLargest ? -kLargest : value);
}

template <class Value>
void take_floats(const char *in, size_t n, Value (*at)(const char *), float *out)
{
    for (size_t i = 0; i < n; ++i) {
        out[i] = static_cast<float>(at(in));
        in += sizeof(Value);
    }
}

void take_doubles(const char *in, size_t n, float *out)
{
    for (size_t i = 0; i < n; ++i) {
        out[i] = narrowed_at(in + i * sizeof(double));
    }
}

void take_row(const char *in, int64_t type, size_t n, float *out)
{
    switch (type) {
    case kClassicByte:
        return take_floats(in, n, byte_at, out);
    case kClassicShort:
        return take_floats(in, n, short_at, out);
    case kClassicInt:
        return take_floats(in, n, int_at, out);
    case kClassicFloat:
        return take_floats(in, n, float_at, out);
    default:
        return take_doubles(in, n, out);
    }
}

} // namespace

double tyr::classic_number(const char *bytes, int64_t type)
{
    switch (type) {
    case kClassicByte:
        return byte_at(bytes);
    case kClassicShort:
        return short_at(bytes);
    case kClassicInt:
        return int_at(bytes);
    case kClassicFloat:
        return float_at(bytes);
    default:
        return double_at(bytes);
    }
}

std::optional<ClassicFile> ClassicFile::open(ClassicHeader header, std::string_view bytes)
{
    ClassicFile file;
    file.header_ = std::move(header);
    file.bytes_ = bytes;
    file.record_bytes_ = file.header_.record_bytes();
    if (!file.is_usual()) {
        return {};
    }
    file.sort_names();
    const auto same_name = [&](int a, int b) {
        return file.header_.variables[a].name == file.header_.variables[b].name;
    };
    if (std::adjacent_find(file.by_name_.begin(), file.by_name_.end(), same_name) !=
        file.by_name_.end()) {
        return {};
    }
    return file;
}

/// Whether ranges lie behind the header, fixed ones first, in the order of the variables.
bool ClassicFile::is_usual() const
{
    const int64_t size = static_cast<int64_t>(bytes_.size());
    if (!header_.is_classic || !header_.is_whole || !header_.is_plain || header_.version < 1 ||
        header_.version > 2 || header_.records < 0 || header_.records > kMostRecords ||
        header_.variables.size() > kMostVariables || header_.dimensions.size() > kMostDimensions ||
        size > kMostBytes || record_bytes_ > size) {
        return false;
    }
    int64_t end = header_.size;
    for (const bool of_records : {false, true}) {
        for (const ClassicVariable &v : header_.variables) {
            if (v.is_record != of_records) {
                continue;
            }
            if (v.begin < end || v.begin > size || v.bytes > size || v.rank > kMostRank) {
                return false;
            }
            end = v.begin + (v.bytes + 3) / 4 * 4;
        }
    }
    return true;
}

void ClassicFile::sort_names()
{
    by_name_.resize(header_.variables.size());
    std::iota(by_name_.begin(), by_name_.end(), 0);
    std::sort(by_name_.begin(), by_name_.end(), [this](int a, int b) {
        return header_.variables[a].name < header_.variables[b].name;
    });
}

int ClassicFile::variable(std::string_view name) const
{
    const auto place =
        std::lower_bound(by_name_.begin(), by_name_.end(), name, [this](int v, std::string_view n) {
            return header_.variables[v].name < n;
        });
    return place != by_name_.end() && header_.variables[*place].name == name ? *place : -1;
}

int ClassicFile::dimension(std::string_view name) const
{
    const auto &all = header_.dimensions;
    const auto place = std::find_if(all.begin(), all.end(),
                                    [&](const ClassicDimension &d) { return d.name == name; });
    return place == all.end() ? -1 : static_cast<int>(place - all.begin());
}

int ClassicFile::record_dimension() const
{
    const auto &all = header_.dimensions;
    const auto place = std::find_if(all.begin(), all.end(),
                                    [](const ClassicDimension &d) { return d.length == 0; });
    return place == all.end() ? -1 : static_cast<int>(place - all.begin());
}

int64_t ClassicFile::length(int dimension) const
{
    if (dimension < 0 || static_cast<size_t>(dimension) >= header_.dimensions.size()) {
        return 0;
    }
    const int64_t length = header_.dimensions[static_cast<size_t>(dimension)].length;
    return length == 0 ? header_.records : length;
}

const ClassicVariable *ClassicFile::at(int variable) const
{
    return variable >= 0 && variable < variable_count() ? &header_.variables[variable] : nullptr;
}

bool ClassicFile::is_inside(const ClassicVariable &v, std::span<const size_t> start,
                            std::span<const size_t> count) const
{
    if (v.rank > start.size() || v.rank > count.size()) {
        return false;
    }
    const std::span<const int64_t> shape = header_.shape_of(v);
    for (size_t d = 0; d < v.rank; ++d) {
        const auto most = static_cast<size_t>(length(static_cast<int>(shape[d])));
        if (start[d] > most || count[d] > most - start[d]) {
            return false;
        }
    }
    return true;
}

template <class Take>
bool ClassicFile::each_row(const ClassicVariable &v, std::span<const size_t> start,
                           std::span<const size_t> count, Take take) const
{
    if (!is_inside(v, start, count)) {
        return false;
    }
    const std::span<const int64_t> shape = header_.shape_of(v);
    const auto value_bytes = static_cast<size_t>(classic_type_size(v.type));
    std::array<size_t, kMostRank> step; // bytes from one index to the next
    size_t bytes = value_bytes;
    size_t rows = 1;
    for (size_t d = v.rank; d-- > 0;) {
        const bool is_record = v.is_record && d == 0;
        step[d] = is_record ? static_cast<size_t>(record_bytes_) : bytes;
        bytes *= is_record ? 1 : static_cast<size_t>(length(static_cast<int>(shape[d])));
        rows *= d + 1 < v.rank || is_record ? count[d] : 1;
    }
    const bool has_row = v.rank > 0 && !(v.is_record && v.rank == 1);
    const size_t row = has_row ? count[v.rank - 1] : 1;
    const size_t outer = v.rank - (has_row ? 1 : 0);
    std::array<size_t, kMostRank> at = {};
    for (size_t i = 0; i < rows && row > 0; ++i) {
        size_t place = static_cast<size_t>(v.begin);
        for (size_t d = 0; d < v.rank; ++d) {
            place += (start[d] + at[d]) * step[d];
        }
        if (place > bytes_.size() || row * value_bytes > bytes_.size() - place) {
            return false;
        }
        take(bytes_.data() + place, row);
        for (size_t d = outer; d-- > 0 && ++at[d] == count[d];) {
            at[d] = 0;
        }
    }
    return true;
}

bool ClassicFile::floats(int variable, std::span<const size_t> start, std::span<const size_t> count,
                         float *out) const
{
    const ClassicVariable *v = at(variable);
    return v != nullptr && v->type != kClassicChar &&
           each_row(*v, start, count, [v, to = out](const char *in, size_t n) mutable {
               take_row(in, v->type, n, to);
               to += n;
           });
}

bool ClassicFile::text(int variable, std::span<const size_t> start, std::span<const size_t> count,
                       char *out) const
{
    const ClassicVariable *v = at(variable);
    return v != nullptr && v->type == kClassicChar &&
           each_row(*v, start, count,
                    [to = out](const char *in, size_t n) mutable { to = std::copy_n(in, n, to); });
}

std::optional<double> ClassicFile::number(int variable, std::span<const size_t> start) const
{
    constexpr std::array<size_t, kMostRank> kOne = {1, 1, 1, 1, 1, 1, 1, 1};
    const ClassicVariable *v = at(variable);
    std::optional<double> value;
    if (v != nullptr && v->type != kClassicChar) {
        each_row(*v, start, kOne,
                 [&](const char *in, size_t) { value = classic_number(in, v->type); });
    }
    return value;
}

const ClassicAttribute *ClassicFile::attribute(int variable, std::string_view name) const
{
    const ClassicVariable *v = at(variable);
    if (v == nullptr) {
        return nullptr;
    }
    const std::span<const ClassicAttribute> all = header_.attributes_of(*v);
    const auto place = std::find_if(all.begin(), all.end(),
                                    [&](const ClassicAttribute &a) { return a.name == name; });
    return place == all.end() ? nullptr : &*place;
}
