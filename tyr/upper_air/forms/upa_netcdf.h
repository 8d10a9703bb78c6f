#pragma once

#include <array>
#include <cstdint>

#include "tyr/upper_air/report.h"
#include "tyr/upper_air/upa_types.h"

// Types 11 and 12: netCDF classic files, a record a report. The layouts differ in the name of the
// record dimension ("station", "report"), in the case of the names of level variables, and in
// units: layout 12 holds speeds in m/s and wind heights in metres, which are turned on reading and
// writing.
//
// What the files can't hold: the elevation but as the height of slot 0; more than 10 characters of
// identifier and region; `extra`.

namespace tyr {

/// Variables, in the order of the table in upa_netcdf_private.h.
enum UpaVariable : int {
    kVarId,
    kVarRegion,
    kVarType,
    kVarWmo,
    kVarLat,
    kVarLon,
    kVarNumMand,
    kVarNumSig,
    kVarNumWnd,
    kVarMandP,
    kVarMandZ,
    kVarMandT,
    kVarMandTd,
    kVarMandDir,
    kVarMandSpd,
    kVarSigP,
    kVarSigT,
    kVarSigTd,
    kVarWndZ,
    kVarWndDir,
    kVarWndSpd,
    kUpaVariables
};

/// An open file of either layout.
struct UpaNetcdf {
    int id = -1;
    int type = 0; ///< kUpaNetcdf1 or kUpaNetcdf2
    int64_t records = 0;
    std::array<int, kUpaVariables> variables = {}; ///< -1 for one that the file lacks
    int mandatory = 0; ///< sizes of the dimensions, held within the record's arrays
    int significant = 0;
    int winds = 0;
    int text = 0;
    bool defined = false; ///< for writing: the header stands
};

/// Whether a file can be given to the netCDF library; tells, in `routine`'s name, of one that is
/// cut short or damaged. @param[out] records  whole records in it
bool is_sound_netcdf(const char *routine, const char *path, int64_t *records);

/// The layout of a sound file; -1 if it can't be opened.
int netcdf_layout(const char *path);

/// Finds dimensions and variables, and reads the date.
void read_netcdf_header(UpaNetcdf *file, int64_t whole_records, UpaFileHeader *header);
/// Whether a file has any variable of levels; without one its reports are empty.
bool has_reports(const UpaNetcdf &file);
/// Defines the file. @return 0, or -1 (told)
int write_netcdf_header(UpaNetcdf *file, const UpaFileHeader &header);

/// See UPA_read. @return 0; -1 for an index that isn't there
int read_netcdf_report(const UpaNetcdf &file, UpaReport *report, int what, int index);
/// Writes record `index`. @return 0; -1 (told)
int write_netcdf_report(UpaNetcdf *file, const UpaReport &report, int index);

} // namespace tyr
