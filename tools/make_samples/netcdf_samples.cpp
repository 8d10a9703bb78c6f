#include "tools/make_samples/netcdf_samples.h"

#include <array>
#include <cstring>
#include <ctime>
#include <stdexcept>
#include <vector>

#include <netcdf.h>

#include "tools/make_samples/weather.h"

namespace {

constexpr float kFill = 1e38F;

void check(int status, const char *what)
{
    if (status != NC_NOERR) {
        throw std::runtime_error(std::string(what) + ": " + nc_strerror(status));
    }
}

/// A netCDF file in the making.
class Writer {
  public:
    explicit Writer(const std::string &path)
    {
        check(nc_create(path.c_str(), NC_CLOBBER, &id_), "create");
    }
    ~Writer() { nc_close(id_); }
    Writer(const Writer &) = delete;
    Writer &operator=(const Writer &) = delete;

    int dimension(const char *name, size_t length)
    {
        int dim = -1;
        check(nc_def_dim(id_, name, length, &dim), name);
        return dim;
    }
    int variable(const char *name, nc_type type, const std::vector<int> &dims,
                 const char *units = nullptr)
    {
        int var = -1;
        check(nc_def_var(id_, name, type, static_cast<int>(dims.size()), dims.data(), &var), name);
        if (units) {
            check(nc_put_att_text(id_, var, "units", std::strlen(units), units), name);
        }
        if (fill_ && type == NC_FLOAT) {
            check(nc_put_att_float(id_, var, "_FillValue", NC_FLOAT, 1, &kFill), name);
        }
        return var;
    }
    void mark_missing() { fill_ = true; }
    void end_definitions() { check(nc_enddef(id_), "definitions"); }
    void put(int var, size_t record, float value)
    {
        check(nc_put_var1_float(id_, var, &record, &value), "value");
    }
    void put_double(int var, size_t record, double value)
    {
        check(nc_put_var1_double(id_, var, &record, &value), "value");
    }
    void put_scalar(int var, int value) { check(nc_put_var_int(id_, var, &value), "value"); }
    void put_all(int var, const float *values)
    {
        check(nc_put_var_float(id_, var, values), "values");
    }
    void put_row(int var, size_t record, const std::vector<float> &row)
    {
        const size_t start[] = {record, 0};
        const size_t count[] = {1, row.size()};
        check(nc_put_vara_float(id_, var, start, count, row.data()), "row");
    }
    void put_text(int var, size_t record, const std::string &text)
    {
        const size_t start[] = {record, 0};
        const size_t count[] = {1, text.size()};
        check(nc_put_vara_text(id_, var, start, count, text.data()), "text");
    }

  private:
    int id_ = -1;
    bool fill_ = false;
};

std::string padded(std::string text, size_t length, char with)
{
    text.resize(length, with);
    return text;
}

struct Row {
    std::vector<float> u, v, w, quality, hdev, vdev;
};

Row make_row(const SampleSite &site, double hour, int bottom, int levels, float good, float bad,
             float missing)
{
    Row row;
    for (int i = 0; i < levels; ++i) {
        const auto wind = sample_wind(site, hour, bottom + kGate * i);
        row.u.push_back(wind ? wind->u : missing);
        row.v.push_back(wind ? wind->v : missing);
        row.w.push_back(wind ? wind->w : missing);
        row.quality.push_back(wind ? good : bad);
        row.hdev.push_back(wind ? 0.7F : missing);
        row.vdev.push_back(wind ? 0.2F : missing);
    }
    return row;
}

Row joined(const Row &a, const Row &b)
{
    Row all = a;
    const auto append = [](std::vector<float> &to, const std::vector<float> &from) {
        to.insert(to.end(), from.begin(), from.end());
    };
    append(all.u, b.u);
    append(all.v, b.v);
    append(all.w, b.w);
    append(all.quality, b.quality);
    append(all.hdev, b.hdev);
    append(all.vdev, b.vdev);
    return all;
}

} // namespace

void write_recnum(const std::string &path, long seconds, int hour)
{
    Writer nc(path);
    nc.mark_missing();
    const int rec = nc.dimension("recNum", NC_UNLIMITED);
    const int level = nc.dimension("level", 2 * kModeLevels);
    const int length = nc.dimension("staNamLen", 6);
    const int name = nc.variable("staName", NC_CHAR, {rec, length});
    const int lat = nc.variable("staLat", NC_FLOAT, {rec}, "degree_N");
    const int lon = nc.variable("staLon", NC_FLOAT, {rec}, "degree_E");
    const int elev = nc.variable("staElev", NC_FLOAT, {rec}, "meter");
    const int time = nc.variable("timeObs", NC_DOUBLE, {rec}, "seconds since 1970-1-1 00:00:00.0");
    const int pressure = nc.variable("pressure", NC_FLOAT, {rec}, "hectopascal");
    const int temperature = nc.variable("temperature", NC_FLOAT, {rec}, "kelvin");
    const int humidity = nc.variable("relHumidity", NC_FLOAT, {rec}, "percent");
    const int speed = nc.variable("windSpeedSfc", NC_FLOAT, {rec}, "meter/sec");
    const int direction = nc.variable("windDirSfc", NC_FLOAT, {rec}, "degree");
    const int rain = nc.variable("rainRate", NC_FLOAT, {rec}, "kg/meter2/sec");
    const int levels = nc.variable("levels", NC_FLOAT, {level}, "meter");
    const int u = nc.variable("uComponent", NC_FLOAT, {rec, level}, "meter/sec");
    const int v = nc.variable("vComponent", NC_FLOAT, {rec, level}, "meter/sec");
    const int w = nc.variable("wComponent", NC_FLOAT, {rec, level}, "meter/sec");
    const int quality = nc.variable("uvQualityCode", NC_BYTE, {rec, level});
    const int hdev = nc.variable("windSpeedStdDev", NC_FLOAT, {rec, level}, "meter/sec");
    const int vdev = nc.variable("wStdDev", NC_FLOAT, {rec, level}, "meter/sec");
    nc.end_definitions();
    std::vector<float> heights(2 * kModeLevels);
    for (int i = 0; i < kModeLevels; ++i) {
        heights[static_cast<size_t>(i)] = static_cast<float>(kLowBottom + kGate * i);
        heights[static_cast<size_t>(i + kModeLevels)] = static_cast<float>(kHighBottom + kGate * i);
    }
    nc.put_all(levels, heights.data());
    size_t record = 0;
    for (const SampleSite &site : sample_reports(hour)) {
        const SampleSurface s = sample_surface(site, hour);
        const Row row = joined(make_row(site, hour, kLowBottom, kModeLevels, 0.0F, -1.0F, kFill),
                               make_row(site, hour, kHighBottom, kModeLevels, 0.0F, -1.0F, kFill));
        nc.put_text(name, record, padded(site.id, 6, ' '));
        nc.put(lat, record, site.lat);
        nc.put(lon, record, site.lon);
        nc.put(elev, record, site.elev);
        nc.put_double(time, record, static_cast<double>(seconds));
        nc.put(pressure, record, s.pressure);
        nc.put(temperature, record, s.temperature + 273.15F);
        nc.put(humidity, record, 100.0F - 5.0F * (s.temperature - s.dew_point));
        nc.put(speed, record, s.speed);
        nc.put(direction, record, s.direction);
        nc.put(rain, record, kFill);
        nc.put_row(u, record, row.u);
        nc.put_row(v, record, row.v);
        nc.put_row(w, record, row.w);
        nc.put_row(quality, record, row.quality);
        nc.put_row(hdev, record, row.hdev);
        nc.put_row(vdev, record, row.vdev);
        ++record;
    }
}

namespace {

/// The variables of one mode in the layout with the dimension station.
struct ModeVariables {
    int levels, u, v, w, quality, hdev, north, vdev;
};

ModeVariables define_mode(Writer &nc, const std::string &mode, int station, int level)
{
    const auto row = [&](const char *name, nc_type type) {
        return nc.variable((mode + name).c_str(), type, {station, level});
    };
    ModeVariables m;
    m.levels = nc.variable((mode + "_level").c_str(), NC_FLOAT, {level}, "meters");
    m.u = row("_u_wind", NC_FLOAT);
    m.v = row("_v_wind", NC_FLOAT);
    m.w = row("_w_wind", NC_FLOAT);
    m.quality = row("_qual_indicator", NC_BYTE);
    m.hdev = row("_moment2_e", NC_FLOAT);
    m.north = row("_moment2_n", NC_FLOAT);
    m.vdev = row("_moment2_v", NC_FLOAT);
    return m;
}

void put_mode(Writer &nc, const ModeVariables &m, size_t record, const Row &row)
{
    nc.put_row(m.u, record, row.u);
    nc.put_row(m.v, record, row.v);
    nc.put_row(m.w, record, row.w);
    nc.put_row(m.quality, record, row.quality);
    nc.put_row(m.hdev, record, row.hdev);
    nc.put_row(m.north, record, row.hdev);
    nc.put_row(m.vdev, record, row.vdev);
}

} // namespace

void write_station(const std::string &path, long seconds, int hour)
{
    const time_t stamp = seconds;
    const tm *date = gmtime(&stamp);
    Writer nc(path);
    const int station = nc.dimension("station", NC_UNLIMITED);
    const int high_level = nc.dimension("high_level", kModeLevels);
    const int low_level = nc.dimension("low_level", kModeLevels);
    const int length = nc.dimension("string_len", 11);
    const int name = nc.variable("id", NC_CHAR, {station, length});
    const int region = nc.variable("region", NC_CHAR, {station, length});
    const int lat = nc.variable("lat", NC_FLOAT, {station}, "degrees");
    const int lon = nc.variable("lon", NC_FLOAT, {station}, "degrees");
    const int elev = nc.variable("elev", NC_INT, {station}, "meters");
    const int pressure = nc.variable("sfc_p", NC_FLOAT, {station}, "hPa");
    const int temperature = nc.variable("sfc_t", NC_FLOAT, {station}, "degC");
    const int dew_point = nc.variable("sfc_td", NC_FLOAT, {station}, "degC");
    const int speed = nc.variable("sfc_spd", NC_FLOAT, {station}, "m/s");
    const int direction = nc.variable("sfc_dir", NC_FLOAT, {station}, "degrees");
    const int rain = nc.variable("sfc_rain", NC_FLOAT, {station}, "mm");
    const int year = nc.variable("year", NC_INT, {});
    const int month = nc.variable("month", NC_INT, {});
    const int day = nc.variable("day", NC_INT, {});
    const int hours = nc.variable("hour", NC_INT, {});
    const int minute = nc.variable("minute", NC_INT, {});
    const ModeVariables low = define_mode(nc, "low", station, low_level);
    const ModeVariables high = define_mode(nc, "high", station, high_level);
    nc.end_definitions();
    nc.put_scalar(year, date->tm_year + 1900);
    nc.put_scalar(month, date->tm_mon + 1);
    nc.put_scalar(day, date->tm_mday);
    nc.put_scalar(hours, date->tm_hour);
    nc.put_scalar(minute, date->tm_min);
    std::vector<float> low_heights(kModeLevels);
    std::vector<float> high_heights(kModeLevels);
    for (int i = 0; i < kModeLevels; ++i) {
        low_heights[static_cast<size_t>(i)] = static_cast<float>(kLowBottom + kGate * i);
        high_heights[static_cast<size_t>(i)] = static_cast<float>(kHighBottom + kGate * i);
    }
    nc.put_all(low.levels, low_heights.data());
    nc.put_all(high.levels, high_heights.data());
    size_t record = 0;
    for (const SampleSite &site : sample_reports(hour)) {
        const SampleSurface s = sample_surface(site, hour);
        nc.put_text(name, record, padded(site.id, 11, '\0'));
        nc.put_text(region, record, padded("US", 11, '\0'));
        nc.put(lat, record, site.lat);
        nc.put(lon, record, -site.lon);
        nc.put(elev, record, site.elev);
        nc.put(pressure, record, s.pressure);
        nc.put(temperature, record, s.temperature);
        nc.put(dew_point, record, s.dew_point);
        nc.put(speed, record, s.speed);
        nc.put(direction, record, s.direction);
        nc.put(rain, record, kFill);
        put_mode(nc, low, record,
                 make_row(site, hour, kLowBottom, kModeLevels, 10.0F, 3.0F, kFill));
        put_mode(nc, high, record,
                 make_row(site, hour, kHighBottom, kModeLevels, 10.0F, 3.0F, kFill));
        ++record;
    }
}
