#include <algorithm>
#include <cctype>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "tyr/base/scan.h"
#include "tyr/base/str.h"
#include "tyr/raw/raw_column.h"
#include "tyr/raw/raw_read_private.h"

using namespace tyr;

namespace {

constexpr size_t kStationDigits = 5; ///< an id so long may be a number
constexpr int kByNameInWord = 999;   ///< index of a name that no header has: "name=value"
constexpr int kPlaceFields = 3;      ///< two reals and the offset between them
constexpr int kMostWords = kRawLine / 2;

using Word = std::array<char, kRawWordRoom>;

constexpr const char *kBlanks = " \t";

/// Reads a word at the scan's position and moves behind it and its blanks. A lone "-" is a word
/// here, which it isn't to scanp. @return whether there was one
bool next_word(ScanRec &scan, Word &word)
{
    const char *here = SCAN_here(&scan);
    const size_t length = std::strcspn(here, kBlanks);
    STR_copy(word.data(), word.size(), std::string_view(here, length));
    SCAN_skip(&scan, static_cast<int>(length + std::strspn(here + length, kBlanks)));
    return length > 0;
}

void clear_value(RawValue *value)
{
    *value = {};
    value->kind = kRawWord;
    value->field = value->station = kMissingInt;
    value->lat = value->lon = value->x = value->y = kMissing;
    value->value1 = value->value2 = kMissing;
}

/// Brings the stream to a data line. @return whether the file has it
bool position(RawFileRec &file, int wanted)
{
    std::FILE *stream = file.stream.get();
    if (wanted == file.current_line - 1 && file.last_line >= 0) {
        std::fseek(stream, file.last_line, SEEK_SET);
        file.current_line = wanted;
    } else if (wanted < file.current_line) {
        std::fseek(stream, std::max(file.data_start, 0L), SEEK_SET);
        raw_start_lines(file);
    }
    std::array<char, 2> ignored;
    while (file.current_line < wanted) {
        if (raw_read_line(stream, ignored.data(), 2) <= 0) {
            return false;
        }
        ++file.current_line;
    }
    return true;
}

/// Reads the next line. @return false at the end of the table
bool read_data_line(RawFileRec &file)
{
    file.last_line = file.can_seek ? std::ftell(file.stream.get()) : -1;
    if (raw_read_line(file.stream.get(), file.line.data(), kRawLine + 1) <= 0) {
        return false;
    }
    STR_strip_cr(file.line.data());
    ++file.current_line;
    return file.line[0] != '\0';
}

/// The id, which also tells a station's number.
void read_id(RawFileRec &file, ScanRec &scan, RawValue *value)
{
    SCAN_skip(&scan, static_cast<int>(std::strspn(SCAN_here(&scan), kBlanks)));
    file.offsets[0] = SCAN_get_pos(&scan);
    Word id;
    next_word(scan, id);
    file.offsets[1] = SCAN_get_pos(&scan);
    STR_copy(value->id, sizeof value->id, id.data());
    if (std::strlen(id.data()) >= kStationDigits) {
        value->station =
            static_cast<int>(std::clamp(std::atol(id.data()), long{INT_MIN}, long{INT_MAX}));
    }
}

/// The place behind the id: two words, one (a pressure), or none.
void read_place(RawFileRec &file, ScanRec &scan, RawValue *value)
{
    Word word;
    if (file.first_column == 3 || file.fields.empty()) {
        int second = 0;
        if (scanp(&scan, "%!-!f %n%!-!f ", &value->lat, &second, &value->lon) == kPlaceFields) {
            file.offsets[2] = SCAN_get_pos(&scan) + second;
            SCAN_advance(&scan);
            if (file.fields.size() > 1 && STR_casecmp(file.fields[1].name.data(), "x") == 0) {
                value->x = value->lat;
                value->y = value->lon;
            }
            return;
        }
        value->lat = value->lon = kMissing;
        if (file.first_column == 3) {
            next_word(scan, word);
            file.offsets[2] = SCAN_get_pos(&scan);
            next_word(scan, word);
        }
    } else if (file.first_column == 2) {
        const char *here = SCAN_here(&scan);
        if (std::sscanf(here, "%f", &value->lat) != 1 || !std::isfinite(value->lat)) {
            value->lat = kMissing;
        }
        next_word(scan, word);
    }
}

/// Column kRawAllWords: the next word of the line.
int walk(RawFileRec &file, ScanRec &scan, RawValue *value)
{
    Word word;
    if (!next_word(scan, word)) {
        file.word_position = 0;
        return 0;
    }
    raw_set_value(file, file.word_index, value, word.data());
    value->field = file.word_index;
    file.word_position = SCAN_peek(&scan, 0) == '\0' ? -1 : SCAN_get_pos(&scan);
    return 1;
}

/// A word ahead of the values, by its field.
int take_fixed_word(const RawFileRec &file, ScanRec &scan, int field, RawValue *value)
{
    if (field < 0 || field >= std::max(file.first_column, 1)) {
        return 0;
    }
    SCAN_set_pos(&scan, file.offsets[static_cast<size_t>(field)]);
    Word word;
    if (!next_word(scan, word)) {
        return 0;
    }
    raw_set_value(file, field, value, word.data());
    value->field = field;
    return 1;
}

bool is_named(const char *word, const char *name)
{
    const size_t length = std::strlen(name);
    return length > 0 && STR_ncasecmp(word, name, static_cast<int>(length)) == 0 &&
           word[length] == '=';
}

/// The value word of an index, or the one that begins with `name` and "=".
int take_value_word(const RawFileRec &file, ScanRec &scan, int index, const char *name,
                    RawValue *value)
{
    Word word;
    for (int i = 0; i <= std::min(index, kMostWords) && next_word(scan, word); ++i) {
        if (index == kByNameInWord ? is_named(word.data(), name) : i == index) {
            raw_set_value(file, file.first_column + i, value, word.data());
            value->field = SCAN_get_pos(&scan);
            return 1;
        }
    }
    return 0;
}

int take_column(const RawFileRec &file, ScanRec &scan, long column, RawValue *value)
{
    const char *name = raw_column_name(column);
    const int place = name ? raw_field_index(file, column) : -1;
    if (column == kRawId || (name && place < 0 && STR_casecmp(name, "id") == 0)) {
        return take_fixed_word(file, scan, 0, value);
    }
    if (column < kRawId) {
        return 0;
    }
    const int index = !name       ? static_cast<int>(column) - kRawFirstValue
                      : place < 0 ? kByNameInWord
                                  : place - file.first_column;
    return index < 0 ? take_fixed_word(file, scan, index + file.first_column, value)
                     : take_value_word(file, scan, index, name ? name : "", value);
}

} // namespace

int tyr::raw_field_index(const RawFileRec &file, long column)
{
    const char *name = raw_column_name(column);
    if (!name) {
        return column == kRawId ? 0
               : column >= kRawFirstValue
                   ? static_cast<int>(column) - kRawFirstValue + file.first_column
                   : -1;
    }
    const auto found =
        std::find_if(file.fields.begin(), file.fields.end(), [name](const RawField &field) {
            return STR_casecmp(field.name.data(), name) == 0;
        });
    return found == file.fields.end() ? -1 : static_cast<int>(found - file.fields.begin());
}

void tyr::raw_start_lines(RawFileRec &file)
{
    file.current_line = 0;
    file.word_position = 0;
    file.word_index = 0;
    file.last_line = -1;
}

int tyr::raw_read_line(std::FILE *stream, char *line, int room)
{
    int length = 0;
    int c = std::getc(stream);
    if (c == EOF) {
        line[0] = '\0';
        return -1;
    }
    for (; c != EOF && c != '\n'; c = std::getc(stream)) {
        if (length < room - 1) {
            line[length++] = static_cast<char>(c);
        }
    }
    line[length] = '\0';
    return length;
}

int tyr::raw_next_value(RawFileRec *file, RawValue *value, long column, int *line)
{
    clear_value(value);
    if (!file) {
        return 0;
    }
    if (file->mode != kRawRead) {
        return -1;
    }
    if (file->word_position == 0) {
        if (file->can_seek && line && !position(*file, *line)) {
            return -1;
        }
        if (!read_data_line(*file)) {
            return -1;
        }
    }
    ScanRec scan;
    SCAN_init(&scan, file->line.data());
    read_id(*file, scan, value);
    read_place(*file, scan, value);
    const bool is_fresh = file->word_position == 0;
    file->word_index = is_fresh ? file->first_column : file->word_index + 1;
    if (!is_fresh) {
        SCAN_set_pos(&scan, file->word_position < 0 ? scan.length : file->word_position);
    }
    int result = 0;
    if (column == kRawAllWords) {
        result = walk(*file, scan, value);
    } else {
        file->word_position = 0;
        result = take_column(*file, scan, column, value);
    }
    if (line && file->word_position == 0) {
        *line = file->current_line;
    }
    return result;
}

void tyr::raw_set_value(const RawFileRec &file, int field, RawValue *value, const char *text)
{
    std::string word = text;
    std::string format;
    if (field >= 0 && field < static_cast<int>(file.fields.size())) {
        format = file.fields[static_cast<size_t>(field)].format.data();
    }
    if (const size_t colon = word.find(':'); colon != std::string::npos) {
        format += (format.empty() ? "" : ":") + word.substr(colon + 1);
        word.erase(colon);
    }
    if (const size_t equals = word.find('='); equals != std::string::npos) {
        word.erase(0, equals + 1);
    }
    STR_copy(value->format, sizeof value->format, format);
    value->value1 = value->value2 = kMissing;
    value->text[0] = '\0';
    if (word == "-") {
        return;
    }
    if (!word.empty() && std::strchr("-.0123456789", word[0])) {
        std::sscanf(word.c_str(), "%f,%f", &value->value1, &value->value2);
        for (float *number : {&value->value1, &value->value2}) {
            *number = std::isfinite(*number) ? *number : kMissing;
        }
    }
    STR_copy(value->text, sizeof value->text, word);
}
