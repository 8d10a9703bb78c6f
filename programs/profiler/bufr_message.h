#pragma once

#include <array>
#include <cstdint>
#include <cstdio>

#include "tyr/base/date.h"
#include "tyr/base/missing.h"

/// The message that the BUFR reader works on: found in the stream, loaded, its descriptors read.

namespace tyr {

inline constexpr int kLongestMessage = 4000;
inline constexpr int kMaxDescriptors = 100;

struct BufrDescriptor {
    int32_t f = 0;
    int32_t x = 0;
    int32_t y = 0;
    int32_t row = -1; ///< of the element table; -1 where it has none
};

/// Octet k of section 1 stands at message[k].
struct BufrMessage {
    std::array<uint8_t, kLongestMessage + 1> message = {};
    int end = 0;     ///< bytes of the message buffer in use
    int pointer = 0; ///< next byte to take
    int size = 0;
    int position = 0;
    uint64_t bits = 0; ///< taken from the message but not yet used
    unsigned bit_count = 0;
    bool overrun = false; ///< bits were asked for behind the end
    std::array<BufrDescriptor, kMaxDescriptors> descriptors = {};
    int descriptor_count = 0;
    int reports_due = 0; ///< told by the message and not yet read
    DateRec date = {};   ///< of the message
    int width_change = kMissingInt;
    int next_width = kMissingInt;
    int repeat_count = kMissingInt;
    int repeat_first = 0;
    int repeat_last = 0;
};

/// The one message of the process.
BufrMessage &bufr_message();

/// Forgets the message.
void bufr_drop();

/// Tells why the walk ends here, and drops the message. @return -1
int bufr_refuse(const char *name, const char *why, int value);

/// Whether the reader can follow a descriptor; null, or the reason why not.
const char *bufr_why_not(const BufrDescriptor &descriptor);

/// The table's row of an element, or -1.
int bufr_table_row(int x, int y);

/// Loads the next message of a stream. @return 0, or -1 where the walk ends
int bufr_next_message(std::FILE *stream, const char *name);

} // namespace tyr
