#include <algorithm>
#include <charconv>
#include <cstdio>
#include <string_view>

#include "tyr/base/str.h"
#include "tyr/grib/grib_index_private.h"

namespace tyr {
namespace {

constexpr int kLineRoom = 160;

/// What of a text is still to be read.
class Cursor {
  public:
    explicit Cursor(std::string_view text) : text_(text) {}

    void skip_blanks()
    {
        text_.remove_prefix(std::min(text_.find_first_not_of(' '), text_.size()));
    }
    bool is_at_digit() const { return !text_.empty() && text_[0] >= '0' && text_[0] <= '9'; }
    /// The next character that is no blank; 0 at the end.
    char letter()
    {
        skip_blanks();
        const char c = text_.empty() ? '\0' : text_[0];
        text_.remove_prefix(text_.empty() ? 0 : 1);
        return c;
    }
    template <class Number> bool number(Number *value)
    {
        skip_blanks();
        const char *end = text_.data() + text_.size();
        const auto [stop, error] = std::from_chars(text_.data(), end, *value);
        text_.remove_prefix(static_cast<size_t>(stop - text_.data()));
        return error == std::errc();
    }
    std::string_view rest() const { return text_; }

  private:
    std::string_view text_;
};

/// Pairs of a letter and a number. The word before them may carry a number of its own.
void read_pairs(Cursor in, IndexLine *line)
{
    int value = 0;
    for (in.skip_blanks(); in.is_at_digit(); in.skip_blanks()) {
        in.letter();
    }
    for (char letter = in.letter(); letter != '\0' && in.number(&value); letter = in.letter()) {
        switch (letter) {
        case 'S':
            line->source = value;
            break;
        case 'M':
            line->model = value;
            break;
        case 'G':
            line->grid_id = value;
            break;
        case 'T':
            line->time = value;
            break;
        case 'L':
            line->ltype = value;
            break;
        case 'H':
            line->level = value;
            break;
        case 'V':
            line->var = value;
            break;
        default:
            break;
        }
    }
}

/// Six numbers, with the source and a colon in front or without.
bool read_numbers(Cursor in, IndexLine *line)
{
    Cursor behind = in;
    int source = 0;
    if (behind.number(&source) && behind.letter() == ':') {
        line->source = source;
        in = behind;
    }
    return in.number(&line->model) && in.number(&line->grid_id) && in.number(&line->time) &&
           in.number(&line->ltype) && in.number(&line->level) && in.number(&line->var);
}

} // namespace

std::optional<IndexLine> parse_index_line(std::string_view text)
{
    constexpr std::string_view kWord = "/ GRIB";
    IndexLine line;
    Cursor in(text);
    if (!in.number(&line.offset) || line.offset < 0) {
        return std::nullopt;
    }
    const std::string_view rest = in.rest();
    const size_t word = rest.find(kWord);
    const size_t slash = rest.find('/');
    if (word != std::string_view::npos) {
        line.is_described = true;
        read_pairs(Cursor(rest.substr(word + kWord.size())), &line);
    } else if (slash != std::string_view::npos) {
        line.is_described = read_numbers(Cursor(rest.substr(slash + 1)), &line);
    }
    return line;
}

bool GribIndex::open(const char *path)
{
    file_.reset(FILE_is_dir(path) != 0 ? nullptr : FILE_open(path, "r"));
    place_ = -1;
    last_.reset();
    return is_open();
}

void GribIndex::rewind()
{
    if (file_ != nullptr) {
        std::rewind(file_.get());
    }
    place_ = -1;
    last_.reset();
}

std::optional<IndexLine> GribIndex::next()
{
    char text[kLineRoom + 1];
    while (STR_read_cut_line(file_.get(), text, kLineRoom) >= 0) {
        if (std::optional<IndexLine> line = parse_index_line(text)) {
            return line;
        }
    }
    return std::nullopt;
}

std::optional<IndexLine> GribIndex::line(int place)
{
    if (place < place_) {
        rewind();
    }
    while (place_ < place) {
        std::optional<IndexLine> line = next();
        if (!line) {
            return std::nullopt;
        }
        line->field = last_ && last_->offset == line->offset ? last_->field + 1 : 0;
        last_ = line;
        ++place_;
    }
    return last_;
}

} // namespace tyr
