#include "tyr/plot/value_file.h"

#include <algorithm>
#include <string>

#include "tyr/base/missing.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/plot/style.h"
#include "tyr/plot/tick.h"
#include "tyr/plot/value.h"
#include "tyr/raw/raw.h"
#include "tyr/start/convert.h"

using namespace tyr;

namespace {

struct State {
    float low = kMissing, high = kMissing; ///< of the values seen
};

State state;

/// A file that is plotted.
struct Series {
    int handle = -1;
    int column = kRawAllWords;
    std::string format; ///< that the path names
    AttrRec line;       ///< of the labels below a section
    int counter = 0;    ///< records seen
};

void parse_into_base(const char *format)
{
    PlotStyle &style = PLT_base_style();
    if (const int type = PLT_parse_format(&style, format); type != 0) {
        style.type = type;
    }
}

void note_range(const RawValue &raw)
{
    const float value = is_missing(raw.value2) ? raw.value1 : raw.value2;
    if (!is_missing(value)) {
        state.low = is_missing(state.low) ? value : std::min(state.low, value);
        state.high = is_missing(state.high) ? value : std::max(state.high, value);
    }
}

/// Place of a record in plot coordinates. @return false if it has none
bool find_place(const RawValue &raw, int counter, float *x, float *y)
{
    if (!is_missing(raw.x) && !is_missing(raw.y)) {
        *x = raw.x;
        *y = raw.y;
        return true;
    }
    float first = raw.lat;
    float second = raw.lon;
    if (DOM_get_proj() == kProjTimeHeight) {
        first = static_cast<float>(counter);
        second = raw.value1;
    } else if (DOM_get_proj() == kProjXLogP) {
        first = raw.value1;
        second = raw.lat;
    }
    return !is_missing(first) && !is_missing(second) && MAP_ll_to_xy(x, y, first, second) == 1;
}

void plot_record(const Series &series, const RawValue &raw)
{
    PlotValue value;
    PLT_init_value(&value);
    if (!find_place(raw, series.counter, &value.x, &value.y)) {
        return;
    }
    value.type = PLT_base_style().type;
    STR_copy(value.text, sizeof value.text, raw.text);
    STR_replace_char(value.text, '_', ' ');
    std::string format = raw.format;
    if (!series.format.empty()) {
        format += ":" + series.format;
    }
    STR_copy(value.format, sizeof value.format, format);
    value.value1 = raw.value1;
    value.value2 = raw.value2;
    note_range(raw);
    PLT_plot_value(&value);
}

/// Plots the records; a line is one, with however many values.
void plot_records(Series &series)
{
    const int skip = PLT_base_style().skip;
    bool begins_line = true;
    RawValue raw;
    for (int result;
         (result = RAW_read_value(series.handle, &raw, series.column, nullptr)) != -1;) {
        const bool is_wanted = skip <= 1 || series.counter % skip == 0;
        if (begins_line && is_wanted && DOM_get_proj() == kProjTimeHeight) {
            PLT_x_tick(static_cast<float>(series.counter), raw.id, &series.line);
        }
        if (result == 1 && is_wanted) {
            plot_record(series, raw);
        }
        begins_line = result == 0 || series.column != kRawAllWords;
        series.counter += begins_line ? 1 : 0;
    }
}

} // namespace

int PLT_plot_file(const char *path, [[maybe_unused]] int labelled)
{
    state = {};
    std::string name = path;
    char *format = nullptr;
    Series series;
    series.handle = RAW_file_open(name.data(), &series.column, &format, kRawRead);
    if (series.handle == -1) {
        return -1;
    }
    series.format = format ? format : "";
    PLT_clear_points();
    AttrRec attr;
    ATTR_init(&attr);
    ATTR_from_resource("color_data", "green", &attr);
    ATTR_init(&series.line);
    ATTR_from_resource("color_line", "magenta", &series.line);
    float scale = 1.0F;
    RES_get_value("plot_scale", &scale, kResReal);
    if (PLT_setup_values(&attr, scale) != 0) {
        RAW_close(series.handle);
        return -1;
    }
    RawHeader header;
    RAW_read_header(series.handle, &header);
    parse_into_base(header.format);
    const char *wish = RES_get("plot_format");
    parse_into_base(wish ? wish : "");
    parse_into_base(series.format.c_str());
    plot_records(series);
    RAW_close(series.handle);
    return 0;
}

void PLT_file_range(float *low, float *high)
{
    *low = state.low;
    *high = state.high;
}
