#pragma once

#include "tyr/grid/grid.h"

/// Turns a coded product's variable number into the system's (data/variable.lup) and gives the
/// record its unit text, and the level that goes with a number that names one.
///
/// `source` 98 with numbers from 129 on goes by that centre's table 128; else `version` 0 by the
/// table of the old grid code (WMO Manual on Codes, FM 47). A number that the table lacks is told,
/// "Invalid GRIB variable: %d\n", and stays. With another `version` the number stays, and the unit
/// is that of edition 1's table 2 (FM 92, code table 2) for the number modulo 1000.
void GRD_convert_param(GridRec *grid);

/// Unit of a variable code of model files, such as "hectopascals" for 1; null for others.
const char *GRD_unit_text(int code);
