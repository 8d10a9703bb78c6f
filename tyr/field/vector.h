#pragma once

// Fields of wind as arrows, barbs or streamlines, from a grid of the u component and one of v. The
// grids of the caller are left as they are: components are turned on copies.
//
// Words of the option text, joined by ":", case ignored: vect (21), barb (22), stream strm (23),
// vbar (the legend), nolr (no label at the lower right), and sk= (every n-th point, "2" or "2,3")
// sc= (size) ss= (spacing of arrow heads along streamlines) in= (level interval on the speed) cb=
// (reference speed; of streamlines the most lines through a box) mn= mx= (speeds outside aren't
// drawn). Besides, co= wi= st= set the look of the signs. Words of `plot_param`: vect vbar uvgrid
// uvew bar nobar, strm_sc and wv_skip with numbers behind them.

#include "tyr/grid/grid.h"

enum VectorType { kVectArrows = 21, kVectBarbs = 22, kVectStreamlines = 23 };

using VectorCallback = void (*)(int kind, const char *event, float x, float y);

/// The whole plot of a wind in a domain; the grids must outlive the window's hold.
void VECT_plot(GridRec *u, GridRec *v, DomainRec *domain, VectorCallback callback);
/// The same with the grids of the last plot; the zoom and size callback of a window.
/// @return 0; -1 where no plot is wanted or there are no grids
int VECT_redraw(DomainRec *domain);

/// Settings and corner labels. @param mode, index  as for CONT_setup (field/contour.h)
void VECT_setup(int mode, int index, GridRec *u, GridRec *v, DomainRec *domain,
                VectorCallback callback);

/// The signs or streamlines, in the current domain. @return 0; -1 for bad grids, with a message
int VECT_draw(GridRec *u, GridRec *v);

/// One streamline of components in plot orientation, from a grid point (rows counted from the
/// bottom), in at most `steps` steps of a quarter unit. Each step is a Runge-Kutta step of fourth
/// order along the direction of the wind. It draws in the transformation in force, which must show
/// the places of VECT_set_arrays or, without them, grid units from the lower left: VECT_draw sets
/// it.
void VECT_trace(float steps, GridRec *u, GridRec *v, int column, int row);

/// The arrow of the largest speed with its text, at the lower right of the plot.
void VECT_legend();

/// Forgets interval, base, limits, and a type that VECT_set_type didn't lock.
void VECT_reset();
void VECT_set_kind(int kind, const char *options);
void VECT_set_type(int type);
int VECT_get_type();
/// Plot positions of the grid points, nx * ny each, the caller's; null: grid units.
void VECT_set_arrays(float *x, float *y);
void VECT_set_scale(float scale);
void VECT_set_interval(float interval); ///< at or below 0: none
float VECT_get_interval();
void VECT_set_base(float base);
void VECT_set_max(float speed);
float VECT_get_size(); ///< staff or unit length of the signs, in the drawing's units
void VECT_set_legend(int flag);
int VECT_get_legend();
