#pragma once

#include <optional>
#include <string>

#include "tyr/grib/byte_source_private.h"
#include "tyr/grib/envelope_private.h"
#include "tyr/grib/grib_index_private.h"
#include "tyr/grib/grib_stream_private.h"
#include "tyr/grib/product_private.h"

// What a stream holds, for the files of this room.

namespace tyr {

/// How a section was read.
enum class Read { kGood, kRefused, kEnd };

struct GribStream::Impl {
    explicit Impl(std::FILE *file) : source(file) {}
    explicit Impl(std::span<const std::uint8_t> bytes) : source(bytes) {}

    ByteSource source;
    Found found; ///< the product in hand
    Product product;
    GribIndex index;
    std::optional<GribHeader> header;
    int section_number = -1;
    std::uint32_t section_length = 0; ///< with its head

    /// Place of a field: its message's beginning, and its number among the message's fields.
    struct Place {
        int index = 0;
        long offset = 0;  ///< where the search for its message begins
        long message = 0; ///< messages in front of it
        int field = 0;
    };
    Place here; ///< of the field read last, or the first
    Place next; ///< the one behind it
    bool has_next = false;

    void rewind();
    bool next_grib();
    bool next_product();
    long product_end();
    /// Edition 0 doesn't tell its length: the sum of its sections'.
    long walk_end0();
    /// Offset behind the product's "7777"; 0 where that isn't where its length says.
    long whole_end();

    int read_grid(GridRec *grid, int mode, int *index_);
    /// Stands at a place wanted, or at the nearest known before it. False where a pipe can't go
    /// back.
    bool move_to(int wanted);
    /// Reads the field of the product found, and notes where the next one begins.
    int read_here(GridRec *grid, int mode);
    int read_described(const IndexLine &line, int mode, GridRec *grid);
    int read_header(GribHeader *out);

    // sections of edition 1: three octets of length in front
    Read load_section1();
    Read header1(GridRec *grid);
    Read grid1(GridRec *grid);
    Read bitmap1();
    Read data1(GridRec *grid);
    int read_message1(GridRec *grid, int mode);

    // sections of edition 2: four octets of length and the number in front
    int next_section();
    bool skip_section();
    Read load_section2();
    /// Reads the section in hand by its number.
    Read take_section2(GridRec *grid);
    int read_message2(int field, int mode, GridRec *grid, bool *is_last);

    Section section() const
    {
        return Section(Octets(product.section_).first(product.section_.size() - kBitPadding));
    }
};

} // namespace tyr
