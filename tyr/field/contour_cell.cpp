#include "tyr/field/contour_cell_private.h"

namespace tyr {

Cell::Cell(const TracedField &field, int column, int row)
{
    const int nx = field.columns();
    const int upper = row * nx + column;
    const int lower = upper + nx;
    const int walk[4] = {lower, lower + 1, upper + 1, upper};
    for (int i = 0; i < 4; ++i) {
        corner[i] = walk[i];
        value[i] = field.value(walk[i]);
    }
}

bool Cell::cuts_lower_left(float level) const
{
    const auto fraction = [level](double a, double b) { return (level - a) / (b - a); };
    const double t0 = fraction(value[0], value[1]);
    const double t1 = fraction(value[0], value[3]);
    const double t2 = fraction(value[3], value[2]);
    const double t3 = fraction(value[1], value[2]);
    return 2.0 - t2 - t3 + t0 + t1 < 2.0;
}

int Cell::partner(int side, float level) const
{
    int count = 0;
    int other = side;
    for (int i = 0; i < 4; ++i) {
        if (is_crossed(i, level)) {
            ++count;
            other = i != side ? i : other;
        }
    }
    if (count != 4) {
        return other;
    }
    // bottom with left and top with right, or bottom with right and top with left
    return cuts_lower_left(level) ? 3 - side : side ^ 1;
}

} // namespace tyr
