#pragma once

#include <cstdint>

/// How a thing is drawn. A field that holds Missing isn't set and leaves the kernel's setting
/// alone; a colour below 0 changes none either.
struct AttrRec {
    int32_t color;   ///< colour index of CLR_lookup
    float width;     ///< line width factor; of text and markers the width of their strokes
    float height;    ///< factor on the nominal height that a caller gives for text and markers
    float expansion; ///< text expansion factor
    int32_t style;   ///< line type, or marker type
    int32_t fill;    ///< 0 solid, 1 to 19 a pattern
    int32_t font;    ///< stroke font number
};

/// Sets all seven fields to Missing.
void ATTR_init(AttrRec *a);

/// Overlays what an attribute text names: "[colour][:piece...]" with the pieces co= wi= st= fo= fi=
/// fp= sc= hi= te= and the short forms w s t f h e with a number; "fM" unsets the fill. Words that
/// aren't known read as numbers, unknown pieces are dropped.
void ATTR_parse(const char *text, AttrRec *a);

/// Copies each field of `src` that is set. A colour of -1 counts as set.
void ATTR_merge(AttrRec *dst, const AttrRec *src);

/// Parses a default and over it a resource. @return 1 if the resource has a value, else 0
int ATTR_from_resource(const char *resource, const char *default_text, AttrRec *a);

/// Fill code of a word ("sol", "vln", "5%", ...), else its number.
int ATTR_fill_code(const char *word);

/// Marker type of a word ("pnt", "+", "circle", ...), by the beginning of the word, else its
/// number.
int ATTR_marker_code(const char *word);

/// Hand a record to the kernel; null goes back to plain (line type 1 and width 0, solid fill,
/// marker width 0, text width 0 and expansion 1).
void GPH_set_line_attr(const AttrRec *a);
void GPH_set_fill_attr(const AttrRec *a);
/// @param scale  nominal size factor of markers; 0 leaves the size alone where the record has none
void GPH_set_marker_attr(const AttrRec *a, float scale);
/// @param height  nominal height of capitals, world units. @return 0, or -1 for a null record
int GPH_set_text_attr(const AttrRec *a, float height);
