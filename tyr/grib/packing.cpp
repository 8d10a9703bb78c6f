#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/grib/packing_private.h"

namespace tyr {
namespace {

constexpr int kWindow = 20;
constexpr unsigned kMostBits = 32;
constexpr unsigned kDebugBad = 0x80000000U;

/// Value of a packed number.
class Scale {
  public:
    explicit Scale(const PackingRec &p)
        : factor_(p.binary_scale * p.decimal_scale), base_(p.reference * p.decimal_scale)
    {
    }
    float operator()(double x) const { return static_cast<float>(x * factor_ + base_); }

  private:
    double factor_, base_;
};

/// Numbers of whole octets, the common widths: a plain loop that the compiler can widen.
template <unsigned kOctets>
void unpack_octets(const std::uint8_t *in, Scale scale, float *out, size_t count)
{
    for (size_t i = 0; i < count; ++i) {
        std::uint32_t x = 0;
        for (unsigned k = 0; k < kOctets; ++k) {
            x = x << 8 | in[i * kOctets + k];
        }
        out[i] = kOctets < 4 ? scale(static_cast<int>(x)) : scale(x);
    }
}

void unpack_bits(Octets data, unsigned width, Scale scale, float *out, size_t count)
{
    const BitCursor bits(data);
    size_t at = 0;
    for (size_t i = 0; i < count; ++i) {
        out[i] = scale(bits.peek(at, width));
        at += width;
    }
}

/// The guard against damaged products: big steps among the last values of a row.
class StepGuard {
  public:
    explicit StepGuard(const Guard &guard) : guard_(guard) {}
    void start_row()
    {
        window_.fill(0);
        count_ = 0;
    }
    /// True once the product is bad.
    bool look(std::int64_t value)
    {
        if (count_ > 0) {
            const bool is_step = std::llabs(value - last_) > guard_.bad_limit;
            window_[static_cast<size_t>(count_ % kWindow)] = is_step ? 1 : 0;
            int sum = 0;
            for (const int step : window_) {
                sum += step;
            }
            if (sum > guard_.max_bad && !is_bad_) {
                is_bad_ = true;
                MSG_out(kDebugBad, "BAD: %6d %6d %6d %2d %2d\n", static_cast<int>(value),
                        static_cast<int>(last_), static_cast<int>(guard_.bad_limit), count_, sum);
            }
        }
        ++count_;
        last_ = value;
        return is_bad_;
    }

  private:
    Guard guard_;
    std::array<int, kWindow> window_{};
    int count_ = 0;
    std::int64_t last_ = 0;
    bool is_bad_ = false;
};

} // namespace

size_t unpack_simple(const PackingRec &packing, Octets data, float *out, size_t count)
{
    const Scale scale(packing);
    if (packing.bits == 0) {
        std::fill_n(out, count, scale(0.0));
        return count;
    }
    if (packing.bits > kMostBits) {
        return 0;
    }
    count = std::min(count, data.size() * 8U / packing.bits);
    switch (packing.bits) {
    case 8:
        unpack_octets<1>(data.data(), scale, out, count);
        break;
    case 16:
        unpack_octets<2>(data.data(), scale, out, count);
        break;
    case 24:
        unpack_octets<3>(data.data(), scale, out, count);
        break;
    default:
        unpack_bits(data, packing.bits, scale, out, count);
        break;
    }
    return count;
}

size_t unpack_guarded(const Product &product, Octets data, const std::vector<int> &row_counts,
                      float *out, size_t count)
{
    const PackingRec &packing = product.packing;
    if (packing.bits == 0 || packing.bits > kMostBits) {
        return unpack_simple(packing, data, out, count);
    }
    count = std::min(count, data.size() * 8U / packing.bits);
    const Scale scale(packing);
    BitCursor bits(data);
    StepGuard guard(product.guard);
    size_t done = 0;
    for (const int row : row_counts) {
        guard.start_row();
        for (int i = 0; i < row && done < count; ++i) {
            const std::uint32_t x = bits.take(packing.bits);
            out[done++] = guard.look(x) ? kMissing : scale(x);
        }
    }
    return done;
}

size_t unpack_run_length(const PackingRec &packing, Octets data, float *out, size_t count)
{
    const unsigned width = packing.bits;
    if (width == 0 || width > 16 || packing.max_level >= 1U << width) {
        return 0;
    }
    const std::uint64_t range = (std::uint64_t{1} << width) - 1U - packing.max_level;
    BitCursor bits(data);
    size_t done = 0;
    while (done < count && bits.left() >= width) {
        const std::uint32_t level = bits.take(width);
        if (level > packing.max_level) {
            return done; // a run without a value
        }
        std::uint64_t run = 1;
        std::uint64_t factor = 1;
        while (bits.left() >= width && bits.peek(bits.bit(), width) > packing.max_level) {
            run += (bits.take(width) - packing.max_level - 1U) * factor;
            run = std::min<std::uint64_t>(run, count);
            factor = std::min<std::uint64_t>(factor * range, std::uint64_t{1} << 32);
        }
        const bool is_known = level >= 1 && level <= packing.levels.size();
        const size_t length = std::min<std::uint64_t>(run, count - done);
        std::fill_n(out + done, length, is_known ? packing.levels[level - 1] : kMissing);
        done += length;
    }
    return done;
}

} // namespace tyr
