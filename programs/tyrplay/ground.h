#pragma once

#include <string>

/// The ground that a metafile was drawn for. A picture for a dark window has white lines and texts,
/// which paper doesn't show; one for paper has black ones.
enum class Ground { kAny, kDark, kLight };

/// What the colours of a file's lines and texts tell: white ones and no black ones, or the reverse.
Ground ground_of(const std::string &path);
