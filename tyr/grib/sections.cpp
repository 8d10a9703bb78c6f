#include <algorithm>

#include "tyr/base/msg.h"
#include "tyr/grib/edition_private.h"
#include "tyr/grib/geometry_private.h"
#include "tyr/grib/stream_state_private.h"

// The sections of the product in hand, taken from the stream one at a time.

namespace tyr {
namespace {

constexpr int kLastSection = 8;

enum Section2 { kIdent = 1, kGrid = 3, kProduct = 4, kPacking = 5, kBitmap = 6, kData = 7 };

Read read_of(bool is_good)
{
    return is_good ? Read::kGood : Read::kRefused;
}

/// Appends a section's bytes to an empty buffer, with room behind them for the bit reader.
bool load(ByteSource *source, size_t length, std::vector<std::uint8_t> *out)
{
    out->clear();
    const bool is_whole = source->append(length, out);
    out->resize(out->size() + kBitPadding);
    return is_whole;
}

} // namespace

Read GribStream::Impl::load_section1()
{
    constexpr size_t kLength = 3;
    const auto head = source.peek(kLength);
    if (head.size() < kLength) {
        load(&source, 0, &product.section_);
        return Read::kEnd;
    }
    const size_t length = static_cast<size_t>(head[0]) << 16 | head[1] << 8 | head[2];
    if (!load(&source, length, &product.section_)) {
        product.origin.refuse("the file ends within it");
        return Read::kEnd;
    }
    return length > kLength ? Read::kGood : read_of(product.origin.refuse("an empty section"));
}

Read GribStream::Impl::header1(GridRec *grid)
{
    constexpr long kHead0 = 4; ///< no indicator section: the definition stands behind the magic
    if (product.edition == 0) {
        source.seek(found.start + kHead0);
    }
    const Read read = load_section1();
    if (read != Read::kGood) {
        return read;
    }
    return read_of(read_definition1(section(), &product, grid));
}

Read GribStream::Impl::grid1(GridRec *grid)
{
    if (!product.has_grid) {
        return Read::kGood;
    }
    const Read read = load_section1();
    return read == Read::kGood ? read_of(tyr::read_grid1(section(), &product, grid)) : read;
}

Read GribStream::Impl::bitmap1()
{
    if (!product.has_bitmap) {
        return Read::kGood;
    }
    const Read read = load_section1();
    return read == Read::kGood ? read_of(tyr::read_bitmap1(section(), &product)) : read;
}

Read GribStream::Impl::data1(GridRec *grid)
{
    const Read read = load_section1();
    return read == Read::kGood ? read_of(tyr::read_data1(section(), &product, grid)) : read;
}

int GribStream::Impl::read_message1(GridRec *grid, int mode)
{
    Read read = header1(grid);
    read = read == Read::kGood ? grid1(grid) : read;
    if (read == Read::kGood && mode == 0) {
        read = bitmap1();
        read = read == Read::kGood ? data1(grid) : read;
    }
    return read == Read::kGood ? 0 : read == Read::kEnd ? -1 : 1;
}

int GribStream::Impl::next_section()
{
    constexpr size_t kHead = 5;
    const auto head = source.peek(kHead);
    if (head.size() >= 2 && head[0] == '7' && head[1] == '7') {
        section_number = -1;
        return 0;
    }
    if (head.size() < kHead) {
        section_number = -1;
        return -1;
    }
    section_length =
        static_cast<std::uint32_t>(head[0]) << 24 | head[1] << 16 | head[2] << 8 | head[3];
    section_number = head[4];
    return section_number <= kLastSection && section_length >= kHead ? 1 : 0;
}

bool GribStream::Impl::skip_section()
{
    const long end = source.place() + static_cast<long>(section_length);
    return (source.size() < 0 || end <= source.size()) && source.seek(end);
}

Read GribStream::Impl::load_section2()
{
    if (!load(&source, section_length, &product.section_)) {
        product.origin.refuse("the file ends within section %d", section_number);
        return Read::kEnd;
    }
    return Read::kGood;
}

Read GribStream::Impl::take_section2(GridRec *grid)
{
    const Read read = load_section2();
    if (read != Read::kGood) {
        return read;
    }
    switch (section_number) {
    case kIdent:
        return read_of(read_ident2(section(), &product, grid));
    case kGrid:
        return read_of(tyr::read_grid2(section(), &product, grid));
    case kProduct:
        return read_of(tyr::read_product2(section(), &product, grid));
    case kPacking:
        return read_of(read_packing2(section(), &product));
    case kBitmap:
        return read_of(tyr::read_bitmap2(section(), &product));
    case kData:
        return read_of(tyr::read_data2(section(), &product, grid));
    default:
        return Read::kGood;
    }
}

/// Field `field` of the message: sections 3 to 6 of the fields in front of it hold on for it.
int GribStream::Impl::read_message2(int field, int mode, GridRec *grid, bool *is_last)
{
    product.packing = PackingRec{};
    int seen = 0;
    bool is_known[kLastSection + 1];
    std::fill(std::begin(is_known), std::end(is_known), true);
    *is_last = true;
    int more = 1;
    const bool was_quiet = product.origin.is_quiet;
    while ((more = next_section()) == 1) {
        const bool is_mine = seen == field;
        product.origin.is_quiet = was_quiet || !is_mine;
        const int number = section_number;
        const bool is_skipped = number == 0 || number == 2 || number == kLastSection ||
                                (number == kData && (!is_mine || mode != 0)) ||
                                (number == kBitmap && mode != 0) ||
                                (number == kPacking && mode != 0);
        bool is_good = true;
        if (number == kData && is_mine) {
            is_good =
                std::all_of(std::begin(is_known), std::end(is_known), [](bool k) { return k; });
        }
        if (is_skipped || !is_good) {
            if (!skip_section()) {
                product.origin.is_quiet = was_quiet;
                product.origin.refuse("the file ends within section %d", number);
                return -1;
            }
        } else {
            const Read read = take_section2(grid);
            if (read == Read::kEnd) {
                product.origin.is_quiet = was_quiet;
                return -1;
            }
            is_good = read == Read::kGood;
            is_known[number] = is_good;
        }
        if (number != kData) {
            continue;
        }
        if (is_mine) {
            product.origin.is_quiet = was_quiet;
            const long place = source.place();
            *is_last = next_section() != 1;
            source.seek(place);
            return is_good ? 0 : 1;
        }
        ++seen;
    }
    product.origin.is_quiet = was_quiet;
    if (more < 0) {
        product.origin.refuse("the file ends within it");
        return -1;
    }
    if (!was_quiet) {
        MSG_out(kMsgWarn, "No product found\n");
    }
    return 1;
}

} // namespace tyr
