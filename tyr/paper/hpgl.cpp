#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdlib>

#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/gks/state_private.h"
#include "tyr/paper/grey.h"
#include "tyr/paper/hpgl_private.h"
#include "tyr/paper/output_private.h"
#include "tyr/paper/paper_private.h"
#include "tyr/paper/print_colour_private.h"

using namespace tyr;

namespace {

constexpr double kUnitsPerInch = 1015.0;
constexpr float kMargin = 0.5F;      // inches, both sides together
constexpr double kOffset = 10.0;     // plotter units
constexpr float kRollHeight = 23.5F; // inches
constexpr Paper kDefaultPaper{10.5F, 8.0F};
constexpr float kMaxLineBase = 1000.0F;

enum class PclMode { plain, pcl, turned };

constexpr const char *const kDashes[] = {
    "", "LT;\n", "LT2,5,1;\n", "LT5,8,1;\n", "LT6,10,1;\n", "LT2,1,1;\n",
};

struct State {
    Output out;
    bool appends = false;
    PclMode pcl = PclMode::pcl;
    int rotation = 0; ///< degrees
    Paper page = kDefaultPaper;
    float line_base = 0.2F; ///< pen width of factor 1
    float screen = 0.0F;    ///< last line shade: 0 none, 1 white, .7 grey
    float fill = 0.0F;      ///< last fill level: 0 black, 1 white
    float width = 1.0F;     ///< last width factor
    int dash = 1;           ///< last line type
};

State state;

void send_screen(float screen, const char *command)
{
    if (state.screen != screen) {
        state.out << command;
        state.screen = screen;
    }
}

float fill_level(int index)
{
    switch (print_shade(index)) {
    case PrintShade::black:
        return 0.0F;
    case PrintShade::white:
        return 1.0F;
    case PrintShade::grey:
        return 0.7F;
    case PrintShade::none:
        break;
    }
    return index == -1 ? 1.0F : gps_gray(index);
}

void apply_word(const std::string &word)
{
    if (is_word(word, "pcl")) {
        state.pcl = PclMode::pcl;
    } else if (is_word(word, "nopcl")) {
        state.pcl = PclMode::plain;
    } else if (is_word(word, "lj")) {
        state.pcl = PclMode::turned;
    } else if (is_word(word, "port")) {
        state.rotation = 90;
    } else if (is_word(word, "land")) {
        state.rotation = 0;
    } else if (STR_has_prefix(word, "rot")) {
        state.rotation = static_cast<int>(std::clamp(word_number(word, 4), -360.0F, 360.0F));
    } else if (STR_has_prefix(word, "lwidth")) {
        const float base = word_number(word, 7);
        if (base > 0.0F && base <= kMaxLineBase) {
            state.line_base = base;
        }
    } else if (STR_has_prefix(word, "roll")) {
        const Paper roll{word_number(word, 5), kRollHeight};
        state.page = is_paper(roll) ? roll : state.page;
    } else if (const auto paper = paper_from_word(word)) {
        state.page = *paper;
    }
}

void write_rotation()
{
    if (state.pcl == PclMode::turned) {
        state.out << "RO90;\n";
    }
    if (state.rotation == 90 || state.rotation == 180 || state.rotation == 270) {
        state.out << "RO" << state.rotation << ";\n";
    }
}

} // namespace

std::FILE *ghp_open(const char *target)
{
    state.appends = false;
    if (!state.out.open(target)) {
        return nullptr;
    }
    tell_target(state.out);
    state.appends = state.out.kind() == Output::Kind::append;
    return state.out.stream();
}

void ghp_init()
{
    state.pcl = PclMode::pcl;
    state.screen = 0.0F;
    state.fill = 0.0F;
    state.width = 1.0F;
    state.dash = 1;
}

void ghp_prolog()
{
    if (!state.appends) {
        if (state.pcl != PclMode::plain) {
            state.out << "\033E\033%1B\033&l1O\n";
        }
        state.out << "IN;SP1;PA;\n";
        write_rotation();
    }
    state.out << "PW" << Fixed{state.line_base, 1} << ";SV;LT;\n";
}

int ghp_close()
{
    if (!state.out.is_open()) {
        return -1;
    }
    if (!state.appends) {
        state.out << "SP;PG;\n";
        if (state.pcl != PclMode::plain) {
            state.out << "\033%0A\033E";
        }
    }
    if (!state.out.close("ghp_close")) {
        return -1;
    }
    MSG_out(kMsgMess, "Created HPGL file\n");
    return 0;
}

void ghp_line_color(int index)
{
    switch (print_shade(index)) {
    case PrintShade::white:
        send_screen(1.0F, "SV1,0;\n");
        break;
    case PrintShade::grey:
        send_screen(0.7F, "SV1,30;\n");
        break;
    case PrintShade::black:
    case PrintShade::none:
        send_screen(0.0F, "SV;\n");
        break;
    }
}

void ghp_fill_color(int index)
{
    if (ginq_fill_black()) {
        state.out << "FT1;\n";
        state.fill = 0.0F;
        return;
    }
    const float level = fill_level(index);
    if (level != state.fill) {
        state.out << "FT10," << Fixed{100.0F - 100.0F * level, 0} << ";\n";
        state.fill = level;
    }
}

void ghp_width(int index, float width)
{
    const float used = width == 0.0F ? 1.0F : width;
    const float factor = static_cast<float>(print_width_factor(index)) * used;
    if (factor != state.width) {
        state.out << "PW" << Fixed{state.line_base * factor, 1} << ";\n";
        state.width = factor;
    }
}

void ghp_dash(int type)
{
    if (type == state.dash) {
        return;
    }
    state.dash = type;
    if (type >= 1 && type < static_cast<int>(std::size(kDashes))) {
        state.out << kDashes[type];
    }
}

void ghp_clip(float x0, float y0, float x1, float y1)
{
    state.out << "IW " << Fixed{x0 - 0.1F, 0} << "," << Fixed{y0 - 0.1F, 0} << ","
              << Fixed{x1 + 0.1F, 0} << "," << Fixed{y1 + 0.1F, 0} << ";\n";
}

void ghp_move(float x, float y)
{
    ghp_move_dc(gwc_to_pc_x(x), gwc_to_pc_y(y));
}

void ghp_draw(float x, float y)
{
    ghp_draw_dc(gwc_to_pc_x(x), gwc_to_pc_y(y));
}

void ghp_move_dc(float x, float y)
{
    state.out << "PU" << Fixed{x, 0} << "," << Fixed{y, 0} << ";";
}

void ghp_draw_dc(float x, float y)
{
    state.out << "PD" << Fixed{x, 0} << "," << Fixed{y, 0} << ";";
}

void tyr::ghp_polyline(int n, const float *points)
{
    constexpr int kPointsPerLine = 10;
    const LineState &line = kernel().line;
    ghp_width(line.colour, line.width);
    ghp_line_color(line.colour);
    ghp_dash(line.type);
    ghp_move_dc(points[0], points[1]);
    for (std::ptrdiff_t i = 1; i < n; i++) {
        ghp_draw_dc(points[2 * i], points[2 * i + 1]);
        if ((i + 1) % kPointsPerLine == 0) {
            state.out << "\n";
        }
    }
    state.out << "\n";
}

void tyr::ghp_area(int n, const float *points)
{
    ghp_fill_color(kernel().fill.colour);
    ghp_move_dc(points[0], points[1]);
    state.out << "PM0;";
    for (std::ptrdiff_t i = 1; i < n; i++) {
        ghp_draw_dc(points[2 * i], points[2 * i + 1]);
    }
    state.out << "PM1;PM2;FP;\n";
}

void tyr::ghp_begin_markers()
{
    ghp_width(kernel().marker.colour, kernel().marker.width);
    ghp_line_color(kernel().marker.colour);
    ghp_dash(1);
}

void tyr::ghp_stroke(int n, const float *points)
{
    ghp_move_dc(points[0], points[1]);
    for (std::ptrdiff_t i = 1; i < n; i++) {
        ghp_draw_dc(points[2 * i], points[2 * i + 1]);
    }
    if (n == 1) {
        ghp_draw_dc(points[0], points[1]);
    }
    state.out << "\n";
}

void tyr::ghp_begin_text()
{
    ghp_width(kernel().text.colour, kernel().text.width);
    ghp_line_color(kernel().text.colour);
    ghp_dash(1);
}

void tyr::ghp_glyph(std::span<const GlyphPoint> points)
{
    int run = 0;
    for (const GlyphPoint &point : points) {
        if (point.begins) {
            ghp_move_dc(point.x, point.y);
            run = 1;
            continue;
        }
        ghp_draw_dc(point.x, point.y);
        if (++run == kMaxRun) {
            state.out << "\n"; // the pen is down where it is
            run = 1;
        }
    }
    state.out << (run > 1 ? "\n" : "");
}

void ghp_printf(const char *format, ...)
{
    std::va_list args;
    va_start(args, format);
    state.out.vprint(format, args);
    va_end(args);
}

int ghp_open_ws(const std::vector<std::string> &words)
{
    WorkstationState &ws = kernel().ws;
    gset_recording(0);
    gset_events(0);
    ws.device = kDeviceHpgl;
    ws.depth = kFileDepth;
    const std::string target = output_target(words, {"tyrhp_out"}, "tyr.hpgl");
    if (ghp_open(target.c_str()) == nullptr) {
        report_unopened("unable to open HPGL file", target);
        return -1;
    }
    state.page = kDefaultPaper;
    ghp_init();
    for (const std::string &word : environment_words("tyrhp_param")) {
        apply_word(word);
    }
    for (size_t i = 1; i < words.size(); i++) {
        apply_word(words[i]);
    }
    ws.width = static_cast<int>((state.page.width - kMargin) * kUnitsPerInch);
    ws.height = static_cast<int>((state.page.height - kMargin) * kUnitsPerInch);
    ws.x_offset = static_cast<int>(kOffset);
    ws.y_offset = static_cast<int>(kOffset);
    apply_geometry(geometry_text({"tyrhp_geometry"}), {true, kUnitsPerInch / 100.0, kOffset});
    ghp_prolog();
    return 0;
}
