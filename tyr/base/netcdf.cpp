#include "tyr/base/netcdf.h"

#include <algorithm>
#include <array>
#include <string>

#include <netcdf.h>
#include <netcdf_mem.h>

#include "tyr/base/missing.h"
#include "tyr/base/str.h"

namespace {

constexpr int kMaxRank = 8;
constexpr int kNotOpen = -1;
constexpr int kLongestAttribute = 4096;

struct State {
    int file = kNotOpen;
    std::array<size_t, kMaxRank> start = {};
    std::array<size_t, kMaxRank> count = {};
    int rank = 0;
};

State state;

bool readable(int var)
{
    return state.file != kNotOpen && var != -1;
}

/// A getter may be called with one index more than the variable has dimensions (a scalar with an
/// index), never with fewer: the library would read past the arrays.
bool rank_fits(int var, int rank)
{
    int dimensions = 0;
    return nc_inq_varndims(state.file, var, &dimensions) == NC_NOERR && dimensions <= rank;
}

bool can_get(int var)
{
    return readable(var) && rank_fits(var, state.rank);
}

/// A value too large for the type asked for comes out as that type's largest: for the reader that
/// is one more huge value, and the others of an array are good.
bool was_read(int status)
{
    return status == NC_NOERR || status == NC_ERANGE;
}

} // namespace

void CDF_set_quiet(int flag)
{
    ncopts = flag == 1 ? NC_VERBOSE : 0;
}

int CDF_open(const char *name, int mode)
{
    state.file = mode == 0 ? ncopen(name, NC_NOWRITE) : nccreate(name, NC_CLOBBER);
    return state.file;
}

int CDF_open_memory(std::string_view bytes)
{
    // the library doesn't write to what it opens read-only; the name is for its messages
    void *memory = const_cast<char *>(bytes.data());
    if (nc_open_mem("profiler", NC_NOWRITE, bytes.size(), memory, &state.file) != NC_NOERR) {
        state.file = kNotOpen;
    }
    return state.file;
}

std::string CDF_variable_names(int most)
{
    int count = 0;
    if (state.file == kNotOpen || nc_inq_nvars(state.file, &count) != NC_NOERR) {
        return "";
    }
    std::string names;
    for (int var = 0; var < std::min(count, most); ++var) {
        std::array<char, NC_MAX_NAME + 1> name = {};
        if (nc_inq_varname(state.file, var, name.data()) == NC_NOERR) {
            names += (names.empty() ? "" : ", ") + std::string(name.data());
        }
    }
    return names + (count > most ? ", ..." : "");
}

void CDF_set_current(int id)
{
    state.file = id;
}

void CDF_close()
{
    if (state.file != kNotOpen) {
        ncclose(state.file);
        state.file = kNotOpen;
    }
}

int CDF_dim_id(const char *name)
{
    return state.file == kNotOpen ? -1 : ncdimid(state.file, name);
}

int CDF_var_id(const char *name)
{
    return state.file == kNotOpen ? -1 : ncvarid(state.file, name);
}

int CDF_is_number(int var)
{
    nc_type type = NC_CHAR;
    return readable(var) && nc_inq_vartype(state.file, var, &type) == NC_NOERR && type != NC_CHAR;
}

int64_t CDF_record_count(int dimension)
{
    if (state.file == kNotOpen) {
        return 0;
    }
    if (dimension == -1) {
        int dims = 0;
        int vars = 0;
        int attributes = 0;
        if (ncinquire(state.file, &dims, &vars, &attributes, &dimension) == -1 || dimension == -1) {
            return 0;
        }
    }
    size_t size = 0; // the name isn't asked for: a damaged file's may be longer than any room
    return nc_inq_dimlen(state.file, dimension, &size) == NC_NOERR ? static_cast<int64_t>(size) : 0;
}

void CDF_set_index(std::initializer_list<long> start)
{
    state.rank = 0;
    for (const long s : start) {
        if (state.rank < kMaxRank) {
            state.start[state.rank] = static_cast<size_t>(std::max(s, 0L));
            state.count[state.rank++] = 1;
        }
    }
}

void CDF_set_range(std::initializer_list<long> pairs)
{
    state.rank = 0;
    for (const long *p = pairs.begin(); p + 1 < pairs.end() && state.rank < kMaxRank; p += 2) {
        state.start[state.rank] = static_cast<size_t>(std::max(p[0], 0L));
        state.count[state.rank++] = static_cast<size_t>(std::max(p[1], 0L));
    }
}

int CDF_get_text(int var, int length, char *buffer)
{
    if (!readable(var) || length < 0 || state.rank >= kMaxRank || !rank_fits(var, state.rank + 1)) {
        return 0;
    }
    std::array<size_t, kMaxRank> start = state.start;
    std::array<size_t, kMaxRank> count = state.count;
    start[state.rank] = 0;
    count[state.rank] = static_cast<size_t>(length);
    std::string text(static_cast<size_t>(length), '\0');
    if (nc_get_vara_text(state.file, var, start.data(), count.data(), text.data()) != NC_NOERR) {
        return 0;
    }
    std::copy(text.begin(), text.end(), buffer);
    buffer[length] = '\0';
    return 1;
}

float CDF_get_float(int var)
{
    float value = kMissing;
    return can_get(var) && was_read(nc_get_var1_float(state.file, var, state.start.data(), &value))
               ? value
               : kMissing;
}

double CDF_get_double(int var)
{
    double value = kMissing;
    return can_get(var) &&
                   nc_get_var1_double(state.file, var, state.start.data(), &value) == NC_NOERR
               ? value
               : static_cast<double>(kMissing);
}

long CDF_get_long(int var)
{
    long value = kMissingInt;
    return can_get(var) && nc_get_var1_long(state.file, var, state.start.data(), &value) == NC_NOERR
               ? value
               : kMissingInt;
}

signed char CDF_get_byte(int var)
{
    signed char value = -1;
    if (can_get(var) &&
        nc_get_var1_schar(state.file, var, state.start.data(), &value) == NC_NOERR) {
        return value;
    }
    return -1;
}

int CDF_get_float_array(int var, float *out)
{
    return can_get(var) && was_read(nc_get_vara_float(state.file, var, state.start.data(),
                                                      state.count.data(), out))
               ? 0
               : -1;
}

int CDF_get_attribute(int var, const char *name, double *value)
{
    size_t length = 0;
    if (!readable(var) || nc_inq_attlen(state.file, var, name, &length) != NC_NOERR ||
        length != 1) {
        return -1;
    }
    return nc_get_att_double(state.file, var, name, value) == NC_NOERR ? 0 : -1;
}

int CDF_get_text_attribute(int var, const char *name, char *out, int size)
{
    size_t length = 0;
    nc_type type = NC_NAT;
    if (!readable(var) || nc_inq_att(state.file, var, name, &type, &length) != NC_NOERR ||
        type != NC_CHAR || length > kLongestAttribute) {
        return -1;
    }
    std::string text(length, '\0');
    if (nc_get_att_text(state.file, var, name, text.data()) != NC_NOERR) {
        return -1;
    }
    STR_copy(out, static_cast<size_t>(size), text.c_str());
    return 0;
}
