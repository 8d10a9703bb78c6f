// Grids and options that no one should draw: each ends with a line or an empty picture, and the
// plot after it is as ever.

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/world_plot.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/field/contour.h"
#include "tyr/field/vector.h"
#include "tyr/geo/projection.h"
#include "tyr/gks/gks.h"
#include "tyr/plot/area.h"
#include "tyr/plot/colour_bar.h"
#include "tyr/plot/view.h"

namespace {

constexpr size_t kMostStrokes = 1000000; ///< of what stays a picture
constexpr float kInf = INFINITY;

using Value = float (*)(int column, int row);

struct GridCase {
    const char *name;
    int nx, ny;
    Value value;
    bool is_empty; ///< has no cell to draw
};
constexpr GridCase kGrids[] = {
    {"one point", 1, 1, [](int, int) { return 5.0F; }, true},
    {"one row", 9, 1, [](int i, int) { return static_cast<float>(i); }, true},
    {"one column", 1, 9, [](int, int j) { return static_cast<float>(j); }, true},
    {"one cell", 2, 2, [](int i, int j) { return static_cast<float>(3 * i + 7 * j); }, false},
    {"all missing", 9, 7, [](int, int) { return kMissing; }, true},
    {"all infinite", 9, 7, [](int, int) { return kInf; }, true},
    {"both infinities", 9, 7, [](int i, int) { return i % 2 != 0 ? kInf : -kInf; }, true},
    {"no numbers", 9, 7, [](int, int) { return NAN; }, true},
    {"some of each", 9, 7,
     [](int i, int j) {
         constexpr float kOdd[] = {kInf, NAN, -kInf, kMissing};
         return (i + j) % 5 == 0 ? kOdd[(i + 2 * j) % 4] : static_cast<float>(i * j);
     },
     false},
    {"the largest numbers", 9, 7, [](int i, int) { return i % 2 != 0 ? FLT_MAX : -FLT_MAX; },
     false},
    {"the smallest numbers", 9, 7, [](int i, int) { return FLT_TRUE_MIN * static_cast<float>(i); },
     false},
    {"one value", 9, 7, [](int, int) { return 5.0F; }, false},
    {"plain", 25, 19,
     [](int i, int j) { return 50.0F + 30.0F * std::sin(0.5F * static_cast<float>(i + 2 * j)); },
     false},
};

class Field {
  public:
    explicit Field(const GridCase &c, float part = 1.0F)
    {
        GRD_init(&g);
        g.domain.proj = kProjLatLon;
        g.domain.clat = 40.0F;
        g.domain.clon = -90.0F;
        g.domain.dx = g.domain.dy = 2.0F;
        g.domain.nx = c.nx;
        g.domain.ny = c.ny;
        GRD_alloc(&g);
        for (int row = 0; row < c.ny; ++row)
            for (int column = 0; column < c.nx; ++column) {
                const float value = c.value(column, row);
                g.values[row * c.nx + column] = value == kMissing ? value : value * part;
            }
    }
    ~Field() { GRD_free(&g); }
    Field(const Field &) = delete;
    Field &operator=(const Field &) = delete;
    GridRec g;
};

/// Settings of a plot; what isn't told is unset.
struct Options {
    std::string format, interval, base, fill, params;
};

const std::string kNice = "0"; ///< interval
const std::string kDigits(4000, '9');
std::string repeated(const std::string &word, int count)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += word;
    return text;
}

std::vector<std::string> nonsense()
{
    return {"",
            ":::::",
            "=",
            "lab=:in=:cb=:mn=:mx=:sc=:sk=:xy=:cof=:fi=:co=:wi=:st=:fp=",
            "sk=1:",
            "sk=:2",
            "sk=0",
            "sk=-7,-9",
            "sk=" + kDigits,
            "xy=1e38,1e38",
            "xy=" + kDigits + "," + kDigits,
            "lab=" + kDigits,
            "lab=1.1.1.1",
            "lab=-1.-1.-1.-1",
            "lab=1.99999.1.1",
            "sc=1e30",
            "sc=1e-30",
            "sc=-" + kDigits,
            "in=0",
            "in=-5",
            "in=1e-30",
            "in=1e-38",
            "in=1e30",
            "in=" + kDigits,
            "in=nan",
            "cb=1e30",
            "cb=-1e38",
            "cb=inf",
            "cb=1e9:sc=1000",
            "mn=1e30:mx=-1e30",
            "mn=-1e38:mx=1e38",
            "ss=1e30",
            "ss=1e-30:sc=1000",
            "%n%n%s%s",
            "%999999999d",
            "%.999999999f",
            "%*f",
            "co=999999:wi=1e30:st=999999:fp=-1",
            "wi=" + kDigits,
            "fi=" + kDigits,
            "cof=" + repeated("1-500,", 1000),
            "cof=" + repeated("5:red,", 5000),
            std::string(1000, '('),
            std::string(100000, 'x'),
            repeated("bar:lab=23:value:cf:sk=2:", 5000)};
}

/// A page with what `draw` draws, on the grid's own map or on one that shows it whole.
PsPage drawn(const GridRec &grid, const Options &options, bool on_own_map,
             const std::function<void()> &draw)
{
    PRM_clear(kMissingInt);
    PRM_set(kPrmBatch, 0);
    MSG_set_mask(0, 0); // refusals come by the hundred
    const std::pair<const char *, const std::string &> resources[] = {
        {"plot_format", options.format},
        {"con_interval",
         options.interval.empty() ? kNice : options.interval}, // else it is asked for
        {"con_base", options.base},
        {"color_fill", options.fill},
        {"plot_param", options.params}};
    for (const auto &[name, text] : resources)
        RES_put(name, text.empty() ? nullptr : text.c_str());
    DomainRec domain = grid.domain;
    if (!on_own_map) {
        domain.proj = kProjMollweide;
        domain.nx = 101;
        domain.ny = 61;
        domain.dx = domain.dy = 3.0F;
    }
    PLT_set_margins(0.05F, 0.05F, 0.05F, 0.05F);
    PlotSession session(DOM_aspect(&domain));
    EXPECT_EQ(session.begun(), 0);
    PLT_set_domain(&domain);
    draw();
    PsPage page = session.finish();
    EXPECT_EQ(page.error, "");
    EXPECT_LT(page.strokes.size(), kMostStrokes);
    const auto is_finite = [](const PsPoint &p) {
        return std::isfinite(p[0]) && std::isfinite(p[1]);
    };
    for (const PsStroke &s : page.strokes)
        EXPECT_TRUE(std::all_of(s.points.begin(), s.points.end(), is_finite));
    return page;
}

PsPage contoured(const GridCase &c, const Options &options, bool on_own_map, bool with_bar = true)
{
    Field field(c);
    return drawn(field.g, options, on_own_map, [&field, with_bar] {
        CONT_setup(0, -1, &field.g, nullptr, nullptr);
        CONT_draw(&field.g);
        if (with_bar)
            PLT_color_bar(1, "");
    });
}

constexpr const char *kKept = "sc=1:ss=1:sk=1:"; ///< what stays from plot to plot

PsPage blown(const GridCase &c, const char *kind, const Options &options, bool on_own_map)
{
    Field u(c);
    Field v(c, 0.5F);
    return drawn(u.g, options, on_own_map, [&] {
        VECT_set_kind(kVectArrows, (std::string(kKept) + kind + ":" + options.format).c_str());
        VECT_setup(0, -1, &u.g, &v.g, nullptr, nullptr);
        VECT_draw(&u.g, &v.g);
        VECT_legend();
    });
}

size_t count_of(const PsPage &page)
{
    return static_cast<size_t>(std::count_if(page.strokes.begin(), page.strokes.end(),
                                             [](const PsStroke &s) { return s.text < 0; }));
}

/// What a plain plot looks like; the same after each bad one.
const GridCase &plain()
{
    return *std::find_if(std::begin(kGrids), std::end(kGrids),
                         [](const GridCase &c) { return std::string(c.name) == "plain"; });
}

const char *const kKinds[] = {"ln", "cf", "lcf", "dln", "value"};
const char *const kVectors[] = {"vect", "barb", "strm"};

} // namespace

TEST(BadField, GridsWithoutCellsAndOddValues)
{
    for (const GridCase &c : kGrids)
        for (const bool on_own_map : {true, false})
            for (const char *kind : kKinds) {
                SCOPED_TRACE(std::string(c.name) + " " + kind + (on_own_map ? "" : " on a map"));
                const PsPage page = contoured(c, {kind}, on_own_map, false);
                if (c.is_empty && std::string(kind) != "value") {
                    EXPECT_EQ(count_of(page), 0U);
                }
            }
}

TEST(BadField, WindsWithoutCellsAndOddValues)
{
    for (const GridCase &c : kGrids)
        for (const bool on_own_map : {true, false})
            for (const char *kind : kVectors) {
                SCOPED_TRACE(std::string(c.name) + " " + kind + (on_own_map ? "" : " on a map"));
                blown(c, kind, {}, on_own_map);
            }
}

TEST(BadField, OptionsOfNonsense)
{
    const std::vector<std::string> expected = show_strokes(contoured(plain(), {"lcf"}, false));
    EXPECT_GT(expected.size(), 20U);
    bool on_own_map = false;
    for (const std::string &text : nonsense())
        for (const char *kind : kKinds) {
            SCOPED_TRACE(text.substr(0, 40) + " " + kind);
            on_own_map = !on_own_map;
            contoured(plain(), {text + ":" + kind}, on_own_map);
        }
    EXPECT_EQ(show_strokes(contoured(plain(), {"lcf"}, false)), expected);
}

TEST(BadField, WindOptionsOfNonsense)
{
    const std::vector<std::string> expected = show_strokes(blown(plain(), "barb", {}, false));
    EXPECT_GT(expected.size(), 20U);
    bool on_own_map = false;
    for (const std::string &text : nonsense())
        for (const char *kind : kVectors) {
            SCOPED_TRACE(text.substr(0, 40) + " " + kind);
            on_own_map = !on_own_map;
            blown(plain(), kind, {text}, on_own_map);
        }
    EXPECT_EQ(show_strokes(blown(plain(), "barb", {}, false)), expected);
}

TEST(BadField, IntervalsBasesAndLevelLists)
{
    const std::string rows = [] {
        std::string text;
        for (int i = 0; i < 1000000; ++i)
            text += std::to_string(i) + ":red,";
        return text;
    }();
    const struct {
        const char *name;
        Options options;
    } cases[] = {
        {"0", {"", "0", "", "", ""}},
        {"negative", {"", "-3", "", "", ""}},
        {"tiny", {"", "1e-30", "", "", ""}},
        {"huge", {"", "1e30", "", "", ""}},
        {"no number", {"", "(((", "", "", ""}},
        {"not a number", {"", "nan", "nan,<nan,>nan", "", ""}},
        {"a base far off", {"", "5", "1e30", "", ""}},
        {"a tiny interval far off", {"", "1e-3", "-1e30,<1e38,>-1e38", "", "maxl=0"}},
        {"limits crossed", {"", "5", ">60,<40", "", ""}},
        {"no cell too steep", {"", "1e-3", "", "", "maxl=0"}},
        {"no lines at all", {"", "1e-3", "", "", "maxl=-999999999"}},
        {"a million rows", {"", "", "", rows, ""}},
        {"rows downward", {"", "", "", "90:red,50:blue,10:green", ""}},
        {"rows that are one", {"", "", "", "50:red,50:blue,50:green", ""}},
        {"rows without end", {"", "", "", "1e38:red,3e38:blue,green", ""}},
        {"a file that isn't there", {"", "", "", "/nowhere/levels", ""}},
        {"words",
         {"", "5", "", "", "lab,lab=,lab 9:9:9:9,fill,fill=9999,plt_skip,plt_off 1e38:1e38"}},
    };
    for (const auto &c : cases)
        for (const char *kind : {"lcf", "value"}) {
            SCOPED_TRACE(std::string(c.name) + " " + kind);
            Options options = c.options;
            options.format = kind;
            contoured(plain(), options, true);
            blown(plain(), std::string(kind) == "lcf" ? "strm" : "vect", options, false);
        }
}

TEST(BadField, RecordsThatAreNoGrids)
{
    Field good(plain());
    Field small(kGrids[0]);
    GridRec none;
    GRD_init(&none);
    drawn(good.g, {"ln"}, true, [&] {
        EXPECT_EQ(CONT_draw(nullptr), -1);
        CONT_setup(0, -1, &none, nullptr, nullptr);
        EXPECT_EQ(CONT_draw(&none), -1);
        VECT_set_kind(kVectArrows, "vect");
        EXPECT_EQ(VECT_draw(nullptr, &good.g), -1);
        EXPECT_EQ(VECT_draw(&good.g, &none), -1);
        EXPECT_EQ(VECT_draw(&good.g, &small.g), -1) << "components of two sizes";
        VECT_setup(0, -1, &none, &none, nullptr, nullptr);
        VECT_trace(100.0F, &good.g, &none, 0, 0);
        VECT_trace(100.0F, &good.g, &good.g, -5, 7000);
        VECT_trace(NAN, &good.g, &good.g, 3, 3);
    });
}
