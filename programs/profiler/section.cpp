#include "programs/profiler/section.h"

#include <algorithm>
#include <array>
#include <string>

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

/// Draws every time of a file as a column, from `x` on, with ticks at whole multiples of so many
/// columns. @return columns drawn
int plot_times(const char *name, const std::string &station, float x, int tick_step,
               const AttrRec &line, const Styles &styles, DriverSetup *setup)
{
    MSG_out(kMsgMess, "Searching file for %s in: %s\n", station.c_str(), name);
    const std::vector<tyr::TimedReport> found = tyr::find_times(name, station.c_str());
    if (found.empty()) {
        MSG_out(kMsgWarn, "%s not found\n", station.c_str());
    }
    for (const tyr::TimedReport &report : found) {
        setup->date = report.date;
        plot_column(report.record, x, setup->height_step, styles);
        if (static_cast<int>(x) % tick_step == 0) {
            plot_tick(report.date, x, line);
        }
        x += 1.0F;
    }
    return static_cast<int>(found.size());
}

/// Draws a file's column. @return 1, or 0 where the station isn't in it
int plot_file(const char *name, const std::string &station, float x, const AttrRec &line,
              const Styles &styles, DriverSetup *setup)
{
    FILE_get_date(&setup->date);
    MSG_out(kMsgMess, "Searching file for %s in: %s\n", station.c_str(), name);
    ProfilerRecord record;
    if (PRF_find_station(name, station.c_str(), &record) == 0) {
        MSG_out(kMsgWarn, "%s not found\n", station.c_str());
        return 0;
    }
    if (setup->date.hour == kMissingInt) {
        setup->date = PRF_file_info().date; // the name tells no hour
    }
    plot_column(record, x, setup->height_step, styles);
    plot_tick(setup->date, x, line);
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
    AttrRec line;
    ATTR_init(&line);
    ATTR_from_resource("color_line", "red", &line);
    GPH_sel_tran(2);
    begin_points();
    FILE_seq_init(&setup->date);
    std::array<char, kFileNameRoom> name = {};
    int drawn = 0;
    const int tick_step = setup->columns / kMostTicks + 1;
    for (float x = 0.0F; FILE_next(name.data()) == 1;) {
        const int columns =
            setup->columns > 0 ? plot_times(name.data(), station, x, tick_step, line, styles, setup)
                               : plot_file(name.data(), station, x, line, styles, setup);
        drawn += columns;
        x += setup->columns > 0 ? static_cast<float>(columns) : 1.0F;
    }
    label_date(setup->date);
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
