#pragma once

#include <array>
#include <string>
#include <vector>

#include "tyr/base/file.h"
#include "tyr/raw/raw.h"

/// What the rooms of raw files share: the open file, its lines and the words in them.

struct RawField {
    std::array<char, kRawNameRoom> name = {};
    std::array<char, kRawLabelRoom> label = {};
    std::array<char, kRawFormatRoom> format = {};
};

struct RawFileRec {
    FilePtr stream;
    int open = 0;
    int type = 0; ///< RawType
    int mode = kRawRead;
    bool can_seek = false;
    int current_line = 0;  ///< data lines read
    int word_position = 0; ///< in a walk: where the next word stands; 0 fresh line, -1 at its end
    int word_index = 0;    ///< field of the next word
    int first_column = 1;  ///< field of the first value
    long data_start = -1;  ///< file offset of the first data line; -1 while the header isn't read
    long last_line = -1;   ///< file offset of the last line read, -1 for none
    std::vector<RawField> fields;
    std::array<int, kRawFields> offsets = {}; ///< of the words ahead of the values, in the line
    std::array<char, kRawLine + 1> line = {};
};

/// The open file of a handle; null for one that isn't open.
RawFileRec *RAW_file(int handle);

/// Name of a column that is a field's name; null for a number.
const char *RAW_column_name(long column);

/// Place in the field list that a column stands for; -1 for none.
int RAW_field_index(const RawFileRec &file, long column);

/// Forgets the line that was read last: the file stands at its first data line.
void RAW_start_lines(RawFileRec &file);

/// Reads a line of at most `room` - 1 characters without its end; the rest of it is dropped.
/// @return its length; -1 at the end of the file
int RAW_read_line(std::FILE *stream, char *line, int room);

/// Takes a word "[name=]value[,second][:format]" apart, with the format of a field in front.
void RAW_set_value(const RawFileRec &file, int field, RawValue *value, const char *text);
