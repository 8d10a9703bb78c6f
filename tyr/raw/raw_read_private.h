#pragma once

#include <array>
#include <string>
#include <vector>

#include "tyr/base/file.h"
#include "tyr/base/whole_file.h"
#include "tyr/raw/raw_rec.h"

/// What the rooms of raw files share: the open file, its lines and the words in them.

namespace tyr {

struct RawField {
    std::array<char, kRawNameRoom> name = {};
    std::array<char, kRawLabelRoom> label = {};
    std::array<char, kRawFormatRoom> format = {};
};

struct RawFileRec {
    FilePtr stream; ///< that is read
    WholeFile out;  ///< that is written
    std::string name;
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
RawFileRec *raw_file(int handle);

/// Closes a file. One that was written stands under its name only if it is kept and all of it went
/// out, which is told otherwise. @return whether nothing was lost
bool raw_finish(int handle, bool is_kept);

/// Place in the field list that a column stands for; -1 for none.
int raw_field_index(const RawFileRec &file, long column);

/// Forgets the line that was read last: the file stands at its first data line.
void raw_start_lines(RawFileRec &file);

/// Reads a line of at most `room` - 1 characters without its end; the rest of it is dropped.
/// @return its length; -1 at the end of the file
int raw_read_line(std::FILE *stream, char *line, int room);

/// Takes a word "[name=]value[,second][:format]" apart, with the format of a field in front.
void raw_set_value(const RawFileRec &file, int field, RawValue *value, const char *text);

/// One value of a line, as RAW_read_value tells; no file gives 0.
int raw_next_value(RawFileRec *file, RawValue *value, long column, int *line);

} // namespace tyr
