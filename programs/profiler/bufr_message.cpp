#include "programs/profiler/bufr_message.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "programs/profiler/bufr_table.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"

namespace {

using namespace tyr;

constexpr unsigned kTrace = 0x40000000;
constexpr int kShortestMessage = 100;
constexpr int kSection0 = 8;
constexpr int kNewestEdition = 3;
constexpr int kHeadingWidth = 79;
constexpr int kCompressed = 0x40;

BufrMessage &state = bufr_message();

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
    while (c != EOF && c != '\n') {
        line += static_cast<char>(c);
        if (line.size() <= longest && line.ends_with(kMark)) {
            return Found::kMessage;
        }
        if (static_cast<int>(line.size()) == kHeadingWidth) {
            break; // the rest counts as a line of its own
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
        bufr_drop(); // what the message before left behind isn't this one's
        return -1;
    }
    if (state.size < kShortestMessage) {
        return bufr_refuse(name, "too short for its sections, bytes", state.size);
    }
    if (head[7] > kNewestEdition) {
        return bufr_refuse(name, "edition not handled", head[7]);
    }
    const size_t rest = static_cast<size_t>(state.size - kSection0);
    if (std::fread(state.message.data() + 1, 1, rest, stream) != rest) {
        return bufr_refuse(name, "the file ends in a message of bytes", state.size);
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
        return bufr_refuse(name, "compressed data, flag", flag);
    }
    if (state.descriptor_count < 1 || state.descriptor_count > kMaxDescriptors ||
        state.pointer + length >= state.end) {
        return bufr_refuse(name, "descriptors", state.descriptor_count);
    }
    for (int i = 0; i < state.descriptor_count; ++i) {
        const int first = octet(8 + 2 * i);
        BufrDescriptor &d = state.descriptors[static_cast<size_t>(i)];
        d = {first >> 6, first & 63, octet(9 + 2 * i), -1};
        d.row = d.f == 0 ? bufr_table_row(d.x, d.y) : -1;
        MSG_out(kTrace, "param: %d %d %d\n", d.f, d.x, d.y);
        if (const char *why = bufr_why_not(d)) {
            return bufr_refuse(name, why, d.f * 100000 + d.x * 1000 + d.y);
        }
    }
    state.pointer += length;
    return 0;
}

} // namespace

BufrMessage &tyr::bufr_message()
{
    static BufrMessage message;
    return message;
}

void tyr::bufr_drop()
{
    state.size = 0;
    state.position = 0;
}

int tyr::bufr_refuse(const char *name, const char *why, int value)
{
    MSG_out(kMsgWarn, "PROF_read: %s: BUFR message refused: %s (%d)\n", name, why, value);
    bufr_drop();
    return -1;
}

int tyr::bufr_table_row(int x, int y)
{
    for (int row = 0; kBufrTable[row].x != 0; ++row) {
        if (kBufrTable[row].x == x && kBufrTable[row].y == y) {
            return row;
        }
    }
    return -1;
}

const char *tyr::bufr_why_not(const BufrDescriptor &d)
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

int tyr::bufr_next_message(std::FILE *stream, const char *name)
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
