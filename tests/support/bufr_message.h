#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

/// Bits, most significant first, as the data section of a BUFR message holds them.
class BitText {
  public:
    BitText &put(uint64_t value, int bits)
    {
        for (int i = bits - 1; i >= 0; --i, ++used_) {
            if (used_ % 8 == 0) {
                bytes_ += '\0';
            }
            if ((value >> i & 1U) != 0) {
                bytes_.back() = static_cast<char>(bytes_.back() | 0x80 >> used_ % 8);
            }
        }
        return *this;
    }
    const std::string &bytes() const { return bytes_; }

  private:
    std::string bytes_;
    int used_ = 0;
};

struct BufrDescriptor {
    int f, x, y;
};

/// A BUFR message section by section (WMO Manual on Codes, FM 94, edition 3).
struct BufrMessage {
    std::vector<BufrDescriptor> descriptors;
    std::string data;
    int subsets = 1;
    int edition = 3;
    int flag = 0x80;       ///< of section 3: observed data; 0x40 compressed
    std::string optional;  ///< contents of section 2; empty for none
    int size = 0;          ///< section 0 tells this length instead of the true one
    size_t at_least = 104; ///< bytes
};

inline std::string bufr_bytes(const BufrMessage &m)
{
    const auto number = [](size_t value, int bytes) {
        return BitText().put(value, 8 * bytes).bytes();
    };
    // what makes a message long enough stands in the local part of section 1: zeros in the data
    // would read as further reports
    const size_t optional = m.optional.empty() ? 0 : m.optional.size() + 4;
    const size_t taken = 8 + 18 + optional + 8 + 2 * m.descriptors.size() + 4 + m.data.size() + 4;
    const size_t padding = taken < m.at_least ? m.at_least - taken : 0;
    std::string body = number(18 + padding, 3);
    for (const int octet :
         {0, 0, 59, 0, m.optional.empty() ? 0 : 0x80, 2, 7, 13, 0, 26, 11, 22, 12, 0, 0}) {
        body += static_cast<char>(octet);
    }
    body += std::string(padding, '\0');
    if (!m.optional.empty()) {
        body += number(m.optional.size() + 4, 3) + number(0, 1) + m.optional;
    }
    body += number(2 * m.descriptors.size() + 8, 3) + number(0, 1) +
            number(static_cast<size_t>(m.subsets), 2) + static_cast<char>(m.flag);
    for (const BufrDescriptor &d : m.descriptors) {
        body += static_cast<char>(d.f << 6 | d.x);
        body += static_cast<char>(d.y);
    }
    body += '\0';
    body += number(m.data.size() + 4, 3) + number(0, 1) + m.data + "7777";
    const size_t size = m.size != 0 ? static_cast<size_t>(m.size) : body.size() + 8;
    return "BUFR" + number(size, 3) + static_cast<char>(m.edition) + body;
}
