#pragma once

#include "tyr/grib/product_private.h"

// The sections of both editions, each read by itself from its bytes. A routine returns false for
// what it refuses, told unless the origin is quiet.

namespace tyr {

/// Product definition of edition 1 and 0, without its indicator section. Fills the record's
/// description but for `info`, the domain of a known grid number, and the product's flags.
/// Mode 1 and 2 do the same.
bool read_definition1(Section s, Product *product, GridRec *grid);
bool read_bitmap1(Section s, Product *product);
/// Binary data: allocates and fills grid->values.
bool read_data1(Section s, Product *product, GridRec *grid);

bool read_ident2(Section s, Product *product, GridRec *grid);
bool read_product2(Section s, Product *product, GridRec *grid);
bool read_packing2(Section s, Product *product);
bool read_bitmap2(Section s, Product *product);
bool read_data2(Section s, Product *product, GridRec *grid);

/// Date texts of a record from the reference time of its product.
void set_date_text(const DateRec &date, GridRec *grid);
/// The text that tells what a grid holds; makes a probability's variable number its code.
void make_info(const Ensemble &ensemble, GridRec *grid);

} // namespace tyr
