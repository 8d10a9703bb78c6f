#include "tyr/paper/metafile_reader.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/gks/attribute_private.h"
#include "tyr/gks/gks.h"
#include "tyr/paper/metafile_placement_private.h"

using namespace tyr;

namespace {

constexpr size_t kMaxWord = 9;
constexpr size_t kMaxText = 100;
constexpr size_t kLeastPoint = 4; // bytes of the shortest point: "1,1 "
constexpr size_t kBlock = size_t{1} << 16;
constexpr size_t kMaxFile = size_t{1} << 30;

/// The attributes that a workstation opens with, as records.
constexpr std::string_view kDefaults = "PL_CLR 1\nPL_TYPE 1\nPL_LW 1\n"
                                       "PM_CLR 1\nPM_TYPE 1\nPM_WDTH 1\nPM_SIZE 10\n"
                                       "FA_CLR 1\nFA_INT 1\nFA_ST 1\n"
                                       "TE_CLR 1\nTE_WDTH 1\nTE_HGHT 0.01\nTE_EXP 1\n"
                                       "TE_SPC 0.25\nTE_CSPC 0\nTE_ALGN 0 0\nTE_UP 0,1\n"
                                       "TE_FNT 1 1\n";

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
    size_t left() const { return text_.size() - place_; }
    size_t place() const { return place_; }

    std::string_view word()
    {
        skip_blank();
        const size_t start = place_;
        while (place_ < text_.size() && place_ - start < kMaxWord && !is_blank(text_[place_])) {
            place_++;
        }
        return text_.substr(start, place_ - start);
    }

    /// The rest of the line, without its end.
    std::string_view rest_of_line()
    {
        const size_t start = place_;
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
        place_ += static_cast<size_t>(result.ptr - from);
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

    /// A rectangle by two corners, in the order that callers of the kernel use.
    bool corners(float rect[4])
    {
        return number(rect[0]) && number(rect[2]) && number(rect[1]) && number(rect[3]);
    }

    void skip_blank()
    {
        while (place_ < text_.size() && is_blank(text_[place_])) {
            place_++;
        }
    }

  private:
    std::string_view text_;
    size_t place_ = 0;
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

/// Reads the value of an attribute in the form of its setter, and sets it. False when damaged.
struct ReadAndSet {
    Cursor &cursor;

    bool operator()(SetInt set) const
    {
        int value = 0;
        return cursor.number(value) && (set(value), true);
    }
    bool operator()(SetReal set) const
    {
        float value = 0.0F;
        return cursor.number(value) && (set(value), true);
    }
    bool operator()(SetIntPair set) const
    {
        int pair[2];
        return cursor.number(pair[0]) && cursor.number(pair[1]) && (set(pair), true);
    }
    bool operator()(SetVector set) const
    {
        float vector[2];
        return cursor.point(vector) && (set(vector), true);
    }
    bool operator()(SetRect set) const
    {
        int number = 0;
        float rect[4];
        return cursor.number(number) && cursor.corners(rect) && (set(number, rect), true);
    }
};

Played play_attribute(std::string_view word, Cursor &cursor)
{
    const Attribute *attribute = attribute_of(word);
    // the workstation's own rectangles are those of the device that plays
    if (attribute == nullptr || attribute->kind == kObjWsWindow ||
        attribute->kind == kObjWsViewport) {
        return std::nullopt;
    }
    return std::visit(ReadAndSet{cursor}, attribute->set);
}

Played play_region(std::string_view word, Cursor &cursor)
{
    if (word != "CLR_REG") {
        return std::nullopt;
    }
    float rect[4];
    return cursor.corners(rect) && (gclear_region(rect), true);
}

Played play_primitive(std::string_view word, Cursor &cursor)
{
    const auto *row = std::find_if(std::begin(kPrimitives), std::end(kPrimitives),
                                   [&](const Primitive &p) { return p.word == word; });
    if (row == std::end(kPrimitives)) {
        return std::nullopt;
    }
    int count = 0;
    if (!cursor.number(count) || count < 1 ||
        static_cast<size_t>(count) > (cursor.left() + 1) / kLeastPoint) {
        return false;
    }
    std::vector<float> points(2 * static_cast<size_t>(count));
    for (size_t i = 0; i < points.size(); i += 2) {
        if (!cursor.point(&points[i])) {
            return false;
        }
    }
    row->draw(count, points.data());
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

Played play_colour(std::string_view word, Cursor &cursor, const Placement *placement)
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
    if (placement != nullptr) {
        placement->set_colour(index, rgb);
    } else {
        gset_colr_rep(1, index, rgb);
    }
    return true;
}

/// The rectangles that a placement moves.
Played play_placed(std::string_view word, Cursor &cursor, Placement *placement)
{
    const bool is_window = word == "WS_WIN";
    if (placement == nullptr || (!is_window && word != "VP")) {
        return std::nullopt;
    }
    int number = 0;
    float rect[4];
    if (!cursor.number(number) || !cursor.corners(rect)) {
        return false;
    }
    if (!is_window) {
        placement->set_viewport(number, rect);
    } else if (rect[1] - rect[0] > 0.0F && rect[3] - rect[2] > 0.0F) {
        placement->set_window(rect);
    } else {
        return false;
    }
    return true;
}

/// Plays one record. False when it is damaged.
bool play_record(Cursor &cursor, Placement *placement)
{
    const std::string_view word = cursor.word();
    if (const Played played = play_placed(word, cursor, placement)) {
        return *played;
    }
    if (const Played played = play_colour(word, cursor, placement)) {
        return *played;
    }
    for (const auto play : {play_attribute, play_region, play_primitive, play_text}) {
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
    size_t count = kBlock;
    while (count == kBlock && text.size() < kMaxFile) {
        const size_t size = text.size();
        text.resize(size + kBlock);
        count = std::fread(&text[size], 1, kBlock, file);
        text.resize(size + count);
    }
    return text;
}

/// Attributes and transformations as a workstation has them when it opens.
void play_defaults(Placement &placement)
{
    constexpr float kUnit[4] = {0.0F, 1.0F, 0.0F, 1.0F};
    gsel_norm_tran(0);
    for (int n = 0; n < kNumTransformations; n++) {
        gset_window(n, kUnit);
    }
    placement.set_window(kUnit);
    Cursor cursor(kDefaults);
    while (!cursor.at_end()) {
        play_record(cursor, nullptr);
    }
}

/// Plays a file. Nothing when it can't be opened, else whether all its records were whole.
std::optional<bool> play_file(const char *path, Placement *placement)
{
    const FilePtr file(FILE_open(path, "r"));
    if (!file) {
        MSG_out(kMsgWarn, "gread_metafile: Unable to open image file: %s\n", path);
        return std::nullopt;
    }
    const std::string text = read_all(file.get());
    Cursor cursor(text);
    cursor.rest_of_line();
    int damaged = 0;
    size_t first = 0; // place of the first damaged record
    while (!cursor.at_end()) {
        const size_t start = cursor.place();
        if (!play_record(cursor, placement)) {
            first = damaged++ == 0 ? start : first;
            cursor.rest_of_line();
        }
    }
    if (damaged == 0) {
        return true;
    }
    const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<long>(first), '\n');
    MSG_out(kMsgWarn, "gread_metafile: %d damaged records, the first in line %ld: %s\n", damaged,
            static_cast<long>(line), path);
    return false;
}

} // namespace

int gread_metafile(const char *path)
{
    return play_file(path, nullptr).value_or(true) ? 0 : -1;
}

int gread_metafile_panel(const char *path, const float panel[4], int swap)
{
    Placement placement(panel, swap != 0);
    play_defaults(placement);
    return play_file(path, &placement).value_or(false) ? 0 : -1;
}
