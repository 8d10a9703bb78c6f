#pragma once

#include <string>
#include <vector>

#include "tyr/met/sounding.h"

/// Levels of a sounding's table as the University of Wyoming's pages show it (columns of 7
/// characters) or as the Storm Prediction Center's text has it (numbers by commas), as they stand:
/// the levels below the ground first.
std::vector<SoundLevel> read_sounding_rows(const std::string &path);
