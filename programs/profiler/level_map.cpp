#include "programs/profiler/level_map.h"

#include <array>
#include <string>

#include "programs/profiler/point_plot.h"
#include "programs/profiler/walk.h"
#include "tyr/base/file.h"
#include "tyr/gks/session.h"
#include "tyr/names/name_conv.h"
#include "tyr/plot/labels.h"
#include "tyr/var/expression.h"
#include "tyr/var/label.h"

int tyr::plot_level_map(const DriverSetup &setup)
{
    const Styles styles = setup_values();
    std::array<char, kFileNameRoom> composed = {};
    FILE_compose(&setup.date, composed.data());
    // a file that was given by its name is drawn as given, whatever a convention makes of its date
    const char *name = setup.file.empty() ? composed.data() : setup.file.c_str();
    if (PRF_open_file(name) == 0) {
        return -1;
    }
    begin_points();
    GPH_sel_tran(2);
    ProfilerRecord record;
    int stations = 0;
    for (; PRF_next_station(&record) != -1; ++stations) {
        if (VAR_count() > 0) {
            plot_point(record, VAR_get_list(), styles, record.lat, record.lon, kLevelMap);
        }
    }
    PRF_close_file();
    std::array<char, kVarLabelSize> label = {};
    VAR_make_label(0, label.data());
    PLT_label_ul(label.data());
    label_date(setup.date);
    return stations;
}
