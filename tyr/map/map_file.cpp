#include "tyr/map/map_file.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/geo/projection_rows_private.h"
#include "tyr/gks/gks.h"
#include "tyr/map/map_file_private.h"
#include "tyr/map/map_sides_private.h"

using namespace tyr;

namespace {

constexpr float kJump = 20.0F; ///< plot units in x: over the side of the map
constexpr size_t kBlock = 65536;
constexpr size_t kHeaderBytes = 22;
constexpr size_t kPointBytes = 8;
constexpr size_t kBatch = 256; ///< points projected together
constexpr float kMostLat = 90.1F;
constexpr float kMostLon = 721.0F;

struct State {
    bool is_filled = false;
    std::vector<float> run; ///< x, y of the polyline being made; kept for its room
};

State state;

/// A stream read in blocks.
class BlockReader {
  public:
    explicit BlockReader(FILE *stream) : stream_(stream) { fill(); }

    /// The next bytes, or null where fewer are left.
    const unsigned char *take(size_t bytes)
    {
        if (end_ - at_ < bytes) {
            fill();
        }
        if (end_ - at_ < bytes) {
            return nullptr;
        }
        at_ += bytes;
        return buffer_.data() + at_ - bytes;
    }

    /// The next word between white space; null at the end, and for a word too long for a number.
    const char *word()
    {
        int c = next();
        while (c == ' ' || (c >= '\t' && c <= '\r')) {
            c = next();
        }
        size_t length = 0;
        while (c > ' ') {
            if (length + 1 == word_.size()) {
                return nullptr;
            }
            word_[length++] = static_cast<char>(c);
            c = next();
        }
        word_[length] = '\0';
        return length > 0 ? word_.data() : nullptr;
    }

    /// Back to the start; only while nothing but the first block has been read.
    void restart() { at_ = 0; }
    bool at_end()
    {
        fill();
        return at_ == end_;
    }

  private:
    int next()
    {
        const unsigned char *c = take(1);
        return c ? *c : -1;
    }

    /// Moves what is left to the front and reads behind it.
    void fill()
    {
        std::memmove(buffer_.data(), buffer_.data() + at_, end_ - at_);
        end_ -= at_;
        at_ = 0;
        end_ += std::fread(buffer_.data() + end_, 1, kBlock - end_, stream_);
    }

    FILE *stream_;
    std::array<unsigned char, kBlock> buffer_ = {};
    std::array<char, 64> word_ = {};
    size_t at_ = 0;
    size_t end_ = 0;
};

uint32_t big_endian(const unsigned char *p)
{
    return uint32_t{p[0]} << 24 | uint32_t{p[1]} << 16 | uint32_t{p[2]} << 8 | uint32_t{p[3]};
}

bool read_real(BlockReader &reader, float *out)
{
    const char *word = reader.word();
    char *end = nullptr;
    *out = word ? std::strtof(word, &end) : 0.0F;
    return word && *end == '\0';
}

bool read_count(BlockReader &reader, long *out)
{
    const char *word = reader.word();
    char *end = nullptr;
    *out = word ? std::strtol(word, &end, 10) : 0;
    return word && *end == '\0';
}

bool read_text_header(BlockReader &reader, long *count)
{
    float unused = 0.0F;
    long number = 0;
    return read_count(reader, count) && read_real(reader, &unused) && read_real(reader, &unused) &&
           read_real(reader, &unused) && read_real(reader, &unused) && read_count(reader, &number);
}

bool read_header(BlockReader &reader, bool is_text, long *count)
{
    if (is_text) {
        return read_text_header(reader, count);
    }
    const unsigned char *bytes = reader.take(kHeaderBytes);
    if (bytes) {
        *count = static_cast<int16_t>(bytes[0] << 8 | bytes[1]);
    }
    return bytes != nullptr;
}

bool read_point(BlockReader &reader, bool is_text, float *lat, float *lon)
{
    if (is_text) {
        return read_real(reader, lat) && read_real(reader, lon);
    }
    const unsigned char *bytes = reader.take(kPointBytes);
    if (bytes) {
        *lat = std::bit_cast<float>(big_endian(bytes));
        *lon = std::bit_cast<float>(big_endian(bytes + 4));
    }
    return bytes != nullptr;
}

bool is_on_earth(float lat, float lon)
{
    return std::fabs(lat) <= kMostLat && std::fabs(lon) <= kMostLon;
}

void draw_run()
{
    const int count = static_cast<int>(state.run.size() / 2);
    if (count >= 2) {
        if (state.is_filled) {
            gfill_area(count, state.run.data());
        } else {
            gpolyline(count, state.run.data());
        }
    }
    state.run.clear();
}

/// Adds a point to the polyline; a jump over the side of the map ends it beyond that side and
/// begins the next one beyond the other.
void add_point(int proj, float x, float y)
{
    std::vector<float> &run = state.run;
    if (run.size() >= 2) {
        const float old_x = run[run.size() - 2];
        const float old_y = run[run.size() - 1];
        const float width = tyr::projection_wrap_width(proj, y);
        if (width != 0.0F && std::fabs(x - old_x) > kJump) {
            const float side = x < old_x ? 1.0F : -1.0F;
            run.insert(run.end(), {x + side * width, y});
            draw_run();
            run.insert(run.end(), {old_x - side * tyr::projection_wrap_width(proj, old_y), old_y});
        }
    }
    run.insert(run.end(), {x, y});
}

/// Points of a segment that are projected together.
struct Batch {
    std::array<float, kBatch> lat, lon, x, y;
    size_t count;
};

/// Reads points, `most` of them. @return false at the first that isn't there or isn't on earth
bool read_batch(BlockReader &reader, bool is_text, size_t most, Batch &batch)
{
    for (batch.count = 0; batch.count < most; ++batch.count) {
        float &lat = batch.lat[batch.count];
        float &lon = batch.lon[batch.count];
        if (!read_point(reader, is_text, &lat, &lon) || !is_on_earth(lat, lon)) {
            return false;
        }
    }
    return true;
}

bool draw_segment(BlockReader &reader, bool is_text, long count, int proj)
{
    state.run.clear();
    Batch batch;
    float old_lon = 0.0F;
    bool is_good = true;
    for (long left = count; left > 0 && is_good; left -= static_cast<long>(batch.count)) {
        const auto most = static_cast<size_t>(std::min(left, static_cast<long>(kBatch)));
        is_good = read_batch(reader, is_text, most, batch);
        tyr::project_places(batch.lat.data(), batch.lon.data(), batch.count, batch.x.data(),
                            batch.y.data());
        for (size_t i = 0; i < batch.count; ++i) {
            const bool is_shown = !is_missing(batch.x[i]) && !is_missing(batch.y[i]);
            if (!is_shown || (proj == kProjLambert && crosses_cone_cut(old_lon, batch.lon[i]))) {
                draw_run();
            }
            if (is_shown) {
                add_point(proj, batch.x[i], batch.y[i]);
            }
            old_lon = batch.lon[i];
        }
    }
    draw_run();
    return is_good;
}

} // namespace

MapFileEnd tyr::draw_map_file(FILE *stream)
{
    const int proj = DOM_get_proj();
    if (!is_map_projection(proj)) {
        return MapFileEnd::kNoMap;
    }
    BlockReader reader(stream);
    long count = 0;
    const bool is_text = read_text_header(reader, &count);
    if (!is_text) {
        reader.restart();
    }
    for (bool is_first = true;; is_first = false) {
        const bool has_header = (is_first && is_text) || read_header(reader, is_text, &count);
        if (!has_header) {
            return reader.at_end() ? MapFileEnd::kOpen : MapFileEnd::kDamaged;
        }
        if (count == 0) {
            return MapFileEnd::kClosed;
        }
        if (count < 0 || !draw_segment(reader, is_text, count, proj)) {
            return MapFileEnd::kDamaged;
        }
    }
}

int MAP_read_file(FILE *stream)
{
    switch (draw_map_file(stream)) {
    case MapFileEnd::kClosed:
        return 0;
    case MapFileEnd::kNoMap:
        return 1;
    case MapFileEnd::kOpen:
    case MapFileEnd::kDamaged:
        break;
    }
    return -1;
}

void tyr::set_map_fill(bool is_filled)
{
    state.is_filled = is_filled;
}
