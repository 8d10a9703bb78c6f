#include "tyr/paper/metafile.h"

#include <algorithm>
#include <cstdarg>
#include <cstdlib>

#include "tyr/base/msg.h"
#include "tyr/gks/state_private.h"
#include "tyr/paper/output_private.h"
#include "tyr/paper/paper_private.h"

using namespace tyr;

namespace {

constexpr int kWidth = 1000;
constexpr int kHeight = 800;
constexpr double kUnitsPerInch = 100.0;

constexpr int kLongForm = 31;       // parameter length that says: the length follows
constexpr int kMaxCgmPoints = 8191; // what the 15-bit length of one partition holds
constexpr char kTextTarget[] = "tyr.meta";
constexpr char kDescription[] = "TYRCGM-1.0";

/// Element classes of the encoding.
enum CgmClass {
    kDelimiter = 0,
    kMetafileDescriptor = 1,
    kPictureDescriptor = 2,
    kControl = 3,
    kPrimitive = 4
};

struct State {
    Output out;
    bool appends = false;
    bool binary = false;
};

State state;

void word16(int value)
{
    state.out.byte(static_cast<unsigned>(value) >> 8 & 0xFFU);
    state.out.byte(static_cast<unsigned>(value) & 0xFFU);
}

int to_16_bits(float value)
{
    return static_cast<int>(std::clamp(value, -32768.0F, 32767.0F));
}

void write_text_header()
{
    state.out << "TYRMETA\n#Title: TYR Graphics Display: " << comment_text(ginq_title())
              << "\n#Creator: TYR Metafile Processor-1.0\n#CreationDate: " << creation_date();
}

void write_binary_header()
{
    gcgm_element(kDelimiter, 1, 0, 0);
    gcgm_element(kMetafileDescriptor, 1, 2, 1);
    gcgm_element(kMetafileDescriptor, 2, sizeof kDescription, 0);
    state.out.byte(sizeof kDescription - 1);
    state.out << kDescription;
    state.out.byte(0);
    gcgm_element(kMetafileDescriptor, 11, 6, 1);
    word16(-1); // the drawing set
    word16(1);
    gcgm_element(kMetafileDescriptor, 9, 1, 0);
    state.out.byte(255);
    state.out.byte(0);
    gcgm_element(kPictureDescriptor, 6, 8, 0);
    word16(0);
    word16(0);
    word16(10000);
    word16(8000);
    gcgm_element(kDelimiter, 3, 0, 0);
    gcgm_element(kDelimiter, 4, 0, 0);
}

} // namespace

std::FILE *gmeta_open(const char *target)
{
    state.appends = false;
    if (!state.out.open(target)) {
        return nullptr;
    }
    MSG_out(kMsgMess, "Creating metafile: %s\n", target);
    state.appends = state.out.kind() == Output::Kind::append;
    return state.out.stream();
}

void gmeta_header()
{
    if (state.binary) {
        write_binary_header();
    } else {
        write_text_header();
    }
}

int gmeta_close()
{
    if (!state.out.is_open()) {
        return -1;
    }
    if (state.binary && !state.appends) {
        gcgm_element(kDelimiter, 5, 0, 0);
    }
    if (!state.out.close("gmeta_close")) {
        return -1;
    }
    MSG_out(kMsgMess, "Created metafile\n");
    return 0;
}

void gmeta_printf(const char *format, ...)
{
    if (state.binary) {
        return;
    }
    std::va_list args;
    va_start(args, format);
    state.out.vprint(format, args);
    va_end(args);
}

void gmeta_points(const char *word, int n, const float *points, bool always)
{
    if (state.binary) {
        return;
    }
    state.out << word << " " << n << " ";
    bool broken = false;
    for (std::ptrdiff_t i = 0; i < n; i++) {
        state.out << Fixed{points[2 * i], 6} << "," << Fixed{points[2 * i + 1], 6} << " ";
        broken = i % 4 == 3 && (always || i + 1 < n);
        if (broken) {
            state.out << "\n   ";
        }
    }
    if (!broken) {
        state.out << "\n";
    }
}

void gmeta_polyline(int n, const float *points)
{
    if (state.binary) {
        gcgm_polyline(n, points);
    } else {
        gmeta_points("PL", n, points, false);
    }
}

void gmeta_rect(const char *word, int number, const float rect[4])
{
    gmeta_printf("%s %d %f %f %f %f\n", word, number, rect[0], rect[2], rect[1], rect[3]);
}

bool gmeta_open_print()
{
    const char *target = std::getenv("METAOUT");
    if (gmeta_open(target != nullptr ? target : kTextTarget) == nullptr) {
        return false;
    }
    gmeta_header();
    return true;
}

void gset_meta_binary(int on)
{
    state.binary = on != 0;
}

int ginq_meta_binary()
{
    return state.binary ? 1 : 0;
}

void gcgm_element(int element_class, int id, int length, int value)
{
    word16(element_class << 12 | id << 5 | length);
    if (value > 0 || length == kLongForm) {
        word16(value);
    }
}

void gcgm_point(float x, float y)
{
    word16(to_16_bits(x));
    word16(to_16_bits(y));
}

void gcgm_wc_point(float x, float y)
{
    gcgm_point(gwc_to_pc_x(x), gwc_to_pc_y(y));
}

void gcgm_polyline(int n, const float *points)
{
    for (std::ptrdiff_t start = 0; start + 1 < n; start += kMaxCgmPoints - 1) {
        const std::ptrdiff_t end = std::min<std::ptrdiff_t>(n, start + kMaxCgmPoints);
        gcgm_element(kPrimitive, 1, kLongForm, static_cast<int>(4 * (end - start)));
        for (std::ptrdiff_t i = start; i < end; i++) {
            gcgm_wc_point(points[2 * i], points[2 * i + 1]);
        }
    }
}

void gcgm_clip(float x0, float y0, float x1, float y1)
{
    if (state.binary) {
        gcgm_element(kControl, 5, 8, 0);
        gcgm_point(x0, y0);
        gcgm_point(x1, y1);
    }
}

int gmeta_open_ws(const std::vector<std::string> &words)
{
    WorkstationState &ws = kernel().ws;
    gset_recording(0);
    gset_events(0);
    for (size_t i = 1; i < words.size(); i++) {
        if (is_word(words[i], "cgm")) {
            state.binary = true;
        } else if (is_word(words[i], "tyr")) {
            state.binary = false;
        }
    }
    ws.width = kWidth;
    ws.height = kHeight;
    ws.x_offset = 0;
    ws.y_offset = 0;
    ws.device = kDeviceMetafile;
    ws.depth = kFileDepth;
    apply_geometry(geometry_text({}), {false, kUnitsPerInch, 0.0});
    const std::string target =
        output_target(words, {"tyrmeta_out"}, state.binary ? "tyr.cgm" : kTextTarget);
    if (gmeta_open(target.c_str()) == nullptr) {
        report_unopened("unable to open metafile", target);
        return -1;
    }
    gmeta_header();
    return 0;
}
