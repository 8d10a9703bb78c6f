#include "tyr/upper_air/stations.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <string>

#include "base/ask.h"
#include "base/missing.h"
#include "base/msg.h"
#include "base/prm.h"
#include "base/res.h"
#include "base/str.h"
#include "base/sys.h"
#include "timefile/name_conv.h"
#include "tyr/upper_air/upa_file.h"

namespace {

constexpr int kTries = 4;
constexpr int kListColumns = 15;
constexpr int kConventionSlot = 14;
constexpr int kConventionCode = 20;
constexpr const char *kConvention = "upa_cvt";

struct State {
    int handle = -1;
    UpaFileHeader header = {};
    DateRec date;
    int next = 0;
    bool must_ask = true;
};
State state;

void set_convention(const std::string &word)
{
    std::array<char, kFileNameRoom> type = {};
    STR_copy(type.data(), type.size(), word);
    FILE_set_name(type.data());
}

/// A name as identifiers are written.
std::string station_name(std::string name)
{
    constexpr size_t kAirportName = 3;
    const bool lower = !name.empty() && std::islower(static_cast<unsigned char>(name[0])) != 0;
    if (name.size() == kAirportName || !lower) {
        std::transform(name.begin(), name.end(), name.begin(),
                       [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    }
    return name;
}

/// Asks for a station, or takes the resource's. @return 1 once it was found
int find_station(const char *resource, UpaReport *report)
{
    const bool given = resource != nullptr && *resource != '\0';
    for (int i = 0; i < kTries; ++i) {
        std::array<char, kUpaNameRoom> answer = {};
        if (given) {
            STR_copy(answer.data(), answer.size(), resource);
        } else {
            ASK_text("Enter station to be used in the analysis: ", answer.data(), kUpaNameRoom);
        }
        if (STR_casecmp(answer.data(), "exit") == 0) {
            SYS_exit(kExitNormal);
        }
        if (UPA_get_station(station_name(answer.data()).c_str(), report) == 1) {
            return 1;
        }
        if (given) {
            break;
        }
    }
    return 0;
}

} // namespace

int UPA_open_file(const char *name)
{
    int type = kUpaNoType;
    state.handle = UPA_open(name, 0, &type);
    if (state.handle == -1) {
        MSG_out(kMsgWarn, "UPA_open_file: Unable to open file:%s\n", name);
        return 0;
    }
    UPA_read_header(state.handle, &state.header);
    state.date = state.header.date;
    state.next = 0;
    MSG_out(kMsgMess, "Date: %s\n", state.header.date_text);
    return 1;
}

void UPA_close_file()
{
    UPA_close(state.handle);
    state.handle = -1;
}

void UPA_rewind()
{
    UPA_rewind_file(state.handle);
    state.next = 0;
}

void UPA_get_date(DateRec *date)
{
    *date = state.date;
}

int UPA_next_station(UpaReport *report)
{
    const int result = UPA_read(state.handle, report, kUpaWhole, &state.next);
    ++state.next;
    return result;
}

int UPA_get_station(const char *name, UpaReport *report)
{
    const bool number = std::isdigit(static_cast<unsigned char>(name[0])) != 0;
    const int wmo = number ? std::atoi(name) : kMissingInt;
    MSG_out(kMsgMess, "Searching for %s...\n", name);
    for (int i = 0; UPA_read(state.handle, report, kUpaHeading, &i) == 0; ++i) {
        const bool same = STR_casecmp(report->id, name) == 0;
        if (same || (report->wmo != kMissingInt && report->wmo == wmo)) {
            return UPA_read(state.handle, report, kUpaWhole, &i) == 0 ? 1 : 0;
        }
    }
    MSG_out(kMsgWarn, "UPA_get_station: No such station:%s\n", name);
    return 0;
}

void UPA_list_stations()
{
    UPA_rewind();
    MSG_out(kMsgPrint, "Possible stations\n");
    UpaReport report;
    for (int i = 0; UPA_read(state.handle, &report, kUpaHeading, &i) == 0; ++i) {
        if (i > 0 && i % kListColumns == 0) {
            MSG_out(kMsgPrint, "\n");
        }
        MSG_out(kMsgPrint, "%4s ", report.id);
    }
    MSG_out(kMsgPrint, "\n\n");
}

int UPA_select_station(UpaReport *report)
{
    if (!state.must_ask) {
        return 0;
    }
    const char *resource = RES_get("identifier");
    const bool given = resource != nullptr && *resource != '\0';
    if (!given || STR_casecmp(resource, "list") == 0) {
        UPA_list_stations();
    }
    if (given && STR_casecmp(resource, "list") == 0) {
        SYS_exit(kExitNormal);
    }
    const int found = find_station(resource, report);
    state.must_ask = false;
    if (found == 0) {
        MSG_out(kMsgError, "Unable to find a station\n");
        SYS_exit(kExitNoStation);
    }
    return 1;
}

void UPA_ask_station(int flag)
{
    state.must_ask = flag != 0;
}

void UPA_file_names()
{
    set_convention(kConvention);
    PRM_set(kConventionSlot, kConventionCode);
    int count = 0;
    char **entries = nullptr;
    RES_get_list("in_file", &count, &entries);
    for (int i = 0; i < count; ++i) {
        set_convention(STR_casecmp(entries[i], "upa") == 0 ? kConvention : entries[i]);
    }
    STR_free_list(count, entries);
}
