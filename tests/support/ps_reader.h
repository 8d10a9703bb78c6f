#pragma once

#include <array>
#include <string>
#include <vector>

/// Reads a page that the PostScript device wrote and turns it into neutral lists: what was
/// stroked and filled, where, in which colour and width, and which text and message it belongs to.
/// It knows only the operators that the device may use, keeps the books like an interpreter (an
/// operand too few, a line without a current point, an unknown word are errors) and shares no code
/// with the writer.

using PsPoint = std::array<double, 2>;

/// One stroked or filled path. A path of several runs (mv ... mv ...) gives one entry a run.
struct PsStroke {
    bool filled = false;
    bool closed = false;                            ///< ended by closepath
    std::array<double, 3> rgb{};                    ///< 0 to 1; greys have three equal parts
    double width = 0.0;                             ///< line width in points (one `dot` is 0.33)
    std::vector<double> dash;                       ///< empty: solid
    std::vector<PsPoint> points;                    ///< page units: points, before the rotation
    std::array<double, 4> clip{0.0, 0.0, 0.0, 0.0}; ///< x min, y min, x max, y max; zeros: none
    int text = -1;                                  ///< index into PsPage::texts, -1: not of a text
    std::string message;                            ///< the last "%%Message: " ahead of it
};

/// One text, from its comment: its position in world coordinates.
struct PsText {
    double x = 0.0, y = 0.0;
    std::string text;
    std::string message;
};

struct PsPage {
    std::string error;                 ///< empty when the page was read to its end
    std::vector<std::string> comments; ///< lines that begin with % , but for PL, PM, FA and TE
    std::vector<PsStroke> strokes;
    std::vector<PsText> texts;
    double rotation = 0.0; ///< degrees
    PsPoint origin{};      ///< translation, points
    std::array<double, 2> scale{1.0, 1.0};
    bool shown = false; ///< ended by showpage
};

/// Reads the text of a page. Further pages behind the first go into the same lists.
PsPage read_ps(const std::string &bytes);

/// The strokes of one text, or (-1) those of no text, in order.
std::vector<PsStroke> strokes_of(const PsPage &page, int text);

/// Strokes as lines of text for comparison: "line 0.00,0.00,0.00 w0.33 [] 1.00,2.00 3.00,4.00".
std::vector<std::string> describe(const std::vector<PsStroke> &strokes);
