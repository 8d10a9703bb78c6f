#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <span>

#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/grid/text_grids_private.h"

namespace tyr {

namespace {

constexpr int kLeastText = 2; ///< bytes of a text number with what parts it from the next
constexpr const char *kTooLarge = "nx * ny is more than the file can hold";
constexpr const char *kCut = "the values end early, or one isn't a number";

size_t points(const GridRec &grid)
{
    return static_cast<size_t>(grid.domain.nx) * static_cast<size_t>(grid.domain.ny);
}

void from_big_endian(std::span<float> values)
{
    for (float &value : values) {
        uint32_t word = std::bit_cast<uint32_t>(value);
        if constexpr (std::endian::native == std::endian::little) {
            word = __builtin_bswap32(word);
        }
        value = std::bit_cast<float>(word);
    }
}

/// Turns rows and columns that run the other way.
void turn(GridRec *grid, bool columns_back, bool rows_back)
{
    const size_t nx = static_cast<size_t>(grid->domain.nx);
    const size_t ny = static_cast<size_t>(grid->domain.ny);
    for (size_t y = 0; columns_back && y < ny; ++y) {
        std::reverse(grid->values + y * nx, grid->values + (y + 1) * nx);
    }
    for (size_t y = 0; rows_back && y < ny / 2; ++y) {
        std::swap_ranges(grid->values + y * nx, grid->values + (y + 1) * nx,
                         grid->values + (ny - 1 - y) * nx);
    }
}

/// Opens the file of an indirect grid, beside the grid file too; never a command nor a standard
/// stream.
FilePtr open_indirect(const std::string &path, const std::string &grid_file)
{
    if (path[0] == '|' || FILE_is_std(path.c_str())) {
        return nullptr;
    }
    FilePtr file(FILE_open(path.c_str(), "r"));
    const size_t slash = grid_file.rfind('/');
    if (!file && path[0] != '/' && slash != std::string::npos) {
        file.reset(FILE_open((grid_file.substr(0, slash + 1) + path).c_str(), "r"));
    }
    return file;
}

} // namespace

bool alloc_bounded(GridRec *grid, int64_t bytes, int least)
{
    // a stream that doesn't tell its length may claim what a large model's grid has
    constexpr size_t kMostUntold = size_t{1} << 27;
    const size_t most = bytes < 0 ? kMostUntold : (static_cast<size_t>(bytes) + 1) / least;
    return points(*grid) <= most && GRD_alloc(grid) == 1;
}

const char *TextGrids::read_text_values(GridRec *grid, bool wants_values)
{
    if (wants_values && !alloc_bounded(grid, in_.remaining(), kLeastText)) {
        return kTooLarge;
    }
    float passed = 0.0F;
    for (size_t i = 0; i < points(*grid); ++i) {
        if (!in_.number(wants_values ? &grid->values[i] : &passed)) {
            return kCut;
        }
    }
    return nullptr;
}

const char *TextGrids::read_binary_values(GridRec *grid, bool wants_values)
{
    constexpr int64_t kWord = sizeof(float);
    const size_t count = points(*grid);
    if (count > static_cast<size_t>(INT64_MAX / kWord) ||
        (!wants_values && in_.can_seek() &&
         static_cast<int64_t>(count) * kWord > in_.remaining())) {
        return kTooLarge;
    }
    if (!wants_values) {
        return in_.skip(static_cast<int64_t>(count) * kWord) ? nullptr : kCut;
    }
    if (!alloc_bounded(grid, in_.remaining(), kWord)) {
        return kTooLarge;
    }
    if (!in_.bytes(grid->values, count * sizeof(float))) {
        return kCut;
    }
    from_big_endian({grid->values, count});
    return nullptr;
}

const char *TextGrids::read_values(GridRec *grid, int form, bool wants_values)
{
    const char *reason = nullptr;
    if (form == kBinaryForm) {
        if (kind_ != 4) {
            in_.finish_line();
        }
        reason = read_binary_values(grid, wants_values);
    } else if (form == kIndirectForm) {
        std::string line;
        in_.finish_line();
        if (!in_.line(&line)) {
            return "it ends before the line of the values' file";
        }
        return wants_values ? read_indirect(line, name_, grid) : nullptr;
    } else {
        reason = read_text_values(grid, wants_values);
    }
    in_.finish_line();
    return reason;
}

const char *read_indirect(const std::string &line, const std::string &grid_file, GridRec *grid)
{
    std::array<char, 64> form{};
    std::array<char, 1024> path{};
    long offset = 0;
    int x_direction = 1;
    int y_direction = 1;
    constexpr int kFields = 5;
    if (std::sscanf(line.c_str(), "%63s %1023s %ld %d %d", form.data(), path.data(), &offset,
                    &x_direction, &y_direction) != kFields) {
        return "no line of the values' file";
    }
    const FilePtr file = open_indirect(path.data(), grid_file);
    if (!file) {
        MSG_out(kMsgWarn, "GRD_read: Unable to open grid file: %s\n", path.data());
        return "";
    }
    ByteReader in(file.get());
    if (!in.seek(offset)) {
        return "the values' place lies outside their file";
    }
    const bool is_text = form[0] == 'A';
    if (!alloc_bounded(grid, in.remaining(), is_text ? kLeastText : 4)) {
        return kTooLarge;
    }
    bool is_whole = is_text || in.bytes(grid->values, points(*grid) * sizeof(float));
    for (size_t i = 0; is_text && is_whole && i < points(*grid); ++i) {
        is_whole = in.number(&grid->values[i]);
    }
    turn(grid, x_direction != 1, y_direction != 1);
    return is_whole ? nullptr : kCut;
}

} // namespace tyr
