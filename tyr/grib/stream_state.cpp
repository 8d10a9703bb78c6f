#include <algorithm>
#include <cstring>

#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/grib/edition_private.h"
#include "tyr/grib/grib_stream_private.h"
#include "tyr/grib/settings_private.h"
#include "tyr/grib/stream_state_private.h"
#include "tyr/grid/known_domain.h"
#include "tyr/grid/param.h"

namespace tyr {
namespace {

constexpr int kEnd = -1;
constexpr int kNothing = 1;

} // namespace

void GribStream::Impl::rewind()
{
    if (!source.seek(0)) {
        return;
    }
    here = Place{};
    next = Place{};
    has_next = false;
    found = Found{};
    product.has_map = false;
    product.bitmap.clear();
    index.rewind();
}

bool GribStream::Impl::next_product()
{
    const Envelope last = found.form == Envelope::kBare ? Envelope::kUnknown : found.form;
    if (!find_product(&source, last, &found)) {
        return false;
    }
    product.edition = found.edition;
    product.discipline = found.discipline;
    section_number = 0;
    product.is_known = true;
    return true;
}

/// Passes over other kinds of product.
bool GribStream::Impl::next_grib()
{
    while (next_product()) {
        if (found.magic == Magic::kGrib) {
            return true;
        }
        const long end = found.start + static_cast<long>(found.length);
        source.seek(found.magic == Magic::kBufr && found.length > 8 &&
                            (source.size() < 0 || end <= source.size())
                        ? end
                        : found.start + 4);
    }
    return false;
}

long GribStream::Impl::walk_end0()
{
    const long start = found.start + 4;
    long end = start;
    const auto length_at = [&](long offset) {
        if (!source.seek(offset)) {
            return 0L;
        }
        const auto b = source.peek(8);
        return b.size() < 8 ? 0L : static_cast<long>(b[0]) << 16 | b[1] << 8 | b[2];
    };
    source.seek(start);
    const auto definition = source.peek(8);
    const unsigned flags = definition.size() < 8 ? 0U : definition[7];
    const int sections = 2 + ((flags & 0x80U) != 0 ? 1 : 0) + ((flags & 0x40U) != 0 ? 1 : 0);
    for (int i = 0; i < sections; ++i) {
        const long length = length_at(end);
        if (length < 4) {
            return 0;
        }
        end += length;
    }
    return end + 4;
}

long GribStream::Impl::product_end()
{
    constexpr long kTrailer = 4; ///< CR CR LF ETX
    constexpr long kMostEnvelope = 2000000;
    if (found.form == Envelope::kLength && found.envelope_end >= 0) {
        const long end = found.envelope_end + 1;
        return end > found.start + std::max(kMostEnvelope, static_cast<long>(found.length) + 64)
                   ? -1
                   : end;
    }
    if (found.magic == Magic::kGridText) {
        return text_end(&source, found.start);
    }
    const long place = source.place();
    const long length = found.magic == Magic::kGrib && found.edition == 0
                            ? walk_end0() - found.start
                            : static_cast<long>(found.length);
    source.seek(place);
    if (length < 8 || (source.size() >= 0 && found.start + length > source.size())) {
        MSG_out(kMsgWarn, "Invalid product size: %d\n",
                static_cast<int>(std::clamp(length, -1L, 2147483647L)));
        return 0;
    }
    const bool has_trailer = found.form == Envelope::kStars || found.form == Envelope::kBulletin;
    return found.start + length + (has_trailer ? kTrailer : 0);
}

long GribStream::Impl::whole_end()
{
    constexpr long kEndMark = 4;
    const long place = source.place();
    const long length =
        found.edition == 0 ? walk_end0() - found.start : static_cast<long>(found.length);
    const long end = found.start + length;
    bool is_whole = length > 2 * kEndMark && (source.size() < 0 || end <= source.size());
    if (is_whole && source.can_seek()) {
        source.seek(end - kEndMark);
        const auto mark = source.peek(kEndMark);
        is_whole = mark.size() == kEndMark && std::memcmp(mark.data(), "7777", kEndMark) == 0;
    }
    source.seek(place);
    return is_whole ? end : 0;
}

int GribStream::Impl::read_described(const IndexLine &line, int mode, GridRec *grid)
{
    constexpr int kKnownCentre = 7;
    constexpr int kEuropeanCentre = 98;
    constexpr int kEuropeanType = 10;
    GribHeader first;
    if (read_header(&first) != 0) {
        first = GribHeader{};
    }
    if (line.source == kMissingInt) {
        grid->source = first.file_type() == kEuropeanType ? kEuropeanCentre : kKnownCentre;
    } else {
        grid->source = line.source;
    }
    grid->model = line.model;
    grid->grid_id = line.grid_id;
    grid->time = line.time;
    grid->ltype = line.ltype;
    grid->level = line.level;
    grid->var = line.var;
    grid->version = 1;
    GRD_convert_param(grid);
    DOM_init(&grid->domain);
    GRD_grid_domain(grid->grid_id, &grid->domain);
    if (mode != 1) {
        make_info(Ensemble{}, grid);
        set_date_text(first.date, grid);
    }
    return 0;
}

int GribStream::Impl::read_header(GribHeader *out)
{
    if (!header) {
        source.hold(true);
        const Place kept = here;
        const Place kept_next = next;
        const bool kept_has_next = has_next;
        const long place = source.place();
        GridRec grid;
        GRD_init(&grid);
        product.origin.is_quiet = true;
        if (source.can_seek()) {
            source.seek(0);
        }
        while (!header && next_grib()) {
            const long start = found.start;
            bool is_last = false;
            const int result = product.edition == 2 ? read_message2(0, 1, &grid, &is_last)
                                                    : read_message1(&grid, 1);
            if (result == 0 || product.date.year > 0) {
                header = GribHeader{product.date, {}, product.edition, grid.source};
                char text[kDateTextRoom];
                TIME_format(&product.date, text);
                header->date_text = text;
            }
            source.seek(start + 4);
        }
        product.origin.is_quiet = false;
        source.seek(source.can_seek() ? place : 0);
        source.hold(false);
        here = kept;
        next = kept_next;
        has_next = kept_has_next;
        if (!header) {
            return kEnd;
        }
    }
    *out = *header;
    return 0;
}

bool GribStream::Impl::move_to(int wanted)
{
    if (wanted < here.index) {
        if (!source.can_seek()) {
            return false;
        }
        source.seek(0);
        here = Place{};
        has_next = false;
    } else if (has_next && wanted > here.index) {
        here = next;
        has_next = false;
    }
    return true;
}

int GribStream::Impl::read_here(GridRec *grid, int mode)
{
    source.hold(true); // the way back to a message of several fields, on a pipe
    product.origin.message = here.message + 1;
    const long start = found.start;
    bool is_last = true;
    const long end = whole_end();
    int result = kNothing;
    if (end == 0) {
        product.origin.refuse("it is cut: no 7777 stands where its length ends");
    } else {
        result = product.edition == 2 ? read_message2(here.field, mode, grid, &is_last)
                                      : read_message1(grid, mode);
    }
    next = here;
    ++next.index;
    if (is_last) {
        next.offset = end != 0 ? end : start + 4; // another may begin within a cut one
        next.message = here.message + 1;
        next.field = 0;
        source.hold(false);
    } else {
        next.offset = start;
        ++next.field;
    }
    here.offset = start;
    return result;
}

int GribStream::Impl::read_grid(GridRec *grid, int mode, int *index_)
{
    grid->values = nullptr;
    const int wanted = std::max(*index_, 0);
    if (index.is_open()) {
        const std::optional<IndexLine> line = index.line(wanted);
        if (!line) {
            return kEnd;
        }
        *index_ = wanted;
        if (mode != 0 && line->is_described) {
            return read_described(*line, mode, grid);
        }
        here = Place{wanted, line->offset, wanted, line->field};
        has_next = false;
    } else if (!move_to(wanted)) {
        return kEnd;
    }
    product.guard.max_bad = grib_settings().max_bad;
    for (;; here = next) {
        if (!source.seek(here.offset) || !next_grib()) {
            return kEnd;
        }
        const bool is_wanted = here.index == wanted;
        product.origin.is_quiet = !is_wanted;
        const int result = read_here(grid, is_wanted ? mode : 1);
        product.origin.is_quiet = false;
        if (!is_wanted) {
            continue;
        }
        if (result != 0) {
            GRD_free(grid);
        } else {
            make_info(product.ensemble, grid);
        }
        has_next = !index.is_open();
        *index_ = wanted;
        return result;
    }
}

GribStream::GribStream(std::FILE *stream, std::string name) : impl_(new Impl(stream))
{
    impl_->product.origin.file = std::move(name);
}

GribStream::GribStream(std::span<const std::uint8_t> bytes, std::string name)
    : impl_(new Impl(bytes))
{
    impl_->product.origin.file = std::move(name);
}

GribStream::~GribStream() = default;

bool GribStream::next_product()
{
    return impl_->next_product();
}

long GribStream::product_end(bool seek)
{
    const long end = impl_->product_end();
    if (seek && end > 0) {
        impl_->source.seek(end);
    }
    return end;
}

void GribStream::rewind()
{
    impl_->rewind();
}

int GribStream::attach_index(const char *path)
{
    if (!grib_settings().is_index_on || path == nullptr || *path == '\0') {
        return -1;
    }
    return impl_->index.open(path) ? 0 : -1;
}

int GribStream::read_header(GribHeader *header)
{
    const int result = impl_->read_header(header);
    impl_->rewind();
    return result;
}

int GribStream::read_grid(GridRec *grid, int mode, int *index)
{
    return impl_->read_grid(grid, mode, index);
}

const std::string &GribStream::heading() const
{
    return impl_->found.heading;
}

} // namespace tyr
