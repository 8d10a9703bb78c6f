#pragma once

// Gridded fields as contour lines, filled bands, both, or numbers at the grid points.
//
// Option texts (CONT_set_options, the `format` of a variable, the resource `plot_format`) are words
// joined by ":", case ignored:
//   value gvalue      numbers at the grid points
//   cf  lcf  ln       filled bands; bands and lines; lines
//   dln  ndln         dashed lines; lines dashed below the base or below 0
//   bar nobar         the colour bar        nolr          no label at the lower right
//   rlab hlab         labels of north-south lines turned along them, or level
//   labs              simple corner labels
//   in= cb=           interval; base        mn= mx=       nothing below, nothing above
//   sc=               size of labels and marks
//   lab=n             step n / 10 between labelled levels, radius n mod 10 of H and L marks;
//   lab=s.r.c.l       step, radius, label columns, label rows
//   cof=              fill words (plot/levels.h)
//   fi=               fill pattern          %...          printf format of the numbers
//   sk=x,y  xy=x,y    every n-th point; offset of the numbers. As ":" parts the words of a list,
//                     the two numbers may be parted by "," "x" "/" or a blank
// Besides, co= wi= st= fp= set the attributes of the lines. Words of `plot_param`: fill rlab hlab
// maxl conmin conmax grid mapcon conmap, lab plt_skip plt_off with numbers behind the word.

#include "tyr/grid/grid.h"

enum ContourKind { kContLines = 12, kContFilled = 15, kContBoth = 16, kContValues = 17 };

using ContourCallback = void (*)(int kind, const char *event, float x, float y);

/// Reads option words into the settings; unknown words are passed over.
void CONT_set_options(const char *text);

/// The whole plot of a grid in a domain, by CONT_setup and CONT_plot; a Missing `clat` means the
/// grid's own domain. The kind is forgotten afterwards. The grid must outlive the window's hold.
void CONT_plot_grid(GridRec *grid, DomainRec *domain, ContourCallback callback);

/// The whole plot of the grid of the last CONT_setup; the zoom and size callback of a window.
/// @return 0; -1 where no plot is wanted or there is no grid
int CONT_plot(DomainRec *domain);

/// Settings, levels and corner labels of a plot.
/// @param mode   0: settings go to the saved row `index`; above 0: they come from there
/// @param index  of the variable whose type and format tell kind and options
void CONT_setup(int mode, int index, GridRec *grid, DomainRec *domain, ContourCallback callback);

/// Contours, labels, and marks of highs and lows of a grid in the current domain.
/// @return 0; -1 where data are off, for a bad grid (told), and for numbers at grid points, which
///         have neither labels nor marks
int CONT_draw(GridRec *grid);
/// @return 0; -1 with a message where there is no memory or the levels are too many to be seen
int CONT_draw_contours(GridRec *grid);
int CONT_draw_labels(GridRec *grid);
int CONT_draw_extremes(GridRec *grid);

/// Fixes first and last level and their number from interval, base and range, or from the list of
/// levels. An interval at or below 0 becomes a nice one. @return 0; -1 without any value
int CONT_plan_levels(GridRec *grid);

/// Draws one line or one area (kind 15), points x, y in the transformation in force, once on each
/// side of a cylindrical or Mollweide map where it crosses the side. What jumps over the cut of a
/// Lambert map is dropped. Neighbouring points are taken to be less than half a world apart.
void CONT_piece(int kind, int count, const float *points);

/// The point at `fraction` of the way from the first point to the second, across the side of the
/// map if that is the shorter way.
void CONT_edge_point(float x1, float y1, float x2, float y2, float fraction, float *out);
