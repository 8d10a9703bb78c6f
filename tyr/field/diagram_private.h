#pragma once

#include <vector>

// Lines on the current thermodynamic diagram, and how things on it are drawn.

namespace tyr {

inline constexpr float kDiagramBottom = 1050.0F; ///< hPa
inline constexpr float kDiagramTop = 100.0F;     ///< hPa

/// A line through points of temperature (degrees Celsius) and pressure (hPa), in plot units.
class DiagramLine {
  public:
    /// Adds a point; one that can't be shown ends the stretch.
    void add(float t, float p);
    void draw() const;
    /// The points as x, y, x, y of the last stretch.
    const std::vector<float> &points() const { return stretches_.back(); }

  private:
    std::vector<std::vector<float>> stretches_{1};
};

/// How a thing is drawn: sets line, fill or text from a resource over a default text over the
/// colour of text, black or white.
void use_line(const char *resource, const char *default_text);
void use_fill(const char *resource, const char *default_text);
/// @param height  of capitals, world units
void use_text(const char *resource, const char *default_text, float height);

/// Frame, isobars, isotherms, adiabats and mixing ratios of the current diagram, with numbers.
void draw_diagram_lines(const float viewport[4]);

} // namespace tyr
