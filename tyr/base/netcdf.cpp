#include "tyr/base/netcdf.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdio>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "tyr/base/classic_extent_private.h"
#include "tyr/base/classic_file_private.h"
#include "tyr/base/missing.h"
#include "tyr/base/netcdf_library_private.h"
#include "tyr/base/netcdf_roads_private.h"
#include "tyr/base/str.h"

using namespace tyr;

namespace {

constexpr int kMaxRank = 8;
constexpr int kNotOpen = -1;
constexpr int kFirstDirect = -2; ///< ids of files read directly count down from here
constexpr int kLongestAttribute = 4096;

struct State {
    int file = kNotOpen;
    std::array<size_t, kMaxRank> start = {};
    std::array<size_t, kMaxRank> count = {};
    int rank = 0;
    bool is_quiet = false;
    bool by_library_alone = false;
    std::vector<std::unique_ptr<ClassicFile>> direct; ///< null where one was closed
};

State state;

/// The current file where it is read directly; null where the library has it.
const ClassicFile *direct()
{
    const int64_t index = int64_t{kFirstDirect} - state.file;
    return index >= 0 && index < static_cast<int64_t>(state.direct.size())
               ? state.direct[static_cast<size_t>(index)].get()
               : nullptr;
}

int add_direct(ClassicFile file)
{
    auto place = std::find(state.direct.begin(), state.direct.end(), nullptr);
    if (place == state.direct.end()) {
        place = state.direct.insert(place, nullptr);
    }
    *place = std::make_unique<ClassicFile>(std::move(file));
    return kFirstDirect - static_cast<int>(place - state.direct.begin());
}

std::span<const size_t> starts()
{
    return std::span(state.start).first(static_cast<size_t>(state.rank));
}

std::span<const size_t> counts()
{
    return std::span(state.count).first(static_cast<size_t>(state.rank));
}

/// Tells a complaint of the library, unless quiet. @return whether there was none
bool succeeds(const char *what, int status)
{
    if (status != NC_NOERR && !state.is_quiet) {
        std::fprintf(stderr, "%s: %s\n", what, nc().strerror(status));
    }
    return status == NC_NOERR;
}

bool readable(int var)
{
    return state.file != kNotOpen && var != -1;
}

/// A getter may be called with one index more than the variable has dimensions (a scalar with an
/// index), never with fewer: the library would read past the arrays.
bool rank_fits(int var, int rank)
{
    int dimensions = 0;
    return nc().inq_varndims(state.file, var, &dimensions) == NC_NOERR && dimensions <= rank;
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
    state.is_quiet = flag != 1;
}

int CDF_open(const char *name, int mode)
{
    state.file = kNotOpen;
    int id = kNotOpen;
    if (has_netcdf_library() && succeeds(name, mode == 0 ? nc().open(name, NC_NOWRITE, &id)
                                                         : nc().create(name, NC_CLOBBER, &id))) {
        state.file = id;
    }
    return state.file;
}

int CDF_open_memory(std::string_view bytes, int64_t *whole_records)
{
    state.file = kNotOpen;
    ClassicHeader header = read_classic_header(bytes);
    const ClassicExtent extent = classic_extent(header, static_cast<int64_t>(bytes.size()));
    *whole_records = extent.is_classic ? extent.whole_records : std::numeric_limits<int64_t>::max();
    if (extent.is_classic && !(extent.is_whole && extent.fixed_part)) {
        return kNotOpen;
    }
    if (!state.by_library_alone) {
        if (std::optional<ClassicFile> file = ClassicFile::open(std::move(header), bytes)) {
            return state.file = add_direct(std::move(*file));
        }
    }
    // the library doesn't write to what it opens read-only; the name is for its messages
    void *memory = const_cast<char *>(bytes.data());
    int id = kNotOpen;
    if (has_netcdf_library() &&
        nc().open_mem("profiler", NC_NOWRITE, bytes.size(), memory, &id) == NC_NOERR) {
        state.file = id;
    }
    return state.file;
}

std::string CDF_variable_names(int most)
{
    int count = 0;
    const ClassicFile *file = direct();
    if (file != nullptr) {
        count = file->variable_count();
    } else if (state.file == kNotOpen || nc().inq_nvars(state.file, &count) != NC_NOERR) {
        return "";
    }
    std::string names;
    const auto add = [&names](std::string_view name) {
        names.append(names.empty() ? "" : ", ").append(name);
    };
    for (int var = 0; var < std::min(count, most); ++var) {
        std::array<char, NC_MAX_NAME + 1> name = {};
        if (file != nullptr) {
            add(file->at(var)->name);
        } else if (nc().inq_varname(state.file, var, name.data()) == NC_NOERR) {
            add(name.data());
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
    if (direct() != nullptr) {
        state.direct[static_cast<size_t>(kFirstDirect - state.file)].reset();
    } else if (state.file != kNotOpen) {
        nc().close(state.file);
    }
    state.file = kNotOpen;
}

int CDF_dim_id(const char *name)
{
    if (const ClassicFile *file = direct()) {
        return file->dimension(name);
    }
    int id = -1;
    return state.file != kNotOpen && succeeds(name, nc().inq_dimid(state.file, name, &id)) ? id
                                                                                           : -1;
}

int CDF_var_id(const char *name)
{
    if (const ClassicFile *file = direct()) {
        return file->variable(name);
    }
    int id = -1;
    return state.file != kNotOpen && succeeds(name, nc().inq_varid(state.file, name, &id)) ? id
                                                                                           : -1;
}

int CDF_is_number(int var)
{
    if (const ClassicFile *file = direct()) {
        return file->at(var) != nullptr && file->at(var)->type != kClassicChar;
    }
    nc_type type = NC_CHAR;
    return readable(var) && nc().inq_vartype(state.file, var, &type) == NC_NOERR && type != NC_CHAR;
}

int64_t CDF_record_count(int dimension)
{
    if (const ClassicFile *file = direct()) {
        return file->length(dimension == -1 ? file->record_dimension() : dimension);
    }
    if (state.file == kNotOpen) {
        return 0;
    }
    if (dimension == -1 &&
        (nc().inq_unlimdim(state.file, &dimension) != NC_NOERR || dimension == -1)) {
        return 0;
    }
    size_t size = 0; // the name isn't asked for: a damaged file's may be longer than any room
    return nc().inq_dimlen(state.file, dimension, &size) == NC_NOERR ? static_cast<int64_t>(size)
                                                                     : 0;
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
    if (length < 0 || state.rank >= kMaxRank) {
        return 0;
    }
    const int rank = state.rank + 1;
    std::array<size_t, kMaxRank> start = state.start;
    std::array<size_t, kMaxRank> count = state.count;
    start[state.rank] = 0;
    count[state.rank] = static_cast<size_t>(length);
    // one value where the variable has no dimension
    std::string text(static_cast<size_t>(std::max(length, 1)), '\0');
    const ClassicFile *file = direct();
    const bool was_had = file != nullptr
                             ? file->text(var, std::span(start).first(rank),
                                          std::span(count).first(rank), text.data())
                             : readable(var) && rank_fits(var, rank) &&
                                   nc().get_vara_text(state.file, var, start.data(), count.data(),
                                                      text.data()) == NC_NOERR;
    if (!was_had) {
        return 0;
    }
    std::copy_n(text.begin(), length, buffer);
    buffer[length] = '\0';
    return 1;
}

float CDF_get_float(int var)
{
    float value = kMissing;
    if (const ClassicFile *file = direct()) {
        constexpr std::array<size_t, kMaxRank> kOne = {1, 1, 1, 1, 1, 1, 1, 1};
        return file->floats(var, starts(), kOne, &value) ? value : kMissing;
    }
    return can_get(var) &&
                   was_read(nc().get_var1_float(state.file, var, state.start.data(), &value))
               ? value
               : kMissing;
}

double CDF_get_double(int var)
{
    if (const ClassicFile *file = direct()) {
        return file->number(var, starts()).value_or(kMissing);
    }
    double value = kMissing;
    return can_get(var) &&
                   nc().get_var1_double(state.file, var, state.start.data(), &value) == NC_NOERR
               ? value
               : static_cast<double>(kMissing);
}

long CDF_get_long(int var)
{
    constexpr double kLimit = 9223372036854775808.0; // 2 to the power of 63
    if (const ClassicFile *file = direct()) {
        const double value = file->number(var, starts()).value_or(kMissingInt);
        return value > -kLimit && value < kLimit ? static_cast<long>(value) : kMissingInt;
    }
    long value = kMissingInt;
    const bool was_had =
        can_get(var) && nc().get_var1_long(state.file, var, state.start.data(), &value) == NC_NOERR;
    // the library makes the smallest of what isn't a number
    return was_had && value != std::numeric_limits<long>::min() ? value : kMissingInt;
}

signed char CDF_get_byte(int var)
{
    if (const ClassicFile *file = direct()) {
        const double value = file->number(var, starts()).value_or(-1.0);
        const bool is_byte = value >= SCHAR_MIN && value <= SCHAR_MAX;
        return static_cast<signed char>(is_byte ? value : -1.0);
    }
    signed char value = -1;
    if (can_get(var) &&
        nc().get_var1_schar(state.file, var, state.start.data(), &value) == NC_NOERR) {
        return value;
    }
    return -1;
}

int CDF_get_float_array(int var, float *out)
{
    if (const ClassicFile *file = direct()) {
        return file->floats(var, starts(), counts(), out) ? 0 : -1;
    }
    return can_get(var) && was_read(nc().get_vara_float(state.file, var, state.start.data(),
                                                        state.count.data(), out))
               ? 0
               : -1;
}

int CDF_get_attribute(int var, const char *name, double *value)
{
    if (const ClassicFile *file = direct()) {
        const ClassicAttribute *a = file->attribute(var, name);
        if (a == nullptr || a->count != 1 || a->type == kClassicChar) {
            return -1;
        }
        *value = classic_number(a->bytes.data(), a->type);
        return 0;
    }
    size_t length = 0;
    if (!readable(var) || nc().inq_attlen(state.file, var, name, &length) != NC_NOERR ||
        length != 1) {
        return -1;
    }
    return nc().get_att_double(state.file, var, name, value) == NC_NOERR ? 0 : -1;
}

int CDF_get_text_attribute(int var, const char *name, char *out, int size)
{
    if (const ClassicFile *file = direct()) {
        const ClassicAttribute *a = file->attribute(var, name);
        if (a == nullptr || a->type != kClassicChar || a->count > kLongestAttribute) {
            return -1;
        }
        STR_copy(out, static_cast<size_t>(size), std::string(a->bytes).c_str());
        return 0;
    }
    size_t length = 0;
    nc_type type = NC_NAT;
    if (!readable(var) || nc().inq_att(state.file, var, name, &type, &length) != NC_NOERR ||
        type != NC_CHAR || length > kLongestAttribute) {
        return -1;
    }
    std::string text(length, '\0');
    if (nc().get_att_text(state.file, var, name, text.data()) != NC_NOERR) {
        return -1;
    }
    STR_copy(out, static_cast<size_t>(size), text.c_str());
    return 0;
}

void tyr::netcdf_by_library_alone(bool is_alone)
{
    state.by_library_alone = is_alone;
}
