#pragma once

#include <optional>
#include <string>
#include <vector>

#include "support/ps_reader.h"

/// A wind barb as it stands on a page.
struct DrawnBarb {
    int column = 0;                    ///< of the section, from 0
    double height = 0.0;               ///< m
    double direction = 0;              ///< degrees that the staff points to, clockwise from up
    int knots = 0;                     ///< 50 a flag, 10 a full, 5 a half barb
    std::vector<std::string> oddities; ///< signs that are none, or lie on the wrong side
};

/// What a page of a section shows.
struct DrawnSection {
    std::string error;
    std::vector<DrawnBarb> barbs;
    std::vector<std::string> texts;
    std::vector<double> columns; ///< x of the vertical lines, points, ascending
    std::vector<double> levels;  ///< y of the horizontal lines, points, ascending
};

/// The extent of a section's axes.
struct SectionAxes {
    double columns = 14.0; ///< span of x, which begins at -1
    double bottom = -1000.0;
    double top = 17000.0;
    double step = 250.0; ///< heights that barbs may stand at are its multiples
};

/// Reads a section back from PostScript: the axes are placed by the border box alone.
DrawnSection read_section(const std::string &bytes, const SectionAxes &axes = {});

/// A frame on the page, points.
struct PageBox {
    double x0, x1, y0, y1;
};

/// The border of the picture: the largest closed rectangle on a page.
std::optional<PageBox> find_border(const PsPage &page);

/// The barbs that stand at places of a page (points), one entry a place; empty where none stands.
/// Their columns and heights aren't set.
std::vector<std::optional<DrawnBarb>> read_barbs(const PsPage &page,
                                                 const std::vector<PsPoint> &places);
