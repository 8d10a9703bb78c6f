#include "tyr/upper_air/report_out.h"

#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"
#include "tyr/names/out_file.h"
#include "tyr/upper_air/raw_sounding.h"
#include "tyr/upper_air/upa_file.h"

namespace tyr {

namespace {

constexpr int kRaw = 0; ///< no form of reports: a sounding

struct FormWord {
    const char *word;
    int type;
    const char *ending;
};
constexpr FormWord kForms[] = {
    {"placed",  kUpaPlaced,  ".upa"},
    {"free",    kUpaFree,    ""    },
    {"fixed",   kUpaFixed,   ""    },
    {"short",   kUpaShort,   ""    },
    {"longer",  kUpaLonger,  ""    },
    {"netcdf",  kUpaNetcdf1, ".nc" },
    {"netcdf",  kUpaNetcdf1, ".cdf"},
    {"netcdf2", kUpaNetcdf2, ".nc2"},
    {"digest",  kUpaDigest,  ".bin"},
    {"xml",     kUpaXml,     ".xml"},
    {"raw",     kRaw,        ".raw"},
};

/// A UpaType or kRaw; -1 (told) for a word that is none.
int form_of(const std::string &name, const char *word)
{
    const bool is_told = word != nullptr && *word != '\0';
    for (const FormWord &form : kForms) {
        const std::string ending = form.ending;
        const bool is_ending = !ending.empty() && name.size() > ending.size() &&
                               name.substr(name.size() - ending.size()) == ending;
        if (is_told ? STR_casecmp(word, form.word) == 0 : is_ending) {
            return form.type;
        }
    }
    if (is_told) {
        MSG_out(kMsgError, "%s: not a form that can be written\n", word);
        return -1;
    }
    return kUpaPlaced;
}

bool may_write(const std::string &name)
{
    const int answer = FILE_check_out(name.c_str(), 1);
    if (answer == kOutFresh) {
        return true;
    }
    MSG_out(kMsgError, "%s: not overwritten\n", name.c_str());
    return false;
}

int write_raw(const std::string &name)
{
    return THERM_write_raw(name.c_str()) == 0 ? kExitNormal : kExitNoDump;
}

UpaFileHeader header_of(const DateRec &d)
{
    UpaFileHeader header = {};
    header.date = d;
    if (d.month > 0 && d.hour != kMissingInt) {
        const int minute = d.minute == kMissingInt ? 0 : d.minute;
        STR_copy(header.date_text, sizeof header.date_text,
                 STR_print("%02d%02dZ %2d %s %02d", d.hour, minute, d.day, TIME_month_abbr(d.month),
                           d.year % 100));
        STR_copy(header.short_date, sizeof header.short_date,
                 STR_print("%02d%02d%02d%02d", d.year % 100, d.month, d.day, d.hour));
    }
    return header;
}

int write_form(const std::string &name, int type, const std::vector<HeldReport> &held)
{
    const bool is_netcdf = type == kUpaNetcdf1 || type == kUpaNetcdf2;
    if (is_netcdf && FILE_is_std(name.c_str()) != 0) {
        MSG_out(kMsgError, "netCDF can't be written to standard output\n");
        return kExitNoDump;
    }
    const int handle = UPA_open(name.c_str(), 1, &type);
    if (handle == -1) {
        MSG_out(kMsgError, "%s: can't be written\n", name.c_str());
        return kExitNoDump;
    }
    UpaFileHeader header = header_of(held.front().date);
    bool is_good = UPA_write_header(handle, &header) == 0;
    for (int next = 0; is_good && next < static_cast<int>(held.size());) {
        UpaReport report = held[static_cast<size_t>(next)].report;
        const int index = next;
        // the digest writes too, but tells neither success nor a step
        is_good = UPA_write(handle, &report, nullptr, &next) == 0 || type == kUpaDigest;
        next = index + 1;
    }
    is_good = UPA_close(handle) == 0 && is_good;
    return is_good ? kExitNormal : kExitNoDump;
}

} // namespace

int write_reports(const std::string &name, const char *word, const std::vector<HeldReport> &held)
{
    const int type = form_of(name, word);
    if (type == -1 || !may_write(name)) {
        return kExitNoDump;
    }
    if (type != kRaw) {
        return write_form(name, type, held);
    }
    if (held.size() != 1) {
        MSG_out(kMsgError, "%s: a raw sounding holds one station: -id chooses it\n", name.c_str());
        return kExitNoStation;
    }
    return analyse(held.front()) ? write_raw(name) : kExitNothing;
}

int write_sounding(const std::string &name, const char *word)
{
    const int type = form_of(name, word);
    if (type > kRaw) {
        MSG_out(kMsgError, "%s: a raw sounding can't be turned into reports\n", name.c_str());
    }
    return type == kRaw && may_write(name) ? write_raw(name) : kExitNoDump;
}

} // namespace tyr
