#include "tyr/map/map_layer.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <string>
#include <string_view>

#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/geo/domain.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/map/map_entry_private.h"
#include "tyr/map/map_grid.h"
#include "tyr/plot/attributes.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/grid_interval.h"
#include "tyr/plot/labels.h"
#include "tyr/plot/view.h"
#include "tyr/var/variable.h"

using namespace tyr;

namespace {

constexpr float kMapLabel = 0.018F; ///< of the window height
constexpr float kSpaceLabel = 0.015F;
constexpr int kDashed = 4;
constexpr float kAmericanHeight = 75.0F; ///< window that tyr.map fills, 100 km
constexpr int kMostEntry = 255;
constexpr std::string_view kListPrefix = "fi:";

struct State {
    std::string list; ///< entries in force; the default, once chosen, stays
    std::string told; ///< list file of the last message in this plot
    bool is_filled = false;
    int map_variable = 0; ///< 1 the list holds "map", -1 it holds "panel"
};

State state;

const std::string &current_list(const DomainRec &d)
{
    if (const char *list = RES_get("map_file")) {
        state.list = list;
    } else if (state.list.empty()) {
        const bool is_american = d.clat > 25.0F && d.clat < 80.0F && d.clon > -160.0F &&
                                 d.clon < -65.0F && DOM_window_height() < kAmericanHeight;
        state.list = is_american ? "tyr.map" : "cont.map,country.map";
    }
    return state.list;
}

/// False of what no list holds: nothing, or control characters.
bool is_text(std::string_view word)
{
    return !word.empty() && std::none_of(word.begin(), word.end(), [](char c) {
        return std::iscntrl(static_cast<unsigned char>(c)) != 0;
    });
}

/// Once for the layers under and over the data.
void report_list(const char *what, const char *path)
{
    if (state.told != path) {
        MSG_out(kMsgWarn, "%s%s\n", what, path);
        state.told = path;
    }
}

void process_list_file(const std::string &name)
{
    std::array<char, kFileNameRoom> path = {};
    FILE_join(RES_get("file_path"), name.c_str(), path.data());
    FilePtr stream;
    if (FILE_is_dir(path.data()) == 0) {
        stream.reset(FILE_open(path.data(), "r"));
    }
    if (!stream) {
        report_list("MAP_draw: Unable to open map list file: ", path.data());
        return;
    }
    std::array<char, kMostEntry + 1> word = {};
    while (std::fscanf(stream.get(), "%255s", word.data()) == 1) {
        if (!is_text(word.data())) {
            report_list("MAP_draw: Map list file is damaged: ", path.data());
            return;
        }
        MAP_process(word.data());
    }
}

bool is_filled_type(long type)
{
    return type == 15 || type == 16 || type == 52;
}

/// Whether the lines are left out of the layer over the data, since they stand under it already.
bool is_grid_under(int mode)
{
    const char *place = RES_get("grid_place");
    return mode == kMapOver && place != nullptr && STR_casecmp(place, "under") == 0;
}

void draw_lines(const DomainRec &domain)
{
    float dlat = 0.0F;
    float dlon = 0.0F;
    DOM_get_offset(&dlat, &dlon);
    if (!(dlat > 0.0F)) {
        return;
    }
    AttrRec attr;
    ATTR_init(&attr);
    const bool is_map = is_map_projection(domain.proj);
    if (is_map) {
        attr.style = kDashed;
    }
    ATTR_from_resource("color_line", is_map ? "magenta:s4" : "red", &attr);
    GPH_set_line_attr(nullptr);
    GPH_set_line_attr(&attr);
    GPH_set_text_attr(&attr, is_map ? DOM_window_height() * kMapLabel : kSpaceLabel);
    if (attr.color != -1) {
        MAP_draw_lalo(dlat, dlon);
    }
}

} // namespace

void PLT_map_setup()
{
    state.told.clear();
    state.is_filled = is_filled_type(PRM_get(kPrmPlotType));
    state.map_variable = 0;
    for (int i = 0; i < VAR_count(); ++i) {
        if (VAR_is_map(i) != 0) {
            state.map_variable = 1;
        } else if (state.map_variable != 1 && VAR_is_panel(i) != 0) {
            state.map_variable = -1;
        }
    }
}

void PLT_map_under()
{
    gsel_norm_tran(2);
    PLT_set_label_line(0);
    PLT_clear_bar();
    MAP_draw(state.is_filled || state.map_variable == 1 ? kMapUnder : kMapUnder | kMapUnmarked);
}

void PLT_map_over()
{
    if (state.is_filled && state.map_variable != 1) {
        DOM_set_map_mode(1);
        MAP_draw(kMapOver | kMapUnmarked);
    } else {
        MAP_draw(kMapOver);
    }
    PLT_draw_labels();
}

int MAP_draw(int mode)
{
    if (PRM_get_draw(kDrawMap) == 0) {
        return 0;
    }
    gsel_norm_tran(2);
    GPH_set_line_attr(nullptr);
    GPH_set_font(nullptr);
    const DomainRec domain = *DOM_get(nullptr);
    start_map_entries(mode);
    for (const std::string &entry : STR_fields(current_list(domain), ',')) {
        if (entry.compare(0, kListPrefix.size(), kListPrefix) == 0) {
            process_list_file(entry.substr(kListPrefix.size()));
        } else {
            MAP_process(entry.c_str());
        }
    }
    if (!is_grid_under(mode)) {
        draw_lines(domain);
    }
    return 0;
}
