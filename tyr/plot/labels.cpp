#include "tyr/plot/labels.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tyr/base/missing.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/names/date_label.h"
#include "tyr/plot/area.h"
#include "tyr/plot/attributes.h"
#include "tyr/plot/colour_bar.h"

namespace {

constexpr size_t kJoinedLimit = 59;
constexpr size_t kFullLine = 68; ///< a line that holds more isn't replaced
constexpr float kInsideMargin = 0.06F;
constexpr float kLeastMargin = 0.005F;
constexpr float kMostHeight = 0.03F; ///< of a line, of the plot area's height
constexpr float kTextShare = 0.75F;  ///< of a line's height
constexpr float kGapShare = 0.2F;
constexpr float kSideShare = 0.01F;

constexpr std::array<const char *, kLabelSlots> kSlotWords = {"ul", "uc", "ur", "ll", "lc", "lr"};

using Line = std::array<char, kLabelWidth>;

struct State {
    std::array<std::array<Line, kLabelLines>, kLabelSlots> texts = {};
    int line = 0;
    int offset = 0;
    int count = 0;
    int mode = kLabelsNormal;
    std::array<bool, kLabelSlots> is_single = {}; ///< set by `label`: line 0 alone is drawn
};

State state;

void set_label(int slot, const char *text)
{
    auto &lines = state.texts[static_cast<size_t>(slot)];
    if (state.mode < 0 && state.line > 0) {
        Line &line = lines[0];
        const size_t length = std::strlen(line.data());
        if (length + std::strlen(text) <= kJoinedLimit) {
            STR_copy(line.data() + length, line.size() - length, std::string(" ") + text);
        }
        return;
    }
    if (state.line < 0) {
        return;
    }
    Line &line = lines[static_cast<size_t>(state.line)];
    if (std::strlen(line.data()) <= kFullLine) {
        STR_copy(line.data(), line.size(), text);
    }
}

int find_slot(const std::string &word)
{
    for (int i = 0; i < kLabelSlots; ++i) {
        if (STR_ncasecmp(word.c_str(), kSlotWords[static_cast<size_t>(i)], 2) == 0) {
            return i;
        }
    }
    return -1;
}

/// One word of `label`: a slot, perhaps a line, a colon and a text.
void apply_word(const std::string &word)
{
    const int slot = find_slot(word);
    if (slot < 0 || word.size() < 3) {
        return;
    }
    const bool has_line = word[2] >= '0' && word[2] <= '9';
    const size_t colon = has_line ? 3 : 2;
    if (word.size() <= colon || word[colon] != ':') {
        return;
    }
    std::array<char, kLabelRoom> text = {};
    TIME_expand_label(word.c_str() + colon + 1, text.data());
    const int mode = state.mode;
    state.mode = std::max(mode, static_cast<int>(kLabelsNormal));
    PLT_set_label_line(has_line ? word[2] - '0' : 0);
    state.texts[static_cast<size_t>(slot)][static_cast<size_t>(state.line)] = {};
    set_label(slot, text.data());
    PLT_set_label_line(0);
    state.mode = mode;
    state.is_single[static_cast<size_t>(slot)] = !has_line;
}

void apply_resource()
{
    state.is_single.fill(false);
    for (const std::string &word : RES_list("label")) {
        apply_word(word);
    }
}

struct SlotPlace {
    int flag; ///< draw component
    int h_align;
    bool is_lower;
};

constexpr std::array<SlotPlace, kLabelSlots> kPlaces = {
    {
     {kDrawTextUl, kAlignLeft, false},
     {kDrawTextUc, kAlignCentre, false},
     {kDrawTextUr, kAlignRight, false},
     {kDrawTextLl, kAlignLeft, true},
     {kDrawTextLc, kAlignCentre, true},
     {kDrawTextLr, kAlignRight, true},
     }
};

float slot_x(int h_align, const std::array<float, 4> &plot)
{
    const float side = (plot[1] - plot[0]) * kSideShare;
    switch (h_align) {
    case kAlignLeft:
        return plot[0] + side;
    case kAlignRight:
        return plot[1] - side;
    default:
        return (plot[0] + plot[1]) / 2.0F;
    }
}

/// The colour bar takes the place of the lower left and centre slots.
bool is_covered(int slot)
{
    return (slot == 3 || slot == 4) && PLT_get_bar_mode() > 0;
}

void draw_slot(int slot, const std::array<float, 4> &plot, float start, float height)
{
    const SlotPlace &place = kPlaces[static_cast<size_t>(slot)];
    GPH_set_text_align(place.h_align, place.is_lower ? kAlignCap : kAlignBase);
    const float x = slot_x(place.h_align, plot);
    for (int i = 0; i < kLabelLines; ++i) {
        const char *text = PLT_get_label(slot, i);
        if (text[0] != '\0') {
            const std::array<float, 2> at = {x, start + static_cast<float>(i) * height};
            gtext(at.data(), text);
        }
        if (state.is_single[static_cast<size_t>(slot)]) {
            break;
        }
    }
}

void draw_slots(const std::array<float, 4> &plot, const AttrRec &attr, float margin)
{
    const int lines = state.mode < 0 ? 1 : std::max(state.count, 1);
    const float n = static_cast<float>(lines);
    const float height = std::min(margin / n, (plot[3] - plot[2]) * kMostHeight);
    const float shift = static_cast<float>(state.offset) * height;
    const float gap =
        PLT_labels_inside() != 0 ? -kGapShare * height - n * height : height * kGapShare;
    GPH_set_text_attr(&attr, kTextShare * height);
    for (int slot = 0; slot < kLabelSlots; ++slot) {
        const SlotPlace &place = kPlaces[static_cast<size_t>(slot)];
        if (PRM_get_draw(place.flag) == 0 || is_covered(slot)) {
            continue;
        }
        const float start =
            place.is_lower ? plot[2] - PLT_get_foot() - gap - (n - 1.0F) * height : plot[3] + gap;
        draw_slot(slot, plot, start + shift, height);
    }
}

} // namespace

void PLT_label_ul(const char *text)
{
    set_label(0, text);
}

void PLT_label_uc(const char *text)
{
    set_label(1, text);
}

void PLT_label_ur(const char *text)
{
    set_label(2, text);
}

void PLT_label_ll(const char *text)
{
    set_label(3, text);
}

void PLT_label_lc(const char *text)
{
    set_label(4, text);
}

void PLT_label_lr(const char *text)
{
    set_label(5, text);
}

void PLT_apply_label(const char *word)
{
    apply_word(word);
}

void PLT_set_label_line(int n)
{
    state.line = std::min(n, kLabelLines - 1);
    state.count = std::max(state.count, state.line);
}

void PLT_set_label_offset(int n)
{
    state.offset = std::min(n, kLabelLines - 1);
    state.count = std::max(state.count, state.offset);
}

int PLT_get_label_offset()
{
    return state.offset;
}

void PLT_set_label_count(int n)
{
    state.count = n < 0 ? std::abs(std::max(n, -INT_MAX)) : std::max(state.count, n);
}

int PLT_get_label_count()
{
    return state.count;
}

void PLT_set_label_mode(int mode)
{
    state.mode = mode;
}

int PLT_get_label_mode()
{
    return state.mode;
}

const char *PLT_get_label(int slot, int line)
{
    if (slot < 0 || slot >= kLabelSlots || line < 0 || line >= kLabelLines) {
        return "";
    }
    return state.texts[static_cast<size_t>(slot)][static_cast<size_t>(line)].data();
}

void PLT_set_label_date(const DateRec *date)
{
    TIME_set_plot(date, kMissingInt);
}

void PLT_clear_labels()
{
    state.texts = {};
    state.count = 0;
}

int PLT_draw_labels()
{
    apply_resource();
    AttrRec attr;
    ATTR_init(&attr);
    ATTR_from_resource("color_text", PLT_is_light() != 0 ? "black" : "white", &attr);
    PLT_message("Labels");
    gsel_norm_tran(1);
    GPH_set_line_attr(nullptr);
    GPH_set_text_attr(nullptr, 0.0F);
    GPH_set_font(nullptr);
    GPH_set_line_attr(&attr);
    std::array<float, 4> plot;
    std::array<float, 4> view;
    PLT_get_viewport(plot.data());
    GPH_get_view_frac(view.data());
    const float margin = PLT_labels_inside() != 0 ? kInsideMargin : plot[2] - view[2];
    if (PRM_get_draw(kDrawBorder) != 0) {
        GPH_box(plot[0], plot[2], plot[1], plot[3]);
    }
    if (margin < kLeastMargin) {
        return -1;
    }
    if (PRM_get_draw(kDrawText) != 0) {
        draw_slots(plot, attr, margin);
    }
    return 0;
}
