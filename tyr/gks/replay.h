#pragma once

/// The picture on a display drawn again from the redraw store: on the window, or on paper.

struct RedrawObject;

/// Calls what an object stands for.
void gobj_replay_one(RedrawObject *object);
/// Draws the picture anew on the window, at its present size. -1 when nothing is recorded.
int gobj_redraw();

/// Writes the picture to a PostScript file (`tyrps_print`, `PSPRINT`, "tyr.ps") and to a metafile
/// (`METAOUT`, "tyr.meta"). The window stands as before. 0; -1 with a report when the file can't be
/// written.
int gprint_plot();
int gprint_meta();
