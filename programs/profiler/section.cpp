#include "programs/profiler/section.h"

#include <algorithm>
#include <array>
#include <string>

#include "programs/profiler/look.h"
#include "programs/profiler/point_plot.h"
#include "programs/profiler/times.h"
#include "programs/profiler/walk.h"
#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/gks/session.h"
#include "tyr/names/name_conv.h"
#include "tyr/names/sequence.h"
#include "tyr/plot/labels.h"
#include "tyr/plot/tick.h"
#include "tyr/var/expression.h"
#include "tyr/var/label.h"
#include "tyr/var/level.h"

namespace {

using tyr::Styles;

constexpr int kMostTicks = 14;         ///< of the times of files below a section
constexpr float kTopHeight = 17000.0F; ///< of the evaluation, whatever the picture shows

void plot_column(const ProfilerRecord &record, float x, float height_step, const Styles &styles)
{
    if (VAR_count() == 0) {
        return;
    }
    for (int i = 0;; ++i) {
        const float z = static_cast<float>(i) * height_step;
        if (z >= kTopHeight) {
            return;
        }
        VarRec local = *VAR_get_list();
        local.level_kind = kLevelHeightAg;
        local.level_value = static_cast<int>(z);
        tyr::plot_point(record, &local, styles, x, z, kSection);
    }
}

/// Writes the hour (and minute, for files closer than an hour) below a column.
void plot_tick(const DateRec &date, float x, const AttrRec &line)
{
    if (date.hour == kMissingInt) {
        return; // neither name nor file tell it
    }
    const std::string hour = STR_print("%2.2d", date.hour);
    const bool hourly = !tyr::wants_all_times() && FILE_get_step() >= kSecondsPerHour;
    PLT_x_tick(x, (hourly ? hour : hour + STR_print("%2.2d", std::max(date.minute, 0))).c_str(),
               &line);
}

/// What the columns of a section are drawn with, and the last report that was.
struct SectionPen {
    std::string station;
    AttrRec line;
    const Styles &styles;
    DriverSetup *setup;
    ProfilerRecord found = {};
};

/// Draws every time of a file as a column, from `x` on, with ticks at whole multiples of so many
/// columns. @return columns drawn
int plot_times(const char *name, float x, int tick_step, SectionPen *pen)
{
    MSG_out(kMsgMess, "Searching file for %s in: %s\n", pen->station.c_str(), name);
    const std::vector<tyr::TimedReport> found = tyr::find_times(name, pen->station.c_str());
    if (found.empty()) {
        MSG_out(kMsgWarn, "%s not found\n", pen->station.c_str());
    }
    for (const tyr::TimedReport &report : found) {
        pen->setup->date = report.date;
        plot_column(report.record, x, pen->setup->height_step, pen->styles);
        if (static_cast<int>(x) % tick_step == 0) {
            plot_tick(report.date, x, pen->line);
        }
        pen->found = report.record;
        x += 1.0F;
    }
    return static_cast<int>(found.size());
}

/// Draws a file's column. @return 1, or 0 where the station isn't in it
int plot_file(const char *name, float x, SectionPen *pen)
{
    DateRec &date = pen->setup->date;
    FILE_get_date(&date);
    MSG_out(kMsgMess, "Searching file for %s in: %s\n", pen->station.c_str(), name);
    ProfilerRecord record;
    if (PRF_find_station(name, pen->station.c_str(), &record) == 0) {
        MSG_out(kMsgWarn, "%s not found\n", pen->station.c_str());
        return 0;
    }
    if (date.hour == kMissingInt) {
        date = PRF_file_info().date; // the name tells no hour
    }
    plot_column(record, x, pen->setup->height_step, pen->styles);
    plot_tick(date, x, pen->line);
    pen->found = record;
    return 1;
}

} // namespace

int tyr::plot_section(DriverSetup *setup)
{
    const Styles styles = setup_values();
    const std::string station = setup->stations.empty() ? "" : setup->stations.front();
    std::array<char, kVarLabelSize> label = {};
    VAR_make_label(0, label.data());
    PLT_label_ul(("ID: " + station + " - " + label.data()).c_str());
    SectionPen pen = {.station = station, .line = {}, .styles = styles, .setup = setup};
    ATTR_init(&pen.line);
    ATTR_from_resource("color_line", "red", &pen.line);
    GPH_sel_tran(2);
    begin_points();
    FILE_seq_init(&setup->date);
    std::array<char, kFileNameRoom> name = {};
    int drawn = 0;
    const int tick_step = setup->columns / kMostTicks + 1;
    for (float x = 0.0F; FILE_next(name.data()) == 1;) {
        const int columns = setup->columns > 0 ? plot_times(name.data(), x, tick_step, &pen)
                                               : plot_file(name.data(), x, &pen);
        drawn += columns;
        x += setup->columns > 0 ? static_cast<float>(columns) : 1.0F;
    }
    label_date(setup->date);
    if (drawn > 0) {
        look_at_station(pen.found);
    }
    return drawn;
}

int tyr::count_columns(const std::string &station, DateRec date)
{
    FILE_seq_init(&date);
    std::array<char, kFileNameRoom> name = {};
    size_t columns = 0;
    while (FILE_next(name.data()) == 1) {
        columns += find_times(name.data(), station.c_str()).size();
    }
    return static_cast<int>(columns);
}
