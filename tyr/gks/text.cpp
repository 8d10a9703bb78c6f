#include "tyr/gks/text.h"

#include <array>
#include <cmath>
#include <cstring>
#include <vector>

#include "tyr/gks/colour.h"
#include "tyr/gks/recorder.h"
#include "tyr/paper/hpgl.h"
#include "tyr/paper/metafile.h"
#include "tyr/paper/output.h"
#include "tyr/paper/postscript.h"
#include "tyr/x11/x11_draw.h"

namespace {

constexpr int kMaxRun = 30; // points sent in one piece

/// Sends the strokes of characters to the device, one run of connected points at a time.
class Pen {
  public:
    void begin_character()
    {
        points_ = 0;
        if (gis_postscript()) {
            gps_printf("np\n");
        }
    }

    void move(float x, float y)
    {
        if (points_ > 1) {
            break_path();
        }
        start(x, y);
    }

    void draw(float x, float y)
    {
        if (points_ == 0) { // a damaged character that begins with a draw
            start(x, y);
            return;
        }
        switch (kernel().ws.device) {
        case kDevicePostScript:
            gps_draw(x, y);
            break;
        case kDeviceHpgl:
            ghp_draw(x, y);
            break;
        case kDeviceDisplay:
        case kDeviceExtern:
            keep(x, y);
            break;
        default:
            break;
        }
        if (++points_ == kMaxRun) {
            go_on(x, y);
        }
    }

    void end_character()
    {
        if (points_ < 2) {
            return;
        }
        switch (kernel().ws.device) {
        case kDevicePostScript:
            gps_printf("stroke\n");
            break;
        case kDeviceHpgl:
            ghp_printf("\n");
            break;
        case kDeviceDisplay:
        case kDeviceExtern:
            send();
            break;
        default:
            break;
        }
    }

  private:
    void break_path()
    {
        if (gis_postscript()) {
            gps_printf("stroke\nnp\n");
        } else if (gis_x11()) {
            send();
        }
    }

    /// On X11 a run goes out whole: its points in device coordinates.
    void keep(float x, float y)
    {
        const auto place = static_cast<std::size_t>(2 * points_);
        run_[place] = gwc_to_dc_x(x) + 0.5F;
        run_[place + 1] = gwc_to_dc_y(y) + 0.5F;
    }
    void send() { gx_stroke(GxFamily::text, points_, run_.data()); }

    void start(float x, float y)
    {
        switch (kernel().ws.device) {
        case kDevicePostScript:
            gps_move(x, y);
            break;
        case kDeviceHpgl:
            ghp_move(x, y);
            break;
        case kDeviceDisplay:
        case kDeviceExtern:
            points_ = 0;
            keep(x, y);
            break;
        default:
            break;
        }
        points_ = 1;
    }

    /// A full run goes out and the next one begins at its last point.
    void go_on(float x, float y)
    {
        if (gis_hpgl()) {
            ghp_printf("\n"); // the pen is down where it is
        } else {
            break_path();
            start(x, y);
        }
        points_ = 1;
    }

    int points_ = 0; ///< in the run
    std::array<float, static_cast<std::size_t>(2 * kMaxRun)> run_{};
};

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

void prepare(const float pos[2], const char *characters)
{
    const TextState &text = kernel().text;
    switch (kernel().ws.device) {
    case kDevicePostScript:
        gps_printf("%%%%TE:%f %f %s\n", pos[0], pos[1], comment_text(characters).c_str());
        gps_width(text.colour, text.width);
        gps_line_color(text.colour);
        gps_dash(1);
        break;
    case kDeviceHpgl:
        ghp_width(text.colour, text.width);
        ghp_line_color(text.colour);
        ghp_dash(1);
        break;
    default:
        break;
    }
}

/// Draws one character whose origin stands at (x, y) font units from the text's position.
void draw_character(Pen &pen, const float pos[2], const StrokeFont &font, int offset, float x,
                    float y)
{
    const TextState &text = kernel().text;
    const float scale = text.height / kFontUnitsPerHeight;
    pen.begin_character();
    const std::size_t end = font.strokes.size();
    for (std::size_t i = static_cast<std::size_t>(offset); i + 1 < end; i += 2) {
        const unsigned char code = font.strokes[i];
        if (code == kStrokeEnd) {
            break;
        }
        const bool moves = code >= kPenUp;
        const auto px = static_cast<float>(moves ? code - kPenUp : code);
        const auto py = static_cast<float>(font.strokes[i + 1]);
        const float fx = scale * (text.expansion * px + x);
        const float fy = scale * (py + y);
        const float wx = pos[0] + text.up_y * fx + text.up_x * fy;
        const float wy = pos[1] - text.up_x * fx + text.up_y * fy;
        if (moves) {
            pen.move(wx, wy);
        } else {
            pen.draw(wx, wy);
        }
    }
    pen.end_character();
}

void draw_text(const float pos[2], std::string_view characters)
{
    const TextState &text = kernel().text;
    const StrokeFont &font = font_current();
    float x = start_x(text_total(text, font, characters));
    const float y = start_y();
    Pen pen;
    for (const char character : characters) {
        const auto c = static_cast<unsigned char>(character);
        const int offset = font.offset[c];
        if (offset != -1) {
            draw_character(pen, pos, font, offset, x, y);
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

void draw_server_text(const float pos[2], int k, const char *text)
{
    gx_text(static_cast<int>(std::trunc(gwc_to_dc_x(pos[0]) + 0.5F)) + k,
            static_cast<int>(std::trunc(gwc_to_dc_y(pos[1]) + 0.5F)) + k, text,
            kernel().text.horizontal, kernel().text.vertical);
}

/// A text on the screen: k pixels aside, in strokes or in a font of the server.
void draw_on_screen(const float pos[2], int k, const char *text)
{
    if (font_is_of_server()) {
        draw_server_text(pos, k, text);
    } else {
        draw_text(k == 0 ? pos : displaced(pos, k).data(), text);
    }
}

void draw_with_shadow(const float pos[2], const char *text)
{
    const int depth = kernel().shadow;
    if (depth > 0) {
        gx_set_black(GxFamily::text);
        for (int k = 0; k < depth; k++) {
            draw_on_screen(pos, k, text);
        }
        gx_set_colour(GxFamily::text, kernel().text.colour);
    }
    draw_on_screen(pos, 0, text);
}

/// Keeps a text: its position, then its characters.
void record_text(const float pos[2], const char *text)
{
    const std::size_t length = std::strlen(text) + 1;
    std::vector<char> block(2 * sizeof(float) + length);
    std::memcpy(block.data(), pos, 2 * sizeof(float));
    std::memcpy(block.data() + 2 * sizeof(float), text, length);
    gobj_new(kObjText, 1, static_cast<int>(block.size()), block.data());
}

/// A setter's common part: whether the value is a new one, which is then stored.
bool takes(float &stored, float value)
{
    const bool changed = stored != value;
    stored = value;
    return changed;
}

/// Stores a value and passes it on where it is new.
void set_number(const char *word, ObjectKind kind, float &stored, float value)
{
    if (!takes(stored, value)) {
        return;
    }
    if (gis_metafile()) {
        gmeta_printf("%s %f\n", word, value);
    } else {
        record(kind, 1, 1, &value);
    }
}

/// Stores a value that may not be below 0. False when there is nothing more to do.
int set_positive(const char *routine, const char *what, const char *word, ObjectKind kind,
                 float &stored, float value)
{
    if (!(value >= 0.0F)) {
        gerror(routine, "invalid %s: %f\n", what, value);
        return -1;
    }
    set_number(word, kind, stored, value);
    return 0;
}

} // namespace

float text_advance(const TextState &text, const StrokeFont &font, unsigned char c)
{
    if (text.pitch > 0.0F) {
        return (100.0F * text.spacing + 100.0F) * text.pitch;
    }
    return 100.0F * text.spacing + font.width[c];
}

float text_total(const TextState &text, const StrokeFont &font, std::string_view characters)
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
    if (gis_metafile()) {
        gmeta_printf("TE %f,%f %s\n", pos[0], pos[1], comment_text(text).c_str());
        return 0;
    }
    record_text(pos, text);
    if (gis_x11()) {
        draw_with_shadow(pos, text);
        return 0;
    }
    prepare(pos, text);
    draw_text(pos, text);
    return 0;
}

int gset_text_colr_ind(int index)
{
    if (!kernel_is_open("gset_text_colr_ind") || !colour_usable("gset_text_colr_ind", &index)) {
        return -1;
    }
    if (index == kernel().text.colour) {
        return 0;
    }
    kernel().text.colour = index;
    if (gis_metafile()) {
        gmeta_printf("TE_CLR %d\n", index);
        return 0;
    }
    record(kObjTextColour, index);
    if (gis_x11()) {
        gx_set_colour(GxFamily::text, index);
    }
    return 0;
}

int gset_expan(float factor)
{
    return set_positive("gset_expan", "expansion factor", "TE_EXP", kObjExpansion,
                        kernel().text.expansion, factor);
}

int gset_text_width(float width)
{
    const float before = kernel().text.width;
    const int result = set_positive("gset_text_width", "text width", "TE_WDTH", kObjTextWidth,
                                    kernel().text.width, width_on_device(width));
    if (gis_x11() && kernel().text.width != before) {
        gx_set_width(GxFamily::text, width);
    }
    return result;
}

int gset_char_ht(float height)
{
    return set_positive("gset_char_ht", "character height", "TE_HGHT", kObjCharHeight,
                        kernel().text.height, height);
}

int gset_text_spacing(float spacing)
{
    set_number("TE_SPC", kObjTextSpacing, kernel().text.spacing, spacing);
    return 0;
}

int gset_char_space(float pitch)
{
    set_number("TE_CSPC", kObjCharSpace, kernel().text.pitch, pitch);
    return 0;
}

int gset_text_align(const int rec[2])
{
    TextState &text = kernel().text;
    if (text.horizontal == rec[0] && text.vertical == rec[1]) {
        return 0;
    }
    text.horizontal = rec[0];
    text.vertical = rec[1];
    if (gis_metafile()) {
        gmeta_printf("TE_ALGN %d %d\n", rec[0], rec[1]);
        return 0;
    }
    record(kObjTextAlign, rec);
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
    if (gis_metafile()) {
        // as given: the vector that comes back from a file is normalised there
        const bool changed_x = takes(text.up_x, up[0]);
        const bool changed_y = takes(text.up_y, up[1]);
        if (changed_x || changed_y) {
            gmeta_printf("TE_UP %f,%f\n", up[0], up[1]);
        }
        return 0;
    }
    record(kObjCharUp, 1, 2, up);
    text.up_x = up[0] / length;
    text.up_y = up[1] / length;
    return 0;
}

int ginq_text_colr()
{
    return kernel().text.colour;
}
