#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

// Numbers of GRIB sections: big-endian, with a sign bit in front.

namespace tyr {

using Octets = std::span<const std::uint8_t>;

/// A section, its octets counted from 1 as the published tables count them. An octet beyond the
/// end is 0.
class Section {
  public:
    explicit Section(Octets bytes) : bytes_(bytes) {}
    size_t size() const { return bytes_.size(); }
    Octets bytes() const { return bytes_; }

    unsigned u8(size_t octet) const
    {
        return octet >= 1 && octet <= bytes_.size() ? bytes_[octet - 1] : 0U;
    }
    unsigned u16(size_t octet) const { return u8(octet) << 8 | u8(octet + 1); }
    unsigned u24(size_t octet) const { return u16(octet) << 8 | u8(octet + 2); }
    std::uint32_t u32(size_t octet) const { return u16(octet) << 16 | u16(octet + 2); }
    int s8(size_t octet) const { return signed_of(u8(octet), 7); }
    int s16(size_t octet) const { return signed_of(u16(octet), 15); }
    int s24(size_t octet) const { return signed_of(u24(octet), 23); }
    int s32(size_t octet) const { return signed_of(u32(octet), 31); }

    /// IBM System/360 single: sign, exponent of 16 with excess 64, 24 bits of fraction.
    double ibm(size_t octet) const
    {
        const std::uint32_t w = u32(octet);
        const double fraction = std::ldexp(static_cast<double>(w & 0xFFFFFFU), -24);
        const double value = std::ldexp(fraction, 4 * (static_cast<int>(w >> 24 & 0x7FU) - 64));
        return (w & 0x80000000U) != 0 ? -value : value;
    }
    /// IEEE 754 single.
    double ieee(size_t octet) const;

  private:
    static int signed_of(std::uint32_t word, int sign_bit)
    {
        const std::uint32_t top = 1U << sign_bit;
        const int magnitude = static_cast<int>(word & (top - 1U));
        return (word & top) != 0 ? -magnitude : magnitude;
    }
    Octets bytes_;
};

/// Bytes that a buffer of packed bits keeps readable behind its end.
inline constexpr size_t kBitPadding = 16;

/// Values of up to 32 bits from a run of bytes, most significant bit first. The memory behind the
/// run must be readable for kBitPadding bytes; what is asked for is checked against `left` first.
class BitCursor {
  public:
    BitCursor() = default;
    explicit BitCursor(Octets bytes) : data_(bytes.data()), end_(bytes.size() * 8U) {}

    size_t left() const { return end_ - bit_; }
    /// Passes over bits; false where fewer are left.
    bool skip(std::uint64_t bits)
    {
        if (bits > left()) {
            return false;
        }
        bit_ += bits;
        return true;
    }
    void align() { bit_ = (bit_ + 7U) / 8U * 8U; }
    /// The next value, unchecked.
    std::uint32_t take(unsigned width)
    {
        const std::uint32_t value = peek(bit_, width);
        bit_ += width;
        return value;
    }
    std::uint32_t peek(size_t bit, unsigned width) const
    {
        std::uint64_t word = 0;
        __builtin_memcpy(&word, data_ + bit / 8U, sizeof word);
        if constexpr (__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__) {
            word = __builtin_bswap64(word);
        }
        word <<= bit % 8U;
        return width == 0 ? 0U : static_cast<std::uint32_t>(word >> (64U - width));
    }
    size_t bit() const { return bit_; }

  private:
    const std::uint8_t *data_ = nullptr;
    size_t end_ = 0;
    size_t bit_ = 0;
};

} // namespace tyr
