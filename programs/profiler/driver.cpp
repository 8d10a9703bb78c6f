#include "programs/profiler/driver.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "programs/profiler/evaluate.h"
#include "programs/profiler/records.h"
#include "programs/profiler/walk.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/map/map_entry.h"
#include "tyr/map/map_grid.h"
#include "tyr/map/map_layer.h"
#include "tyr/names/name_conv.h"
#include "tyr/names/search.h"
#include "tyr/names/sequence.h"
#include "tyr/plot/area.h"
#include "tyr/plot/attributes.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/dump.h"
#include "tyr/plot/interaction.h"
#include "tyr/plot/labels.h"
#include "tyr/plot/plot_session.h"
#include "tyr/plot/tick.h"
#include "tyr/plot/value.h"
#include "tyr/plot/view.h"
#include "tyr/start/convert.h"
#include "tyr/var/expression.h"
#include "tyr/var/label.h"
#include "tyr/var/level.h"
#include "tyr/var/type_words.h"
#include "tyr/var/var_file.h"
#include "tyr/var/var_menu.h"
#include "tyr/var/variable.h"
#include "tyr/x11/frames.h"

using namespace tyr;

namespace {

constexpr unsigned kWarn = 192;
constexpr unsigned kMess = 3840;
constexpr unsigned kDetail = 0x0F000000;
constexpr float kTopHeight = 17000.0F; ///< of the evaluation, in both settings
constexpr int kStationsPerLine = 13;
constexpr size_t kVariableText = 512;

struct State {
    DriverSetup setup;
    bool ask_variable = true;
    bool has_variable_file = false;
    std::array<char, kVariableText> variable = {};
    PlotValue value = {};
};

State state;

struct Styles {
    AttrRec data;
    AttrRec wind;
};

bool is_barb(int type)
{
    return type >= kTypeWindBarb && type <= kTypeVectorBarb;
}

Styles read_styles()
{
    Styles styles;
    ATTR_init(&styles.data);
    ATTR_init(&styles.wind);
    ATTR_from_resource("color_data", "green", &styles.data);
    ATTR_from_resource("color_wind", PLT_is_light() != 0 ? "black" : "white", &styles.wind);
    gset_fill_black(1);
    return styles;
}

void setup_values(const Styles &styles)
{
    float scale = 1.0F;
    RES_get_value("plot_scale", &scale, kResReal);
    const bool barb = VAR_count() > 0 && is_barb(VAR_get_list()->type);
    PLT_setup_values(barb ? &styles.wind : &styles.data, scale);
}

/// Draws every variable that is drawn at points, with the answer to `asked`, at one place.
void plot_variables(const ProfilerRecord &record, VarRec *asked, const Styles &styles)
{
    const VarRec *list = VAR_get_list();
    for (int i = 0; i < VAR_count(); ++i) {
        if (VAR_is_point(i) == 0) {
            continue;
        }
        state.value.attr = is_barb(list[i].type) ? styles.wind : styles.data;
        state.value.type = list[i].type;
        STR_copy(state.value.format, sizeof state.value.format, list[i].format);
        if (PRF_evaluate(&record, asked, &state.value) != 0) {
            if (state.setup.mode == kLevelMap) {
                MSG_out(kDetail, "%s %7.2f %7.2f - %7.2f %7.2f\n", record.id, record.lat,
                        record.lon, state.value.value1, state.value.value2);
            }
            PLT_plot_value(&state.value);
        }
    }
}

void plot_column(const ProfilerRecord &record, float x, const Styles &styles)
{
    if (VAR_count() == 0) {
        return;
    }
    for (int i = 0;; ++i) {
        const float z = static_cast<float>(i) * state.setup.height_step;
        if (z >= kTopHeight) {
            return;
        }
        VarRec local = *VAR_get_list();
        local.level_kind = kLevelHeightAg;
        local.level_value = static_cast<int>(z);
        MAP_ll_to_xy(&state.value.x, &state.value.y, x, z);
        plot_variables(record, &local, styles);
    }
}

/// Writes the hour (and minute, for files closer than an hour) below a column.
void plot_tick(float x, const AttrRec &line)
{
    const DateRec &date = state.setup.date;
    if (date.hour == kMissingInt) {
        return; // neither name nor file tell it
    }
    const std::string hour = STR_print("%2.2d", date.hour);
    const bool hourly = FILE_get_step() >= kSecondsPerHour;
    PLT_x_tick(x, (hourly ? hour : hour + STR_print("%2.2d", std::max(date.minute, 0))).c_str(),
               &line);
}

void label_date()
{
    const PrfFileInfo &info = PRF_file_info();
    PLT_set_label_date(&info.date);
    if (info.date_label[0] == '\0' && state.setup.date.year != kMissingInt) {
        PRF_set_date_label(&state.setup.date);
    }
    PLT_label_ur(info.date_label);
}

void plot_section(const Styles &styles)
{
    const std::string station = state.setup.stations.empty() ? "" : state.setup.stations.front();
    std::array<char, kVarLabelSize> label = {};
    VAR_make_label(0, label.data());
    PLT_label_ul(("ID: " + station + " - " + label.data()).c_str());
    AttrRec line;
    ATTR_init(&line);
    ATTR_from_resource("color_line", "red", &line);
    GPH_sel_tran(2);
    PLT_init_value(&state.value);
    FILE_seq_init(&state.setup.date);
    std::array<char, kFileNameRoom> name = {};
    for (float x = 0.0F; FILE_next(name.data()) == 1; x += 1.0F) {
        FILE_get_date(&state.setup.date);
        MSG_out(kMess, "Searching file for %s in: %s\n", station.c_str(), name.data());
        ProfilerRecord record;
        if (PRF_find_station(name.data(), station.c_str(), &record) == 0) {
            MSG_out(kWarn, "%s not found\n", station.c_str());
            continue;
        }
        if (state.setup.date.hour == kMissingInt) {
            state.setup.date = PRF_file_info().date; // the name tells no hour
        }
        plot_column(record, x, styles);
        plot_tick(x, line);
    }
    label_date();
}

int plot_map(const Styles &styles)
{
    std::array<char, kFileNameRoom> name = {};
    FILE_compose(&state.setup.date, name.data());
    if (PRF_open_file(name.data()) == 0) {
        return -1;
    }
    PLT_init_value(&state.value);
    GPH_sel_tran(2);
    ProfilerRecord record;
    while (PRF_next_station(&record) != -1) {
        if (VAR_count() > 0) {
            MAP_ll_to_xy(&state.value.x, &state.value.y, record.lat, record.lon);
            plot_variables(record, VAR_get_list(), styles);
        }
    }
    PRF_close_file();
    std::array<char, kVarLabelSize> label = {};
    VAR_make_label(0, label.data());
    PLT_label_ul(label.data());
    label_date();
    return 0;
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
    if (wanted == 0) {
        PLT_set_domain(domain);
        PLT_map_setup();
        DOM_set_map_mode(0);
        PLT_map_under();
        const Styles styles = read_styles();
        setup_values(styles);
        if (state.setup.mode == kLevelMap) {
            if (plot_map(styles) != 0) {
                return -1;
            }
        } else {
            plot_section(styles);
        }
        PRF_finish_plot();
        PLT_map_over();
        PLT_dump(kCurrentFrame);
    }
    if (is_first) {
        PLT_end();
    }
    return 0;
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
    setup_values(read_styles());
    if (PLT_bar_due() == 1) {
        GPH_sel_tran(1);
        PLT_color_bar(1, "");
        GPH_sel_tran(2);
    }
    return 0;
}
