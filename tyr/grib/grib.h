#pragma once

#include "tyr/grid/grid.h"

// GRIB streams by the handle of an open grid file (tyr/grid): the walk from product to product,
// the index beside a file, and the sections of editions 0, 1 and 2 one at a time. GRD_read does all
// of it; what stands here serves programs that look into products.
//
// Formats: WMO Manual on Codes (WMO-No. 306), Volume I.2, FM 92-IX Ext. (edition 1) and FM 92-XIII
// (edition 2). Read are grids of latitude and longitude, thinned too, Mercator, polar stereographic
// and Lambert ones; simple packing, complex packing with and without spatial differencing, JPEG
// 2000, run lengths; any scanning mode but rows set off by half a step. All else is told in one
// line at warn with file, message number and what isn't known, and the walk goes on. A grid has at
// most 2^27 points, and one whose data have less than a bit a point at most 2^25: a head of a few
// bytes can't ask for more memory than that.
//
// A handle that names no GRIB stream gives -1.

/// Goes to the next product, whatever stands before it: bulletin headings, the line "GRIB: n",
/// rubbish. The place is then behind the head, 8 bytes in editions 0 and 1 and 16 in edition 2.
/// @return 0; -1 at the end
int GRD_next_product(int handle);

/// Offset behind the product that GRD_next_product found, with its envelope's end; with `seek` the
/// stream goes there.
/// @return the offset; 0 with "Invalid product size: %d\n" for a length that can't be; -1 where
///         the envelope's end can't be
long GRD_product_end(int handle, int seek);

/// Opens an index file: lines of a product's offset and a text. From then on descriptions come from
/// the index alone; a line whose offset is that of the line before is the next field of the same
/// message. A text with "/ GRIB" has pairs of a letter and a number behind it (S source, M model, G
/// grid_id, T time, L ltype, H level, V var), one with "/" six numbers (model, grid_id, time,
/// ltype, level, var) or "source:" and the six. A line without either is read from the product.
/// @return 0; -1 where indices are off, for an empty path and for a file that doesn't open
int GRD_attach_index(int handle, const char *path);

/// Whether indices are used; 1 at the start. The word `nohdr` of plot_param asks for 0.
void GRIB_set_index(int on);

/// The guard against damaged products of edition 1: more than `max_bad` big steps among the last
/// 20 values of a row make the rest of the product Missing. Below 1 there is no guard, as at the
/// start. The word `max_bad` of plot_param asks for it.
void GRIB_set_max_bad(int max_bad);

/// Sections of edition 1, in their order behind GRD_next_product. GRIB_read_header1 reads the
/// product definition into the record; `mode` is that of GRD_read.
/// @return 1; 0 for what is refused, told; -1 at the end of the stream
int GRIB_read_header1(int handle, GridRec *grid, int mode);
int GRIB_read_grid1(int handle, GridRec *grid);   ///< 1 too where the product has no description
int GRIB_read_bitmap1(int handle, GridRec *grid); ///< 1 too where it has no bit map
int GRIB_read_data1(int handle, GridRec *grid);   ///< allocates grid->values

/// Length and number of the next section of edition 2. @return 1; 0 at "7777" and for a number
/// above 8; -1 at the end of the stream
int GRIB_read_section(int handle);
/// Passes over that section. @return 1; -1 at the end
int GRIB_skip_section(int handle);
/// Number of the section in hand; -1 at "7777".
int GRIB_section_number(int handle);

/// Sections 1, 3, 4, 5, 6 and 7 of edition 2, each behind GRIB_read_section.
/// @return 1; 0 for what is refused, told; -1 at the end of the stream
int GRIB_read_ident(int handle, GridRec *grid);
int GRIB_read_grid2(int handle, GridRec *grid);
int GRIB_read_product2(int handle, GridRec *grid);
int GRIB_read_packing(int handle, GridRec *grid);
int GRIB_read_bitmap2(int handle);
int GRIB_read_data2(int handle, GridRec *grid); ///< allocates grid->values

/// Variable number and unit of edition 2's discipline, category and number, from the file
/// "grib2_var.lup" of `file_path`: lines "centre discipline category number name unit description",
/// a `#` first for a comment, centre 0 for any. The name's number is the catalogue's; without a
/// line or a number it is 1000000 * discipline + 1000 * category + number.
void GRIB_find_param(GridRec *out, int centre, int discipline, int category, int number);

/// Builds `info` of a field that is neither an ensemble's nor a probability: its label.
void GRIB_make_info(GridRec *grid);

/// The raw bytes of the next product of any edition, from "GRIB" to "7777".
/// @param[in,out] buffer  takes up to 2000000 bytes; allocated by malloc where it is null
/// @param[out]    length  bytes of the product
/// @return 0; -1 at the end, and for a longer product
int GRIB_read_product(int handle, void **buffer, int *length);
