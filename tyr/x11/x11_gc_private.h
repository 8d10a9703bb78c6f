#pragma once

// The graphics contexts of the four families of primitives.

#include "tyr/gks/device_private.h"

/// Makes the contexts and the fill patterns where `create` is set, and puts them to their start:
/// clip rectangle, white on black, hairline, solid, bevel joins.
void gx_init_gcs(bool create);
void gx_free_gcs();

/// All families clip at the selected viewport.
void gx_clip();

/// An attribute of the kernel has a new value: the context of its family takes it over. Widths are
/// truncated to pixels.
void gx_attribute(ObjectKind kind);
/// A family draws in the screen's black (for shadows).
void gx_set_black(tyr::Family family);

/// Creates the context and the patterns of the fill family (mode 0), and sets it up (0 and 1).
void gfill_init(int mode);
/// Frees the patterns.
void gfill_free();
