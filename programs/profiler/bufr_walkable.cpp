#include "programs/profiler/bufr_walkable.h"

#include <algorithm>

#include "programs/profiler/bufr_message.h"

using namespace tyr;

namespace {

constexpr std::string_view kMark = "BUFR";
constexpr size_t kSection0 = 8;
constexpr size_t kLastOwnEdition = 3;

unsigned octet(std::string_view bytes, size_t at)
{
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U;
}

size_t three_octets(std::string_view bytes, size_t at)
{
    return octet(bytes, at) << 16 | octet(bytes, at + 1) << 8 | octet(bytes, at + 2);
}

} // namespace

bool tyr::bufr_is_own(std::string_view message)
{
    constexpr unsigned kHasOptional = 0x80;
    constexpr unsigned kCompressed = 0x40;
    if (octet(message, 7) > kLastOwnEdition || message.size() > kLongestMessage) {
        return false;
    }
    size_t at = kSection0;
    const bool has_optional = (octet(message, at + 7) & kHasOptional) != 0;
    at += three_octets(message, at);
    at += has_optional ? three_octets(message, at) : 0;
    const size_t end = std::min(at + three_octets(message, at), message.size());
    if ((octet(message, at + 6) & kCompressed) != 0) {
        return false;
    }
    for (at += 7; at + 1 < end; at += 2) {
        const int first = static_cast<int>(octet(message, at));
        const int y = static_cast<int>(octet(message, at + 1));
        tyr::BufrDescriptor d{first >> 6, first & 63, y, -1};
        d.row = d.f == 0 ? tyr::bufr_table_row(d.x, d.y) : -1;
        const bool is_padding = first == 0 && y == 0;
        if (!is_padding && tyr::bufr_why_not(d) != nullptr) {
            return false;
        }
    }
    return true;
}

std::vector<std::string_view> tyr::bufr_messages(std::string_view bytes)
{
    std::vector<std::string_view> messages;
    for (size_t at = bytes.find(kMark); at != std::string_view::npos; at = bytes.find(kMark, at)) {
        const size_t length = std::max(three_octets(bytes, at + 4), kSection0);
        messages.push_back(bytes.substr(at, length));
        at += messages.back().size();
    }
    return messages;
}
