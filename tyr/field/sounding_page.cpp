#include "tyr/field/sounding_page.h"

#include <cstdio>
#include <vector>

#include "tyr/base/date.h"
#include "tyr/base/missing.h"
#include "tyr/base/sys.h"
#include "tyr/field/hodograph.h"
#include "tyr/field/sounding_plot.h"
#include "tyr/geo/domain.h"
#include "tyr/gks/gks.h"
#include "tyr/gks/session.h"
#include "tyr/plot/area.h"
#include "tyr/plot/attributes.h"
#include "tyr/plot/dump.h"
#include "tyr/plot/interaction.h"
#include "tyr/plot/plot_session.h"
#include "tyr/upper_air/analysis.h"
#include "tyr/upper_air/parcel_choice.h"
#include "tyr/upper_air/sounding_store.h"
#include "tyr/x11/frames.h"

namespace tyr {

namespace {

constexpr float kAspect = 1.38F;       // width over height of the picture
constexpr float kHodographTop = 12000; // m above the ground

void use_text(float height)
{
    AttrRec attr;
    ATTR_init(&attr);
    ATTR_from_resource("color_text", PLT_is_light() != 0 ? "black" : "white", &attr);
    GPH_set_text_attr(nullptr, height);
    GPH_set_text_attr(&attr, height);
}

/// A column of numbers with their names.
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
        if (is_missing(value) || value == -1.0F) {
            GPH_text_at("-", x_ + 0.76F * width_, y_);
        } else {
            GPH_text_at("%.*f", x_ + 0.76F * width_, y_, decimals, double{value});
        }
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
    if (s.date.month > 0) {
        TIME_format(&s.date, date);
    } else if (s.date.day > 0 && s.date.hour >= 0) { // a bulletin tells no month
        std::snprintf(date, sizeof date, "day %d %02dZ", s.date.day, s.date.hour);
    }
    use_text(size);
    gset_text_width(2.0F);
    GPH_set_text_align(kAlignLeft, kAlignHalf);
    GPH_text_at("%s  %s", area[0], area[2] + size, s.station, date);
    gset_text_width(1.0F);
}

int projection_of(SoundingPage kind)
{
    return kind == SoundingPage::kTephigram ? kProjTephigram
           : kind == SoundingPage::kUpright ? kProjRotatedTephigram
                                            : kProjSkewT;
}

/// The plot area, and parts of it.
struct Sheet {
    Sheet() { PLT_get_viewport(v); }
    std::vector<float> part(float x0, float x1, float y0, float y1) const
    {
        return {v[0] + x0 * width(), v[0] + x1 * width(), v[2] + y0 * height(),
                v[2] + y1 * height()};
    }
    float width() const { return v[1] - v[0]; }
    float height() const { return v[3] - v[2]; }

    float v[4] = {};
};

void draw_hodograph(const std::vector<float> &area)
{
    const SoundingStore &s = THERM_store();
    const float storm[2] = {s.storm_motion.dir, s.storm_motion.spd};
    THERM_plot_hodograph(area.data(), s.winds, s.num_winds, storm, kHodographTop);
}

void draw_diagram(SoundingPage kind, const Sheet &sheet)
{
    const std::vector<float> area = sheet.part(0.05F, 0.66F, 0.05F, 0.94F);
    const SoundingStore &s = THERM_store();
    const ParcelPath path{THERM_parcel_choice().parcel, THERM_results().parcel};
    THERM_plot_diagram(projection_of(kind), area.data(), s.temps, s.num_temps, &path);
    THERM_plot_levels(area.data(), s.temps, s.num_temps, &path);
    THERM_plot_barbs(sheet.v[0] + 0.705F * sheet.width(), 0.032F * sheet.width(),
                     0.019F * sheet.height(), s.winds, s.num_winds, s.temps, s.num_temps);
    draw_hodograph(sheet.part(0.75F, 1.0F, 0.59F, 0.94F));
    const float size = 0.0125F * sheet.height();
    use_text(size);
    draw_panel(sheet.part(0.765F, 1.0F, 0.05F, 0.555F).data(), size);
}

void fill_page(SoundingPage kind)
{
    const Sheet sheet;
    if (kind == SoundingPage::kHodograph) {
        draw_hodograph(sheet.part(0.14F, 0.86F, 0.02F, 0.94F));
    } else {
        draw_diagram(kind, sheet);
    }
    draw_title(sheet.part(0.05F, 1.0F, 0.955F, 1.0F).data(), 0.018F * sheet.height());
    PLT_dump(kCurrentFrame);
}

/// What a window shows.
SoundingPage last_kind = SoundingPage::kSkewT;

/// A window that took another size is drawn anew.
int redraw(DomainRec * /*domain*/)
{
    if (PLT_restart(kAspect) == 0) {
        fill_page(last_kind);
    }
    return 0;
}

void on_event(int /*kind*/, const char *event, float x, float y)
{
    PLT_size_event(event, x, y);
}

} // namespace

int draw_sounding_page(SoundingPage kind)
{
    if (PLT_begin(kAspect) != 0) {
        return kExitNothing;
    }
    last_kind = kind;
    PLT_set_callback(on_event);
    PLT_set_size_callback(redraw);
    fill_page(kind);
    PLT_end();
    return PLT_dump_failed() ? kExitNoDump : kExitNormal;
}

} // namespace tyr
