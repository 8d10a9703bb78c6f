#pragma once

#include <array>

#include "support/kernel_plot.h"
#include "tyr/geo/domain.h"

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

/// A plot session of the plot layer on PostScript paper, in colour, whose strokes are read back in
/// normalised coordinates (transformation 1).
class PlotSession {
  public:
    /// Reads `plot_param`. @param aspect  as for PLT_begin
    explicit PlotSession(float aspect = 0.0F);
    ~PlotSession();
    PlotSession(const PlotSession &) = delete;
    PlotSession &operator=(const PlotSession &) = delete;
    /// What PLT_begin returned.
    int begun() const { return begun_; }
    /// Ends the plot; what was drawn.
    PsPage finish();
    /// The paper's file, which lasts as long as this.
    std::string path() const { return dir_.file("plot.ps"); }

  private:
    TempDir dir_;
    int begun_ = -1;
    bool ended_ = false;
};

/// Takes the first stroke, which is a corner drawn through (x1, y0), (x0, y0), (x0, y1), out of a
/// page and turns paper into its units. @param rect  x0, x1, y0, y1
void undo_paper(PsPage *page, const std::array<double, 4> &rect);

/// Strokes that belong to no text, as texts: "line 0.000,0.500 1.000,0.500" or "fill ...", places
/// rounded to `places` decimals.
std::vector<std::string> show_strokes(const PsPage &page, int places = 2);
