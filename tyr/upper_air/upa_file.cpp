#include "tyr/upper_air/upa_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>

#include "tyr/base/bytes.h"
#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/netcdf.h"
#include "tyr/base/str.h"
#include "tyr/base/whole_file.h"
#include "tyr/upper_air/foreign/foreign_forms.h"
#include "tyr/upper_air/forms/row_text.h"
#include "tyr/upper_air/forms/short_text.h"
#include "tyr/upper_air/forms/upa_digest.h"
#include "tyr/upper_air/forms/upa_netcdf.h"
#include "tyr/upper_air/forms/upa_text_file.h"
#include "tyr/upper_air/forms/upa_xml.h"
#include "tyr/upper_air/forms/words.h"

using namespace tyr;

namespace {

constexpr int kRead = 0;
constexpr int kWrite = 1;
constexpr int kLittleEndian = 2;
constexpr size_t kHeadBytes = 200; ///< where an XML file's first tag stands
constexpr size_t kMostBytes = size_t{256} << 20U;

/// The open file.
struct State {
    int type = kUpaNoType;
    int mode = kRead;
    int handle = -1;
    std::string name;
    FilePtr in;
    WholeFile out;
    UpaNetcdf netcdf;
    int64_t whole_records = 0;
    ForeignFile foreign;
    UpaTextFile text;
};
State state;

bool is_text(int type)
{
    return type >= kUpaShort && type <= kUpaPlaced;
}

bool is_netcdf(int type)
{
    return type == kUpaNetcdf1 || type == kUpaNetcdf2;
}

bool is_foreign(int type)
{
    return type >= kUpaBulletin && type <= kUpaSpc;
}

bool is_writable(int type)
{
    return is_text(type) || is_netcdf(type) || type == kUpaDigest || type == kUpaXml;
}

/// A stream's text; nothing for one of more than kMostBytes.
std::optional<std::string> read_all(FILE *stream)
{
    std::string text;
    std::array<char, 1 << 16> block;
    size_t got = 0;
    while ((got = std::fread(block.data(), 1, block.size(), stream)) > 0) {
        text.append(block.data(), got);
        if (text.size() > kMostBytes) {
            return std::nullopt;
        }
    }
    return text;
}

std::string expanded(const char *name)
{
    std::array<char, kFileNameRoom> path;
    FILE_expand(name, path.data());
    return path.data();
}

int open_netcdf(const char *name, int mode, int type)
{
    std::string path = expanded(name);
    if (mode == kWrite) {
        if (!state.out.open_by_name(name)) {
            return -1;
        }
        path = state.out.path();
    }
    if (mode == kRead && !is_sound_netcdf("UPA_open", path.c_str(), &state.whole_records)) {
        return -1;
    }
    if (type == kUpaNoType) {
        type = netcdf_layout(path.c_str());
    }
    CDF_set_quiet(0);
    const int id = type == -1 ? -1 : CDF_open(path.c_str(), mode);
    CDF_set_quiet(1);
    if (id != -1) {
        state.type = type;
        state.netcdf.id = id;
        state.netcdf.type = type;
    }
    return id;
}

int keep_text(std::string text, int type)
{
    state.type = type;
    if (is_foreign(type)) {
        state.foreign = read_foreign(type, text, state.name);
    } else {
        state.text = UpaTextFile(std::move(text), type, state.name);
    }
    return fileno(state.in.get());
}

/// A digest begins with a digit as types 1 and 2 do.
bool is_digest(const std::string &text)
{
    constexpr size_t kMark = 7; // behind "hh:mmZ "
    return text.compare(std::min(kMark, text.size()), 3, "XXX") == 0;
}

/// Why a text of no form that can be read isn't read.
const char *reason_against(const std::string &text)
{
    if (text.empty()) {
        return "an empty file";
    }
    if (text.substr(0, kHeadBytes).find("<tyrupa") != std::string::npos) {
        return "an XML file can't be read";
    }
    if (is_digest(text)) {
        return "a binary digest can't be read";
    }
    return "not a file of upper-air reports";
}

int open_text(const char *name, int type)
{
    state.in.reset(FILE_open(name, "r"));
    std::optional<std::string> text = state.in ? read_all(state.in.get()) : std::nullopt;
    if (state.in && !text) {
        MSG_out(kMsgWarn, "UPA_open: %s: the file is too long\n", name);
    }
    if (!text) {
        return -1;
    }
    if (type == kUpaNoType) {
        type = upa_text_type(*text);
        if (type == kUpaNoType) {
            state.in.reset();
            return open_netcdf(name, kRead, type);
        }
        // a station's number at the start of a table looks like the date of type 1 or 2
        if (type == -1 || type == kUpaShort || type == kUpaLonger) {
            const int foreign = foreign_type(*text);
            type = foreign != -1 ? foreign : is_digest(*text) ? -1 : type;
        }
    }
    if (type == -1) {
        MSG_out(kMsgWarn, "UPA_open: %s: %s\n", name, reason_against(*text));
        return -1;
    }
    return keep_text(std::move(*text), type);
}

int open_to_read(const char *name, int type)
{
    if (type == kUpaDigest || type == kUpaXml) {
        MSG_out(kMsgWarn, "UPA_open: %s: %s can't be read\n", name,
                type == kUpaDigest ? "a binary digest" : "an XML file");
        return -1;
    }
    if (is_netcdf(type)) {
        return open_netcdf(name, kRead, type);
    }
    return type == kUpaNoType || is_text(type) || is_foreign(type) ? open_text(name, type) : -1;
}

int open_to_write(const char *name, int type)
{
    if (is_netcdf(type)) {
        return open_netcdf(name, kWrite, type);
    }
    if (!is_writable(type)) {
        return -1;
    }
    if (!state.out.open(name)) {
        return -1;
    }
    state.type = type;
    return fileno(state.out.stream());
}

bool is_open(int handle, int mode)
{
    return state.type != kUpaNoType && handle == state.handle && mode == state.mode;
}

void put(const std::string &text)
{
    std::fwrite(text.data(), 1, text.size(), state.out.stream());
}

int read_foreign_report(UpaReport *report, int what, int index)
{
    if (index < 0 || static_cast<size_t>(index) >= state.foreign.reports.size()) {
        return -1;
    }
    *report = state.foreign.reports[static_cast<size_t>(index)];
    if (what != kUpaWhole) {
        keep_level(report, what, false);
    }
    return 0;
}

void set_short_date(UpaFileHeader *header)
{
    const DateRec &d = header->date;
    if (header->short_date[0] == '\0' && d.month > 0 && d.hour != kMissingInt) {
        STR_copy(header->short_date, sizeof header->short_date,
                 STR_print("%02d%02d%02d%02d", d.year % 100, d.month, d.day, d.hour));
    }
}

/// The date of others' forms, as the header of the system's own would have it.
void set_foreign_date(UpaFileHeader *header)
{
    const DateRec &d = state.foreign.date;
    header->date = d;
    if (d.month <= 0) {
        return;
    }
    STR_copy(header->date_text, sizeof header->date_text,
             STR_print("%02d%02dZ %2d %s %02d", std::max(d.hour, 0), std::max(d.minute, 0), d.day,
                       TIME_month_abbr(d.month), d.year % 100));
}

} // namespace

int UPA_file_type(const char *name)
{
    constexpr size_t kHead = 4096; // of the three lines that tell
    std::string head(kHead, '\0');
    {
        const FilePtr stream(FILE_open(name, "r"));
        if (!stream) {
            return -1;
        }
        head.resize(std::fread(head.data(), 1, head.size(), stream.get()));
    }
    const int type = upa_text_type(head);
    if (type != 0) {
        return type;
    }
    const std::string path = expanded(name);
    int64_t records = 0;
    return is_sound_netcdf("UPA_file_type", path.c_str(), &records) ? netcdf_layout(path.c_str())
                                                                    : -1;
}

int UPA_open(const char *name, int mode, int *type)
{
    if (state.type != kUpaNoType) {
        UPA_close(state.handle);
    }
    if (name == nullptr || (mode != kRead && mode != kWrite) ||
        (mode == kWrite && *type == kUpaNoType)) {
        return -1;
    }
    state = State{};
    state.name = name;
    state.mode = mode;
    state.handle = mode == kRead ? open_to_read(name, *type) : open_to_write(name, *type);
    if (state.handle == -1) {
        state = State{};
        return -1;
    }
    *type = state.type;
    return state.handle;
}

int UPA_close(int handle)
{
    if (state.type == kUpaNoType || handle != state.handle) {
        return -1;
    }
    if (is_netcdf(state.type)) {
        CDF_set_current(state.netcdf.id);
        CDF_close();
    } else if (state.type == kUpaXml) {
        put(xml_end());
    }
    const bool failed = state.mode == kWrite && state.out.keep() != 0;
    if (failed) {
        MSG_out(kMsgWarn, "UPA_close: %s: not all could be written\n", state.name.c_str());
    }
    state = State{};
    return failed ? -1 : 0;
}

int UPA_read_header(int handle, UpaFileHeader *header)
{
    *header = UpaFileHeader{};
    if (!is_open(handle, kRead)) {
        return -1;
    }
    if (is_foreign(state.type)) {
        set_foreign_date(header);
    } else {
        if (is_netcdf(state.type)) {
            read_netcdf_header(&state.netcdf, state.whole_records, header);
            if (!has_reports(state.netcdf)) {
                MSG_out(kMsgWarn, "UPA_read_header: %s: no variables of upper-air reports\n",
                        state.name.c_str());
            }
        } else {
            STR_copy(header->date_text, sizeof header->date_text, state.text.date_line());
            STR_remove_char(header->date_text, '\r');
        }
        TIME_parse(header->date_text, &header->date);
    }
    set_short_date(header);
    return 0;
}

int UPA_write_header(int handle, UpaFileHeader *header)
{
    if (!is_open(handle, kWrite)) {
        return -1;
    }
    if (is_netcdf(state.type)) {
        return write_netcdf_header(&state.netcdf, *header);
    }
    if (state.type == kUpaDigest) {
        BYTE_set_order(kLittleEndian);
        put(digest_heading(header->date));
    } else if (state.type == kUpaXml) {
        put(xml_opening(header->date_text));
    } else {
        const char *magic = upa_magic(state.type);
        put((magic ? std::string(magic) + "\n" : "") + header->date_text + "\n");
    }
    return 0;
}

int UPA_rewind_file(int handle)
{
    return is_open(handle, kRead) ? 0 : -1;
}

int UPA_read(int handle, UpaReport *report, int what, int *index)
{
    if (!is_open(handle, kRead)) {
        return -1;
    }
    if (is_netcdf(state.type)) {
        return read_netcdf_report(state.netcdf, report, what, *index);
    }
    return is_foreign(state.type) ? read_foreign_report(report, what, *index)
                                  : state.text.read(report, what, *index);
}

int UPA_write(int handle, UpaReport *report, void * /*unused*/, int *index)
{
    if (!is_open(handle, kWrite)) {
        return -1;
    }
    WordWriter out;
    if (is_netcdf(state.type)) {
        if (write_netcdf_report(&state.netcdf, *report, *index) == -1) {
            return -1;
        }
    } else if (state.type == kUpaDigest) {
        put(digest_report(*report));
        return -1;
    } else if (state.type == kUpaXml) {
        put(xml_report(*report));
    } else if (state.type == kUpaShort || state.type == kUpaLonger) {
        write_short_text(out, state.type, report);
        put(out.text());
    } else {
        write_row_text(out, state.type, *report);
        put(out.text());
    }
    ++*index;
    return 0;
}
