#include "tyr/plot/sky.h"

#include <cmath>
#include <string_view>
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

    /// A stroke from one place to another.
    void line(float dx0, float dy0, float dx1, float dy1) const
    {
        std::vector<float> points;
        add(points, dx0, dy0);
        add(points, dx1, dy1);
        gpolyline(2, points.data());
    }

    /// The letter M: the sky can't be told.
    void letter() const
    {
        std::vector<float> points;
        add(points, -kLetter, -kLetter);
        add(points, -kLetter, kLetter);
        add(points, 0.0F, 0.0F);
        add(points, kLetter, kLetter);
        add(points, kLetter, -kLetter);
        gpolyline(5, points.data());
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

/// What fills the circle, by the cover in eighths.
void draw_cover(const Circle &circle, char eighths)
{
    switch (eighths) {
    case '0':
        break;
    case '1':
        circle.line(0.0F, 1.0F, 0.0F, -1.0F);
        break;
    case '2':
        circle.sector(0, 90);
        break;
    case '3':
        circle.sector(0, 90);
        circle.line(0.0F, 0.0F, 0.0F, -1.0F);
        break;
    case '4':
        circle.sector(-90, 90);
        break;
    case '5':
        circle.sector(-90, 90);
        circle.line(-1.0F, 0.0F, 0.0F, 0.0F);
        break;
    case '6':
        circle.sector(-180, 90);
        break;
    case '7':
        Circle::fill(circle.arc(-75, 75));
        Circle::fill(circle.arc(105, 255));
        break;
    case '8':
        Circle::fill(circle.arc(0, 360));
        break;
    case '9':
        circle.line(-kDiagonal, -kDiagonal, kDiagonal, kDiagonal);
        circle.line(-kDiagonal, kDiagonal, kDiagonal, -kDiagonal);
        break;
    default:
        circle.letter();
        break;
    }
}

/// The cover in eighths, 9 for a hidden sky, that a code or a letter of a report stands for.
char eighths_of(char code)
{
    constexpr std::string_view kLetters = "CbosxFSBOX";
    constexpr std::string_view kEighths = "0000012689";
    const size_t at = kLetters.find(code);
    return code == '\0' || at == std::string_view::npos ? code : kEighths[at];
}

} // namespace

int WX_sky_symbol(float x, float y, float radius, char code)
{
    const Circle circle = {x, y, radius};
    const std::vector<float> outline = circle.arc(0, 360);
    gpolyline(static_cast<int>(outline.size() / 2), outline.data());
    draw_cover(circle, eighths_of(code));
    return 0;
}
