#pragma once

// Text in a font of the server.

/// Loads a font of the server for the text family. False if it hasn't got one of that name.
bool gx_load_font(const char *name);
/// A text of that font, upright, at a position in device coordinates, `aside` pixels to the lower
/// right; the alignments are the kernel's.
void gx_text(float x, float y, int aside, const char *text, int horizontal, int vertical);
