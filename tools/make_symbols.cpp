// Makes data/wx.smb, the signs of present weather, from strokes:
//
//     make_symbols > data/wx.smb
//
// Each sign stands under its number of the WMO's code table 4677 and, where a report of an airport
// has a word for it, under that word too. A file holds a hundred signs.

#include <cmath>
#include <cstdio>
#include <functional>
#include <initializer_list>
#include <numbers>
#include <string>
#include <vector>

namespace {

constexpr double kDot = 0.075;  ///< radius of a rain drop
constexpr double kStar = 0.11;  ///< radius of a snow star
constexpr double kComma = 0.07; ///< radius of a drizzle drop's head
constexpr double kHigh = 0.82;  ///< height of what stands over a shower or a thunderstorm

struct Point {
    double x, y;
};

using Path = std::vector<Point>;

void put(const Path &path, bool filled = false)
{
    for (const Point &p : path) {
        std::printf(" %.3f,%.3f", p.x, p.y);
    }
    std::printf(filled ? " F\n" : " L\n");
}

/// Points of an ellipse from one angle (degrees from east) to another.
Path arc(double x, double y, double rx, double ry, double from, double to, int steps = 10)
{
    Path path;
    for (int i = 0; i <= steps; ++i) {
        const double a = (from + (to - from) * i / steps) * std::numbers::pi / 180.0;
        path.push_back({x + rx * std::cos(a), y + ry * std::sin(a)});
    }
    return path;
}

Path joined(Path first, const Path &second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

void dot(double x, double y)
{
    put(arc(x, y, kDot, kDot, 0, 360, 12), true);
}

void comma(double x, double y)
{
    put(arc(x, y, kComma, kComma, 0, 360, 12), true);
    put({
        {x + kComma,       y               },
        {x + 0.8 * kComma, y - 1.2 * kComma},
        {x - 0.4 * kComma, y - 2.4 * kComma}
    });
}

void star(double x, double y)
{
    for (const double a : {90.0, 30.0, 150.0}) {
        const double r = a * std::numbers::pi / 180.0;
        put({
            {x - kStar * std::cos(r), y - kStar * std::sin(r)},
            {x + kStar * std::cos(r), y + kStar * std::sin(r)}
        });
    }
}

void sleet(double x, double y)
{
    dot(x, y + 0.13);
    star(x, y - 0.12);
}

using Drop = void (*)(double, double);

/// The arrangements by which strength is told: 0 one, 1 two side by side, 2 two upright, 3 a
/// triangle, 4 three upright, 5 a rhombus.
void drops(Drop drop, int arrangement)
{
    // clang-format off
    static const std::vector<Path> places = {
        {{0.5, 0.5}},
        {{0.33, 0.5},  {0.67, 0.5} },
        {{0.5, 0.7},   {0.5, 0.3}  },
        {{0.5, 0.68},  {0.3, 0.34},   {0.7, 0.34}},
        {{0.5, 0.85},  {0.5, 0.5},    {0.5, 0.15}},
        {{0.5, 0.83},  {0.25, 0.5},   {0.75, 0.5}, {0.5, 0.17}},
    };
    // clang-format on
    for (const Point &p : places[static_cast<size_t>(arrangement)]) {
        drop(p.x, p.y);
    }
}

void triangle(double x, double y, double half, bool filled)
{
    put(
        {
            {x - half, y - half},
            {x + half, y - half},
            {x,        y + half},
            {x - half, y - half}
    },
        filled);
}

/// A shower: a triangle on its tip, with bars for strength.
void shower(int bars)
{
    put({
        {0.22, 0.6 },
        {0.78, 0.6 },
        {0.5,  0.02},
        {0.22, 0.6 }
    });
    for (int i = 0; i < bars; ++i) {
        const double y = 0.44 - 0.14 * i;
        const double half = 0.28 * (y - 0.02) / 0.58;
        put({
            {0.5 - half, y},
            {0.5 + half, y}
        });
    }
}

void arrow_head(double x, double y, double dx, double dy)
{
    put({
        {x - dx - dy * 0.6, y - dy + dx * 0.6},
        {x,                 y                },
        {x - dx + dy * 0.6, y - dy - dx * 0.6}
    });
}

/// A level arrow, with heads at its right and left ends.
void arrow(bool right, bool left)
{
    put({
        {0.05, 0.5},
        {0.95, 0.5}
    });
    if (right) {
        arrow_head(0.95, 0.5, 0.12, 0.0);
    }
    if (left) {
        arrow_head(0.05, 0.5, -0.12, 0.0);
    }
}

/// The thunderstorm's sign.
void thunder(double top)
{
    put({
        {0.25, 0.0 },
        {0.25, top },
        {0.75, top },
        {0.48, 0.32},
        {0.8,  0.02}
    });
    arrow_head(0.8, 0.02, 0.1, -0.095);
}

void lines(std::initializer_list<double> heights, bool broken = false)
{
    for (const double y : heights) {
        if (broken) {
            put({
                {0.1, y},
                {0.4, y}
            });
            put({
                {0.6, y},
                {0.9, y}
            });
        } else {
            put({
                {0.1, y},
                {0.9, y}
            });
        }
    }
}

/// The wave of freezing, with room for a drop in each of its bows.
void freezing(Drop drop, bool both)
{
    put(joined(arc(0.28, 0.5, 0.24, 0.26, 200, 0, 9), arc(0.76, 0.5, 0.24, 0.26, 180, 380, 9)));
    drop(0.28, 0.5);
    if (both) {
        drop(0.76, 0.52);
    }
}

void bracket()
{
    put({
        {0.8,  0.95},
        {0.97, 0.95},
        {0.97, 0.05},
        {0.8,  0.05}
    });
}

void letter_s()
{
    put(joined(arc(0.5, 0.7, 0.24, 0.2, 30, 270, 9), arc(0.5, 0.3, 0.24, 0.2, 90, -150, 9)));
}

void haze()
{
    put(arc(0.29, 0.5, 0.2, 0.18, 0, 360, 16));
    put(arc(0.71, 0.5, 0.2, 0.18, 0, 360, 16));
}

void smoke()
{
    Path path = {
        {0.2, 0.05}
    };
    put(joined(path, joined(arc(0.35, 0.7, 0.15, 0.13, 180, 0, 6),
                            arc(0.65, 0.7, 0.15, 0.13, 180, 360, 6))));
}

void whirl()
{
    put(arc(0.5, 0.55, 0.16, 0.12, -90, 250, 16));
    put(arc(0.5, 0.52, 0.3, 0.26, 90, -170, 16));
    put({
        {0.5, 0.0},
        {0.5, 1.0}
    });
}

void funnel()
{
    put(arc(0.08, 0.5, 0.32, 0.48, -70, 70));
    put(arc(0.92, 0.5, 0.32, 0.48, 110, 250));
}

void drifting(bool up)
{
    arrow(true, false);
    put({
        {0.5, 0.1},
        {0.5, 0.9}
    });
    up ? arrow_head(0.5, 0.9, 0.0, 0.12) : arrow_head(0.5, 0.1, 0.0, -0.12);
}

void lightning()
{
    put({
        {0.6,  1.0 },
        {0.35, 0.5 },
        {0.6,  0.55},
        {0.4,  0.03}
    });
    arrow_head(0.4, 0.03, -0.05, -0.13);
}

void squall()
{
    put({
        {0.28, 1.0},
        {0.5,  0.0},
        {0.72, 1.0}
    });
    put({
        {0.35, 0.68},
        {0.65, 0.68}
    });
}

void rime_fog()
{
    put({
        {0.1, 0.7},
        {0.4, 0.7},
        {0.5, 0.5},
        {0.6, 0.7},
        {0.9, 0.7}
    });
    lines({0.5, 0.3});
}

void heavy_thunder()
{
    put({
        {0.25, 0.0 },
        {0.25, 0.65},
        {0.75, 0.65},
        {0.5,  0.42},
        {0.72, 0.24},
        {0.55, 0.14},
        {0.8,  0.0 }
    });
    dot(0.5, kHigh);
}

struct Sign {
    std::vector<std::string> names;
    std::function<void()> draw;
};

/// Longer words stand ahead of those that they begin with.
const std::vector<Sign> &signs() // NOLINT(readability-function-size): a table
{
    // clang-format off
    static const std::vector<Sign> all = {
        {{"04", "FU"}, smoke},
        {{"05", "HZ"}, haze},
        {{"06", "DU"}, letter_s},
        {{"07"}, [] { letter_s(); put({{0.5, 0.0}, {0.5, 1.0}}); }},
        {{"08"}, whirl},
        {{"10", "BR"}, [] { lines({0.4, 0.6}); }},
        {{"13"}, lightning},
        {{"17"}, [] { thunder(0.75); }},
        {{"18", "SQ"}, squall},
        {{"19", "FC"}, funnel},
        {{"20"}, [] { drops(comma, 0); bracket(); }},
        {{"21"}, [] { drops(dot, 0); bracket(); }},
        {{"22"}, [] { drops(star, 0); bracket(); }},
        {{"23"}, [] { sleet(0.5, 0.5); bracket(); }},
        {{"24"}, [] { freezing(dot, false); bracket(); }},
        {{"25"}, [] { shower(0); dot(0.5, kHigh); bracket(); }},
        {{"26"}, [] { shower(0); star(0.5, kHigh); bracket(); }},
        {{"27"}, [] { shower(0); triangle(0.5, kHigh, 0.12, true); bracket(); }},
        {{"28"}, [] { lines({0.3, 0.5, 0.7}); bracket(); }},
        {{"29"}, [] { thunder(0.75); bracket(); }},
        {{"31", "SS"}, [] { letter_s(); arrow(true, false); }},
        {{"36"}, [] { drifting(false); }},
        {{"38", "BLSN"}, [] { drifting(true); }},
        {{"41"}, [] { lines({0.3, 0.5, 0.7}, true); }},
        {{"MIFG"}, [] { lines({0.4}, true); lines({0.6}, true); }},
        {{"48", "FZFG"}, rime_fog},
        {{"45", "FG"}, [] { lines({0.3, 0.5, 0.7}); }},
        {{"50"}, [] { drops(comma, 0); }},
        {{"51"}, [] { drops(comma, 1); }},
        {{"52"}, [] { drops(comma, 2); }},
        {{"53"}, [] { drops(comma, 3); }},
        {{"54"}, [] { drops(comma, 4); }},
        {{"55"}, [] { drops(comma, 5); }},
        {{"56", "FZDZ"}, [] { freezing(comma, false); }},
        {{"57"}, [] { freezing(comma, true); }},
        {{"58"}, [] { comma(0.5, 0.7); dot(0.5, 0.3); }},
        {{"59"}, [] { comma(0.5, 0.85); dot(0.5, 0.5); comma(0.5, 0.2); }},
        {{"60"}, [] { drops(dot, 0); }},
        {{"61", "-RA"}, [] { drops(dot, 1); }},
        {{"62"}, [] { drops(dot, 2); }},
        {{"63"}, [] { drops(dot, 3); }},
        {{"64"}, [] { drops(dot, 4); }},
        {{"65", "+RA"}, [] { drops(dot, 5); }},
        {{"66", "FZRA"}, [] { freezing(dot, false); }},
        {{"67"}, [] { freezing(dot, true); }},
        {{"68", "RASN"}, [] { sleet(0.5, 0.5); }},
        {{"69"}, [] { star(0.5, 0.83); dot(0.5, 0.5); star(0.5, 0.17); }},
        {{"70"}, [] { drops(star, 0); }},
        {{"71", "-SN"}, [] { drops(star, 1); }},
        {{"72"}, [] { drops(star, 2); }},
        {{"73"}, [] { drops(star, 3); }},
        {{"74"}, [] { drops(star, 4); }},
        {{"75", "+SN"}, [] { drops(star, 5); }},
        {{"76", "IC"}, [] { arrow(true, true); }},
        {{"77", "SG"}, [] { triangle(0.5, 0.5, 0.28, false); put({{0.05, 0.42}, {0.95, 0.42}}); }},
        {{"79", "PL"}, [] { triangle(0.5, 0.5, 0.34, false); dot(0.5, 0.36); }},
        {{"80"}, [] { shower(0); dot(0.5, kHigh); }},
        {{"81"}, [] { shower(1); dot(0.5, kHigh); }},
        {{"82"}, [] { shower(2); dot(0.5, kHigh); }},
        {{"83"}, [] { shower(0); dot(0.38, kHigh); star(0.64, kHigh); }},
        {{"84"}, [] { shower(1); dot(0.38, kHigh); star(0.64, kHigh); }},
        {{"85"}, [] { shower(0); star(0.5, kHigh); }},
        {{"86"}, [] { shower(1); star(0.5, kHigh); }},
        {{"87", "GS"}, [] { shower(0); triangle(0.5, kHigh, 0.12, false); }},
        {{"88"}, [] { shower(1); triangle(0.5, kHigh, 0.12, false); }},
        {{"89", "GR"}, [] { shower(0); triangle(0.5, kHigh, 0.12, true); }},
        {{"90"}, [] { shower(1); triangle(0.5, kHigh, 0.12, true); }},
        {{"SHRA"}, [] { shower(0); dot(0.5, kHigh); }},
        {{"SHSN"}, [] { shower(0); star(0.5, kHigh); }},
        {{"95", "TSRA"}, [] { thunder(0.65); dot(0.5, kHigh); }},
        {{"96", "TSGR"}, [] { thunder(0.62); triangle(0.5, kHigh, 0.12, true); }},
        {{"97"}, heavy_thunder},
        {{"TS"}, [] { thunder(0.75); }},
        {{"RA"}, [] { drops(dot, 3); }},
        {{"SN"}, [] { drops(star, 3); }},
        {{"DZ"}, [] { drops(comma, 3); }},
    };
    // clang-format on
    return all;
}

} // namespace

int main()
{
    for (const Sign &sign : signs()) {
        for (const std::string &name : sign.names) {
            std::printf("%s\n", name.c_str());
            sign.draw();
            std::puts("$");
        }
    }
    return 0;
}
