#pragma once

#include <netcdf.h>
#include <netcdf_mem.h>

/// The netCDF library, loaded when the first file needs it: it brings some forty others with it,
/// which take longer to load than most files to read.

namespace tyr {

/// What is called of the library; a row is the name behind `nc_`.
#define TYR_NETCDF_CALLS(CALL)                                                                     \
    CALL(open)                                                                                     \
    CALL(open_mem)                                                                                 \
    CALL(create)                                                                                   \
    CALL(close)                                                                                    \
    CALL(enddef)                                                                                   \
    CALL(strerror)                                                                                 \
    CALL(def_dim)                                                                                  \
    CALL(def_var)                                                                                  \
    CALL(inq_unlimdim)                                                                             \
    CALL(inq_dimid)                                                                                \
    CALL(inq_dimlen)                                                                               \
    CALL(inq_nvars)                                                                                \
    CALL(inq_varid)                                                                                \
    CALL(inq_varname)                                                                              \
    CALL(inq_varndims)                                                                             \
    CALL(inq_vardimid)                                                                             \
    CALL(inq_vartype)                                                                              \
    CALL(inq_att)                                                                                  \
    CALL(inq_attlen)                                                                               \
    CALL(get_att_double)                                                                           \
    CALL(get_att_int)                                                                              \
    CALL(get_att_text)                                                                             \
    CALL(get_var1_double)                                                                          \
    CALL(get_var1_float)                                                                           \
    CALL(get_var1_long)                                                                            \
    CALL(get_var1_schar)                                                                           \
    CALL(get_vara_float)                                                                           \
    CALL(get_vara_text)                                                                            \
    CALL(put_att_float)                                                                            \
    CALL(put_att_int)                                                                              \
    CALL(put_att_text)                                                                             \
    CALL(put_var1_float)                                                                           \
    CALL(put_var1_int)                                                                             \
    CALL(put_vara_float)                                                                           \
    CALL(put_vara_text)

/// The library's functions, each under its own name without `nc_`.
struct NetcdfLibrary {
// NOLINTNEXTLINE(bugprone-macro-parentheses): the name of a member takes none
#define TYR_NETCDF_FIELD(name) decltype(&::nc_##name) name = nullptr;
    TYR_NETCDF_CALLS(TYR_NETCDF_FIELD)
#undef TYR_NETCDF_FIELD
};

/// Whether the library can be had; says at warn, once, why not. To be asked before a file is
/// opened or created; whoever has a file of the library's has the library.
bool has_netcdf_library();

/// The library, which is there.
const NetcdfLibrary &nc();

} // namespace tyr
