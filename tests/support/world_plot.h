#pragma once

#include "map/domain.h"
#include "support/kernel_plot.h"

/// A plot on paper whose strokes are read back in the plot units of its domain.
class WorldPlot {
  public:
    /// A linear plot space of `size` units in both directions around the origin, in colour, with
    /// the installation's colour table.
    explicit WorldPlot(int size);
    bool opened() const { return plot_.opened(); }
    /// Closes the workstation; what was drawn, places of strokes and texts in plot units.
    PsPage finish();

    /// Tolerance of the places, plot units: a step of the paper's grid.
    double tolerance() const { return tolerance_; }

  private:
    KernelPlot plot_;
    double half_;
    double tolerance_;
};

/// Strokes that belong to no text, as texts: "line 0.000,0.500 1.000,0.500" or "fill ...", places
/// rounded to `places` decimals.
std::vector<std::string> show_strokes(const PsPage &page, int places = 2);
