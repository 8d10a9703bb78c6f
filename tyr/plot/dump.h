#pragma once

#include <string>

#include "tyr/image/dump_kind.h"

/// The picture of a plot on the screen as a file, without the user's help.

/// Sets kind and name of the file: a name or a word of the name conventions, in which the key "i"
/// is the frame's number ("win" without frames) and "p" the application. Null or empty: "tyr.gif",
/// "tyr.png", else "tyr.xwd".
void PLT_set_dump(int kind, const char *name);
int PLT_get_dump();
/// Path of the file of a picture without frames; empty when no dump is asked for.
std::string PLT_dump_path();
/// Whether a file of this run couldn't be written.
bool PLT_dump_failed();

/// Writes the file, in the folder of the resource `image_path`; a failure is told.
/// @param frame  a frame number of gks/frames, kAllFrames for a file of each
/// @return 0; -1 when no dump is asked for
int PLT_dump(int frame);
