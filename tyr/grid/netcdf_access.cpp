#include <array>
#include <cmath>

#include "tyr/base/classic_extent_private.h"
#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/netcdf_library_private.h"
#include "tyr/grid/netcdf_grids_private.h"

namespace tyr {

namespace {

constexpr size_t kLongestText = 4096;
constexpr int kMostRank = 8;

/// Start of element `index` in the order of the file. False outside the variable.
bool place_of(const NcFile &file, const std::vector<int> &dims, size_t index,
              std::array<size_t, kMostRank> *start)
{
    for (size_t d = dims.size(); d-- > 0;) {
        const size_t length = file.length(dims[d]);
        if (length == 0) {
            return false;
        }
        (*start)[d] = index % length;
        index /= length;
    }
    return index == 0 || dims.empty();
}

} // namespace

NcFile::~NcFile()
{
    close();
}

int NcFile::close()
{
    const int status = id_ == -1 ? NC_NOERR : nc().close(id_);
    id_ = -1;
    return status == NC_NOERR ? 0 : -1;
}

int NcFile::var(const char *name) const
{
    int id = -1;
    return nc().inq_varid(id_, name, &id) == NC_NOERR ? id : -1;
}

int NcFile::dim(const char *name) const
{
    int id = -1;
    return nc().inq_dimid(id_, name, &id) == NC_NOERR ? id : -1;
}

size_t NcFile::length(int dim) const
{
    size_t length = 0;
    return dim != -1 && nc().inq_dimlen(id_, dim, &length) == NC_NOERR ? length : 0;
}

std::vector<int> NcFile::dims_of(int var) const
{
    int rank = 0;
    if (var == -1 || nc().inq_varndims(id_, var, &rank) != NC_NOERR || rank > kMostRank) {
        return {};
    }
    std::vector<int> dims(static_cast<size_t>(rank));
    nc().inq_vardimid(id_, var, dims.data());
    return dims;
}

double NcFile::number(int var, size_t index, double otherwise) const
{
    std::array<size_t, kMostRank> start{};
    double value = otherwise;
    int rank = 0;
    nc_type type = NC_CHAR;
    if (var == -1 || nc().inq_varndims(id_, var, &rank) != NC_NOERR || rank > kMostRank ||
        nc().inq_vartype(id_, var, &type) != NC_NOERR || type == NC_CHAR ||
        !place_of(*this, dims_of(var), index, &start) ||
        nc().get_var1_double(id_, var, start.data(), &value) != NC_NOERR || !std::isfinite(value)) {
        return otherwise;
    }
    return value;
}

std::string NcFile::text(int var, size_t index) const
{
    const std::vector<int> dims = dims_of(var);
    nc_type type = NC_NAT;
    if (dims.empty() || dims.size() > 2 || nc().inq_vartype(id_, var, &type) != NC_NOERR ||
        type != NC_CHAR || length(dims.back()) > kLongestText ||
        (dims.size() == 2 && index >= length(dims.front()))) {
        return "";
    }
    std::string text(length(dims.back()), '\0');
    const size_t row = dims.size() == 2 ? index : 0;
    const std::array<size_t, 2> start = {row, 0};
    const std::array<size_t, 2> count = {1, text.size()};
    const size_t skip = 2 - dims.size();
    if (nc().get_vara_text(id_, var, start.data() + skip, count.data() + skip, text.data()) !=
        NC_NOERR) {
        return "";
    }
    text = text.substr(0, text.find('\0'));
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string NcFile::attribute(int var, const char *name) const
{
    size_t length = 0;
    nc_type type = NC_NAT;
    if (nc().inq_att(id_, var, name, &type, &length) != NC_NOERR || type != NC_CHAR ||
        length > kLongestText) {
        return "";
    }
    std::string text(length, '\0');
    nc().get_att_text(id_, var, name, text.data());
    return text.substr(0, text.find('\0'));
}

int NcFile::attribute_number(const char *name, int otherwise) const
{
    size_t length = 0;
    int value = otherwise;
    nc_type type = NC_NAT;
    return nc().inq_att(id_, NC_GLOBAL, name, &type, &length) == NC_NOERR && length == 1 &&
                   type != NC_CHAR && nc().get_att_int(id_, NC_GLOBAL, name, &value) == NC_NOERR
               ? value
               : otherwise;
}

int nc_open_checked(const char *path)
{
    const ClassicExtent extent = classic_file_extent(path);
    int id = -1;
    if (!extent.is_classic || !extent.is_whole || !extent.fixed_part) {
        MSG_out(kMsgWarn, "GRD_open: %s: the netCDF file is cut or damaged\n", path);
    } else if (!has_netcdf_library()) {
        return -1;
    } else if (nc().open(path, NC_NOWRITE, &id) != NC_NOERR) {
        MSG_out(kMsgWarn, "GRD_open: %s: not a netCDF file that can be read\n", path);
        id = -1;
    }
    return id;
}

} // namespace tyr
