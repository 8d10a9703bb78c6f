#pragma once

#include <array>
#include <initializer_list>
#include <vector>

#include "tyr/base/missing.h"
#include "tyr/grid/grid.h"

/// A grid with values of its own for a test.
class MathGrid {
  public:
    MathGrid() { GRD_init(&rec); }
    MathGrid(int nx, int ny, int proj = kProjMercator, float spacing = 1.0F)
    {
        GRD_init(&rec);
        rec.source = 1;
        rec.domain.proj = proj;
        rec.domain.plat = proj == kProjPolar ? 90.0F : 40.0F;
        rec.domain.plon = -95.0F;
        rec.domain.clat = proj == kProjPolar ? 60.0F : 40.0F;
        rec.domain.clon = -95.0F;
        rec.domain.dx = rec.domain.dy = spacing;
        rec.domain.nx = nx;
        rec.domain.ny = ny;
        GRD_alloc(&rec);
        fill(0.0F);
    }
    ~MathGrid() { GRD_free(&rec); }
    MathGrid(const MathGrid &) = delete;
    MathGrid &operator=(const MathGrid &) = delete;

    size_t count() const
    {
        return static_cast<size_t>(rec.domain.nx) * static_cast<size_t>(rec.domain.ny);
    }
    void fill(float value)
    {
        for (size_t i = 0; i < count(); ++i)
            rec.values[i] = value;
    }
    void set(const std::vector<float> &values)
    {
        for (size_t i = 0; i < values.size(); ++i)
            rec.values[i] = values[i];
    }
    std::vector<float> values() const { return {rec.values, rec.values + count()}; }
    float &at(int column, int row) const { return rec.values[row * rec.domain.nx + column]; }

    GridRec rec{};
};

/// The two arrays of GRD_math with one result.
struct MathArguments {
    std::array<GridRec *, 22> grids{};
    std::array<float, 22> constants{};

    explicit MathArguments(std::initializer_list<GridRec *> list)
    {
        constants.fill(kMissing);
        size_t i = 0;
        for (GridRec *grid : list)
            grids[i++] = grid;
    }
};
