#include <cstdio>

#include "tyr/base/str.h"
#include "tyr/grib/grib_index_private.h"

namespace tyr {
namespace {

constexpr int kLineRoom = 160;

/// Pairs of a letter and a number.
void read_pairs(const char *text, IndexLine *line)
{
    char letter = 0;
    int value = 0;
    int used = 0;
    while (std::sscanf(text, " %c%9d%n", &letter, &value, &used) == 2) {
        text += used;
        switch (letter) {
        case 'S':
            line->source = value;
            break;
        case 'M':
            line->model = value;
            break;
        case 'G':
            line->grid_id = value;
            break;
        case 'T':
            line->time = value;
            break;
        case 'L':
            line->ltype = value;
            break;
        case 'H':
            line->level = value;
            break;
        case 'V':
            line->var = value;
            break;
        default:
            break;
        }
    }
}

bool read_numbers(const char *text, IndexLine *line)
{
    constexpr int kNumbers = 6;
    int n[kNumbers] = {};
    int source = kMissingInt;
    int used = 0;
    if (std::sscanf(text, " %9d:%n", &source, &used) == 1 && used > 0) {
        line->source = source;
        text += used;
    }
    if (std::sscanf(text, "%9d %9d %9d %9d %9d %9d", &n[0], &n[1], &n[2], &n[3], &n[4], &n[5]) !=
        kNumbers) {
        return false;
    }
    line->model = n[0];
    line->grid_id = n[1];
    line->time = n[2];
    line->ltype = n[3];
    line->level = n[4];
    line->var = n[5];
    return true;
}

} // namespace

std::optional<IndexLine> parse_index_line(const std::string &text)
{
    constexpr const char *kWord = "/ GRIB";
    constexpr std::size_t kWordSize = 6;
    IndexLine line;
    int used = 0;
    if (std::sscanf(text.c_str(), "%18ld%n", &line.offset, &used) != 1 || line.offset < 0) {
        return std::nullopt;
    }
    const std::string rest = text.substr(static_cast<std::size_t>(used));
    const std::size_t word = rest.find(kWord);
    const std::size_t slash = rest.find('/');
    if (word != std::string::npos) {
        line.is_described = true;
        const std::size_t pairs = rest.find_first_not_of(' ', word + kWordSize);
        // the word may carry a number of its own
        const std::size_t letters =
            pairs == std::string::npos ? rest.size() : rest.find_first_not_of("0123456789 ", pairs);
        read_pairs(rest.c_str() + std::min(letters, rest.size()), &line);
    } else if (slash != std::string::npos) {
        line.is_described = read_numbers(rest.c_str() + slash + 1, &line);
    }
    return line;
}

bool GribIndex::open(const char *path)
{
    file_.reset(FILE_is_dir(path) != 0 ? nullptr : FILE_open(path, "r"));
    place_ = -1;
    last_.reset();
    return is_open();
}

void GribIndex::rewind()
{
    if (file_ != nullptr) {
        std::rewind(file_.get());
    }
    place_ = -1;
    last_.reset();
}

std::optional<IndexLine> GribIndex::next()
{
    char text[kLineRoom + 1];
    while (STR_read_cut_line(file_.get(), text, kLineRoom) >= 0) {
        if (std::optional<IndexLine> line = parse_index_line(text)) {
            return line;
        }
    }
    return std::nullopt;
}

std::optional<IndexLine> GribIndex::line(int place)
{
    if (place < place_) {
        rewind();
    }
    while (place_ < place) {
        std::optional<IndexLine> line = next();
        if (!line) {
            return std::nullopt;
        }
        line->field = last_ && last_->offset == line->offset ? last_->field + 1 : 0;
        last_ = line;
        ++place_;
    }
    return last_;
}

} // namespace tyr
