#include "tyr/raw/raw.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "tyr/base/file.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/res.h"
#include "tyr/base/str.h"
#include "tyr/raw/raw_column.h"
#include "tyr/raw/raw_read_private.h"

using namespace tyr;

namespace {

constexpr size_t kNameStart = 2; ///< a dash or colon before it belongs to the name
constexpr int kHeaderLines = 3;
constexpr int kFieldsWithPlace = 4;
constexpr int kFieldsWithPressure = 3;

struct State {
    std::array<RawFileRec, kRawFiles> files;
};

State state;

bool is_open(int handle)
{
    return handle >= 0 && handle < kRawFiles && state.files[static_cast<size_t>(handle)].open == 1;
}

/// By the first byte, which stays in the stream.
RawType type_of(std::FILE *stream)
{
    const int c = std::getc(stream);
    std::ungetc(c, stream);
    return c == 'T' ? kRawHeadered : kRawHeaderless;
}

/// Reads past the end of the line.
void skip_line(std::FILE *stream)
{
    for (int c = std::getc(stream); c != EOF && c != '\n';) {
        c = std::getc(stream);
    }
}

/// The next blank-separated word; empty at the end. Words are cut at the room of a word.
std::string read_word(std::FILE *stream)
{
    std::string word;
    int c = std::getc(stream);
    while (c != EOF && std::isspace(c) != 0) {
        c = std::getc(stream);
    }
    for (; c != EOF && std::isspace(c) == 0; c = std::getc(stream)) {
        if (word.size() < 2 * kRawLabelRoom) {
            word += static_cast<char>(c);
        }
    }
    if (c != EOF) {
        std::ungetc(c, stream);
    }
    return word;
}

/// Cuts "name:label:format" into the file's next field.
void add_field(RawFileRec &file, const std::string &word)
{
    const size_t first = word.find(':');
    const size_t second = first == std::string::npos ? first : word.find(':', first + 1);
    std::string label =
        first == std::string::npos ? "" : word.substr(first + 1, second - first - 1);
    std::replace(label.begin(), label.end(), '_', ' ');
    RawField field;
    STR_copy(field.name.data(), field.name.size(), word.substr(0, first));
    STR_copy(field.label.data(), field.label.size(), label);
    if (second != std::string::npos) {
        STR_copy(field.format.data(), field.format.size(), word.substr(second + 1));
    }
    file.fields.push_back(field);
}

void settle_layout(RawFileRec &file)
{
    const int count = static_cast<int>(file.fields.size());
    const std::string second = count > 1 ? file.fields[1].name.data() : "";
    const auto is = [&second](const char *word) { return STR_casecmp(second.c_str(), word) == 0; };
    file.first_column = (is("lat") || is("x")) && count >= kFieldsWithPlace       ? 3
                        : (is("p") || is("pres")) && count >= kFieldsWithPressure ? 2
                                                                                  : 1;
}

/// Where the column begins and the format begins in "file-column:format"; npos for none.
struct NameParts {
    size_t column = std::string::npos;
    size_t format = std::string::npos;
};

NameParts find_parts(const std::string &name)
{
    const size_t slash = name.substr(0, name.find(':', kNameStart)).find_last_of('/');
    const size_t start = slash == std::string::npos ? kNameStart : std::max(kNameStart, slash + 1);
    NameParts parts;
    size_t at = name.find_first_of("-:", start);
    if (at != std::string::npos && name[at] == '-') {
        parts.column = at + 1;
        at = name.find(':', at);
    }
    parts.format = at == std::string::npos ? at : at + 1;
    return parts;
}

int column_of(const char *text)
{
    if (STR_is_int(text) == 0) {
        return RAW_name_column(text);
    }
    const int number = std::atoi(text);
    return number == kMissingInt                  ? kRawNoColumn
           : number > kRawFields - kRawFirstValue ? RAW_name_column(text)
                                                  : number + kRawFirstValue;
}

} // namespace

RawFileRec *tyr::raw_file(int handle)
{
    return is_open(handle) ? &state.files[static_cast<size_t>(handle)] : nullptr;
}

bool tyr::raw_finish(int handle, bool is_kept)
{
    RawFileRec *file = raw_file(handle);
    if (!file) {
        return true;
    }
    bool is_whole = true;
    if (file->mode != kRawRead && !is_kept) {
        file->out.drop();
    } else if (file->mode != kRawRead) {
        if (file->mode == kRawWrite) {
            std::fputc('\n', file->out.stream());
        }
        is_whole = file->out.keep() == 0;
        if (!is_whole) {
            MSG_out(kMsgWarn, "RAW_close: %s: not all could be written\n", file->name.c_str());
        }
    }
    *file = {}; // FILE_close leaves standard streams open
    return is_whole;
}

int RAW_file_open(char *name, int *column, char **format, int mode)
{
    *column = kRawAllWords;
    *format = nullptr;
    const NameParts parts = find_parts(name);
    if (parts.format != std::string::npos) {
        name[parts.format - 1] = '\0';
        *format = name + parts.format;
    }
    if (parts.column != std::string::npos) {
        name[parts.column - 1] = '\0';
        *column = column_of(name + parts.column);
    }
    std::array<char, kFileNameRoom> path;
    FILE_join(RES_get("raw_path"), name, path.data());
    const int handle = RAW_open(path.data(), mode, nullptr);
    if (handle == -1) {
        MSG_out(kMsgWarn, "RAW_file_open: Unable to open file:%s\n", path.data());
    }
    return handle;
}

int RAW_open(const char *path, int mode, int *type)
{
    const auto free = std::find_if(state.files.begin(), state.files.end(),
                                   [](const RawFileRec &file) { return file.open == 0; });
    if (free == state.files.end()) {
        return -1;
    }
    const bool is_plain_stream = STR_casecmp(path, "stdn") == 0;
    const char *name = is_plain_stream ? "-" : path;
    const bool is_standard = FILE_is_std(name) == 1;
    RawFileRec file;
    file.name = name;
    file.mode = mode;
    file.type = is_plain_stream ? kRawHeaderless : kRawHeadered;
    if (FILE_is_dir(name) != 0) {
        return -1;
    }
    if (mode <= kRawRead) {
        file.stream.reset(FILE_open(name, "r"));
    }
    const bool is_open = mode <= kRawRead    ? file.stream != nullptr
                         : mode == kRawWrite ? file.out.open(name)
                                             : file.out.open_to_add(name);
    if (!is_open) {
        return -1;
    }
    if (mode == kRawRead && !is_standard) {
        file.type = type_of(file.stream.get());
        file.can_seek = FILE_is_regular(name) == 1;
    }
    file.open = 1;
    if (type) {
        *type = file.type;
    }
    *free = std::move(file);
    return static_cast<int>(free - state.files.begin());
}

int RAW_file_type(const char *path)
{
    if (FILE_is_dir(path) != 0) {
        return -1;
    }
    const FilePtr file(FILE_open(path, "r"));
    return file ? type_of(file.get()) : -1;
}

int RAW_read_header(int handle, RawHeader *header)
{
    *header = {};
    RawFileRec *file = raw_file(handle);
    if (!file || file->mode != kRawRead) {
        return -1;
    }
    if (file->type == kRawHeaderless) {
        return 0;
    }
    std::FILE *stream = file->stream.get();
    skip_line(stream);
    std::array<char, kRawTitleRoom> line;
    raw_read_line(stream, line.data(), kRawTitleRoom);
    STR_clean_line(line.data());
    STR_copy(header->title, sizeof header->title, line.data());
    TIME_parse(header->title, &header->date);
    raw_read_line(stream, line.data(), kRawTitleRoom);
    STR_clean_line(line.data());
    file->fields.clear();
    if (line[0] == '!') {
        STR_copy(header->format, sizeof header->format, line.data() + 1);
        std::string word;
        while (static_cast<int>(file->fields.size()) < kRawFields &&
               !(word = read_word(stream)).empty() && word[0] != '$') {
            add_field(*file, word);
        }
        skip_line(stream);
    }
    settle_layout(*file);
    file->data_start = file->can_seek ? std::ftell(stream) : -1;
    raw_start_lines(*file);
    return 0;
}

int RAW_read_value(int handle, RawValue *value, long column, int *line)
{
    return raw_next_value(raw_file(handle), value, column, line);
}

int RAW_rewind(int handle)
{
    RawFileRec *file = raw_file(handle);
    if (!file || !file->can_seek) {
        return -1;
    }
    std::FILE *stream = file->stream.get();
    std::rewind(stream);
    if (file->type == kRawHeadered && file->data_start >= 0) {
        std::fseek(stream, file->data_start, SEEK_SET);
    } else if (file->type == kRawHeadered) {
        for (int i = 0; i < kHeaderLines; ++i) {
            skip_line(stream);
        }
    }
    raw_start_lines(*file);
    return 0;
}

void RAW_close(int handle)
{
    raw_finish(handle, true);
}

const char *RAW_field_label(int handle, long column)
{
    const RawFileRec *file = raw_file(handle);
    if (!file) {
        return nullptr;
    }
    const int index = raw_field_index(*file, column);
    return index >= 0 && index < static_cast<int>(file->fields.size())
               ? file->fields[static_cast<size_t>(index)].label.data()
               : nullptr;
}
