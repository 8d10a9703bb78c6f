#include "tyr/field/vector.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

#include "tyr/base/ask.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/field/vector_private.h"
#include "tyr/geo/domain.h"
#include "tyr/gks/gks.h"
#include "tyr/grid_math/sample.h"
#include "tyr/map/map_entry.h"
#include "tyr/map/map_layer.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/dump.h"
#include "tyr/plot/interaction.h"
#include "tyr/plot/labels.h"
#include "tyr/plot/levels.h"
#include "tyr/plot/plot_session.h"
#include "tyr/plot/view.h"
#include "tyr/start/convert.h"
#include "tyr/var/label.h"
#include "tyr/var/variable.h"

using namespace tyr;

namespace {

constexpr int kNoPlot = 99;
constexpr int kUnderField = 5, kOverField = 2;
constexpr int kDefaultRows = 15;
constexpr int kTextLine = 70;

struct SavedRow {
    int type = kMissingInt;
    float interval = kMissing, base = kMissing;
};
std::array<SavedRow, kMaxVariables> saved;

bool is_type(int type)
{
    return type >= kVectArrows && type <= kVectStreamlines;
}

std::string real(const char *spec, float value)
{
    std::array<char, kRealTextRoom> text;
    STR_format_real(text.data(), spec, value);
    return text.data();
}

int ask_type()
{
    std::array<char, 32> answer = {};
    ASK_text("Vectors (V) or Streamlines (S): ", answer.data(), static_cast<int>(answer.size()));
    if (STR_casecmp(answer.data(), "none") == 0) {
        return kNoPlot;
    }
    switch (answer[0]) {
    case 's':
    case 'S':
    case 'y':
    case 'Y':
        return kVectStreamlines;
    case 'b':
    case 'B':
        return kVectBarbs;
    default:
        return kVectArrows;
    }
}

void settle_type()
{
    VectorState &s = vectors();
    int type = s.type;
    if (type == kMissingInt || type == 10 || type == 20) {
        type = static_cast<int>(PRM_get(kPrmPlotType));
        if (type < 1 && PRM_is_batch() != 0) {
            type = kVectArrows;
        }
    }
    VECT_set_type(is_type(type) ? type : ask_type());
    s.locked = false;
}

void put_labels(const GridRec &u)
{
    const VectorState &s = vectors();
    std::array<char, kDatatypeSize> when;
    VAR_make_datatype(u.time, u.ltype, u.level, when.data());
    const std::string what = std::string(when.data()) + (when[0] != '\0' ? " " : "") +
                             (s.type == kVectStreamlines ? "streamlines" : "wind vectors");
    PLT_label_ul(what.c_str());
    PLT_label_ur(u.date);
    if (s.type == kVectStreamlines || !s.legend) {
        PLT_label_lr(("MAX: " + real("5.3.1", s.max)).c_str());
    }
    if (PLT_get_bar_mode() > 0) {
        return;
    }
    if (const int count = CONT_get_levels(nullptr); count > 0) {
        std::string text = "LEVELS: ";
        for (int i = 0; i < count && text.size() < kTextLine; ++i) {
            text += (i > 0 ? "," : "") + real("5.1.1", CONT_level(i));
        }
        PLT_label_ll(text.c_str());
    } else if (!is_missing(s.interval)) {
        PLT_label_ll(("INTERVAL: " + real("5.1.1", s.interval)).c_str());
    }
}

void settle_interval()
{
    VectorState &s = vectors();
    const char *text = RES_get("con_interval");
    if (text != nullptr && *text != '\0') {
        float interval = kMissing;
        RES_get_value("con_interval", &interval, kResReal);
        VECT_set_interval(interval);
    }
    read_vector_base();
    CONT_set_limits(s.highest, s.lowest);
    if (!is_missing(s.interval)) {
        CONT_set_interval(s.interval);
        CONT_set_range(0.0F, s.max);
    }
}

} // namespace

void VECT_setup(int mode, int index, GridRec *u, GridRec *v, DomainRec *domain,
                VectorCallback callback)
{
    if (PRM_get(kPrmPlotType) == kNoPlot || u == nullptr || v == nullptr) {
        return;
    }
    VectorState &s = vectors();
    s.u = u;
    s.v = v;
    s.callback = callback;
    CONT_reset();
    VECT_reset();
    const bool has_row = index >= 0 && index < kMaxVariables;
    if (mode > 0 && has_row) {
        const SavedRow &row = saved[static_cast<size_t>(index)];
        s.type = row.type;
        s.interval = row.interval;
        s.base = row.base;
    }
    read_vector_words();
    if (u->values != nullptr && v->values != nullptr) {
        if (domain != nullptr && is_missing(domain->clat)) {
            *domain = u->domain;
        }
        MSG_out(kMsgMess, "Plotting wind vectors\n\n");
        CONT_set_fill_colors(nullptr, 0);
    }
    settle_type();
    float most = kMissing;
    GRD_max_speed(u, v, &most);
    VECT_set_max(most);
    settle_interval();
    if (PRM_get(kPrmLevelKind) == kMissingInt) {
        PRM_set(kPrmLevelKind, kDefaultRows);
    }
    DOM_set_map_mode(0);
    put_labels(*u);
    if (mode == 0 && has_row) {
        saved[static_cast<size_t>(index)] = {s.type, s.interval, s.base};
    }
}

int VECT_redraw(DomainRec *domain)
{
    VectorState &s = vectors();
    if (PRM_get(kPrmPlotType) == kNoPlot || domain == nullptr || s.u == nullptr || s.v == nullptr) {
        return -1;
    }
    const bool again = ginq_open() != 0;
    if ((again ? PLT_restart(DOM_aspect(domain)) : PLT_begin(DOM_aspect(domain))) != 0) {
        return -1;
    }
    PLT_set_callback(s.callback);
    PLT_set_zoom_callback(VECT_redraw);
    PLT_set_size_callback(VECT_redraw);
    float *x = nullptr;
    float *y = nullptr;
    if (DOM_equal(domain, &s.u->domain) == 0) {
        MSG_out(kMsgMess, "Computing plot domain...\n");
        GRD_proj_XY(s.u, domain, &x, &y);
    }
    VECT_set_arrays(x, y);
    PLT_set_domain(domain);
    MAP_draw(kUnderField);
    GPH_set_line_attr(nullptr);
    VECT_setup(0, 0, s.u, s.v, domain, s.callback);
    VECT_draw(s.u, s.v);
    GPH_set_line_attr(nullptr);
    gsel_norm_tran(1);
    if (s.type != kVectStreamlines && s.legend) {
        VECT_legend();
    }
    if (s.type != kVectStreamlines && PLT_get_bar_mode() > 0) {
        PLT_color_bar(1, "");
    }
    MAP_draw(kOverField);
    PLT_draw_labels();
    DOM_set(domain);
    PLT_dump(0);
    if (!again) {
        PLT_end();
    }
    VECT_set_arrays(nullptr, nullptr);
    std::free(x);
    std::free(y);
    return 0;
}

void VECT_plot(GridRec *u, GridRec *v, DomainRec *domain, VectorCallback callback)
{
    if (u == nullptr || v == nullptr || domain == nullptr) {
        MSG_out(kMsgWarn, "VECT_draw: Invalid grids\n");
        return;
    }
    vectors().u = u;
    vectors().v = v;
    vectors().callback = callback;
    DomainRec where = is_missing(domain->clat) ? u->domain : *domain;
    VECT_redraw(&where);
}
