#include "tyr/start/options.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "tyr/base/date.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/base/sys.h"
#include "tyr/start/option_table_private.h"
#include "tyr/start/startup.h"

using namespace tyr;

namespace {

constexpr const char *kClassName = "Tyr";

void help_line(const char *usage, const char *help)
{
    MSG_out(kMsgPrint, " %-10s  %s\n", usage, help);
}

/// Fills records from a list of codes, as far as there is room for them and the end.
int fill(std::array<OptionRec, kMaxOptions> &records, int count, const int *codes)
{
    for (; codes && *codes && count < kMaxOptions - 1; ++codes) {
        OPT_lookup(&records[count++], *codes);
    }
    return count;
}

/// What shells complete words by: key, resource, `flag` or `value`, usage, the first line of the
/// help, with tabs between.
void print_rows(const int *keyed)
{
    for (; keyed && *keyed; ++keyed) {
        const OptionRow *row = option_row(*keyed);
        if (!row || !row->key) {
            continue;
        }
        const bool is_flag =
            row->type == kResFlag || row->type == kResBatch || row->type == kResHelp;
        std::string help = row->help;
        help.erase(0, help.find_first_not_of(" \n"));
        help.resize(std::min(help.find('\n'), help.size()));
        std::printf("%s\t%s\t%s\t%s\t%s\n", row->key, row->resource, is_flag ? "flag" : "value",
                    row->usage, help.c_str());
    }
}

} // namespace

int OPT_init(int count, char **arguments, const int *keyed, const int *positional)
{
    if (count == 2 && std::string_view(arguments[1]) == "--option-table") {
        print_rows(keyed);
        SYS_exit(kExitNormal);
    }
    PRM_clear(kMissingInt);
    std::array<OptionRec, kMaxOptions> records;
    const int filled = fill(records, fill(records, 0, keyed), positional);
    records[filled] = OptionRec();
    RES_init(count > 0 ? arguments[0] : "", kClassName, count, arguments, records.data());
    const char *zone = std::getenv("tyrtz");
    if (zone && TIME_set_zone(zone) != 0) {
        MSG_out(kMsgWarn, "OPT_init: tyrtz is no time zone: %s\n", zone);
    }
    return 1;
}

void OPT_lookup(OptionRec *record, int code)
{
    *record = OptionRec();
    const OptionRow *row = option_row(code);
    if (!row) {
        record->name = "";
        std::printf("%d\n", code);
        return;
    }
    record->name = row->resource;
    record->environment = row->environment;
    record->key = row->key ? row->key : OPT_place_key(row->place);
    record->type = row->type;
}

void OPT_usage(const char *program, const int *keyed, const int *positional)
{
    MSG_out(kMsgPrint, "%s syntax (version:%s)\n", program, SYS_version());
    MSG_out(kMsgPrint, "   %s [options...]\n", program);
    MSG_out(kMsgPrint, "Keyed options...\n");
    help_line("-df file", "Resource/defaults file name");
    help_line("-na name", "Program name");
    for (; keyed && *keyed; ++keyed) {
        OPT_help_line(*keyed);
    }
    MSG_out(kMsgPrint, "Positional options...\n");
    for (; positional && *positional; ++positional) {
        OPT_help_line(*positional);
    }
}

void OPT_help_line(int code)
{
    const OptionRow *row = option_row(code);
    if (!row) {
        return;
    }
    if (!row->long_help) {
        help_line(row->usage, row->help);
        return;
    }
    // line by line, as the pager counts the newlines of formats
    const std::vector<std::string> lines = STR_fields(row->help, '\n');
    MSG_out(kMsgPrint, " %-10s%s\n", row->usage, lines[0].c_str());
    for (size_t i = 1; i < lines.size(); ++i) {
        MSG_out(kMsgPrint, "%s\n", lines[i].c_str());
    }
}
