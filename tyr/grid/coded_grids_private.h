#pragma once

#include <string>
#include <vector>

#include "tyr/grid/byte_reader_private.h"
#include "tyr/grid/grid.h"
#include "tyr/grid/grid_info.h"

namespace tyr {

/// One open coded text product: words that tell one of twelve quadrants of the earth, variable,
/// level and time, and 15 rows of 19 numbers of fixed width. What stands before a grid's first word
/// (five digits or more), the word GRID among it, is passed over. The word behind a row is the next
/// row's own; one that begins with 9 tells that the row has one number for all its points. Two
/// successive winds (22), direction and speed in one number, become u (23) and v (24). A number
/// that isn't one, such as solidi, is Missing.
/// Source of the code: WMO Manual on Codes, FM 47 GRID.
class CodedGrids {
  public:
    CodedGrids(std::FILE *stream, std::string name);

    int read_header(GridFileInfo *info);           ///< 0; -1 told
    int read(GridRec *grid, int mode, int *index); ///< 0; -1 at the end, or told
    void rewind();

  private:
    struct Place {
        int64_t start;
        bool is_second_wind;
    };
    struct Coding;
    bool first_word(std::string *word);
    int read_here(GridRec *grid, bool wants_values);
    bool read_groups(GridRec *grid, DateRec *date, std::string *word);
    bool read_coding(Coding *coding, int var, std::string *word);
    bool read_row(const Coding &coding, bool is_constant, std::vector<float> *row);
    float read_number(const Coding &coding);
    bool read_rows(const Coding &coding, GridRec *grid, std::string *word, bool wants_values);

    ByteReader in_;
    std::string name_;
    std::vector<Place> places_;
    int next_ = 0;
};

} // namespace tyr
