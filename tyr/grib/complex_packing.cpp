#include <algorithm>
#include <array>

#include "tyr/base/missing.h"
#include "tyr/grib/packing_private.h"

// Complex packing: WMO Manual on Codes, Volume I.2, templates 5.2, 5.3, 7.2 and 7.3.

namespace tyr {
namespace {

/// Numbers of one of the three lists in front of the values.
struct Lists {
    BitCursor references, widths, lengths;
};

bool find_lists(const PackingRec &p, BitCursor *bits, Lists *lists)
{
    const std::uint64_t groups = p.groups;
    lists->references = *bits;
    if (p.bits > 32 || !bits->skip(groups * p.bits)) {
        return false;
    }
    bits->align();
    lists->widths = *bits;
    if (p.width_bits > 32 || !bits->skip(groups * p.width_bits)) {
        return false;
    }
    bits->align();
    lists->lengths = *bits;
    if (p.length_bits > 32 || !bits->skip(groups * p.length_bits)) {
        return false;
    }
    bits->align();
    return true;
}

/// From numbers to values: sums up differences of order 1 or 2, then scales.
class Output {
  public:
    Output(const PackingRec &p, float *out, size_t room)
        : factor_(p.binary_scale * p.decimal_scale), base_(p.reference * p.decimal_scale),
          order_(p.order), out_(out), room_(room)
    {
    }
    bool read_start(const PackingRec &p, BitCursor *bits)
    {
        const unsigned width = 8U * p.extra_octets;
        if (p.order == 0) {
            return true;
        }
        if (p.order > 2 || width == 0 || width > 32 || bits->left() < width * (p.order + 1U)) {
            return false;
        }
        for (int i = 0; i < p.order; ++i) {
            first_[static_cast<size_t>(i)] = signed_of(bits->take(width), width);
        }
        minimum_ = signed_of(bits->take(width), width);
        return true;
    }
    size_t done() const { return done_; }
    size_t left() const { return room_ - done_; }
    void put_missing(size_t count)
    {
        std::fill_n(out_ + done_, count, kMissing);
        done_ += count;
    }
    template <class Number> void put(size_t count, Number number)
    {
        size_t i = 0;
        for (; i < count && seen_ < order_; ++i) {
            put_one(number(i));
        }
        float *out = out_ + done_;
        std::int64_t a = last_;
        std::int64_t b = before_;
        const size_t rest = count - i;
        if (order_ == 0) {
            for (size_t k = 0; k < rest; ++k) {
                out[k] = value(number(i + k));
            }
        } else if (order_ == 1) {
            for (size_t k = 0; k < rest; ++k) {
                a = wrap(a + number(i + k) + minimum_);
                out[k] = value(a);
            }
        } else {
            for (size_t k = 0; k < rest; ++k) {
                const std::int64_t next = wrap(2 * a - b + number(i + k) + minimum_);
                b = a;
                a = next;
                out[k] = value(a);
            }
        }
        last_ = a;
        before_ = b;
        done_ += rest;
    }

  private:
    static std::int64_t signed_of(std::uint32_t word, unsigned width)
    {
        const std::uint32_t top = 1U << (width - 1U);
        const std::int64_t magnitude = word & (top - 1U);
        return (word & top) != 0 ? -magnitude : magnitude;
    }
    /// Damaged differences may run away: 32 bits hold every sum of a sound product.
    static std::int64_t wrap(std::int64_t sum) { return static_cast<std::int32_t>(sum); }
    float value(std::int64_t x) const
    {
        return static_cast<float>(static_cast<double>(x) * factor_ + base_);
    }
    void put_one(std::int64_t)
    {
        const std::int64_t x = first_[static_cast<size_t>(seen_)];
        ++seen_;
        before_ = last_;
        last_ = x;
        out_[done_++] = value(x);
    }

    double factor_, base_;
    int order_;
    float *out_;
    size_t room_;
    size_t done_ = 0;
    int seen_ = 0;
    std::array<std::int64_t, 2> first_{};
    std::int64_t minimum_ = 0, last_ = 0, before_ = 0;
};

/// The numbers that stand for a missing value among those of `width` bits.
struct MissingMarks {
    MissingMarks(int management, unsigned width)
        : primary((std::uint64_t{1} << width) - 1U), secondary(primary - 1U),
          has_primary(management >= 1), has_secondary(management >= 2)
    {
    }
    bool operator()(std::uint32_t x) const
    {
        return (has_primary && x == primary) || (has_secondary && x == secondary);
    }
    std::uint64_t primary, secondary;
    bool has_primary, has_secondary;
};

/// A group with missing values among its numbers: one at a time.
void put_marked(const MissingMarks &is_missing_mark, std::uint32_t reference, BitCursor *bits,
                unsigned width, size_t count, Output *out)
{
    for (size_t i = 0; i < count; ++i) {
        const std::uint32_t x = bits->take(width);
        if (is_missing_mark(x)) {
            out->put_missing(1);
        } else {
            out->put(1, [=](size_t) { return std::int64_t{reference} + x; });
        }
    }
}

void put_group(const PackingRec &p, std::uint32_t reference, unsigned width, size_t count,
               BitCursor *bits, Output *out)
{
    if (width == 0) {
        if (p.missing_management > 0 && MissingMarks(p.missing_management, p.bits)(reference)) {
            out->put_missing(count);
        } else {
            out->put(count, [=](size_t) { return std::int64_t{reference}; });
        }
        return;
    }
    if (p.missing_management > 0) {
        put_marked(MissingMarks(p.missing_management, width), reference, bits, width, count, out);
        return;
    }
    const BitCursor run = *bits;
    out->put(count, [run, reference, width, at = run.bit()](size_t i) {
        return std::int64_t{reference} + run.peek(at + i * width, width);
    });
    bits->skip(std::uint64_t{width} * count);
}

} // namespace

size_t unpack_complex(const PackingRec &p, Octets data, float *out, size_t count)
{
    BitCursor bits(data);
    Output output(p, out, count);
    Lists lists;
    if (!output.read_start(p, &bits) || !find_lists(p, &bits, &lists)) {
        return 0;
    }
    for (std::uint32_t g = 0; g < p.groups && output.left() > 0; ++g) {
        const std::uint32_t reference = lists.references.take(p.bits);
        const std::uint64_t width =
            std::uint64_t{p.width_reference} + lists.widths.take(p.width_bits);
        const std::uint64_t scaled = lists.lengths.take(p.length_bits);
        const std::uint64_t length =
            g + 1 == p.groups ? p.last_length : p.length_reference + scaled * p.length_step;
        const size_t n = std::min<std::uint64_t>(length, output.left());
        if (width > 32 || width * n > bits.left()) {
            break;
        }
        put_group(p, reference, static_cast<unsigned>(width), n, &bits, &output);
    }
    return output.done();
}

} // namespace tyr
