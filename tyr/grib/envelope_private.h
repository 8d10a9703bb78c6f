#pragma once

#include <string>

#include "tyr/grib/byte_source_private.h"

// How products are framed in a stream.

namespace tyr {

/// What stands in front of a product. The codes are those of the table of open files.
enum class Envelope {
    kUnknown = 0,
    kStars = 1,    ///< "** text"
    kBulletin = 2, ///< SOH CR CR LF number CR CR LF text CR CR LF
    kLength = 3,   ///< "GRIB: n" and a bulletin's heading; n bytes follow that line
    kBare = 4
};

enum class Magic { kNone, kGrib, kBufr, kGridText };

/// A product found: where its magic stands, and what its head tells.
struct Found {
    Magic magic = Magic::kNone;
    Envelope form = Envelope::kBare;
    std::string heading;
    long start = 0; ///< of the magic word
    int edition = -1;
    unsigned discipline = 0;
    unsigned long length = 0; ///< of the product; 0 where the head doesn't tell (edition 0, texts)
    long envelope_end = -1;   ///< of form 3
};

/// Finds the next product from the place on, trying the envelope `last` first. The place is then
/// behind the head: 8 bytes, or 16 in edition 2. @return false at the end
bool find_product(ByteSource *source, Envelope last, Found *found);

/// Offset behind the run of 7s that ends a coded text, at the next product's beginning.
long text_end(ByteSource *source, long start);

} // namespace tyr
