#include <algorithm>
#include <cstring>

#include "tyr/grib/byte_source_private.h"

namespace tyr {
namespace {

constexpr size_t kBlock = size_t{1} << 16;
constexpr size_t kMostHeld = size_t{1} << 24; ///< of a pipe, for its header

} // namespace

ByteSource::ByteSource(std::FILE *file) : file_(file)
{
    const off_t here = file == nullptr ? -1 : ftello(file);
    can_seek_ = here >= 0 && fseeko(file, 0, SEEK_END) == 0;
    if (can_seek_) {
        size_ = ftello(file);
        can_seek_ = fseeko(file, 0, SEEK_SET) == 0;
    }
}

ByteSource::ByteSource(std::span<const std::uint8_t> bytes)
    : memory_(bytes), size_(static_cast<long>(bytes.size()))
{
}

bool ByteSource::seek(long offset)
{
    if (offset < 0) {
        return false;
    }
    if (offset >= start_ && offset <= start_ + static_cast<long>(buffer_.size())) {
        at_ = static_cast<size_t>(offset - start_);
        return true;
    }
    if (!can_seek_) {
        while (place() < offset) {
            const auto rest = static_cast<size_t>(offset - place());
            const size_t got = peek(std::min(rest, kMostPeek)).size();
            if (got == 0) {
                return false;
            }
            at_ += got;
        }
        return place() == offset;
    }
    if (offset > size_ || (file_ != nullptr && fseeko(file_, offset, SEEK_SET) != 0)) {
        return false;
    }
    buffer_.clear();
    start_ = offset;
    at_ = 0;
    return true;
}

size_t ByteSource::read_file(std::uint8_t *out, size_t count)
{
    if (file_ != nullptr) {
        return std::fread(out, 1, count, file_);
    }
    const size_t from = static_cast<size_t>(start_) + buffer_.size();
    const size_t got = std::min(count, memory_.size() - std::min(from, memory_.size()));
    if (got > 0) {
        std::memcpy(out, memory_.data() + from, got);
    }
    return got;
}

/// Sees that `count` bytes stand in the window from the place on, as far as there are any.
bool ByteSource::fill(size_t count)
{
    if (buffer_.size() - at_ >= count) {
        return true;
    }
    if (!held_ || buffer_.size() > kMostHeld) {
        buffer_.erase(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(at_));
        start_ += static_cast<long>(at_);
        at_ = 0;
    }
    while (buffer_.size() - at_ < count) {
        const size_t before = buffer_.size();
        std::uint8_t block[kBlock];
        const size_t got = read_file(block, file_ != nullptr ? kBlock : kMostPeek);
        buffer_.insert(buffer_.end(), block, block + got);
        if (buffer_.size() == before) {
            return false;
        }
    }
    return true;
}

std::span<const std::uint8_t> ByteSource::peek(size_t count)
{
    count = std::min(count, kMostPeek);
    fill(count);
    return std::span(buffer_).subspan(at_, std::min(count, buffer_.size() - at_));
}

int ByteSource::get()
{
    if (at_ >= buffer_.size() && !fill(1)) {
        return -1;
    }
    return buffer_[at_++];
}

bool ByteSource::append(size_t count, std::vector<std::uint8_t> *out)
{
    if (size_ >= 0 && (place() > size_ || count > static_cast<size_t>(size_ - place()))) {
        return false;
    }
    if (size_ >= 0) {
        out->reserve(out->size() + count + kMostPeek);
    }
    const size_t here = std::min(count, buffer_.size() - at_);
    out->insert(out->end(), buffer_.begin() + static_cast<std::ptrdiff_t>(at_),
                buffer_.begin() + static_cast<std::ptrdiff_t>(at_ + here));
    at_ += here;
    count -= here;
    while (count > 0 && held_) {
        const auto next = peek(std::min(count, kMostPeek));
        if (next.empty()) {
            return false;
        }
        out->insert(out->end(), next.begin(), next.end());
        at_ += next.size();
        count -= next.size();
    }
    while (count > 0) {
        const size_t before = out->size();
        const size_t step = size_ >= 0 ? count : std::min(count, kBlock);
        out->resize(before + step);
        const size_t got = read_file(out->data() + before, step);
        start_ += static_cast<long>(buffer_.size() + got);
        buffer_.clear();
        at_ = 0;
        out->resize(before + got);
        if (got < step) {
            return false;
        }
        count -= got;
    }
    return true;
}

} // namespace tyr
