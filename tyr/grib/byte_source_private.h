#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>
#include <vector>

// The bytes of a stream, wherever they come from, with a place and a way back.

namespace tyr {

/// Reads a file or a block of memory. Reads are buffered here, so the file's own place is nobody's
/// business. What can't seek (a pipe) goes forward only, but for `hold`.
class ByteSource {
  public:
    explicit ByteSource(std::FILE *file);
    explicit ByteSource(std::span<const std::uint8_t> bytes);

    bool can_seek() const { return can_seek_; }
    long place() const { return start_ + static_cast<long>(at_); }
    /// Bytes of the whole stream; -1 where that isn't known.
    long size() const { return size_; }
    /// Goes to an offset. @return false where that can't be reached
    bool seek(long offset);
    /// Keeps what is read from now on, so that seek goes back to here on a pipe too.
    void hold(bool on) { held_ = on && !can_seek_; }

    /// Up to `count` of the next bytes without passing them; fewer at the end. Valid until the next
    /// call. `count` is at most kMostPeek.
    std::span<const std::uint8_t> peek(size_t count);
    /// The next byte, -1 at the end.
    int get();
    void skip(size_t count) { seek(place() + static_cast<long>(count)); }
    /// Reads `count` bytes behind what `out` holds already; false where fewer are left. No more is
    /// allocated than the stream holds.
    bool append(size_t count, std::vector<std::uint8_t> *out);

    static constexpr size_t kMostPeek = 4096;

  private:
    bool fill(size_t count);
    size_t read_file(std::uint8_t *out, size_t count);

    std::FILE *file_ = nullptr;
    std::span<const std::uint8_t> memory_;
    std::vector<std::uint8_t> buffer_;
    long start_ = 0; ///< offset of the window's first byte
    size_t at_ = 0;  ///< place in the window
    long size_ = -1;
    bool can_seek_ = true;
    bool held_ = false;
};

} // namespace tyr
