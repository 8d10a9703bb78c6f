#pragma once

// The table of image formats: a format is its file and its row.

#include <span>
#include <string_view>

#include "tyr/image/dump_kind.h"
#include "tyr/image/image_rec.h"

namespace tyr {

struct ImageFormat {
    int kind;                 ///< DumpKind, or a number of its own behind those
    const char *name;         ///< in messages of keys
    const char *dump_name;    ///< in messages of dumps
    const char *word;         ///< of `plot_param`, and the ending of files that a key writes
    const char *default_file; ///< of a dump without a name
    std::string_view magic;   ///< in the first bytes; empty: what no other claims
    size_t magic_at;
    int (*read)(const char *path, ImageRec *image, int header_only);
    int (*write)(const char *path, ImageRec *image);
};

std::span<const ImageFormat> image_formats();

/// The row of a kind; that of XWD for others.
const ImageFormat &image_format(int kind);

/// The row by the first bytes of a file.
const ImageFormat &image_format_of(std::string_view first_bytes);

} // namespace tyr
