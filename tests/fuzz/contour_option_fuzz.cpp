// Lines of any bytes as the option text of contours and of winds, as interval, base, list of levels
// and words of plot_param; what follows are the values of a small grid. Drawn on the grid's own
// map, on one of the world and on one that shows a part of it.

#include <cmath>
#include <string>

#include "fuzz/input.h"
#include "tyr/base/missing.h"
#include "tyr/field/contour.h"
#include "tyr/field/vector.h"
#include "tyr/geo/domain.h"
#include "tyr/geo/projection.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/view.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace fuzz_contour {

class Field {
  public:
    /// Values by one byte each, round and round.
    Field(const std::string &bytes, size_t first)
    {
        GRD_init(&g);
        g.domain.proj = kProjLatLon;
        g.domain.clat = 35.0F;
        g.domain.clon = 170.0F;
        g.domain.nx = 9;
        g.domain.ny = 7;
        g.domain.dx = g.domain.dy = 8.0F;
        GRD_alloc(&g);
        for (size_t i = 0; i < 63; ++i) {
            g.values[i] = bytes.empty() ? std::sin(static_cast<float>(i + first))
                                        : value(bytes[(i + first) % bytes.size()]);
        }
    }
    ~Field() { GRD_free(&g); }
    Field(const Field &) = delete;
    Field &operator=(const Field &) = delete;
    GridRec g;

  private:
    static float value(char byte)
    {
        constexpr float kOdd[] = {kMissing, INFINITY, -INFINITY, NAN, 3e38F, -3e38F, 1e-44F};
        const auto i = static_cast<size_t>(static_cast<unsigned char>(byte));
        return i < std::size(kOdd) ? kOdd[i] : static_cast<float>(byte) / 4.0F;
    }
};

inline DomainRec map_of(const DomainRec &own, int proj)
{
    DomainRec d = own;
    d.proj = proj;
    d.dx = d.dy = proj == kProjMollweide ? 30.0F : 8.0F;
    return d;
}

} // namespace fuzz_contour

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin_plot();
    std::string text = fuzz_text(data, size);
    const std::string options = fuzz_line(text);
    for (const char *name : {"con_interval", "con_base", "color_fill", "plot_param"}) {
        const std::string line = fuzz_line(text);
        // a word alone would name a file, and no interval would be asked for
        const bool is_list = std::string(name) == "color_fill" && !line.empty();
        const bool is_asked = std::string(name) == "con_interval" && line.empty();
        RES_put(name, (is_list ? line + ",red" : is_asked ? "0" : line).c_str());
    }
    fuzz_contour::Field u(text, 0);
    fuzz_contour::Field v(text, 11);
    for (const int proj : {kProjLatLon, kProjMollweide, kProjLambert}) {
        const DomainRec domain = fuzz_contour::map_of(u.g.domain, proj);
        PLT_set_domain(proj == kProjLatLon ? &u.g.domain : &domain);
        PLT_set_bar_mode(0);
        RES_put("plot_format", ("lcf:" + options).c_str());
        CONT_setup(0, -1, &u.g, nullptr, nullptr);
        CONT_draw(&u.g);
        PLT_color_bar(1, "");
        for (const char *kind : {"vect:", "barb:", "strm:"}) {
            VECT_set_kind(kVectArrows, ("sc=1:ss=1:sk=1:mn=-1:mx=1e9:" + (kind + options)).c_str());
            VECT_setup(0, -1, &u.g, &v.g, nullptr, nullptr);
            VECT_draw(&u.g, &v.g);
            VECT_legend();
        }
    }
    return 0;
}
