#pragma once

/// Entries of the list of maps: [mark][conditions:]what to draw.
///
/// A mark "-" is for the layer under the data, "+" over it. Conditions on the height H of the
/// window, each closed by ":", in this order: s+v (H at least v), >v or >v<w (v to w), s-v (at
/// most v), <v or <v>w, s+v, >v. What: "lalo:a:b:attributes", "im:file:colour:x:y", "if:" alike in
/// transformation 1, "mf:metafile", "rf:raw file", or a map file with ":attributes". In list files
/// "[lat,lat,lon,lon,height" begins a block, drawn if the domain's centre and height fit (with
/// fewer than four numbers it always fits); the block behind one that is drawn is passed over.

/// Marks of a MAP_draw mode.
enum MapMark {
    kMapUnder = 1,    ///< entries marked "-"
    kMapOver = 2,     ///< entries marked "+"
    kMapUnmarked = 4, ///< others
};

/// Draws an entry. @return 0 if it was drawn, else -1
int MAP_process(const char *entry);

/// 1: map outlines are drawn in `color_cmap`, over a colour fill.
void DOM_set_map_mode(int mode);
