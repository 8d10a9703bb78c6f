#include <algorithm>
#include <array>
#include <cmath>
#include <cstdarg>
#include <cstdlib>

#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/gks/state_private.h"
#include "tyr/paper/grey.h"
#include "tyr/paper/output_private.h"
#include "tyr/paper/paper_private.h"
#include "tyr/paper/postscript_private.h"
#include "tyr/paper/print_colour_private.h"

using namespace tyr;

namespace {

constexpr double kPointsPerInch = 72.0;
constexpr float kMargin = 0.5F; // inches, both sides together
constexpr float kNoGrey = -1.0F;
constexpr float kMinScale = 0.01F;
constexpr int kPageWidth = 757; // of a redraw, points
constexpr int kPageHeight = 577;
constexpr char kDefaultTarget[] = "tyr.ps";

constexpr const char *const kDashes[] = {
    "",
    "[] 0 setdash\n",
    "[6] 0 setdash\n",
    "[3 6] 0 setdash\n",
    "[6 6 3 6] 0 setdash\n",
    "[2] 0 setdash\n",
};

struct State {
    Output out;
    bool appends = false;
    bool colour = false;
    bool portrait = false;
    bool eps = false;
    Paper page{11.0F, 8.5F}; ///< inches
    float scale = 1.0F;
    int line_base = 1;
    float grey = 0.0F;  ///< last grey sent; kNoGrey after a colour
    int index = -1;     ///< last index sent as a colour
    float width = 1.0F; ///< last width factor sent
    int dash = 1;       ///< last line type sent
};

State state;

void send_grey(float grey, const char *command)
{
    if (state.grey != grey) {
        state.out << command;
        state.grey = grey;
    }
}

/// True when the index is a print colour, which has now been sent.
bool send_print_colour(int index)
{
    switch (print_shade(index)) {
    case PrintShade::black:
        send_grey(0.0F, "0 setgray\n");
        return true;
    case PrintShade::white:
        send_grey(1.0F, "1 setgray\n");
        return true;
    case PrintShade::grey:
        send_grey(0.7F, ".7 setgray\n");
        return true;
    case PrintShade::none:
        return false;
    }
    return false;
}

void send_colour(int index)
{
    if (index == state.index && state.grey < 0.0F) {
        return;
    }
    float red = 0.0F;
    float green = 0.0F;
    float blue = 0.0F;
    ginq_color(index, &red, &green, &blue);
    state.out << Fixed{red, 2} << " " << Fixed{green, 2} << " " << Fixed{blue, 2}
              << " setrgbcolor\n";
    state.index = index;
    state.grey = kNoGrey;
}

void start_colour()
{
    state.out << (state.colour ? "0 0 0 setrgbcolor\n" : "0 setgray\n");
}

void write_comments()
{
    Output &out = state.out;
    if (state.eps) {
        out << "%!PS-Adobe-3.0 EPSF-3.0\n"
            << (state.portrait ? "%%BoundingBox: 0 0 756 576\n" : "%%BoundingBox: 0 0 576 756\n");
    } else {
        out << "%!PS-Adobe-1.0\n";
    }
    out << "%%Title: TYR Graphics Display: " << comment_text(ginq_title()) << "\n"
        << "%%Creator: TYR Postscript Processor-2.0\n"
        << "%%CreationDate: " << creation_date() << "%%EndComments\n";
}

void write_definitions()
{
    state.out << "%%Postscript initialization\n";
    if (!state.eps) {
        state.out << "30 dict begin\n/saveobj save def\n";
    }
    state.out << "/inch {72 mul} def\n"
                 "/dot {.33 mul} def\n"
                 "/mv {moveto} def\n"
                 "/ln {lineto} def\n"
                 "/lw {setlinewidth} def\n"
                 "/np {newpath} def\n"
                 "/cp {closepath} def\n";
}

void write_orientation()
{
    if (!state.portrait) {
        state.out << "90 rotate\n";
        if (state.eps) {
            state.out.print("0. inch -%.2f inch translate\n", state.page.height);
        } else {
            state.out.print(".25 inch -%.2f inch translate\n", state.page.height - 0.25F);
        }
    } else if (!state.eps) {
        state.out << ".25 inch .25 inch translate\n";
    }
}

void apply_word(const std::string &word)
{
    if (is_word(word, "port")) {
        gps_set_portrait(1);
    } else if (is_word(word, "land")) {
        gps_set_portrait(0);
    } else if (is_word(word, "eps")) {
        gps_set_eps(1);
    } else if (is_word(word, "noeps")) {
        gps_set_eps(0);
    } else if (is_word(word, "color")) {
        gps_set_color(1);
        gset_invert(1);
    } else if (is_word(word, "gray")) {
        gps_set_color(0);
    } else if (STR_has_prefix(word, "scale")) {
        gps_set_scale(word_number(word, 6));
    } else if (STR_has_prefix(word, "lwidth")) {
        gps_set_lwidth(static_cast<int>(std::clamp(word_number(word, 7), -1.0F, 1000.0F)));
    } else if (const auto paper = paper_from_word(word)) {
        state.page = *paper;
    }
}

/// The line of a point at one go.
void write_point(float x, float y, std::string_view tail)
{
    std::array<char, 2 * kFixedRoom + 8> line;
    char *end = write_fixed({x, 2}, line.data());
    *end++ = ' ';
    end = write_fixed({y, 2}, end);
    end = std::copy(tail.begin(), tail.end(), end);
    state.out << std::string_view(line.data(), static_cast<size_t>(end - line.data()));
}

} // namespace

std::FILE *gps_open(const char *target)
{
    state.appends = false;
    if (!state.out.open(target)) {
        return nullptr;
    }
    tell_target(state.out);
    state.appends = state.out.kind() == Output::Kind::append;
    if (std::getenv("PSCOLOR") != nullptr) {
        state.colour = true;
    }
    return state.out.stream();
}

void gps_init()
{
    state.grey = 0.0F;
    state.index = -1;
    state.width = 1.0F;
    state.dash = 1;
}

void gps_set_page(float width, float height)
{
    state.page = {width, height};
}

void gps_prolog()
{
    if (!state.appends) {
        write_comments();
        write_definitions();
        write_orientation();
    }
    start_colour();
    if (!state.appends) {
        state.out << "2 setlinejoin\n";
    }
    state.out << "1 dot lw\n[] 0 setdash\n";
    // what stands is one dot; with another base that isn't the width of factor 1
    state.width = state.line_base > 0 ? 1.0F / static_cast<float>(state.line_base) : -1.0F;
    if (!state.appends) {
        if (state.scale != 1.0F) {
            state.out.print("%.2f %.2f scale\n", state.scale, state.scale);
        }
        state.out << "%%Begin plot\n";
    }
    state.out << "%%TYR Plot: " << comment_text(ginq_title()) << "\n";
}

int gps_close()
{
    if (!state.out.is_open()) {
        return -1;
    }
    state.out << "%%End of plot\n";
    if (!state.appends) {
        state.out << (state.eps ? "showpage\n%%EOF\n" : "saveobj restore\nshowpage\nend\n%%EOF\n");
    }
    if (!state.out.close("gps_close")) {
        return -1;
    }
    MSG_out(kMsgMess, "Created Postscript file\n");
    return 0;
}

void gps_set_eps(int flag)
{
    state.eps = flag != 0;
}

void gps_set_portrait(int flag)
{
    state.portrait = flag != 0;
}

void gps_set_color(int flag)
{
    state.colour = flag != 0;
}

void gps_set_scale(float scale)
{
    if (scale >= kMinScale) {
        state.scale = scale;
    }
}

void gps_set_lwidth(int base)
{
    if (base >= 0) {
        state.line_base = base;
    }
}

void gps_line_color(int index)
{
    if (send_print_colour(index)) {
        return;
    }
    if (state.colour) {
        send_colour(index);
    } else {
        send_grey(0.0F, "0 setgray\n");
    }
}

void gps_fill_color(int index)
{
    if (!state.colour && ginq_fill_black()) {
        state.out << "0 setgray\n";
        state.grey = 0.0F;
        return;
    }
    if (send_print_colour(index)) {
        return;
    }
    if (state.colour) {
        send_colour(index);
        return;
    }
    if (index == -1) {
        send_grey(1.0F, "1 setgray\n");
        return;
    }
    const float grey = gps_gray(index);
    if (grey != state.grey) {
        state.out << Fixed{grey, 3} << " setgray\n";
        state.grey = grey;
    }
}

void gps_width(int index, float width)
{
    const int factor = print_width_factor(index);
    const float kept = static_cast<float>(factor) * width;
    if (kept == state.width) {
        return;
    }
    state.width = kept;
    const float dots = static_cast<float>(state.line_base) * kept;
    if (factor == 1) {
        state.out << Fixed{dots, 1} << " dot lw\n";
    } else {
        state.out.print("%d dot lw\n", static_cast<int>(std::min(dots, 1.0e6F)));
    }
}

void gps_dash(int type)
{
    if (type == state.dash) {
        return;
    }
    state.dash = type;
    if (type >= 1 && type < static_cast<int>(std::size(kDashes))) {
        state.out << kDashes[type];
    }
}

void gps_clip(float x0, float y0, float x1, float y1)
{
    state.out << "initclip\nnp\n";
    gps_move_dc(x0 - 0.1F, y0 - 0.1F);
    gps_draw_dc(x0 - 0.1F, y1 + 0.1F);
    gps_draw_dc(x1 + 0.1F, y1 + 0.1F);
    gps_draw_dc(x1 + 0.1F, y0 - 0.1F);
    state.out << "cp\nclip\n";
}

void gps_move(float x, float y)
{
    gps_move_dc(gwc_to_pc_x(x), gwc_to_pc_y(y));
}

void gps_draw(float x, float y)
{
    gps_draw_dc(gwc_to_pc_x(x), gwc_to_pc_y(y));
}

void gps_move_dc(float x, float y)
{
    write_point(x, y, " mv\n");
}

void gps_draw_dc(float x, float y)
{
    write_point(x, y, " ln\n");
}

void tyr::gps_put(std::string_view text)
{
    state.out << text;
}

void tyr::gps_put_count(std::string_view what, int n)
{
    state.out << what << n << "\n";
}

void tyr::gps_put_place(std::string_view what, const float pos[2], std::string_view text)
{
    state.out << what << Fixed{pos[0], 6} << " " << Fixed{pos[1], 6} << " " << text << "\n";
}

void gps_printf(const char *format, ...)
{
    std::va_list args;
    va_start(args, format);
    state.out.vprint(format, args);
    va_end(args);
}

bool tyr::gps_open_print()
{
    const std::string target = output_target({}, {"tyrps_print", "PSPRINT"}, kDefaultTarget);
    if (gps_open(target.c_str()) == nullptr) {
        return false;
    }
    gps_init();
    gps_prolog();
    gset_ws_size(kPageWidth, kPageHeight);
    return true;
}

int gps_open_ws(const std::vector<std::string> &words)
{
    WorkstationState &ws = kernel().ws;
    gset_recording(0);
    gset_events(0);
    ws.device = kDevicePostScript;
    ws.depth = kFileDepth;
    const std::string target = output_target(words, {"tyrps_print", "PSPRINT"}, kDefaultTarget);
    if (gps_open(target.c_str()) == nullptr) {
        report_unopened("unable to open postscript file", target);
        return -1;
    }
    gps_set_page(11.0F, 8.5F);
    gps_init();
    for (const std::string &word : environment_words("tyrps_param")) {
        apply_word(word);
    }
    for (size_t i = 1; i < words.size(); i++) {
        apply_word(words[i]);
    }
    ws.width = static_cast<int>((state.page.width - kMargin) * kPointsPerInch);
    ws.height = static_cast<int>((state.page.height - kMargin) * kPointsPerInch);
    ws.x_offset = 0;
    ws.y_offset = 0;
    gps_prolog();
    apply_geometry(geometry_text({"tyrps_geometry", "PSGEOMETRY"}),
                   {false, kPointsPerInch / 100.0, 0.0});
    return 0;
}
