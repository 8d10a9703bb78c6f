#include "tyr/paper/metafile_reader.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/gks/gks.h"

namespace {

constexpr std::size_t kMaxWord = 9;
constexpr std::size_t kMaxText = 100;
constexpr std::size_t kLeastPoint = 4; // bytes of the shortest point: "1,1 "
constexpr std::size_t kBlock = std::size_t{1} << 16;
constexpr std::size_t kMaxFile = std::size_t{1} << 30;

bool is_blank(char c)
{
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

/// A place in the text that knows its end.
class Cursor {
  public:
    explicit Cursor(std::string_view text) : text_(text) {}

    bool at_end()
    {
        skip_blank();
        return place_ >= text_.size();
    }
    std::size_t left() const { return text_.size() - place_; }
    std::size_t place() const { return place_; }

    std::string_view word()
    {
        skip_blank();
        const std::size_t start = place_;
        while (place_ < text_.size() && place_ - start < kMaxWord && !is_blank(text_[place_])) {
            place_++;
        }
        return text_.substr(start, place_ - start);
    }

    /// The rest of the line, without its end.
    std::string_view rest_of_line()
    {
        const std::size_t start = place_;
        place_ = std::min(text_.find('\n', place_), text_.size());
        return text_.substr(start, place_ - start);
    }

    template <class Number> bool number(Number &value)
    {
        skip_blank();
        const char *from = text_.data() + place_;
        const auto result = std::from_chars(from, text_.data() + text_.size(), value);
        if (result.ec != std::errc()) {
            return false;
        }
        place_ += static_cast<std::size_t>(result.ptr - from);
        return true;
    }

    bool comma()
    {
        if (place_ >= text_.size() || text_[place_] != ',') {
            return false;
        }
        place_++;
        return true;
    }

    bool point(float out[2]) { return number(out[0]) && comma() && number(out[1]); }

    void skip_blank()
    {
        while (place_ < text_.size() && is_blank(text_[place_])) {
            place_++;
        }
    }

  private:
    std::string_view text_;
    std::size_t place_ = 0;
};

struct IntSetter {
    std::string_view word;
    int (*set)(int value);
};

constexpr IntSetter kIntSetters[] = {
    {"TR",      gsel_norm_tran      },
    {"PL_CLR",  gset_line_colr_ind  },
    {"PL_TYPE", gset_linetype       },
    {"PM_CLR",  gset_marker_colr_ind},
    {"PM_TYPE", gset_marker_type    },
    {"FA_CLR",  gset_fill_colr_ind  },
    {"FA_INT",  gset_fill_int_style },
    {"FA_ST",   gset_fill_style_ind },
    {"TE_CLR",  gset_text_colr_ind  },
};

struct RealSetter {
    std::string_view word;
    int (*set)(float value);
};

constexpr RealSetter kRealSetters[] = {
    {"PL_LW",   gset_linewidth   },
    {"PM_SIZE", gset_marker_size },
    {"PM_WDTH", gset_marker_width},
    {"TE_HGHT", gset_char_ht     },
    {"TE_EXP",  gset_expan       },
    {"TE_WDTH", gset_text_width  },
    {"TE_SPC",  gset_text_spacing},
    {"TE_CSPC", gset_char_space  },
};

struct PairSetter {
    std::string_view word;
    int (*set)(const int rec[2]);
};

constexpr PairSetter kPairSetters[] = {
    {"TE_ALGN", gset_text_align},
    {"TE_FNT",  gset_fontprec  },
};

struct RectSetter {
    std::string_view word;
    int (*set)(int n, const float rect[4]);
};

constexpr RectSetter kRectSetters[] = {
    {"VP",  gset_viewport},
    {"WIN", gset_window  },
};

struct Primitive {
    std::string_view word;
    int (*draw)(int n, const float *points);
};

constexpr Primitive kPrimitives[] = {
    {"PL", gpolyline  },
    {"FA", gfill_area },
    {"PM", gpolymarker},
};

/// What became of a word: played, damaged, or not of this kind.
using Played = std::optional<bool>;

template <class Table> auto find(const Table &table, std::string_view word)
{
    return std::find_if(std::begin(table), std::end(table),
                        [&](const auto &row) { return row.word == word; });
}

Played play_setter(std::string_view word, Cursor &cursor)
{
    if (const auto row = find(kIntSetters, word); row != std::end(kIntSetters)) {
        int value = 0;
        return cursor.number(value) && (row->set(value), true);
    }
    if (const auto row = find(kRealSetters, word); row != std::end(kRealSetters)) {
        float value = 0.0F;
        return cursor.number(value) && (row->set(value), true);
    }
    if (const auto row = find(kPairSetters, word); row != std::end(kPairSetters)) {
        int rec[2];
        return cursor.number(rec[0]) && cursor.number(rec[1]) && (row->set(rec), true);
    }
    if (word == "TE_UP") {
        float up[2];
        return cursor.point(up) && (gset_char_up(up), true);
    }
    return std::nullopt;
}

Played play_rect(std::string_view word, Cursor &cursor)
{
    const auto row = find(kRectSetters, word);
    if (row == std::end(kRectSetters)) {
        return std::nullopt;
    }
    int n = 0;
    float rect[4];
    if (!cursor.number(n) || !cursor.number(rect[0]) || !cursor.number(rect[2]) ||
        !cursor.number(rect[1]) || !cursor.number(rect[3])) {
        return false;
    }
    row->set(n, rect);
    return true;
}

Played play_primitive(std::string_view word, Cursor &cursor)
{
    const auto row = find(kPrimitives, word);
    if (row == std::end(kPrimitives)) {
        return std::nullopt;
    }
    int count = 0;
    if (!cursor.number(count) || count < 1 ||
        static_cast<std::size_t>(count) > (cursor.left() + 1) / kLeastPoint) {
        return false;
    }
    std::vector<float> points(2 * static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < points.size(); i += 2) {
        if (!cursor.point(&points[i])) {
            return false;
        }
    }
    row->draw(count, points.data());
    return true;
}

Played play_colour(std::string_view word, Cursor &cursor)
{
    if (word != "CLR") {
        return std::nullopt;
    }
    int ws = 0;
    int index = 0;
    float rgb[3];
    if (!cursor.number(ws) || !cursor.number(index) || !cursor.number(rgb[0]) ||
        !cursor.number(rgb[1]) || !cursor.number(rgb[2])) {
        return false;
    }
    gset_colr_rep(1, index, rgb);
    return true;
}

Played play_text(std::string_view word, Cursor &cursor)
{
    if (word != "TE") {
        return std::nullopt;
    }
    float pos[2];
    if (!cursor.point(pos)) {
        return false;
    }
    std::string_view text = cursor.rest_of_line();
    while (!text.empty() && is_blank(text.front())) {
        text.remove_prefix(1);
    }
    gtext(pos, std::string(text.substr(0, kMaxText)).c_str());
    return true;
}

/// Plays one record. False when it is damaged.
bool play_record(Cursor &cursor)
{
    const std::string_view word = cursor.word();
    for (const auto play : {play_setter, play_rect, play_primitive, play_colour, play_text}) {
        if (const Played played = play(word, cursor)) {
            return *played;
        }
    }
    cursor.rest_of_line();
    return true;
}

std::string read_all(std::FILE *file)
{
    std::string text;
    std::size_t count = kBlock;
    while (count == kBlock && text.size() < kMaxFile) {
        const std::size_t size = text.size();
        text.resize(size + kBlock);
        count = std::fread(&text[size], 1, kBlock, file);
        text.resize(size + count);
    }
    return text;
}

} // namespace

int gread_metafile(const char *path)
{
    const FilePtr file(FILE_open(path, "r"));
    if (!file) {
        MSG_out(kMsgWarn, "gread_metafile: Unable to open image file: %s\n", path);
        return 0;
    }
    const std::string text = read_all(file.get());
    Cursor cursor(text);
    cursor.rest_of_line();
    int damaged = 0;
    std::size_t first = 0; // place of the first damaged record
    while (!cursor.at_end()) {
        const std::size_t start = cursor.place();
        if (!play_record(cursor)) {
            first = damaged++ == 0 ? start : first;
            cursor.rest_of_line();
        }
    }
    if (damaged == 0) {
        return 0;
    }
    const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<long>(first), '\n');
    MSG_out(kMsgWarn, "gread_metafile: %d damaged records, the first in line %ld: %s\n", damaged,
            static_cast<long>(line), path);
    return -1;
}
