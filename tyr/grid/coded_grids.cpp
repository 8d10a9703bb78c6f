#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdlib>

#include "tyr/base/angle.h"
#include "tyr/base/missing.h"
#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/grid/coded_grids_private.h"
#include "tyr/grid/grid_label_private.h"
#include "tyr/grid/param.h"

namespace tyr {

namespace {

constexpr int kNx = 19, kNy = 15;
constexpr float kSpacing = 5.0F;
constexpr int kFirstGridId = 70;
constexpr size_t kFirstWordDigits = 5;
constexpr int kWind = 22, kWindU = 23, kWindV = 24, kTemperature = 4;
constexpr int kPressureLevel = 10, kHeightLevel = 13, kGround = 12;

constexpr int kLastFromSouth = 4; ///< quadrants whose rows stand from the last one down

struct Centre {
    float lat, lon;
};
constexpr Centre kQuadrants[] = {
    {55,  -45 },
    {55,  -135},
    {55,  135 },
    {55,  45  },
    {0,   -45 },
    {0,   -135},
    {0,   135 },
    {0,   45  },
    {-55, -45 },
    {-55, -135},
    {-55, 135 },
    {-55, 45  },
};
constexpr double kScales[] = {1, 0.1, 0.01, 0.001, 0.0001, 10, 100, 1e3, 1e4, 1e5};

/// The number of `count` digits at a place of a word; 0 where none stand.
int digits(const std::string &word, size_t from, size_t count)
{
    return word.size() <= from ? 0 : std::atoi(word.substr(from, count).c_str());
}

int digit(const std::string &word, size_t place)
{
    return digits(word, place, 1);
}

bool is_first_word(const std::string &word)
{
    return word.size() >= kFirstWordDigits &&
           std::all_of(word.begin(), word.begin() + kFirstWordDigits,
                       [](unsigned char c) { return std::isdigit(c) != 0; });
}

} // namespace

struct CodedGrids::Coding {
    int sign_mode = 0;
    int width = 0;
    double scale = 1.0;
    double reference = 0.0;
};

CodedGrids::CodedGrids(std::FILE *stream, std::string name) : in_(stream), name_(std::move(name))
{
    places_.push_back({0, false});
}

void CodedGrids::rewind()
{
    in_.seek(0);
    next_ = 0;
}

bool CodedGrids::first_word(std::string *word)
{
    while (in_.word(word)) {
        if (is_first_word(*word)) {
            return true;
        }
    }
    return false;
}

int CodedGrids::read_header(GridFileInfo *info)
{
    rewind();
    GridRec grid;
    GRD_init(&grid);
    std::string word;
    info->grid_type = 0;
    const bool is_read = first_word(&word) && in_.word(&word) && in_.word(&word) &&
                         in_.word(&word) && read_groups(&grid, &info->date, &word);
    rewind();
    if (!is_read) {
        MSG_out(kMsgWarn, "GRD_read_header: %s: no coded grid in the file\n", name_.c_str());
        return -1;
    }
    std::array<char, kDateTextRoom> text{};
    TIME_format(&info->date, text.data());
    STR_copy(info->date_text, sizeof info->date_text, text.data());
    return 0;
}

/// Variable, level and time. `word` is the first group, and then the first behind them.
bool CodedGrids::read_groups(GridRec *grid, DateRec *date, std::string *word)
{
    constexpr int kCenturySplit = 50;
    for (const char group : {'1', '2', '3', '6', '7', '8', '0'}) {
        if ((*word)[0] != group) {
            continue;
        }
        const int first = digits(*word, 1, 2);
        const int second = digits(*word, 3, 2);
        switch (group) {
        case '1':
            grid->var = first;
            break;
        case '2':
            grid->ltype = kPressureLevel;
            grid->level = first * 10;
            break;
        case '3':
            grid->level = first * 10;
            grid->ltype = first == 0 ? kGround : kHeightLevel;
            break;
        case '6':
            date->year = first + (first < kCenturySplit ? 2000 : 1900);
            date->month = second;
            break;
        case '7':
            date->day = first;
            date->hour = second;
            break;
        case '8':
            grid->time = digits(*word, 2, 3);
            break;
        default:
            break;
        }
        if (!in_.word(word)) {
            return false;
        }
    }
    return true;
}

bool CodedGrids::read_coding(Coding *coding, int var, std::string *word)
{
    if ((*word)[0] == '1') {
        coding->sign_mode = digit(*word, 4);
        in_.word(word);
    }
    if ((*word)[0] == '2') {
        coding->width = digit(*word, 1) - (coding->sign_mode == 1 ? 1 : 0);
        in_.word(word);
    }
    if ((*word)[0] == '3') {
        coding->scale = kScales[static_cast<size_t>(std::clamp(digit(*word, 1), 0, 9))];
        const int number = digits(*word, 2, std::string::npos);
        coding->reference = (var == kTemperature ? -number : number) * coding->scale;
        in_.word(word);
    }
    return coding->width > 0 && !word->empty();
}

float CodedGrids::read_number(const Coding &coding)
{
    std::string text;
    for (int c = in_.peek(); c != EOF && std::isspace(c) != 0; c = in_.peek()) {
        in_.get();
    }
    const size_t room = static_cast<size_t>(coding.width + (coding.sign_mode == 1 ? 1 : 0));
    while (text.size() < room && in_.peek() != EOF && std::isspace(in_.peek()) == 0) {
        text.push_back(static_cast<char>(in_.get()));
    }
    const bool has_sign = coding.sign_mode == 1;
    const std::string number = text.substr(has_sign && !text.empty() ? 1 : 0);
    if (number.empty() || number.find_first_not_of("0123456789") != std::string::npos) {
        return kMissing;
    }
    const bool is_negative = coding.sign_mode == 3 || (has_sign && text[0] == '1');
    const int value = std::atoi(number.c_str());
    return static_cast<float>(is_negative ? -value : value);
}

bool CodedGrids::read_row(const Coding &coding, bool is_constant, std::vector<float> *row)
{
    row->assign(kNx, kMissing);
    for (float &value : *row) {
        if (in_.peek() == EOF) {
            return false;
        }
        value = is_constant && &value != row->data() ? row->front() : read_number(coding);
    }
    return true;
}

bool CodedGrids::read_rows(const Coding &coding, GridRec *grid, std::string *word,
                           bool wants_values)
{
    const bool from_south = grid->grid_id - kFirstGridId <= kLastFromSouth;
    std::vector<float> row;
    for (int y = 0; y < kNy; ++y) {
        if (!read_row(coding, (*word)[0] == '9', &row)) {
            return false;
        }
        float *to = wants_values ? grid->values + kNx * (from_south ? kNy - 1 - y : y) : nullptr;
        for (size_t x = 0; to != nullptr && x < row.size(); ++x) {
            const int number = static_cast<int>(row[x]);
            const double speed = std::abs(number % 100);
            const double angle = std::abs(number / 100) * kRadiansPerDegree;
            if (is_missing(row[x])) {
                to[x] = kMissing;
            } else if (grid->var == kWindU || grid->var == kWindV) {
                to[x] = static_cast<float>(
                    -speed * (grid->var == kWindU ? std::sin(angle) : std::cos(angle)));
            } else {
                to[x] = static_cast<float>(row[x] * coding.scale + coding.reference);
            }
        }
        const int64_t behind = in_.place();
        if (!in_.word(word)) {
            return y == kNy - 1;
        }
        if (y == kNy - 1 && is_first_word(*word)) {
            in_.seek(behind);
        }
    }
    return true;
}

int CodedGrids::read_here(GridRec *grid, bool wants_values)
{
    std::string word;
    if (!first_word(&word)) {
        return -1;
    }
    DateRec date;
    Coding coding;
    grid->version = 1;
    grid->source = digit(word, 0);
    grid->model = digit(word, 1);
    const int quadrant = digits(word, 2, 3);
    grid->grid_id = quadrant + kFirstGridId;
    const bool is_known = quadrant >= 1 && quadrant <= static_cast<int>(std::size(kQuadrants));
    if (!is_known || !in_.word(&word) || !in_.word(&word) || !in_.word(&word) ||
        !read_groups(grid, &date, &word) || !read_coding(&coding, grid->var, &word)) {
        MSG_out(kMsgWarn, "GRD_read: %s, grid %d: %s\n", name_.c_str(), next_,
                is_known ? "its groups can't be read" : "a quadrant that isn't known");
        return -1;
    }
    const Centre &centre = kQuadrants[quadrant - 1];
    grid->domain.proj = kProjLatLon;
    grid->domain.nx = kNx;
    grid->domain.ny = kNy;
    grid->domain.dx = grid->domain.dy = kSpacing;
    grid->domain.clat = centre.lat;
    grid->domain.clon = grid->domain.plon = centre.lon;
    bool next_is_second = false;
    if (grid->var == kWind) {
        const bool is_second = places_[static_cast<size_t>(next_)].is_second_wind;
        grid->var = is_second ? kWindV : kWindU;
        next_is_second = !is_second;
    }
    if ((wants_values && GRD_alloc(grid) == 0) || !read_rows(coding, grid, &word, wants_values)) {
        MSG_out(kMsgWarn, "GRD_read: %s, grid %d: the rows end early\n", name_.c_str(), next_);
        GRD_free(grid);
        return -1;
    }
    if (const char *units = GRD_unit_text(grid->var)) {
        STR_copy(grid->units, sizeof grid->units, units);
    }
    label_old_code(grid, date);
    ++next_;
    if (static_cast<size_t>(next_) == places_.size()) {
        places_.push_back({in_.place(), next_is_second});
    }
    return 0;
}

int CodedGrids::read(GridRec *grid, int mode, int *index)
{
    const int wanted = std::max(*index, 0);
    if (in_.can_seek()) {
        next_ = std::min(wanted, static_cast<int>(places_.size()) - 1);
        in_.seek(places_[static_cast<size_t>(next_)].start);
    }
    while (next_ < wanted) {
        GridRec passed;
        GRD_init(&passed);
        if (read_here(&passed, false) != 0) {
            return -1;
        }
    }
    if (read_here(grid, mode == 0) != 0) {
        return -1;
    }
    *index = next_ - 1;
    return 0;
}

} // namespace tyr
