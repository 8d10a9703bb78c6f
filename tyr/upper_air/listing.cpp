#include "tyr/upper_air/listing.h"

#include <algorithm>

#include "base/missing.h"
#include "base/msg.h"
#include "timefile/date.h"
#include "tyr/upper_air/stations.h"

namespace {

const char *slot_label(int slot)
{
    switch (slot) {
    case kUpaSurface:
        return "SFC  ";
    case kUpaTropopause:
        return "TROP ";
    case kUpaMaxWind:
        return "MWND ";
    default:
        return "     ";
    }
}

void print_station_line(unsigned mask, const UpaReport &report)
{
    MSG_out(mask, "STA: %5s WMO: %05ld LAT: %7.2f LON: %7.2f\n", report.id, long{report.wmo},
            report.lat, report.lon);
}

void print_mand(unsigned mask, const UpaReport &report)
{
    MSG_out(mask, "     Press    Height   Temp    Dewpt     Dir    Spd\n");
    for (int slot = kUpaSurface; slot <= kUpaMaxWind; ++slot) {
        const SoundLevel &level = report.mand[slot];
        if (!is_missing(level.p)) {
            MSG_out(mask, "%s%6.1f  %7.0f  %7.1f %7.1f  %6.0f %6.0f\n", slot_label(slot), level.p,
                    level.z, level.t, level.td, level.dir, level.spd);
        }
    }
}

void print_sig(unsigned mask, const UpaReport &report)
{
    const int count = std::clamp(report.num_sig, 0, kUpaSignificant);
    const int half = count / 2;
    MSG_out(mask, "Press    Temp    Dewpt     Press    Temp    Dewpt\n");
    for (int i = 0; i < half; ++i) {
        const UpaSigLevel &left = report.sig[i];
        const UpaSigLevel &right = report.sig[i + half];
        MSG_out(mask, "%6.1f  %7.1f %7.1f    ", left.p, left.t, left.td);
        MSG_out(mask, "%6.1f  %7.1f %7.1f\n", right.p, right.t, right.td);
    }
    if (count % 2 == 1) {
        const UpaSigLevel &last = report.sig[count - 1];
        MSG_out(mask, "%6.1f  %7.1f %7.1f\n", last.p, last.t, last.td);
    }
}

void print_wind(unsigned mask, const UpaReport &report)
{
    const int count = std::clamp(report.num_wnd, 0, kUpaWinds);
    const int half = count / 2;
    MSG_out(mask, "Height    Dir    Spd     Height    Dir    Spd\n");
    for (int i = 0; i < half; ++i) {
        const UpaWindLevel &left = report.wnd[i];
        const UpaWindLevel &right = report.wnd[i + half];
        MSG_out(mask, "%6.0f  %6.0f %6.0f    ", left.z, left.dir, left.spd);
        MSG_out(mask, "%6.0f  %6.0f %6.0f\n", right.z, right.dir, right.spd);
    }
    if (count % 2 == 1) {
        const UpaWindLevel &last = report.wnd[count - 1];
        MSG_out(mask, "%6.0f  %6.0f %6.0f\n", last.z, last.dir, last.spd);
    }
}

} // namespace

void UPA_print_station(unsigned mask, const UpaReport *report)
{
    DateRec date;
    UPA_get_date(&date);
    char text[kDateTextRoom] = {};
    TIME_format(&date, text);
    MSG_out(mask, "Date:%s\n", text);
    MSG_out(mask, "Station: %s\n", report->id);
    if (report->wmo != kMissingInt) {
        MSG_out(mask, "WMO ident: %6ld\n", long{report->wmo});
    }
    if (!is_missing(report->lat)) {
        MSG_out(mask, "Latitude:  %6.2f\n", report->lat);
    }
    if (!is_missing(report->lon)) {
        MSG_out(mask, "Longitude: %6.2f\n", report->lon);
    }
    if (!is_missing(report->elev)) {
        MSG_out(mask, "Elevation: %6.2f\n", report->elev);
    }
}

void UPA_print_report(unsigned mask, const UpaReport *report)
{
    print_mand(mask, *report);
    print_sig(mask, *report);
    print_wind(mask, *report);
}

void UPA_print_mand(unsigned mask, const UpaReport *report)
{
    print_station_line(mask, *report);
    print_mand(mask, *report);
}

void UPA_print_sig(unsigned mask, const UpaReport *report)
{
    print_station_line(mask, *report);
    print_sig(mask, *report);
}

void UPA_print_wind(unsigned mask, const UpaReport *report)
{
    print_station_line(mask, *report);
    print_wind(mask, *report);
}
