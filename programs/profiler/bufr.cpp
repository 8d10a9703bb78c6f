#include "programs/profiler/bufr.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <string_view>

#include "programs/profiler/bufr_table.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"

namespace {

constexpr unsigned kTrace = 0x40000000;
constexpr unsigned kWarn = 192;
constexpr int kLongestMessage = 4000;
constexpr int kShortestMessage = 100;
constexpr int kMessageTail = 12; ///< bytes behind the last report: end mark and padding
constexpr int kSection0 = 8;
constexpr int kNewestEdition = 3;
constexpr int kMaxDescriptors = 100;
constexpr int kClearedLevels = 72;
constexpr int kHeadingWidth = 79;
constexpr int kMaxWidth = 32;
constexpr float kWindLimit = 200.0F; ///< all ones in a wind element lie above it
constexpr int kCompressed = 0x40;

struct Descriptor {
    int32_t f = 0;
    int32_t x = 0;
    int32_t y = 0;
    int32_t row = -1; ///< of the element table; -1 where it has none
};

/// Octet k of section 1 stands at message[k].
struct State {
    std::array<uint8_t, kLongestMessage + 1> message = {};
    int end = 0;     ///< bytes of the message buffer in use
    int pointer = 0; ///< next byte to take
    int size = 0;
    int position = 0;
    uint64_t bits = 0; ///< taken from the message but not yet used
    unsigned bit_count = 0;
    bool overrun = false; ///< bits were asked for behind the end
    std::array<Descriptor, kMaxDescriptors> descriptors = {};
    int descriptor_count = 0;
    int reports_due = 0; ///< told by the message and not yet read
    DateRec date = {};   ///< of the message
    int width_change = kMissingInt;
    int next_width = kMissingInt;
    int repeat_count = kMissingInt;
    int repeat_first = 0;
    int repeat_last = 0;
};

State state;

void drop_message()
{
    state.size = 0;
    state.position = 0;
}

/// Tells why the walk ends here, and drops the message.
int refuse(const char *name, const char *why, int value)
{
    MSG_out(kWarn, "PROF_read: %s: BUFR message refused: %s (%d)\n", name, why, value);
    drop_message();
    return -1;
}

// ---- finding a message ----

enum class Found { kMessage, kLine, kEnd };

/// Takes the next heading line, or the four letters that begin a message. Control characters and
/// blanks between lines are passed over: the marks of the transmission are among them. A line that
/// begins with a star may have one more byte behind it, ahead of the message.
Found next_piece(std::FILE *stream, std::string &line)
{
    constexpr std::string_view kMark = "BUFR";
    const size_t longest = kMark.size() + (line.starts_with('*') ? 1 : 0);
    int c = std::fgetc(stream);
    while (c != EOF && c <= ' ') {
        c = std::fgetc(stream);
    }
    line.clear();
    while (c != EOF && c != '\n' && static_cast<int>(line.size()) < kHeadingWidth) {
        line += static_cast<char>(c);
        if (line.size() <= longest && line.ends_with(kMark)) {
            return Found::kMessage;
        }
        c = std::fgetc(stream);
    }
    return line.empty() ? Found::kEnd : Found::kLine;
}

bool find_message(std::FILE *stream)
{
    MSG_out(kTrace, "TELL: %ld\n", std::ftell(stream));
    std::string line;
    for (size_t n = 0;; ++n) {
        const Found found = next_piece(stream, line);
        if (found != Found::kLine) {
            MSG_out(kTrace, "TELL1: %ld\n", std::ftell(stream));
            return found == Found::kMessage;
        }
        STR_strip_cr(line.data());
        const char *text = line.c_str();
        switch (n) {
        case 0:
            MSG_out(kTrace, "READ: %d %s\n", 1, text);
            break;
        case 1:
            MSG_out(kTrace, "A:%s\n", text);
            break;
        case 2:
            MSG_out(kTrace, "B:%s\n", text);
            break;
        default:
            MSG_out(kTrace, "C:%s\n", text);
            break;
        }
    }
}

// ---- sections ----

int octet(int k)
{
    const int at = state.pointer + k;
    return at >= 0 && at < state.end ? state.message[static_cast<size_t>(at)] : 0;
}

int two_octets(int k)
{
    return octet(k) * 256 + octet(k + 1);
}

/// Reads the message behind its mark. @return 0, or -1 where the walk ends
int load_message(std::FILE *stream, const char *name)
{
    std::array<uint8_t, kSection0> head = {'B', 'U', 'F', 'R'};
    if (std::fread(head.data() + 4, 1, 4, stream) != 4) {
        return -1;
    }
    state.size = head[5] * 256 + head[6];
    MSG_out(kTrace, "size: %d\n", state.size);
    if (state.size > kLongestMessage) {
        drop_message(); // what the message before left behind isn't this one's
        return -1;
    }
    if (state.size < kShortestMessage) {
        return refuse(name, "too short for its sections, bytes", state.size);
    }
    if (head[7] > kNewestEdition) {
        return refuse(name, "edition not handled", head[7]);
    }
    const size_t rest = static_cast<size_t>(state.size - kSection0);
    if (std::fread(state.message.data() + 1, 1, rest, stream) != rest) {
        return refuse(name, "the file ends in a message of bytes", state.size);
    }
    state.end = static_cast<int>(rest) + 1;
    state.pointer = 0;
    state.bits = 0;
    state.bit_count = 0;
    MSG_out(kTrace, "TELL2: %ld\n", std::ftell(stream));
    return 0;
}

/// A year of the century, 1 to 100: the last one of a century is 100.
int full_year(int year)
{
    constexpr int kFirstOfThe1900s = 70;
    const int of_century = year % 100;
    return of_century + (of_century >= kFirstOfThe1900s ? 1900 : 2000);
}

/// Passes over the identification, but for its date, and the optional section.
void skip_identification()
{
    const int length = two_octets(2);
    const bool has_optional = octet(8) != 0;
    MSG_out(kTrace, "ID size: %d\n", length);
    MSG_out(kTrace, "center: %d\n", two_octets(5));
    MSG_out(kTrace, "type: %d\n", octet(9));
    MSG_out(kTrace, "subtype: %d\n", octet(10));
    MSG_out(kTrace, "version of master table: %d\n", octet(11));
    MSG_out(kTrace, "version of local table: %d\n", octet(12));
    MSG_out(kTrace, "year: %d\n", octet(13));
    MSG_out(kTrace, "month: %d\n", octet(14));
    MSG_out(kTrace, "day: %d\n", octet(15));
    MSG_out(kTrace, "hour: %d\n", octet(16));
    MSG_out(kTrace, "minute: %d\n", octet(17));
    state.date = {};
    state.date.year = full_year(octet(13));
    state.date.month = octet(14);
    state.date.day = octet(15);
    state.date.hour = octet(16);
    state.date.minute = octet(17);
    state.pointer += length;
    if (has_optional) {
        MSG_out(kTrace, "OS size: %d\n", two_octets(2));
        state.pointer += two_octets(2);
    }
}

int table_row(int x, int y)
{
    for (int row = 0; kBufrTable[row].x != 0; ++row) {
        if (kBufrTable[row].x == x && kBufrTable[row].y == y) {
            return row;
        }
    }
    return -1;
}

/// Whether the reader can follow a descriptor; null, or the reason why not.
const char *why_not(const Descriptor &d)
{
    switch (d.f) {
    case 0:
        return d.row >= 0 ? nullptr : "element not in the table";
    case 1:
        return d.y > 0 ? nullptr : "delayed replication";
    case 2:
        return d.x == 1 || d.x == 6 ? nullptr : "operator not handled";
    default:
        return "sequence descriptor";
    }
}

/// Reads the data description. @return 0, or -1 where the walk ends
int load_descriptors(const char *name)
{
    const int length = two_octets(2);
    const int flag = octet(7);
    state.descriptor_count = (length - 8) / 2;
    state.reports_due = std::max(two_octets(5), 1);
    MSG_out(kTrace, "DDS size: %d\n", length);
    MSG_out(kTrace, "number of data subsets: %d\n", two_octets(5));
    MSG_out(kTrace, "number of data parameters: %d\n", state.descriptor_count);
    MSG_out(kTrace, "flag: %X\n", static_cast<unsigned>(flag));
    if ((flag & kCompressed) != 0) {
        return refuse(name, "compressed data, flag", flag);
    }
    if (state.descriptor_count < 1 || state.descriptor_count > kMaxDescriptors ||
        state.pointer + length >= state.end) {
        return refuse(name, "descriptors", state.descriptor_count);
    }
    for (int i = 0; i < state.descriptor_count; ++i) {
        const int first = octet(8 + 2 * i);
        Descriptor &d = state.descriptors[static_cast<size_t>(i)];
        d = {first >> 6, first & 63, octet(9 + 2 * i), -1};
        d.row = d.f == 0 ? table_row(d.x, d.y) : -1;
        MSG_out(kTrace, "param: %d %d %d\n", d.f, d.x, d.y);
        if (const char *why = why_not(d)) {
            return refuse(name, why, d.f * 100000 + d.x * 1000 + d.y);
        }
    }
    state.pointer += length;
    return 0;
}

int next_message(std::FILE *stream, const char *name)
{
    if (!find_message(stream) || load_message(stream, name) != 0) {
        return -1;
    }
    skip_identification();
    if (load_descriptors(name) != 0) {
        return -1;
    }
    MSG_out(kTrace, "D size: %d\n", two_octets(2));
    state.pointer += 5;
    return 0;
}

// ---- one report ----

/// Where a report is written to while its elements come.
struct Report {
    ProfilerRecord *record;
    float z = 0.0F;
    float increment = 0.0F;
    int level = 0;
    int round = 0;
};

int whole(float value)
{
    constexpr double kLeast = std::numeric_limits<int32_t>::min();
    constexpr double kMost = std::numeric_limits<int32_t>::max();
    return static_cast<int>(std::clamp(static_cast<double>(value), kLeast, kMost));
}

/// Writes a part of the station's id, in `digits` digits at least.
void put_id(ProfilerRecord *record, size_t at, int digits, float value)
{
    STR_copy(record->id + at, sizeof record->id - at, STR_print("%.*d", digits, whole(value)));
}

void put_element(Report &r, const BufrElement &e, float value)
{
    ProfilerLevel &level = r.record->level[r.level];
    const auto put = [value](float &field) {
        if (value < kWindLimit) {
            field = value;
        }
    };
    switch (e.x * 1000 + e.y) {
    case 1001:
        put_id(r.record, 0, 2, value);
        break;
    case 1002:
        put_id(r.record, 2, 3, value);
        break;
    case 5002:
        r.record->lat = value;
        break;
    case 6002:
        r.record->lon = value;
        break;
    case 7001:
        r.record->elev = value;
        break;
    case 7005:
        r.increment = value;
        r.z += value;
        break;
    case 11003:
        level.z = r.z;
        put(level.u);
        break;
    case 11004:
        put(level.v);
        break;
    case 11006:
        put(level.w);
        break;
    case 11050:
        put(level.hdev);
        break;
    case 11051:
        put(level.vdev);
        break;
    case 25034:
        level.qual = whole(value);
        break;
    default:
        break;
    }
}

int width_of(int row)
{
    if (state.next_width != kMissingInt) {
        return state.next_width;
    }
    const int change = state.width_change == kMissingInt ? 0 : state.width_change;
    return kBufrTable[row].bits + change;
}

/// Ends a round of a replication. @return the index to go on from
int end_round(Report &r, int index)
{
    ++r.round;
    ++r.level;
    MSG_out(kTrace, "Repeat: %d\n", r.round);
    index = state.repeat_first - 1;
    if (r.round == state.repeat_count - 1) {
        state.repeat_count = kMissingInt;
    } else {
        r.z += r.increment;
    }
    return index;
}

void begin_report(Report &r)
{
    PRF_init_record(r.record);
    for (int i = 0; i < kClearedLevels; ++i) {
        r.record->level[i].qual = 0;
    }
    state.width_change = kMissingInt;
    state.next_width = kMissingInt;
    state.repeat_count = kMissingInt;
    state.overrun = false;
}

void apply(Report &r, const Descriptor &d, int index)
{
    switch (d.f) {
    case 0:
        put_element(r, kBufrTable[d.row], BUFR_get_value(d.row));
        break;
    case 1:
        state.repeat_first = index + 1;
        state.repeat_last = index + d.x;
        state.repeat_count = d.y > 1 ? d.y : kMissingInt; // once is no repetition
        r.round = 0;
        MSG_out(kTrace, "Repeat: %d times\n", d.y);
        break;
    default:
        if (d.x == 1) {
            state.width_change = d.y != 0 ? d.y - 128 : kMissingInt;
        } else {
            state.next_width = d.y;
        }
        break;
    }
}

} // namespace

unsigned BUFR_get_bits(unsigned n)
{
    while (n > state.bit_count) {
        if (state.pointer >= state.end) {
            state.overrun = true;
            return 0;
        }
        state.bits = state.bits << 8 | state.message[static_cast<size_t>(state.pointer++)];
        state.bit_count += 8;
    }
    state.bit_count -= n;
    const uint64_t value = state.bits >> state.bit_count;
    state.bits &= (uint64_t{1} << state.bit_count) - 1;
    return static_cast<unsigned>(value & ((uint64_t{1} << n) - 1));
}

float BUFR_get_value(int row)
{
    const BufrElement &e = kBufrTable[row];
    const int64_t raw = BUFR_get_bits(static_cast<unsigned>(width_of(row)));
    const float value = static_cast<float>(raw + e.reference) * e.scale;
    state.next_width = kMissingInt;
    MSG_out(kTrace, "%-15s %f\n", e.name, value);
    return value;
}

int bufr_read_record(std::FILE *stream, const char *name, ProfilerRecord *record)
{
    if (state.size - kMessageTail <= state.position && next_message(stream, name) != 0) {
        return -1;
    }
    Report r = {record};
    begin_report(r);
    const int start = state.pointer;
    const unsigned start_bits = state.bit_count;
    for (int i = 0; i < state.descriptor_count; ++i) {
        const Descriptor &d = state.descriptors[static_cast<size_t>(i)];
        if (d.f == 0 && (width_of(d.row) < 1 || width_of(d.row) > kMaxWidth)) {
            return refuse(name, "bits of an element", width_of(d.row));
        }
        apply(r, d, i);
        if (state.repeat_count != kMissingInt && i == state.repeat_last) {
            i = end_round(r, i);
        }
        if (r.level >= kMaxProfilerLevels) {
            return refuse(name, "levels", r.level);
        }
        if (state.overrun && state.reports_due < 1) { // padding behind the last one
            drop_message();
            return bufr_read_record(stream, name, record);
        }
        if (state.overrun) {
            return refuse(name, "the data end early, at byte", state.pointer);
        }
    }
    if (state.pointer == start && state.bit_count == start_bits) {
        return refuse(name, "a report without data, at byte", start); // it would never end
    }
    record->num_level = r.level;
    --state.reports_due;
    state.position = state.pointer;
    MSG_out(kTrace, "Where: %d\n", state.position);
    return 1;
}

bool bufr_message_date(DateRec *date)
{
    const DateRec &d = state.date;
    if (d.month < 1 || d.month > 12 || d.day < 1 || d.day > 31 || d.hour > 23 || d.minute > 59) {
        return false;
    }
    *date = d;
    return true;
}
