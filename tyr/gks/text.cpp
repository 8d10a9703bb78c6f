#include <array>
#include <cmath>
#include <cstring>
#include <vector>

#include "tyr/gks/attribute_private.h"
#include "tyr/gks/colour_private.h"
#include "tyr/gks/device_private.h"
#include "tyr/gks/recorder.h"
#include "tyr/gks/text_private.h"

using namespace tyr;

namespace {

/// Start of the text along its base line and above it, in font units.
float start_x(float total)
{
    switch (kernel().text.horizontal) {
    case kAlignCentre:
        return std::trunc(-total / 2.0F);
    case kAlignRight:
        return -total;
    default:
        return 0.0F;
    }
}

float start_y()
{
    switch (kernel().text.vertical) {
    case kAlignTop:
        return -kFontTop;
    case kAlignCap:
        return -kFontCap;
    case kAlignHalf:
        return -kFontHalf;
    case kAlignBottom:
        return 0.0F;
    default:
        return -kFontBase;
    }
}

/// Draws one character whose origin stands at (x, y) font units from the text's position.
void draw_character(std::vector<GlyphPoint> &glyph, const float pos[2], const StrokeFont &font,
                    int offset, float x, float y)
{
    const TextState &text = kernel().text;
    const float scale = text.height / kFontUnitsPerHeight;
    glyph.clear();
    const size_t end = font.strokes.size();
    for (size_t i = static_cast<size_t>(offset); i + 1 < end; i += 2) {
        const unsigned char code = font.strokes[i];
        if (code == kStrokeEnd) {
            break;
        }
        const bool moves = code >= kPenUp;
        const auto px = static_cast<float>(moves ? code - kPenUp : code);
        const auto py = static_cast<float>(font.strokes[i + 1]);
        const float fx = scale * (text.expansion * px + x);
        const float fy = scale * (py + y);
        const float world[2] = {pos[0] + text.up_y * fx + text.up_x * fy,
                                pos[1] - text.up_x * fx + text.up_y * fy};
        const DevicePoint at = device_point(world);
        glyph.push_back({at.x, at.y, moves || glyph.empty()});
    }
    device_glyph(glyph);
}

void draw_text(const float pos[2], std::string_view characters)
{
    const TextState &text = kernel().text;
    const StrokeFont &font = font_current();
    float x = start_x(text_total(text, font, characters));
    const float y = start_y();
    std::vector<GlyphPoint> glyph;
    for (const char character : characters) {
        const auto c = static_cast<unsigned char>(character);
        const int offset = font.offset[c];
        if (offset != -1) {
            draw_character(glyph, pos, font, offset, x, y);
        } else if (c != ' ') {
            continue;
        }
        const float blank =
            text.pitch > 0.0F ? text_advance(text, font, c) : 100.0F * text.spacing + kBlankWidth;
        const float advance = offset != -1 ? text_advance(text, font, c) : blank;
        x = std::trunc(x + advance * text.expansion);
    }
}

/// Position of a text displaced by k pixels to the right and downwards, for its shadow.
std::array<float, 2> displaced(const float pos[2], int k)
{
    const float pixel_x = gwc_to_dc_x(pos[0] + 1.0F) - gwc_to_dc_x(pos[0]);
    const float pixel_y = gwc_to_dc_y(pos[1] + 1.0F) - gwc_to_dc_y(pos[1]);
    const auto step = static_cast<float>(k);
    return {pos[0] + (pixel_x != 0.0F ? step / pixel_x : 0.0F),
            pos[1] + (pixel_y != 0.0F ? step / pixel_y : 0.0F)};
}

/// A text on the screen: k pixels aside, in strokes or in a font of the server.
void draw_aside(const float pos[2], int k, const char *text)
{
    if (font_is_of_server()) {
        const DevicePoint at = device_point(pos);
        device_server_text(at.x, at.y, k, text);
    } else {
        draw_text(k == 0 ? pos : displaced(pos, k).data(), text);
    }
}

void draw_with_shadow(const float pos[2], const char *text)
{
    if (kernel().shadow > 0) {
        device_black(Family::text);
        for (int k = 0; k < kernel().shadow; k++) {
            draw_aside(pos, k, text);
        }
        device_attribute(kObjTextColour);
    }
    draw_aside(pos, 0, text);
}

/// Keeps a text: its position, then its characters.
void record_text(const float pos[2], const char *text)
{
    const size_t length = std::strlen(text) + 1;
    std::vector<char> block(2 * sizeof(float) + length);
    std::memcpy(block.data(), pos, 2 * sizeof(float));
    std::memcpy(block.data() + 2 * sizeof(float), text, length);
    gobj_new(kObjText, 1, static_cast<int>(block.size()), block.data());
}

/// Sets a number that may not be below 0. -1 with a report when it is.
int set_positive(const char *routine, const char *what, ObjectKind kind, float &stored, float value)
{
    if (!(value >= 0.0F)) {
        gerror(routine, "invalid %s: %f\n", what, value);
        return -1;
    }
    set_attribute(kind, stored, value);
    return 0;
}

} // namespace

float tyr::text_advance(const TextState &text, const StrokeFont &font, unsigned char c)
{
    if (text.pitch > 0.0F) {
        return (100.0F * text.spacing + 100.0F) * text.pitch;
    }
    return 100.0F * text.spacing + font.width[c];
}

float tyr::text_total(const TextState &text, const StrokeFont &font, std::string_view characters)
{
    if (characters.empty()) {
        return 0.0F;
    }
    float total = 0.0F;
    for (const char c : characters.substr(0, characters.size() - 1)) {
        total = std::trunc(total + text_advance(text, font, static_cast<unsigned char>(c)));
    }
    const auto last = static_cast<unsigned char>(characters.back());
    total += text.pitch > 0.0F ? 100.0F * text.pitch : static_cast<float>(font.width[last]);
    return std::trunc(total * text.expansion);
}

int gtext(const float pos[2], const char *text)
{
    if (!kernel_is_open("gtext")) {
        return -1;
    }
    if (text == nullptr || text[0] == '\0') {
        return 0;
    }
    if (device_traits().keeps_calls) {
        device_keep_text(pos, text);
        return 0;
    }
    record_text(pos, text);
    if (device_traits().is_screen) {
        draw_with_shadow(pos, text);
        return 0;
    }
    device_begin_text(pos, text);
    draw_text(pos, text);
    return 0;
}

float gtext_length(const char *text)
{
    if (!kernel_is_open("gtext_length") || text == nullptr) {
        return 0.0F;
    }
    const float scale = kernel().text.height / kFontUnitsPerHeight;
    return scale * text_total(kernel().text, font_current(), text);
}

int gset_text_colr_ind(int index)
{
    if (!kernel_is_open("gset_text_colr_ind") || !colour_usable("gset_text_colr_ind", &index)) {
        return -1;
    }
    set_attribute(kObjTextColour, kernel().text.colour, index);
    return 0;
}

int gset_expan(float factor)
{
    return set_positive("gset_expan", "expansion factor", kObjExpansion, kernel().text.expansion,
                        factor);
}

int gset_text_width(float width)
{
    return set_positive("gset_text_width", "text width", kObjTextWidth, kernel().text.width,
                        width_on_device(width));
}

int gset_char_ht(float height)
{
    return set_positive("gset_char_ht", "character height", kObjCharHeight, kernel().text.height,
                        height);
}

int gset_text_spacing(float spacing)
{
    set_attribute(kObjTextSpacing, kernel().text.spacing, spacing);
    return 0;
}

int gset_char_space(float pitch)
{
    set_attribute(kObjCharSpace, kernel().text.pitch, pitch);
    return 0;
}

int gset_text_align(const int rec[2])
{
    TextState &text = kernel().text;
    if (text.horizontal != rec[0] || text.vertical != rec[1]) {
        text.horizontal = rec[0];
        text.vertical = rec[1];
        pass_on(kObjTextAlign, rec);
    }
    return 0;
}

int ginq_text_align(int *err, int rec[2])
{
    *err = 0;
    rec[0] = kernel().text.horizontal;
    rec[1] = kernel().text.vertical;
    return 0;
}

int gset_char_up(const float up[2])
{
    TextState &text = kernel().text;
    const float length = std::hypot(up[0], up[1]);
    if (!(length > 0.0F) || !std::isfinite(length)) {
        gerror("gset_char_up", "invalid up vector: %f %f\n", up[0], up[1]);
        return -1;
    }
    if (device_traits().keeps_calls) {
        // as given: the vector that comes back from a file is normalised there
        const bool changed = text.up_x != up[0] || text.up_y != up[1];
        text.up_x = up[0];
        text.up_y = up[1];
        if (changed) {
            pass_on(kObjCharUp, up);
        }
        return 0;
    }
    pass_on(kObjCharUp, up);
    text.up_x = up[0] / length;
    text.up_y = up[1] / length;
    return 0;
}

int ginq_text_colr()
{
    return kernel().text.colour;
}
