#include "programs/profiler/driver.h"

#include <array>

#include "programs/profiler/evaluate.h"
#include "programs/profiler/level_map.h"
#include "programs/profiler/look.h"
#include "programs/profiler/point_plot.h"
#include "programs/profiler/records.h"
#include "programs/profiler/section.h"
#include "programs/profiler/walk.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/map/map_entry.h"
#include "tyr/map/map_grid.h"
#include "tyr/map/map_layer.h"
#include "tyr/plot/area.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/dump.h"
#include "tyr/plot/interaction.h"
#include "tyr/plot/plot_session.h"
#include "tyr/plot/view.h"
#include "tyr/var/expression.h"
#include "tyr/var/var_file.h"
#include "tyr/var/var_menu.h"
#include "tyr/var/variable.h"
#include "tyr/x11/frames.h"

using namespace tyr;

namespace {

constexpr unsigned kWarn = 192;
constexpr unsigned kMess = 3840;
constexpr int kStationsPerLine = 13;
constexpr size_t kVariableText = 512;

struct State {
    DriverSetup setup;
    bool ask_variable = true;
    bool has_variable_file = false;
    std::array<char, kVariableText> variable = {};
};

State state;

/// Draws the picture. @return columns or stations drawn; -1 if the map's file can't be opened
int plot_data()
{
    return state.setup.mode == kLevelMap ? tyr::plot_level_map(state.setup)
                                         : tyr::plot_section(&state.setup);
}

/// One pass over a plot's steps. @return as plot_data
int draw(DomainRec *domain)
{
    tyr::look_at_speed();
    PLT_set_domain(domain);
    PLT_map_setup();
    DOM_set_map_mode(0);
    PLT_map_under();
    const int drawn = plot_data();
    if (drawn != -1) {
        PRF_finish_plot();
        PLT_map_over();
        PLT_dump(kCurrentFrame);
    }
    return drawn;
}

} // namespace

void PRF_setup(const DriverSetup &setup)
{
    state.setup = setup;
}

int PRF_select_variable()
{
    if (!state.has_variable_file) {
        VAR_open_file(nullptr);
        state.has_variable_file = true;
    }
    VAR_read_menu();
    if (!state.ask_variable) {
        return 0;
    }
    int result = 1;
    if (const char *text = RES_get("variable")) {
        STR_copy(state.variable.data(), state.variable.size(), text);
        state.ask_variable = false;
    } else if (PRM_is_batch() != 0) {
        STR_copy(state.variable.data(), state.variable.size(), "wbrb");
        state.ask_variable = false;
    } else {
        result =
            VAR_menu("\n        Variable Menu\n", "Enter the variable: ", state.variable.data(), 3);
        if (result == 0) {
            return 0;
        }
        if (result < 0 && result != kMissingInt) {
            SYS_exit(0);
        }
    }
    VAR_decode(nullptr, state.variable.data());
    for (int i = 0; i < VAR_count(); ++i) {
        PRF_check_variable(&VAR_get_list()[i]);
    }
    return result;
}

void PRF_set_ask_variable(int flag)
{
    state.ask_variable = flag != 0;
}

int PRF_plot(DomainRec *domain)
{
    const bool is_first = ginq_open() == 0;
    const float aspect = DOM_aspect(domain);
    const int wanted = is_first ? PLT_begin(aspect) : PLT_restart(aspect);
    if (is_first) {
        PLT_set_callback(PRF_event);
        PLT_set_zoom_callback(PRF_plot);
        PLT_set_size_callback(PRF_plot);
    }
    const int drawn = wanted == 0 ? draw(domain) : 1;
    if (is_first && drawn < 1) {
        MSG_out(kWarn, "Nothing could be drawn\n");
        PLT_abort(kExitNothing);
    }
    if (is_first) {
        PLT_end();
        if (PLT_dump_failed()) {
            SYS_exit(kExitNoDump);
        }
    }
    return drawn == -1 ? -1 : 0;
}

void PRF_event(int, const char *event, float x, float y)
{
    PLT_zoom_event(event, x, y);
    PLT_size_event(event, x, y);
}

int PRF_list_stations(const char *file)
{
    if (PRF_open_file(file) == 0) {
        return 0;
    }
    MSG_out(kMess, "\nDate: %s\n", PRF_file_info().date_label);
    MSG_out(kMess, "\nAvailable stations:\n");
    int count = 0;
    ProfilerRecord record;
    while (PRF_next_station(&record) != -1) {
        MSG_out(kMess, "%5s ", record.id);
        if (++count % kStationsPerLine == 0) {
            MSG_out(kMess, "\n");
        }
    }
    if (count % kStationsPerLine != 0) {
        MSG_out(kMess, "\n");
    }
    return 0;
}

int PRF_finish_plot()
{
    tyr::setup_values();
    if (PLT_bar_due() == 1) {
        GPH_sel_tran(1);
        PLT_color_bar(1, "");
        GPH_sel_tran(2);
    }
    return 0;
}
