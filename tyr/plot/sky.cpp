#include "tyr/plot/sky.h"

#include <array>
#include <cmath>
#include <vector>

#include "tyr/base/angle.h"
#include "tyr/gks/gks.h"

namespace {

constexpr auto kRadian = static_cast<float>(kRadiansPerDegree);
constexpr int kSolid = 1;
constexpr int kStep = 30; ///< degrees between points of the circle
constexpr float kDiagonal = 0.70710677F;
constexpr float kLetter = 0.7F; ///< half the size of the M

/// The sign's circle; draws in units of the radius from the centre.
struct Circle {
    float x, y, radius;

    void add(std::vector<float> &points, float dx, float dy) const
    {
        points.push_back(x + radius * dx);
        points.push_back(y + radius * dy);
    }

    /// Points of the circle from one angle to another, every 30 degrees, both ends included.
    std::vector<float> arc(int from, int to) const
    {
        std::vector<float> points;
        for (int a = from; a <= to; a += kStep) {
            const float angle = static_cast<float>(a) * kRadian;
            add(points, std::cos(angle), std::sin(angle));
        }
        return points;
    }

    void line(std::initializer_list<std::array<float, 2>> path) const
    {
        std::vector<float> points;
        for (const auto &p : path) {
            add(points, p[0], p[1]);
        }
        gpolyline(static_cast<int>(path.size()), points.data());
    }

    static void fill(const std::vector<float> &points)
    {
        gset_fill_int_style(kSolid);
        gfill_area(static_cast<int>(points.size() / 2), points.data());
    }

    void sector(int from, int to) const
    {
        std::vector<float> points = arc(from, to);
        add(points, 0.0F, 0.0F);
        fill(points);
    }
};

} // namespace

int WX_sky_symbol(float x, float y, float radius, char code)
{
    const Circle circle = {x, y, radius};
    const std::vector<float> outline = circle.arc(0, 360);
    gpolyline(static_cast<int>(outline.size() / 2), outline.data());
    switch (code) {
    case '0':
    case 'C':
    case 'b':
    case 'o':
    case 's':
    case 'x':
        break;
    case '1':
    case 'F':
        circle.line({
            {0.0F, 1.0F },
            {0.0F, -1.0F}
        });
        break;
    case '2':
    case '3':
    case 'S':
        circle.sector(0, 90);
        if (code == '3') {
            circle.line({
                {0.0F, 0.0F },
                {0.0F, -1.0F}
            });
        }
        break;
    case '4':
    case '5':
        circle.sector(-90, 90);
        if (code == '5') {
            circle.line({
                {-1.0F, 0.0F},
                {0.0F,  0.0F}
            });
        }
        break;
    case '6':
    case 'B':
        circle.sector(-180, 90);
        break;
    case '7':
        Circle::fill(circle.arc(-75, 75));
        Circle::fill(circle.arc(105, 255));
        break;
    case '8':
    case 'O':
        Circle::fill(outline);
        break;
    case '9':
    case 'X':
        circle.line({
            {-kDiagonal, -kDiagonal},
            {kDiagonal,  kDiagonal }
        });
        circle.line({
            {-kDiagonal, kDiagonal },
            {kDiagonal,  -kDiagonal}
        });
        break;
    default:
        circle.line({
            {-kLetter, -kLetter},
            {-kLetter, kLetter },
            {0.0F,     0.0F    },
            {kLetter,  kLetter },
            {kLetter,  -kLetter}
        });
        break;
    }
    return 0;
}
