#include "support/netcdf_file.h"

#include <array>
#include <cstring>
#include <stdexcept>

#include <netcdf.h>

namespace {

void check(int status)
{
    if (status != NC_NOERR) {
        throw std::runtime_error(nc_strerror(status));
    }
}

/// Definitions of a file.
struct File {
    int id = -1;

    explicit File(const std::string &path) { check(nc_create(path.c_str(), NC_CLOBBER, &id)); }
    ~File() { nc_close(id); }
    File(const File &) = delete;
    File &operator=(const File &) = delete;

    int dim(const char *name, size_t length) const
    {
        int d = -1;
        check(nc_def_dim(id, name, length, &d));
        return d;
    }
    int var(const std::string &name, nc_type type, std::vector<int> dims) const
    {
        int v = -1;
        check(nc_def_var(id, name.c_str(), type, static_cast<int>(dims.size()), dims.data(), &v));
        return v;
    }
    void put(int var, size_t record, float value) const
    {
        check(nc_put_var1_float(id, var, &record, &value));
    }
    void row(int var, size_t record, const std::vector<float> &values) const
    {
        const std::array<size_t, 2> start = {record, 0};
        const std::array<size_t, 2> count = {1, values.size()};
        check(nc_put_vara_float(id, var, start.data(), count.data(), values.data()));
    }
    void text(int var, size_t record, std::string text, size_t length) const
    {
        text.resize(length, ' ');
        const std::array<size_t, 2> start = {record, 0};
        const std::array<size_t, 2> count = {1, length};
        check(nc_put_vara_text(id, var, start.data(), count.data(), text.data()));
    }
};

std::vector<float> filled(const std::vector<float> &given, int n, float value)
{
    return given.empty() ? std::vector<float>(static_cast<size_t>(n), value) : given;
}

} // namespace

void write_recnum_file(const std::string &path, const NetcdfSample &spec)
{
    const File f(path);
    const int rec = f.dim("recNum", NC_UNLIMITED);
    const int level = f.dim("level", static_cast<size_t>(spec.levels));
    const int length = f.dim("staNamLen", 6);
    const int name = f.var("staName", NC_CHAR, {rec, length});
    const int lat = f.var("staLat", NC_FLOAT, {rec});
    const int lon = f.var("staLon", NC_FLOAT, {rec});
    const int elev = f.var("staElev", NC_FLOAT, {rec});
    const int time = f.var("timeObs", NC_DOUBLE, {rec});
    const int temperature = f.var("temperature", NC_FLOAT, {rec});
    const int direction = f.var("windDirSfc", NC_FLOAT, {rec});
    const int speed = f.var("windSpeedSfc", NC_FLOAT, {rec});
    const int levels = f.var("levels", NC_FLOAT, {level});
    const nc_type u_type = spec.text_u ? NC_CHAR : spec.double_u ? NC_DOUBLE : NC_FLOAT;
    const int u = f.var("uComponent", u_type, {rec, level});
    const int v = spec.no_v ? -1 : f.var("vComponent", NC_FLOAT, {rec, level});
    check(nc_put_att_text(f.id, temperature, "units", 6, "kelvin"));
    check(nc_enddef(f.id));
    std::vector<float> heights = spec.heights;
    for (int i = 0; heights.size() < static_cast<size_t>(spec.levels); ++i) {
        heights.push_back(500.0F + 250.0F * static_cast<float>(i));
    }
    check(nc_put_var_float(f.id, levels, heights.data()));
    for (size_t r = 0; r < spec.names.size(); ++r) {
        f.text(name, r, spec.names[r], 6);
        f.put(lat, r, 40.0F);
        f.put(lon, r, spec.lon);
        f.put(elev, r, 300.5F);
        f.put(time, r, 1258642800.0F);
        const double seconds = 1258642800.0;
        check(nc_put_var1_double(f.id, time, &r, &seconds));
        f.put(temperature, r, spec.temperature);
        f.put(direction, r, 180.0F);
        f.put(speed, r, 4.0F);
        if (!spec.text_u) {
            f.row(u, r, filled(spec.u, spec.levels, 10.0F));
        }
        if (!spec.no_v) {
            f.row(v, r, filled(spec.v, spec.levels, 5.0F));
        }
    }
}

void write_station_file(const std::string &path, float lon, int quality, float low_u, float high_u)
{
    constexpr int kLevels = 36;
    const File f(path);
    const int station = f.dim("station", NC_UNLIMITED);
    const int high = f.dim("high_level", kLevels);
    const int low = f.dim("low_level", kLevels);
    const int length = f.dim("string_len", 11);
    const int id = f.var("id", NC_CHAR, {station, length});
    const int lat = f.var("lat", NC_FLOAT, {station});
    const int lon_var = f.var("lon", NC_FLOAT, {station});
    const int elev = f.var("elev", NC_INT, {station});
    std::array<int, 4> date;
    constexpr std::array<const char *, 4> kDate = {"year", "month", "day", "hour"};
    for (size_t i = 0; i < date.size(); ++i) {
        date[i] = f.var(kDate[i], NC_INT, {});
    }
    struct Mode {
        std::string name;
        int dim;
        float bottom, u;
        int level, u_var, v_var, quality;
    };
    std::array<Mode, 2> modes = {
        {{"low", low, 500.0F, low_u, 0, 0, 0, 0}, {"high", high, 7500.0F, high_u, 0, 0, 0, 0}}};
    for (Mode &m : modes) {
        m.level = f.var(m.name + "_level", NC_FLOAT, {m.dim});
        m.u_var = f.var(m.name + "_u_wind", NC_FLOAT, {station, m.dim});
        m.v_var = f.var(m.name + "_v_wind", NC_FLOAT, {station, m.dim});
        m.quality = f.var(m.name + "_qual_indicator", NC_BYTE, {station, m.dim});
    }
    check(nc_enddef(f.id));
    constexpr std::array<int, 4> kWhen = {1999, 10, 30, 3};
    for (size_t i = 0; i < date.size(); ++i) {
        check(nc_put_var_int(f.id, date[i], &kWhen[i]));
    }
    f.text(id, 0, "PLTC2", 11);
    f.put(lat, 0, 40.18F);
    f.put(lon_var, 0, lon);
    f.put(elev, 0, 1524.0F);
    for (const Mode &m : modes) {
        std::vector<float> heights;
        for (int i = 0; i < kLevels; ++i) {
            heights.push_back(m.bottom + 250.0F * static_cast<float>(i));
        }
        check(nc_put_var_float(f.id, m.level, heights.data()));
        f.row(m.u_var, 0, std::vector<float>(kLevels, m.u));
        f.row(m.v_var, 0, std::vector<float>(kLevels, 1.0F));
        f.row(m.quality, 0, std::vector<float>(kLevels, static_cast<float>(quality)));
    }
}
