#pragma once

#include "tyr/base/missing.h"
#include "tyr/geo/domain.h"
#include "tyr/place/city_match.h"
#include "tyr/place/city_rec.h"
#include "tyr/place/wmo_ids.h"

/// The city database: stations with place, elevation and priority, in a text file (by default
/// "sao.cty") of one record a line:
///
///     name state country id priority latitude longitude elevation WMO number
///
/// name up to 20 characters ("_" for a blank), state and country 2 each, id up to 9 (a "-" in
/// second place: none), priority one digit with an optional "*" in front and behind, degrees,
/// metres (above 9000: Missing), WMO number (99999: none), a further number that may be left out.

/// Short entry of the table of stations.
struct CityPoint {
    char id[12]; ///< label, by the identifier type
    int wmo;
    float x, y; ///< on the current domain, plot units
    float elev; ///< metres, or Missing
    int priority;
    void *data; ///< the caller's
};
static_assert(sizeof(CityPoint) == 40);

/// What CTY_read keeps.
enum CityMode {
    kCityNone = 0,
    kCityRecords = 1, ///< CityRec, by id and WMO text
    kCityPoints = 2,  ///< CityPoint, by label and WMO text
    kCityPlaces = 3   ///< the same, by position too
};

/// What names a station.
enum CityIdType { kCityById = 0, kCityByWmo = 1, kCityByCodedWmo = 2 };

inline constexpr int kAllPriorities = 10;
inline constexpr int kMostCityRecords = 4000; ///< largest estimate of CTY_open_file

/// Opens a database: the resource `city_file` ("none": no database), else `name`, else "sao.cty",
/// found through `file_path`. A file that doesn't open is told.
/// @param[out] count  estimate of its records, at most kMostCityRecords; may be null
/// @return a handle above 0, or -1
int CTY_open_file(const char *name, int *count);
/// The next record. A line's words that don't fit their fields end the line.
/// @return the number of fields read, 8 at least for a record with a place; below 1 at the end
int CTY_read_record(int handle, CityRec *record);
void CTY_close_file(int handle);
void CTY_rewind(int handle);

/// Empty texts, priority and numbers kMissingInt, floats Missing.
void CTY_empty_record(CityRec *record);

/// Scans a database for the first record whose id, name or WMO text is `text`, without case.
/// @param name  file as for CTY_open_file. @return 1 if found, else 0 with an empty record
int CTY_search(const char *text, const char *name, CityRec *record);
/// The same for the place alone: degrees, Missing where it isn't found.
int CTY_find_position(const char *text, const char *name, float *latitude, float *longitude);

/// Reads the stations of a domain that the resource `identifier` selects, up to a priority
/// (kMissingInt: CTY_get_prior), into the table of stations. Makes `domain` the current domain.
/// @return the handle of the file, which stays open; 0 if there is none
int CTY_read(const char *name, int mode, DomainRec *domain, int priority);

/// Copies the station of an identifier out of the table: by WMO number for five digits, "b" and
/// five characters, and coded numbers such as K2469; else by id or label.
/// @param[out] out  CityRec or CityPoint, by the mode of CTY_read. @return 1, or 0 for none
int CTY_get(const char *id, void *out);

/// The resource `stat_prior`; kAllPriorities if it is unset.
int CTY_get_prior();

/// What labels the stations of CTY_read: a CityIdType; others count as kCityById.
void CTY_set_id_type(int type);
