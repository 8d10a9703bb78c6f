#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>

namespace tyr {

/// Buffered reading of a stream that isn't the reader's own: lines, words, numbers and bytes, with
/// a place that can be told and sought.
class ByteReader {
  public:
    explicit ByteReader(std::FILE *stream);

    bool can_seek() const { return size_ >= 0; }
    int64_t place() const { return start_ + static_cast<int64_t>(next_); }
    bool seek(int64_t place);
    /// Bytes from here to the end; -1 where the stream doesn't tell.
    int64_t remaining() const { return size_ < 0 ? -1 : size_ - place(); }

    int peek(); ///< the next byte, EOF at the end
    int get();
    /// A line without its end, cut at a length that no honest line has. False at the end.
    bool line(std::string *out);
    /// Passes white space to the end of the line, and that end.
    void finish_line();
    /// The next run of non-blanks behind white space, cut at that length too. False at the end.
    bool word(std::string *out);
    /// The next word as a number: Missing for one that is none in the arithmetic of floats. False
    /// for what isn't a number.
    bool number(float *out);
    bool bytes(void *out, size_t count);
    bool skip(int64_t count);

  private:
    bool fill();
    bool skip_blanks();

    std::FILE *stream_;
    int64_t size_ = -1;
    int64_t start_ = 0; ///< place of the buffer's first byte
    size_t next_ = 0, end_ = 0;
    std::array<char, 65536> buffer_;
};

} // namespace tyr
