#include "tyr/grib/grib.h"

#include <array>
#include <cstdlib>
#include <cstring>

#include "base/msg.h"
#include "tyr/grib/edition_private.h"
#include "tyr/grib/settings_private.h"
#include "tyr/grib/stream_state_private.h"

namespace {

constexpr int kHandles = 64; ///< more than the table of open files has
constexpr int kRawRoom = 2000000;

struct State {
    std::array<tyr::GribStream *, kHandles> streams{};
    tyr::GribSettings settings;
} state;

tyr::GribStream::Impl *stream_of(int handle)
{
    if (handle < 0 || handle >= kHandles || state.streams[static_cast<size_t>(handle)] == nullptr) {
        return nullptr;
    }
    return state.streams[static_cast<size_t>(handle)]->impl();
}

int result_of(tyr::Read read)
{
    return read == tyr::Read::kGood ? 1 : read == tyr::Read::kRefused ? 0 : -1;
}

/// Runs a section reader of the stream behind a handle.
template <class Reader> int run(int handle, Reader reader)
{
    tyr::GribStream::Impl *stream = stream_of(handle);
    return stream == nullptr ? -1 : result_of(reader(stream));
}

/// A section of edition 2, if it is the one in hand.
int run2(int handle, int number, GridRec *grid)
{
    return run(handle, [=](tyr::GribStream::Impl *s) {
        return s->section_number == number ? s->take_section2(grid) : tyr::Read::kRefused;
    });
}

} // namespace

namespace tyr {

void grib_bind(int handle, GribStream *stream)
{
    if (handle >= 0 && handle < kHandles) {
        state.streams[static_cast<size_t>(handle)] = stream;
    }
}

const GribSettings &grib_settings()
{
    return state.settings;
}

} // namespace tyr

int GRD_next_product(int handle)
{
    tyr::GribStream::Impl *stream = stream_of(handle);
    return stream != nullptr && stream->next_product() ? 0 : -1;
}

long GRD_product_end(int handle, int seek)
{
    return stream_of(handle) == nullptr
               ? -1
               : state.streams[static_cast<size_t>(handle)]->product_end(seek != 0);
}

int GRD_attach_index(int handle, const char *path)
{
    return stream_of(handle) == nullptr
               ? -1
               : state.streams[static_cast<size_t>(handle)]->attach_index(path);
}

void GRIB_set_index(int on)
{
    state.settings.is_index_on = on != 0;
}

void GRIB_set_max_bad(int max_bad)
{
    state.settings.max_bad = max_bad;
}

int GRIB_read_header1(int handle, GridRec *grid, int mode)
{
    return run(handle, [=](tyr::GribStream::Impl *s) {
        s->product.guard.max_bad = state.settings.max_bad;
        const tyr::Read read = s->header1(grid);
        if (read == tyr::Read::kGood && mode != 1) {
            tyr::make_info(s->product.ensemble, grid);
        }
        return read;
    });
}

int GRIB_read_grid1(int handle, GridRec *grid)
{
    return run(handle, [=](tyr::GribStream::Impl *s) { return s->grid1(grid); });
}

int GRIB_read_bitmap1(int handle, GridRec *)
{
    return run(handle, [](tyr::GribStream::Impl *s) { return s->bitmap1(); });
}

int GRIB_read_data1(int handle, GridRec *grid)
{
    return run(handle, [=](tyr::GribStream::Impl *s) { return s->data1(grid); });
}

int GRIB_read_section(int handle)
{
    tyr::GribStream::Impl *stream = stream_of(handle);
    return stream == nullptr ? -1 : stream->next_section();
}

int GRIB_skip_section(int handle)
{
    tyr::GribStream::Impl *stream = stream_of(handle);
    return stream != nullptr && stream->skip_section() ? 1 : -1;
}

int GRIB_section_number(int handle)
{
    const tyr::GribStream::Impl *stream = stream_of(handle);
    return stream == nullptr ? -1 : stream->section_number;
}

int GRIB_read_ident(int handle, GridRec *grid)
{
    return run2(handle, 1, grid);
}

int GRIB_read_grid2(int handle, GridRec *grid)
{
    return run2(handle, 3, grid);
}

int GRIB_read_product2(int handle, GridRec *grid)
{
    return run2(handle, 4, grid);
}

int GRIB_read_packing(int handle, GridRec *grid)
{
    return run2(handle, 5, grid);
}

int GRIB_read_bitmap2(int handle)
{
    return run2(handle, 6, nullptr);
}

int GRIB_read_data2(int handle, GridRec *grid)
{
    return run2(handle, 7, grid);
}

void GRIB_make_info(GridRec *grid)
{
    tyr::make_info(tyr::Ensemble{}, grid);
}

int GRIB_read_product(int handle, void **buffer, int *length)
{
    *length = 0;
    tyr::GribStream::Impl *stream = stream_of(handle);
    if (stream == nullptr || !stream->next_grib()) {
        return -1;
    }
    const long start = stream->found.start;
    const long end = stream->found.edition == 0 ? stream->walk_end0()
                                                : start + static_cast<long>(stream->found.length);
    std::vector<std::uint8_t> bytes;
    if (end <= start || end - start > kRawRoom || !stream->source.seek(start) ||
        !stream->source.append(static_cast<size_t>(end - start), &bytes)) {
        return -1;
    }
    if (*buffer == nullptr) {
        *buffer = std::malloc(bytes.size());
    }
    if (*buffer == nullptr) {
        return -1;
    }
    std::memcpy(*buffer, bytes.data(), bytes.size());
    *length = static_cast<int>(bytes.size());
    return 0;
}
