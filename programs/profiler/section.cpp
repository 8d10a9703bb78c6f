#include "programs/profiler/section.h"

#include <algorithm>
#include <array>
#include <string>

#include "programs/profiler/look.h"
#include "programs/profiler/point_plot.h"
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
    const bool hourly = FILE_get_step() >= kSecondsPerHour;
    PLT_x_tick(x, (hourly ? hour : hour + STR_print("%2.2d", std::max(date.minute, 0))).c_str(),
               &line);
}

/// Draws a file's column. @return whether the station is in it
bool plot_file(const char *name, const std::string &station, float x, const AttrRec &line,
               const Styles &styles, DriverSetup *setup, ProfilerRecord *found)
{
    FILE_get_date(&setup->date);
    MSG_out(kMsgMess, "Searching file for %s in: %s\n", station.c_str(), name);
    ProfilerRecord record;
    if (PRF_find_station(name, station.c_str(), &record) == 0) {
        MSG_out(kMsgWarn, "%s not found\n", station.c_str());
        return false;
    }
    if (setup->date.hour == kMissingInt) {
        setup->date = PRF_file_info().date; // the name tells no hour
    }
    plot_column(record, x, setup->height_step, styles);
    plot_tick(setup->date, x, line);
    *found = record;
    return true;
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
    ProfilerRecord found;
    for (float x = 0.0F; FILE_next(name.data()) == 1; x += 1.0F) {
        drawn += plot_file(name.data(), station, x, line, styles, setup, &found) ? 1 : 0;
    }
    label_date(setup->date);
    if (drawn > 0) {
        look_at_station(found);
    }
    return drawn;
}
