#pragma once

#include "tyr/geo/domain.h"

/// Domain of a known grid number: 21 to 26, 37 to 44, 50, 61 to 64 (latitude and longitude), 211,
/// 212 and 215 (Lambert, 25 N, 95 W). Any other number leaves the domain alone.
/// Source of the numbers: table B of NCEP Office Note 388 (1998).
/// @return 1
int GRD_grid_domain(int grid_id, DomainRec *domain);
