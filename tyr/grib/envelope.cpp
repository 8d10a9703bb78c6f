#include <algorithm>
#include <cstring>
#include <optional>
#include <string_view>

#include "tyr/grib/envelope_private.h"

namespace tyr {
namespace {

constexpr char kSoh = 1;
constexpr char kEtx = 3;
constexpr size_t kHeadRoom = 160;
constexpr size_t kHeadingRoom = 30;
constexpr size_t kStarsTail = 3; ///< characters of a heading in stars that don't count
constexpr std::string_view kLineEnd = "\r\r\n";
constexpr const char *kBareHeading = "GRIB01 KXXX 010000";
constexpr long kMostProduct = 16L << 20; ///< bytes of edition 1: its length has three octets

/// A text that is read from its front.
class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}
    size_t taken() const { return at_; }
    bool take(std::string_view word)
    {
        if (text_.substr(at_, word.size()) != word) {
            return false;
        }
        at_ += word.size();
        return true;
    }
    void take_any(std::string_view set)
    {
        at_ = std::min(text_.find_first_not_of(set, at_), text_.size());
    }
    std::optional<long> number()
    {
        take_any(" ");
        constexpr size_t kMostDigits = 15;
        long value = 0;
        size_t digits = 0;
        while (at_ < text_.size() && text_[at_] >= '0' && text_[at_] <= '9') {
            value = value * 10 + (text_[at_++] - '0');
            if (++digits > kMostDigits) {
                return std::nullopt;
            }
        }
        return digits > 0 ? std::optional(value) : std::nullopt;
    }
    std::optional<std::string> line(size_t most)
    {
        const size_t end = text_.find_first_of("\r\n", at_);
        if (end == std::string_view::npos || end - at_ > most) {
            return std::nullopt;
        }
        std::string text(text_.substr(at_, end - at_));
        at_ = end;
        return text;
    }

  private:
    std::string_view text_;
    size_t at_ = 0;
};

/// What an envelope's text gave; nothing where it isn't one.
struct Head {
    std::string heading;
    size_t size = 0;
    long length = -1;       ///< of form 3
    size_t length_from = 0; ///< where it counts from
};

std::optional<Head> stars(std::string_view text)
{
    Reader in(text);
    in.take_any("\r\n\003");
    if (!in.take("** ")) {
        return std::nullopt;
    }
    std::optional<std::string> line = in.line(kHeadingRoom);
    if (!line) {
        return std::nullopt;
    }
    line->resize(line->size() - std::min(line->size(), kStarsTail));
    return Head{*line, in.taken()};
}

std::optional<Head> bulletin_lines(Reader *in, bool has_number)
{
    constexpr std::string_view kStart = "\001\r\r\n";
    if (!in->take(kStart)) {
        return std::nullopt;
    }
    if (has_number ? !in->number() : !in->line(kHeadingRoom)) {
        return std::nullopt;
    }
    in->take_any(" ");
    if (!in->take(kLineEnd)) {
        return std::nullopt;
    }
    const std::optional<std::string> line = in->line(kHeadingRoom);
    if (!line || !in->take(kLineEnd)) {
        return std::nullopt;
    }
    return Head{*line, in->taken()};
}

std::optional<Head> bulletin(std::string_view text)
{
    Reader in(text);
    in.take("\n\003");
    return bulletin_lines(&in, true);
}

/// "GRIB: n" and a newline; the bulletin's heading behind it may be missing.
std::optional<Head> with_length(std::string_view text)
{
    Reader in(text);
    in.take_any("\r\n\003");
    if (!in.take("GRIB:")) {
        return std::nullopt;
    }
    const std::optional<long> length = in.number();
    in.take_any("\r");
    if (!length || !in.take("\n")) {
        return std::nullopt;
    }
    const size_t from = in.taken();
    Head head = {kBareHeading, from};
    if (const std::optional<Head> lines = bulletin_lines(&in, false)) {
        head = *lines;
    }
    head.length = *length;
    head.length_from = from;
    return head;
}

std::optional<Head> try_form(Envelope form, std::string_view text)
{
    switch (form) {
    case Envelope::kStars:
        return stars(text);
    case Envelope::kBulletin:
        return bulletin(text);
    case Envelope::kLength:
        return with_length(text);
    default:
        return std::nullopt;
    }
}

std::string_view peek_text(ByteSource *source, size_t count)
{
    const auto bytes = source->peek(count);
    return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

/// Reads an envelope at the place, if one stands there. The form with a length goes before a bare
/// product, whose magic word it begins with.
bool take_envelope(ByteSource *source, Envelope last, Found *found)
{
    for (const Envelope form : {last, Envelope::kStars, Envelope::kBulletin, Envelope::kLength}) {
        const std::optional<Head> head = try_form(form, peek_text(source, kHeadRoom));
        if (!head) {
            continue;
        }
        found->form = form;
        found->heading = head->heading;
        if (head->length >= 0) {
            found->envelope_end =
                source->place() + static_cast<long>(head->length_from) + head->length;
        }
        source->skip(head->size);
        return true;
    }
    return false;
}

Magic magic_of(std::string_view word)
{
    if (word == "GRIB") {
        return Magic::kGrib;
    }
    return word == "BUFR" ? Magic::kBufr : word == "GRID" ? Magic::kGridText : Magic::kNone;
}

/// Reads the head at the place. @return false where no product can begin like that
bool take_head(ByteSource *source, Found *found)
{
    constexpr size_t kHead1 = 8;
    constexpr size_t kHead2 = 16;
    const std::string_view text = peek_text(source, kHead2 + kHead1);
    found->magic = magic_of(text.substr(0, 4));
    found->start = source->place();
    if (found->magic == Magic::kNone || text.size() < kHead1) {
        return false;
    }
    const auto octet = [&](size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    // a head of zeros: the true one stands behind it
    const bool is_empty = octet(4) == 0 && octet(5) == 0 && octet(6) == 0 && octet(7) != 2;
    const size_t from = is_empty ? 4 : 0;
    found->edition = static_cast<int>(octet(from + 7));
    found->length = octet(from + 4) << 16 | octet(from + 5) << 8 | octet(from + 6);
    found->discipline = 0;
    if (found->magic == Magic::kGridText) {
        found->length = 0;
        source->skip(4);
        return true;
    }
    if (found->magic == Magic::kGrib && found->edition == 2 && text.size() >= kHead2) {
        found->discipline = octet(6);
        found->length = 0;
        for (size_t i = 8; i < kHead2; ++i) {
            found->length = found->length << 8 | octet(i);
        }
        source->skip(kHead2);
        return found->length > kHead2 && found->length < 1UL << 40;
    }
    if (found->magic == Magic::kGrib && found->edition == 0) {
        found->length = 0;
    }
    source->skip(from + kHead1);
    return found->magic == Magic::kBufr || found->edition == 0 || found->edition == 1;
}

} // namespace

bool find_product(ByteSource *source, Envelope last, Found *found)
{
    constexpr size_t kMagic = 4;
    *found = Found{};
    found->heading = kBareHeading;
    take_envelope(source, last, found);
    for (;;) {
        const auto bytes = source->peek(ByteSource::kMostPeek);
        if (bytes.size() < kMagic) {
            return false;
        }
        const std::string_view text(reinterpret_cast<const char *>(bytes.data()), bytes.size());
        size_t at = 0;
        while (at + kMagic <= text.size() && magic_of(text.substr(at, kMagic)) == Magic::kNone) {
            at = std::min(text.find_first_of("GB", at + 1), text.size());
        }
        if (at + kMagic > text.size()) { // a word may stand across the end of what was looked at
            source->skip(bytes.size() - (kMagic - 1U));
            if (bytes.size() < ByteSource::kMostPeek) {
                return false;
            }
            continue;
        }
        source->skip(at);
        const long place = source->place();
        if (text.substr(at, kMagic + 1U) == "GRIB:" && take_envelope(source, last, found)) {
            continue;
        }
        if (take_head(source, found)) {
            return true;
        }
        source->seek(place + 1);
    }
}

long text_end(ByteSource *source, long start)
{
    constexpr int kRun = 3;
    source->seek(start);
    int run = 0;
    bool is_ended = false;
    for (long seen = 0; seen < kMostProduct; ++seen) {
        const int c = source->get();
        if (c < 0) {
            return source->place();
        }
        run = c == '7' ? run + 1 : 0;
        is_ended = is_ended || run >= kRun;
        if (is_ended && (c == '*' || c == kEtx || c == 'G' || c == kSoh)) {
            return source->place() - 1;
        }
    }
    return -1;
}

} // namespace tyr
