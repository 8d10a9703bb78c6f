#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <optional>

#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/gks/colour_table.h"
#include "tyr/gks/state_private.h"
#include "tyr/paper/grey.h"
#include "tyr/paper/output_private.h"
#include "tyr/paper/paper_private.h"
#include "tyr/paper/print_colour_private.h"
#include "tyr/picture/page_private.h"
#include "tyr/picture/picture_private.h"

using namespace tyr;

namespace {

constexpr double kPointsPerInch = 72.0;
constexpr double kMargin = 0.25; // inches, each side
constexpr double kDot = 0.33;    // points
constexpr float kMinScale = 0.01F;
constexpr double kMinDpi = 10.0;
constexpr double kMaxDpi = 2400.0;
constexpr double kMaxPixels = 30000.0; // a side
constexpr int kSolid = 1;
constexpr float kPrintGreyLevel = 0.7F;
constexpr char kDefaultTarget[] = "tyr.png";

struct FormWord {
    const char *ending;
    PictureForm form;
};
constexpr FormWord kForms[] = {
    {".png", PictureForm::png},
    {".svg", PictureForm::svg},
    {".pdf", PictureForm::pdf},
};

/// The lines of PostScript's dash patterns, points.
struct Dash {
    int count;
    double parts[4];
};
constexpr Dash kDashes[] = {
    {0, {}                  },
    {0, {}                  },
    {1, {6.0}               },
    {2, {3.0, 6.0}          },
    {4, {6.0, 6.0, 3.0, 6.0}},
    {1, {2.0}               },
};

struct Rgb {
    float red = 1.0F, green = 1.0F, blue = 1.0F;
};

/// What the device words tell.
struct Wishes {
    Paper paper{11.0F, 8.5F};
    double dpi = 110.0;
    bool is_coloured = true;
    bool has_background = true;
    std::optional<Rgb> background; ///< white where none is told
    float scale = 1.0F;
    int line_base = 1;
};

/// The box of a text's strokes along and across its direction, device units.
struct TextBox {
    std::string text;
    double along_x = 1.0, along_y = 0.0;
    double low_u = 0.0, high_u = 0.0, low_v = 0.0, high_v = 0.0;
    bool is_empty = true;
};

struct State {
    PictureForm form = PictureForm::png;
    std::string target; ///< as the user gave it
    std::string path;
    int number = 0;          ///< of pictures of this target
    std::vector<Page> pages; ///< of a PDF file; else one
    CairoContext context;
    Wishes wishes;
    TextBox text;
};

State state;

std::optional<PictureForm> form_of(const std::string &name)
{
    for (const FormWord &row : kForms) {
        const size_t length = std::strlen(row.ending);
        if (name.size() > length &&
            STR_casecmp(name.c_str() + name.size() - length, row.ending) == 0) {
            return row.form;
        }
    }
    return std::nullopt;
}

/// The target with the number of the picture in place of "%d".
std::string numbered(std::string target, int number)
{
    const size_t at = target.find('%');
    const size_t end =
        at == std::string::npos ? at : target.find_first_not_of("0123456789", at + 1);
    if (end == std::string::npos || target[end] != 'd') {
        return target;
    }
    const int width = std::min(std::atoi(target.c_str() + at + 1), 9);
    return target.replace(at, end + 1 - at, STR_print("%0*d", width, number));
}

bool set_background(const std::string &word)
{
    state.wishes.has_background = !is_word(word, "none");
    Rgb rgb;
    if (!state.wishes.has_background) {
        return true;
    }
    const int index = CLR_lookup(word.c_str());
    if (index < 0 || index >= CLR_count()) {
        return false;
    }
    CLR_get_rgb(index, &rgb.red, &rgb.green, &rgb.blue);
    state.wishes.background = rgb;
    return true;
}

/// The background that windows have by the resource, where it names a colour.
void set_usual_background()
{
    const char *word = RES_get("background");
    const int index = word != nullptr ? CLR_lookup(word) : -1;
    if (index >= 0 && index < CLR_count()) {
        set_background(word);
    }
}

bool apply_word(const std::string &word)
{
    Wishes &w = state.wishes;
    const auto number = [&](size_t at) { return word_number(word, at); };
    if (is_word(word, "port") || is_word(word, "land")) {
        const auto [low, high] = std::minmax(w.paper.width, w.paper.height);
        w.paper = is_word(word, "port") ? Paper{low, high} : Paper{high, low};
    } else if (is_word(word, "color") || is_word(word, "gray")) {
        w.is_coloured = is_word(word, "color");
    } else if (STR_has_prefix(word, "dpi=")) {
        const double dpi = static_cast<double>(number(4));
        if (dpi < kMinDpi || dpi > kMaxDpi) {
            return false;
        }
        w.dpi = dpi;
    } else if (STR_has_prefix(word, "bg=")) {
        return set_background(word.substr(3));
    } else if (STR_has_prefix(word, "scale")) {
        w.scale = number(6) >= kMinScale ? number(6) : w.scale;
    } else if (STR_has_prefix(word, "lwidth")) {
        w.line_base = static_cast<int>(std::clamp(number(7), 0.0F, 1000.0F));
    } else if (const auto paper = paper_from_word(word)) {
        w.paper = *paper;
    } else {
        return false;
    }
    return true;
}

void set_rgb(float red, float green, float blue)
{
    cairo().set_source_rgb(state.context.get(), static_cast<double>(red),
                           static_cast<double>(green), static_cast<double>(blue));
}

void set_grey(float grey)
{
    set_rgb(grey, grey, grey);
}

/// True when the index is a print colour, which is now the source.
bool set_print_colour(int index)
{
    switch (print_shade(index)) {
    case PrintShade::black:
        set_grey(0.0F);
        return true;
    case PrintShade::white:
        set_grey(1.0F);
        return true;
    case PrintShade::grey:
        set_grey(kPrintGreyLevel);
        return true;
    case PrintShade::none:
        break;
    }
    return false;
}

void set_colour(int index)
{
    Rgb rgb;
    ginq_color(index, &rgb.red, &rgb.green, &rgb.blue);
    set_rgb(rgb.red, rgb.green, rgb.blue);
}

void set_line_colour(int index)
{
    if (set_print_colour(index)) {
        return;
    }
    if (state.wishes.is_coloured) {
        set_colour(index);
    } else {
        set_grey(0.0F);
    }
}

void set_fill_colour(int index)
{
    if (!state.wishes.is_coloured && ginq_fill_black() != 0) {
        set_grey(0.0F);
    } else if (set_print_colour(index)) {
        return;
    } else if (state.wishes.is_coloured) {
        set_colour(index);
    } else {
        set_grey(index == -1 ? 1.0F : gps_gray(index));
    }
}

/// Widths are in dots: of plain colours with one digit behind the point, of print colours whole. A
/// width of 0 is the thinnest line there is.
void set_width(int index, float width)
{
    const int factor = print_width_factor(index);
    const double dots =
        static_cast<double>(state.wishes.line_base * factor) * static_cast<double>(width);
    const double kept = factor == 1 ? std::round(dots * 10.0) / 10.0 : std::trunc(dots);
    // as PostScript's readers have it: no line is thinner than a pixel
    const double thinnest =
        state.form == PictureForm::png ? kPointsPerInch / state.wishes.dpi : 0.1;
    cairo().set_line_width(state.context.get(), std::max(kept * kDot, thinnest));
}

void set_dash(int type)
{
    const bool is_known = type >= 1 && type < static_cast<int>(std::size(kDashes));
    const Dash &dash = kDashes[is_known ? type : 1];
    cairo().set_dash(state.context.get(), dash.parts, dash.count, 0.0);
}

void make_path(int n, const float *points)
{
    cairo_t *context = state.context.get();
    cairo().new_path(context);
    for (std::ptrdiff_t i = 0; i < n; i++) {
        cairo().line_to(context, static_cast<double>(points[2 * i]),
                        static_cast<double>(points[2 * i + 1]));
    }
}

/// What stands before strokes of markers and text.
void set_pen(int colour, float width)
{
    set_width(colour, width);
    set_line_colour(colour);
    set_dash(1);
}

/// Keeps the text that has been drawn for readers.
void keep_text()
{
    TextBox &box = state.text;
    if (!box.is_empty && state.form != PictureForm::png) {
        double x = box.low_u * box.along_x - box.low_v * box.along_y;
        double y = box.low_u * box.along_y + box.low_v * box.along_x;
        cairo().user_to_device(state.context.get(), &x, &y);
        const double scale = static_cast<double>(state.wishes.scale);
        state.pages.back().texts.push_back({box.text, x, y, -std::atan2(box.along_y, box.along_x),
                                            (box.high_u - box.low_u) * scale,
                                            std::max(box.high_v - box.low_v, 1.0) * scale});
    }
    box = {};
}

Page make_page()
{
    const Wishes &w = state.wishes;
    Page page;
    page.width = static_cast<double>(w.paper.width) * kPointsPerInch;
    page.height = static_cast<double>(w.paper.height) * kPointsPerInch;
    if (state.form == PictureForm::png) {
        const double zoom = w.dpi / kPointsPerInch;
        page.surface.reset(cairo().image_surface_create(
            w.has_background ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32,
            static_cast<int>(std::lround(page.width * zoom)),
            static_cast<int>(std::lround(page.height * zoom))));
    } else {
        const cairo_rectangle_t extents = {0.0, 0.0, page.width, page.height};
        page.surface.reset(cairo().recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, &extents));
    }
    return page;
}

void begin_page(const Page &page)
{
    const Wishes &w = state.wishes;
    state.context.reset(cairo().create(page.surface.get()));
    cairo_t *context = state.context.get();
    if (w.has_background) {
        const Rgb paper = w.background.value_or(Rgb{});
        set_rgb(paper.red, paper.green, paper.blue);
        cairo().paint(context);
    }
    if (state.form == PictureForm::png) {
        cairo().scale(context, w.dpi / kPointsPerInch, w.dpi / kPointsPerInch);
    }
    cairo().translate(context, kMargin * kPointsPerInch, page.height - kMargin * kPointsPerInch);
    cairo().scale(context, static_cast<double>(w.scale), -static_cast<double>(w.scale));
    cairo().set_line_join(context, CAIRO_LINE_JOIN_BEVEL);
}

bool read_words(const std::vector<std::string> &words)
{
    state.wishes = {};
    std::vector<std::string> all = environment_words("tyrpic_param");
    all.insert(all.end(), words.empty() ? words.end() : words.begin() + 1, words.end());
    for (const std::string &word : all) {
        if (!word.empty() && !apply_word(word)) {
            MSG_out(kMsgWarn, "gopen_ws: %s: no word of a picture\n", word.c_str());
        }
    }
    if (state.wishes.has_background && !state.wishes.background) {
        set_usual_background();
    }
    const Wishes &w = state.wishes;
    const double longest = static_cast<double>(std::max(w.paper.width, w.paper.height)) * w.dpi;
    if (state.form == PictureForm::png && longest > kMaxPixels) {
        gerror("gopen_ws", "a picture of more than 30000 pixels a side: %s\n", state.path.c_str());
        return false;
    }
    return true;
}

} // namespace

const float *tyr::gpic_paper()
{
    static Rgb paper;
    paper = state.wishes.background.value_or(Rgb{});
    return &paper.red;
}

bool tyr::is_picture_name(const std::string &name)
{
    return form_of(name).has_value();
}

int tyr::gpic_open_ws(const std::vector<std::string> &words)
{
    WorkstationState &ws = kernel().ws;
    gset_recording(0);
    gset_events(0);
    ws.device = kDevicePicture;
    ws.depth = kFileDepth;
    const std::string target = output_target(words, {"tyrpic_print"}, kDefaultTarget);
    const auto form = form_of(target);
    if (!has_cairo()) {
        return -1;
    }
    if (!form) {
        gerror("gopen_ws", "no ending .png, .svg or .pdf: %s\n", target.c_str());
        return -1;
    }
    state.number = target == state.target ? state.number + 1 : 1;
    state.target = target;
    const std::string path = numbered(target, state.number);
    if (path != state.path || *form != PictureForm::pdf) {
        state.pages.clear();
    }
    state.form = *form;
    state.path = path;
    if (!read_words(words)) {
        return -1;
    }
    if (state.wishes.is_coloured && !state.wishes.background) {
        gset_invert(1); // black stands on white
    }
    state.pages.push_back(make_page());
    begin_page(state.pages.back());
    if (cairo().status(state.context.get()) != CAIRO_STATUS_SUCCESS) {
        gerror("gopen_ws", "%s\n", cairo().status_to_string(cairo().status(state.context.get())));
        state.context.reset();
        return -1;
    }
    const Page &page = state.pages.back();
    ws.width = static_cast<int>(page.width - 2.0 * kMargin * kPointsPerInch);
    ws.height = static_cast<int>(page.height - 2.0 * kMargin * kPointsPerInch);
    ws.x_offset = 0;
    ws.y_offset = 0;
    apply_geometry(geometry_text({"tyrpic_geometry"}), {false, kPointsPerInch / 100.0, 0.0});
    return 0;
}

int tyr::gpic_close()
{
    if (!state.context) {
        return -1;
    }
    keep_text();
    const cairo_status_t status = cairo().status(state.context.get());
    state.context.reset();
    const std::string why = status == CAIRO_STATUS_SUCCESS
                                ? write_pages(state.form, state.pages, state.path)
                                : cairo().status_to_string(status);
    if (!why.empty()) {
        MSG_out(kMsgWarn, "gpic_close: unable to write: %s: %s\n", state.path.c_str(), why.c_str());
        return -1;
    }
    MSG_out(kMsgMess, "Created picture: %s\n", state.path.c_str());
    return 0;
}

void tyr::gpic_polyline(int n, const float *points)
{
    keep_text();
    const LineState &line = kernel().line;
    set_width(line.colour, line.width);
    set_line_colour(line.colour);
    set_dash(line.type);
    make_path(n, points);
    cairo().stroke(state.context.get());
}

void tyr::gpic_area(int n, const float *points)
{
    if (kernel().fill.int_style != kSolid) {
        return;
    }
    keep_text();
    make_path(n, points);
    cairo().close_path(state.context.get());
    set_fill_colour(kernel().fill.colour);
    cairo().fill(state.context.get());
}

void tyr::gpic_begin_markers()
{
    keep_text();
    set_pen(kernel().marker.colour, kernel().marker.width);
}

void tyr::gpic_stroke(int n, const float *points)
{
    make_path(n, points);
    if (n == 1) {
        cairo().rel_line_to(state.context.get(), 1.0, 0.0);
    }
    cairo().stroke(state.context.get());
}

void tyr::gpic_begin_text(const char *text)
{
    keep_text();
    const TextState &attributes = kernel().text;
    set_pen(attributes.colour, attributes.width);
    state.text.text = text;
    const double length = std::hypot(attributes.up_x, attributes.up_y);
    if (length > 0.0) {
        state.text.along_x = static_cast<double>(attributes.up_y) / length;
        state.text.along_y = -static_cast<double>(attributes.up_x) / length;
    }
}

void tyr::gpic_glyph(std::span<const GlyphPoint> points)
{
    cairo_t *context = state.context.get();
    TextBox &box = state.text;
    cairo().new_path(context);
    for (const GlyphPoint &point : points) {
        const double x = static_cast<double>(point.x);
        const double y = static_cast<double>(point.y);
        if (point.begins) {
            cairo().move_to(context, x, y);
        } else {
            cairo().line_to(context, x, y);
        }
        const double u = x * box.along_x + y * box.along_y;
        const double v = y * box.along_x - x * box.along_y;
        box.low_u = box.is_empty ? u : std::min(box.low_u, u);
        box.high_u = box.is_empty ? u : std::max(box.high_u, u);
        box.low_v = box.is_empty ? v : std::min(box.low_v, v);
        box.high_v = box.is_empty ? v : std::max(box.high_v, v);
        box.is_empty = false;
    }
    cairo().stroke(context);
}

void tyr::gpic_clip(float x0, float y0, float x1, float y1)
{
    cairo_t *context = state.context.get();
    const double slack = 0.1;
    cairo().reset_clip(context);
    cairo().rectangle(context, static_cast<double>(x0) - slack, static_cast<double>(y0) - slack,
                      static_cast<double>(x1 - x0) + 2.0 * slack,
                      static_cast<double>(y1 - y0) + 2.0 * slack);
    cairo().clip(context);
}

void tyr::gpic_clear_region(const float rect[4])
{
    keep_text();
    const float corners[] = {rect[0], rect[2], rect[1], rect[2],
                             rect[1], rect[3], rect[0], rect[3]};
    make_path(4, corners);
    if (state.wishes.background) {
        const Rgb &paper = *state.wishes.background;
        set_rgb(paper.red, paper.green, paper.blue);
    } else {
        set_fill_colour(-1);
    }
    cairo().fill(state.context.get());
}
