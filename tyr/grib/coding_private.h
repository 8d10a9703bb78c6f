#pragma once

// Times and levels of both editions as the single numbers that a record holds.

namespace tyr {

/// Time of edition 1 from its octets 18 to 23.
/// @param range      time range indicator: 0, 1, 10 plain times, 2 to 5, 113, 118, 123 periods
/// @param averaged   number of fields in an average
int grib_time1(int unit, int p1, int p2, int range, int averaged);

/// Time of edition 2: a plain one, or a period from `first` that is `length` long. A `statistic`
/// (code table 4.10) below 0 is none.
int grib_time2(int unit, int first, int statistic, int length_unit, int length);

/// Level of edition 1 from octets 11 and 12. @return false for a kind that has no coding: `level`
/// stays as it is
bool grib_level1(int ltype, int octet11, int octet12, int *level);

/// A fixed surface of edition 2; `value` is Missing where it has none.
struct FixedSurface {
    int type = 255;
    double value = 0.0;
};

/// Kind and value of a level by edition 1's coding, from edition 2's two surfaces.
void grib_level2(const FixedSurface &first, const FixedSurface &second, int *ltype, int *level);

} // namespace tyr
