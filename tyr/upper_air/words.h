#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Words and lines of a text held in memory, for the readers and writers of text forms.

namespace tyr {

/// A place in a text. Nothing reads beyond its end.
class WordCursor {
  public:
    explicit WordCursor(std::string_view text, size_t at = 0) : text_(text), at_(at) {}

    /// The next word, cut after `most` characters; what is cut off begins the word after it. Empty
    /// at the end of the text.
    std::string_view word(size_t most = kLongestWord);
    /// The next word, without moving.
    std::string_view peek() const;
    /// Passes over so many words.
    void skip_words(int count);
    /// The rest of the line without its end (and without a carriage return there); moves behind it.
    std::string_view line();
    /// Moves behind the next line that ends in `$`. False where there is none: moves to the end.
    bool skip_to_dollar();

    size_t at() const { return at_; }
    bool at_end() const { return at_ >= text_.size(); }

    static constexpr size_t kLongestWord = 39;

  private:
    std::string_view text_;
    size_t at_;
};

/// Words with one blank between them, in lines.
class WordWriter {
  public:
    void word(std::string_view text);
    void end_line();
    /// Ends a line that has words.
    void end_open_line();
    const std::string &text() const { return text_; }

  private:
    std::string text_;
    bool fresh_ = true;
};

} // namespace tyr
