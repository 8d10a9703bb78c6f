#pragma once

#include <cstddef>

#include "tyr/grib/product_private.h"

// The data sections' packings: from octets to values one behind the other.

namespace tyr {

/// Simple packing: fills out[0..count). The data is padded by kBitPadding bytes.
/// @return values made: fewer than `count` where the data end early
size_t unpack_simple(const PackingRec &packing, Octets data, float *out, size_t count);

/// The same with the guard of damaged products: values of one row stand in a run of row_counts[j].
/// From the value on that trips the guard all are Missing.
size_t unpack_guarded(const Product &product, Octets data, const std::vector<int> &row_counts,
                      float *out, size_t count);

/// Complex packing without and with spatial differencing (templates 7.2 and 7.3).
size_t unpack_complex(const PackingRec &packing, Octets data, float *out, size_t count);

/// Run-length packing with level values (template 7.200). A level above the table is Missing.
size_t unpack_run_length(const PackingRec &packing, Octets data, float *out, size_t count);

/// JPEG 2000 code stream of one component (template 7.40).
/// @return values of the image, at most `count`; 0 after "jpc_decode error\n" for a bad stream
size_t unpack_jpeg2000(const PackingRec &packing, Octets data, float *out, size_t count);

} // namespace tyr
