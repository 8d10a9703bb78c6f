#include "tyr/place/city.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/geo/projection.h"
#include "tyr/place/table.h"

using namespace tyr;

namespace {

constexpr const char *kDefaultFile = "sao.cty";
constexpr long kBytesPerRecord = 59;
constexpr float kHighest = 9000.0F; ///< metres; above it an elevation isn't known
constexpr int kPlaceFields = 8;     ///< fields of a record up to its elevation
constexpr int kLineRoom = 256;

struct State {
    std::vector<FilePtr> files; ///< by handle less one; null when closed
    TableRec table;
    int mode = kCityNone;
    int id_type = kCityById;
};

State state;

std::FILE *file_of(int handle)
{
    return handle >= 1 && handle <= static_cast<int>(state.files.size())
               ? state.files[static_cast<size_t>(handle - 1)].get()
               : nullptr;
}

int keep(FilePtr file)
{
    const auto free = std::find(state.files.begin(), state.files.end(), nullptr);
    const auto at = free - state.files.begin();
    if (free == state.files.end()) {
        state.files.push_back(std::move(file));
    } else {
        *free = std::move(file);
    }
    return static_cast<int>(at) + 1;
}

/// "*5*": marks and priority.
void take_priority(const char *text, CityRec *record)
{
    record->first_mark = text[0] == '*' ? '*' : ' ';
    text += text[0] == '*' ? 1 : 0;
    if (std::isdigit(static_cast<unsigned char>(*text)) != 0) {
        record->priority = *text++ - '0';
    }
    record->second_mark = text[0] == '*' ? '*' : ' ';
}

/// @return the fields that the line gives
int parse_record(const char *line, CityRec *record)
{
    std::array<char, 8> priority = {};
    record->wmo = 0;
    record->number = 0;
    const int fields =
        std::sscanf(line, "%20s %2s %2s %9s %7s %f %f %f %d %d", record->name, record->state,
                    record->country, record->id, priority.data(), &record->lat, &record->lon,
                    &record->elev, &record->wmo, &record->number);
    take_priority(priority.data(), record);
    if (!(record->elev <= kHighest)) {
        record->elev = kMissing;
    }
    return fields;
}

bool is_finite_place(const CityRec &record)
{
    return std::isfinite(record.lat) && std::isfinite(record.lon);
}

/// The next record that has a place.
bool next_place(int handle, CityRec *record)
{
    for (;;) {
        const int fields = CTY_read_record(handle, record);
        if (fields < 1) {
            return false;
        }
        if (fields >= kPlaceFields && is_finite_place(*record)) {
            return true;
        }
    }
}

/// An identifier with "-" in second place stands for none.
bool has_id(const CityRec &record)
{
    return record.id[0] != '\0' && record.id[1] != '-';
}

std::string wmo_text(const CityRec &record)
{
    const bool is_buoy = STR_casecmp(record.country, "B_") == 0;
    return STR_print(is_buoy ? "b%05d" : "%05d", record.wmo);
}

std::string label_of(const CityRec &record)
{
    if (state.id_type == kCityByWmo) {
        return record.wmo == kNoWmo ? record.id : wmo_text(record);
    }
    if (has_id(record)) {
        return record.id;
    }
    if (state.id_type == kCityById || STR_casecmp(record.country, "B_") == 0) {
        return wmo_text(record);
    }
    std::array<char, kWmoIdRoom> coded;
    CTY_wmo_to_id(coded.data(), record.wmo);
    return coded.data();
}

/// The resource `identifier`: nothing for the one word "all".
struct Selection {
    int count = 0;
    char **list = nullptr;
    Selection()
    {
        RES_get_list("identifier", &count, &list);
        if (count == 1 && STR_casecmp(list[0], "all") == 0) {
            STR_free_list(count, list);
            count = 0;
            list = nullptr;
        }
    }
    ~Selection() { STR_free_list(count, list); }
    Selection(const Selection &) = delete;
    Selection &operator=(const Selection &) = delete;
};

void add_record(const CityRec &record, float x, float y)
{
    const std::string wmo = wmo_text(record);
    if (state.mode == kCityRecords) {
        TBL_add(&state.table, &record, record.id, wmo.c_str());
        return;
    }
    const std::string label = label_of(record);
    CityPoint point = {};
    STR_copy(point.id, sizeof point.id, label);
    point.wmo = record.wmo;
    point.x = x;
    point.y = y;
    point.elev = record.elev;
    point.priority = record.priority;
    if (state.mode == kCityPoints) {
        TBL_add(&state.table, &point, label.c_str(), wmo.c_str());
        return;
    }
    const std::string place = STR_print("%5.0f%6.0f", 10.0 * record.lat, 10.0 * record.lon);
    TBL_add(&state.table, &point, label.c_str(), wmo.c_str(), place.c_str());
}

void read_table(int handle, int priority)
{
    const Selection selection;
    CTY_rewind(handle);
    CityRec record;
    while (next_place(handle, &record)) {
        if (record.priority > priority ||
            CTY_match(selection.count, selection.list, &record) == -1) {
            continue;
        }
        float x = kMissing;
        float y = kMissing;
        if (MAP_ll_to_xy(&x, &y, record.lat, record.lon) == 1 && DOM_near_window(x, y) == 1) {
            add_record(record, x, y);
        }
    }
}

bool is_digits(const char *text, size_t count)
{
    return std::strspn(text, "0123456789") == count && text[count] == '\0';
}

/// Whether an identifier is a WMO number in one of its forms; its text as the table has it.
bool as_wmo_text(const char *id, std::string *text)
{
    const size_t length = std::strlen(id);
    int wmo = kNoWmo;
    if (is_digits(id, 5) || (length == 6 && id[0] == 'b')) {
        *text = id;
    } else if (length == 5 && id[0] >= 'A' && id[0] <= 'Z' && is_digits(id + 2, 3) &&
               CTY_id_to_wmo(id, &wmo) == 0) {
        *text = STR_print("%5.5d", wmo);
    } else {
        return false;
    }
    return true;
}

} // namespace

int CTY_open_file(const char *name, int *count)
{
    const char *resource = RES_get("city_file");
    if (count) {
        *count = 0;
    }
    if (resource && STR_casecmp(resource, "none") == 0) {
        return -1;
    }
    const char *wanted = resource && *resource ? resource : name && *name ? name : kDefaultFile;
    std::array<char, kFileNameRoom> path;
    FILE_join(RES_get("file_path"), wanted, path.data());
    FilePtr file(FILE_is_dir(path.data()) != 0 ? nullptr : FILE_open(path.data(), "r"));
    if (!file) {
        MSG_out(kMsgWarn, "CTY_open_file: Database file not found: %s\n", path.data());
        return -1;
    }
    if (count) {
        *count = static_cast<int>(
            std::clamp(FILE_size(path.data()) / kBytesPerRecord, 0L, long{kMostCityRecords}));
    }
    return keep(std::move(file));
}

int CTY_read_record(int handle, CityRec *record)
{
    CTY_empty_record(record);
    std::FILE *file = file_of(handle);
    std::array<char, kLineRoom> line;
    while (file && STR_read_cut_line(file, line.data(), kLineRoom - 1) >= 0) {
        if (const int fields = parse_record(line.data(), record); fields >= 1) {
            return fields;
        }
        CTY_empty_record(record);
    }
    return -1;
}

void CTY_close_file(int handle)
{
    if (file_of(handle)) {
        state.files[static_cast<size_t>(handle - 1)].reset();
    }
}

void CTY_rewind(int handle)
{
    if (std::FILE *file = file_of(handle)) {
        std::rewind(file);
    }
}

void CTY_empty_record(CityRec *record)
{
    *record = {};
    record->priority = record->wmo = record->number = kMissingInt;
    record->first_mark = record->second_mark = ' ';
    record->lat = record->lon = record->elev = kMissing;
}

int CTY_search(const char *text, const char *name, CityRec *record)
{
    CTY_empty_record(record);
    const int handle = CTY_open_file(name, nullptr);
    if (handle < 1) {
        return 0;
    }
    MSG_out(kMsgMess, "Searching the city database file for: %s ...\n", text);
    bool found = false;
    while (!found && next_place(handle, record)) {
        found = STR_casecmp(text, record->id) == 0 || STR_casecmp(text, record->name) == 0 ||
                STR_print("%05d", record->wmo) == text;
    }
    CTY_close_file(handle);
    if (!found) {
        CTY_empty_record(record);
    }
    return found ? 1 : 0;
}

int CTY_find_position(const char *text, const char *name, float *latitude, float *longitude)
{
    CityRec record;
    const int found = CTY_search(text, name, &record);
    *latitude = record.lat;
    *longitude = record.lon;
    return found;
}

int CTY_read(const char *name, int mode, DomainRec *domain, int priority)
{
    state.mode = mode;
    TBL_free(&state.table);
    int count = 0;
    const int handle = CTY_open_file(name, &count);
    if (handle < 1) {
        return 0;
    }
    DOM_set(domain);
    MSG_out(kMsgMess, "Reading the city database file...\n");
    const bool whole = mode == kCityRecords;
    TBL_init(&state.table, count, whole ? sizeof(CityRec) : sizeof(CityPoint),
             mode == kCityPlaces ? 3 : 2);
    if (mode != kCityNone) {
        read_table(handle, priority == kMissingInt ? CTY_get_prior() : priority);
    }
    return handle;
}

int CTY_get(const char *id, void *out)
{
    std::string wmo;
    const bool by_wmo = as_wmo_text(id, &wmo);
    if (by_wmo && std::atoi(wmo.c_str()) == kNoWmo) {
        return 0; // the number of stations that have none
    }
    const void *found = TBL_find(&state.table, by_wmo ? 2 : 1, by_wmo ? wmo.c_str() : id);
    if (!found) {
        return 0;
    }
    std::memcpy(out, found, static_cast<size_t>(state.table.element_size));
    return 1;
}

int CTY_get_prior()
{
    const char *text = RES_get("stat_prior");
    int priority = kAllPriorities;
    return text && std::sscanf(text, "%9d", &priority) == 1 ? priority : kAllPriorities;
}

void CTY_set_id_type(int type)
{
    state.id_type = type == kCityByWmo || type == kCityByCodedWmo ? type : kCityById;
}
