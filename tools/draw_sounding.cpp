// Draws a sounding from a file of upper-air reports: the diagram with the parcel's path and the
// barbs, the hodograph, and the indices beside them; or lists its analysis.
//
//   draw_sounding [-t] [-e] [-l] [-p parcel] file [device text [station [folder of the fonts]]]
//
//   -t  a tephigram in place of the skew-T; -e the tephigram with upright axes
//   -l  no picture: print levels, indices, winds and the storm table
//   -p  the parcel: sfc, maxt, layer:50, 850:21:14
//
// e.g.  draw_sounding 14061619.OAX p,oax.ps,color     The device text is the value of the resource
// `device`. Any form is read: reports as stored, bulletins, tables of other sources. A raw sounding
// file (its first word is TYRRAW) will do too.

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "tyr/base/date.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/field/hodograph.h"
#include "tyr/field/sounding_plot.h"
#include "tyr/geo/domain.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/plot/area.h"
#include "tyr/plot/attributes.h"
#include "tyr/plot/plot_session.h"
#include "tyr/upper_air/analysis.h"
#include "tyr/upper_air/assembly.h"
#include "tyr/upper_air/parcel_choice.h"
#include "tyr/upper_air/raw_sounding.h"
#include "tyr/upper_air/sounding_listing.h"
#include "tyr/upper_air/sounding_store.h"
#include "tyr/upper_air/stations.h"

namespace {

constexpr float kAspect = 1.38F;       // width over height of the picture
constexpr float kHodographTop = 12000; // m above the ground

struct Options {
    int proj = kProjSkewT;
    bool lists = false;
    const char *file = nullptr;
    const char *device = "p,sounding.ps,color";
    const char *station = nullptr;
    const char *fonts = "data";
};

bool read_options(int count, char **words, Options *options)
{
    std::vector<const char *> rest;
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word == "-t")
            options->proj = kProjTephigram;
        else if (word == "-e")
            options->proj = kProjRotatedTephigram;
        else if (word == "-l")
            options->lists = true;
        else if (word == "-p" && i + 1 < count)
            RES_put("plot_param", ("par=" + std::string(words[++i])).c_str());
        else
            rest.push_back(words[i]);
    }
    const char **places[] = {&options->file, &options->device, &options->station, &options->fonts};
    for (size_t i = 0; i < rest.size() && i < std::size(places); ++i)
        *places[i] = rest[i];
    return options->file != nullptr;
}

bool is_raw(const char *name)
{
    constexpr const char *kMagic = "TYRRAW";
    char word[7] = "";
    FILE *file = std::fopen(name, "rb");
    if (file == nullptr)
        return false; // told when it is opened as reports
    const bool found = std::fread(word, 1, 6, file) == 6 && std::strcmp(word, kMagic) == 0;
    std::fclose(file);
    return found;
}

// The station that was asked for, or the first that gives a sounding.
bool find_report(const char *station)
{
    static UpaReport report;
    if (station != nullptr && *station != '\0') {
        if (UPA_get_station(station, &report) != 1 || THERM_process_report(&report) != 1)
            return false;
    } else {
        bool found = false;
        while (!found && UPA_next_station(&report) == 0)
            found = THERM_process_report(&report) == 1;
        if (!found)
            return false;
    }
    DateRec date;
    UPA_get_date(&date);
    THERM_set_date(&date);
    THERM_set_station(report.id);
    return true;
}

bool load(const Options &options)
{
    if (is_raw(options.file)) {
        THERM_read_raw(options.file);
        return THERM_store().num_temps > 0;
    }
    if (UPA_open_file(options.file) != 1)
        return false;
    if (find_report(options.station))
        return true;
    MSG_out(kMsgError, "draw_sounding: %s: No sounding in it\n", options.file);
    return false;
}

void use_text(float height)
{
    AttrRec attr;
    ATTR_init(&attr);
    ATTR_from_resource("color_text", PLT_is_light() != 0 ? "black" : "white", &attr);
    GPH_set_text_attr(nullptr, height);
    GPH_set_text_attr(&attr, height);
}

void list_all()
{
    THERM_print_levels();
    THERM_print_wind_levels();
    THERM_print_indices();
    THERM_print_winds();
    THERM_print_storm();
}

// A column of numbers with their names.
class Panel {
  public:
    Panel(float x, float y, float width, float size) : x_(x), y_(y), width_(width), size_(size) {}
    void heading(const char *text)
    {
        y_ -= 0.6F * size_;
        GPH_set_text_align(kAlignLeft, kAlignHalf);
        gset_text_width(2.0F);
        GPH_text_at("%s", x_, y_, text);
        gset_text_width(1.0F);
        y_ -= 1.9F * size_;
    }
    void row(const char *name, float value, int decimals, const char *unit)
    {
        GPH_set_text_align(kAlignLeft, kAlignHalf);
        GPH_text_at("%s", x_, y_, name);
        GPH_set_text_align(kAlignRight, kAlignHalf);
        if (is_missing(value) || value == -1.0F)
            GPH_text_at("-", x_ + 0.76F * width_, y_);
        else
            GPH_text_at("%.*f", x_ + 0.76F * width_, y_, decimals, double{value});
        GPH_set_text_align(kAlignLeft, kAlignHalf);
        GPH_text_at("%s", x_ + 0.80F * width_, y_, unit);
        y_ -= 1.75F * size_;
    }

  private:
    float x_, y_, width_, size_;
};

void draw_panel(const float area[4], float size)
{
    const SoundingResults &r = THERM_results();
    const SoundingStore &s = THERM_store();
    Panel panel(area[0], area[3], area[1] - area[0], size);
    panel.heading("Parcel");
    panel.row("CAPE", r.parcel.cape, 0, "J/kg");
    // without free convection it sums up to the top, which tells nothing
    panel.row("CIN", r.parcel.lfc_p > 0.0F ? r.parcel.cin : kMissing, 0, "J/kg");
    panel.row("LCL", r.parcel.lcl_p, 0, "hPa");
    panel.row("LFC", r.parcel.lfc_p, 0, "hPa");
    panel.row("EL", r.parcel.el_p, 0, "hPa");
    panel.heading("Stability");
    panel.row("Lifted", r.lifted, 1, "C");
    panel.row("Showalter", r.showalter, 1, "C");
    panel.row("Total totals", r.totals, 1, "C");
    panel.row("K", r.k, 1, "");
    panel.row("SWEAT", r.sweat, 0, "");
    panel.row("Cap", r.cap, 1, "C");
    panel.row("700-500", r.lapse_rate, 1, "C/km");
    const float mm = is_missing(r.precip_water) ? kMissing : 25.4F * r.precip_water;
    panel.row("Precip water", mm, 1, "mm");
    panel.heading("Wind");
    panel.row("Storm from", s.storm_motion.dir, 0, "deg");
    panel.row("Storm speed", s.storm_motion.spd, 0, "kt");
    panel.row("Helicity 0-3 km", r.helicity[kHelTotal], 0, "m2/s2");
    panel.row("Bulk shear", r.bulk_shear, 0, "m/s");
    panel.row("Richardson", r.richardson, 0, "");
}

void draw_title(const float area[4], float size)
{
    const SoundingStore &s = THERM_store();
    char date[kDateTextRoom] = "";
    if (s.date.month > 0)
        TIME_format(&s.date, date);
    else if (s.date.day > 0 && s.date.hour >= 0) // a bulletin tells no month
        std::snprintf(date, sizeof date, "day %d %02dZ", s.date.day, s.date.hour);
    use_text(size);
    gset_text_width(2.0F);
    GPH_set_text_align(kAlignLeft, kAlignHalf);
    GPH_text_at("%s  %s", area[0], area[2] + size, s.station, date);
    gset_text_width(1.0F);
}

int draw(const Options &options)
{
    if (PLT_begin(kAspect) != 0)
        return 1;
    float v[4];
    PLT_get_viewport(v);
    const float w = v[1] - v[0];
    const float h = v[3] - v[2];
    const auto part = [&](float x0, float x1, float y0, float y1) {
        return std::vector<float>{v[0] + x0 * w, v[0] + x1 * w, v[2] + y0 * h, v[2] + y1 * h};
    };
    const std::vector<float> diagram = part(0.05F, 0.66F, 0.05F, 0.94F);
    const std::vector<float> rings = part(0.75F, 1.0F, 0.59F, 0.94F);
    const SoundingStore &s = THERM_store();
    ParcelPath path{THERM_parcel_choice().parcel, THERM_results().parcel};
    THERM_plot_diagram(options.proj, diagram.data(), s.temps, s.num_temps, &path);
    THERM_plot_levels(diagram.data(), s.temps, s.num_temps, &path);
    THERM_plot_barbs(v[0] + 0.705F * w, 0.032F * w, 0.019F * h, s.winds, s.num_winds, s.temps,
                     s.num_temps);
    const float storm[2] = {s.storm_motion.dir, s.storm_motion.spd};
    THERM_plot_hodograph(rings.data(), s.winds, s.num_winds, storm, kHodographTop);
    use_text(0.0125F * h);
    draw_panel(part(0.765F, 1.0F, 0.05F, 0.555F).data(), 0.0125F * h);
    draw_title(part(0.05F, 1.0F, 0.955F, 1.0F).data(), 0.018F * h);
    return PLT_end() == 0 ? 0 : 1;
}

} // namespace

int main(int count, char **words)
{
    Options options;
    if (!read_options(count, words, &options)) {
        std::fputs("draw_sounding [-t] [-e] [-l] [-p parcel] FILE [DEVICE [STATION [FONTS]]]\n",
                   stderr);
        return 1;
    }
    RES_put("file_path", options.fonts);
    RES_put("device", options.device);
    RES_put("title", "Sounding");
    MSG_set_paging(0);
    if (!load(options))
        return 1;
    THERM_compute();
    if (options.lists) {
        list_all();
        return 0;
    }
    return draw(options);
}
