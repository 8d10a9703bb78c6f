#pragma once

#include <cstddef>

#include "tyr/base/date.h"
#include "tyr/base/file.h"
#include "tyr/geo/domain.h"

/// The image record: filled by the screen's grab and the readers, taken by the writers.

inline constexpr size_t kImageDateRoom = 52;
inline constexpr size_t kImageInfoRoom = 76;
/// The largest picture that is read or written: pixels of a side (as much as a GIF can say), and
/// bytes in all.
inline constexpr int kMaxImageSide = 65535;
inline constexpr size_t kMaxImageBytes = size_t{1} << 28;

enum ImageColorType { kImageMasks = 0, kImageTable = 1 };
enum ImageByteOrder { kLowByteFirst = 0, kHighByteFirst = 1 };

/// Plain, and owner of two arrays: IMG_init before the first use, IMG_free after the last.
struct ImageRec {
    int source;  ///< 50 for a file of the system's own format, else 0
    int type;    ///< 0
    int version; ///< of the system's own format, else 0
    char date_text[kImageDateRoom];
    DateRec date;              ///< `date_text` decoded
    char info[kImageInfoRoom]; ///< description, window's name, or name of the format
    int width, height;         ///< pixels
    int depth;                 ///< significant bits of a pixel
    float res_x, res_y;        ///< resolution
    float off_x, off_y;        ///< offset
    int bits_per_pixel;        ///< storage: 1, 4, 8, 16, 24 or 32
    int bytes_per_line;        ///< storage of a row
    int byte_order;            ///< ImageByteOrder, of pixels and of the bits of 1-bit pixels
    int color_type;            ///< ImageColorType
    int ncolors;               ///< entries of `colors`
    unsigned red_mask, green_mask, blue_mask;
    float (*colors)[3];  ///< red, green, blue, each 0 to 1; owned; null without a table
    int transparent;     ///< pixel value that is transparent, -1 for none
    DomainRec domain;    ///< where the picture lies; proj Missing for nowhere
    unsigned char *data; ///< `height` rows of `bytes_per_line`, from the top; owned
};

/// Makes a record empty; frees nothing.
void IMG_init(ImageRec *image);
/// Frees data and colours.
void IMG_free(ImageRec *image);
/// Prints the record's head and domain.
void IMG_print(unsigned mask, const ImageRec *image);

// For readers and writers of images.
