#include "tyr/upper_air/upa_xml.h"

#include <algorithm>

#include "base/missing.h"
#include "base/str.h"

namespace tyr {

namespace {

constexpr float kWholePressures = 100.0F; // below, tenths are told

std::string escaped(const std::string &text)
{
    std::string out;
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            // signs that XML doesn't know in any spelling, and bytes that are no UTF-8
            out += c >= ' ' && c <= '~' ? c : '?';
        }
    }
    return out;
}

std::string attribute(const char *name, int decimals, float value)
{
    return is_missing(value) ? "" : STR_print(" %s=\"%.*f\"", name, decimals, value);
}

std::string pressure(float p)
{
    return attribute("pres.mb", p >= kWholePressures ? 0 : 1, p);
}

std::string temperatures(float t, float td)
{
    return attribute("temp.C", 1, t) + attribute("dewp.C", 1, td);
}

std::string wind(float dir, float spd)
{
    return attribute("wdir.deg", 0, dir) + attribute("wspd.knt", 0, spd);
}

std::string mand_line(const char *type, const SoundLevel &level)
{
    if (is_missing(level.p)) {
        return "";
    }
    const std::string opening =
        *type == '\0' ? "    <level" : STR_print("    <level type=\"%s\"", type);
    return opening + pressure(level.p) + attribute("hght.m", 0, level.z) +
           temperatures(level.t, level.td) + wind(level.dir, level.spd) + "/>\n";
}

std::string mand_list(const UpaReport &report)
{
    std::string text = "  <mand_level>\n" + mand_line("sfc", report.mand[kUpaSurface]);
    for (int slot = kUpa1000; slot <= kUpa1; ++slot) {
        text += mand_line("", report.mand[slot]);
    }
    SoundLevel max_wind = report.mand[kUpaMaxWind];
    max_wind.t = max_wind.td = kMissing;
    return text + mand_line("trop", report.mand[kUpaTropopause]) + mand_line("mwnd", max_wind) +
           "  </mand_level>\n";
}

std::string sig_line(float p, float t, float td)
{
    return is_missing(p) ? "" : "    <level" + pressure(p) + temperatures(t, td) + "/>\n";
}

std::string sig_list(const UpaReport &report)
{
    const SoundLevel &surface = report.mand[kUpaSurface];
    std::string text = "  <sig_level>\n";
    for (int i = 0; i < std::min(report.num_sig, kUpaSignificant); ++i) {
        text += sig_line(report.sig[i].p, report.sig[i].t, report.sig[i].td);
    }
    if (report.num_sig <= 0) {
        text += sig_line(surface.p, surface.t, surface.td);
    }
    return text + "  </sig_level>\n";
}

std::string wnd_line(float z, float dir, float spd)
{
    return is_missing(z) ? "" : "    <level" + attribute("hght.m", 0, z) + wind(dir, spd) + "/>\n";
}

std::string wnd_list(const UpaReport &report)
{
    const SoundLevel &surface = report.mand[kUpaSurface];
    std::string text = "  <wnd_level>\n";
    for (int i = 0; i < std::min(report.num_wnd, kUpaWinds); ++i) {
        text += wnd_line(report.wnd[i].z, report.wnd[i].dir, report.wnd[i].spd);
    }
    if (report.num_wnd <= 0) {
        text += wnd_line(0.0F, surface.dir, surface.spd);
    }
    return text + "  </wnd_level>\n";
}

} // namespace

std::string xml_opening(const std::string &date_text)
{
    return "<tyrupa date=\"" + escaped(date_text) + "\">\n";
}

std::string xml_end()
{
    return "</tyrupa>\n";
}

std::string xml_report(const UpaReport &report)
{
    std::string text =
        STR_print("<obs wmo=\"%5.5d\" id=\"%s\"", report.wmo, escaped(report.id).c_str());
    if (!is_missing(report.lat)) {
        text += STR_print(" lat=\"%.2f\" lon=\"%.2f\"", report.lat, report.lon);
    }
    return text + ">\n" + mand_list(report) + sig_list(report) + wnd_list(report) + "</obs>\n";
}

} // namespace tyr
