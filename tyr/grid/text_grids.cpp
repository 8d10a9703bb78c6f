#include <algorithm>
#include <cstring>

#include "tyr/base/msg.h"
#include "tyr/base/str.h"
#include "tyr/grid/text_grids_private.h"

namespace tyr {

namespace {

constexpr const char *kMagic = "TYRGRID";
constexpr int kDescriptionKind = 4;

} // namespace

TextGrids::TextGrids(std::FILE *stream, int kind, std::string name)
    : in_(stream), kind_(kind), name_(std::move(name))
{
}

int TextGrids::refuse(const char *reason)
{
    if (*reason != '\0') {
        MSG_out(kMsgWarn, "GRD_read: %s, grid %d: %s\n", name_.c_str(), next_, reason);
    }
    return -1;
}

bool TextGrids::pass_magic()
{
    if (magic_passed_) {
        return true;
    }
    magic_passed_ = true;
    std::string first;
    if (kind_ != 1 && in_.line(&first)) {
        is_binary_ = kind_ == kDescriptionKind && first.size() > 8 && first[8] == 'B';
    }
    starts_.assign(1, in_.place());
    return in_.peek() != EOF;
}

/// The next line that isn't empty nor the magic of a file joined.
bool TextGrids::date_line(std::string *date)
{
    if (date_) {
        *date = *date_;
        date_.reset();
        return true;
    }
    while (in_.line(date)) {
        if (!date->empty() && date->rfind(kMagic, 0) != 0) {
            return in_.peek() != EOF;
        }
    }
    return false;
}

int TextGrids::read_header(GridFileInfo *info)
{
    rewind();
    pass_magic();
    std::string date;
    if (!date_line(&date)) {
        MSG_out(kMsgWarn, "GRD_read_header: %s: no grid in the file\n", name_.c_str());
        return -1;
    }
    info->grid_type = 0;
    STR_copy(info->date_text, sizeof info->date_text, date);
    TIME_parse(date.c_str(), &info->date);
    if (in_.can_seek()) {
        in_.seek(starts_[0]);
    } else {
        date_ = date;
    }
    return 0;
}

void TextGrids::rewind()
{
    if (in_.can_seek() && !starts_.empty()) {
        in_.seek(starts_[0]);
        next_ = 0;
        date_.reset();
    }
}

/// Goes to the start of a grid: of one known, or behind the last one known and on from there.
bool TextGrids::go_to(int wanted)
{
    pass_magic();
    if (in_.can_seek()) {
        next_ = std::min(wanted, static_cast<int>(starts_.size()) - 1);
        in_.seek(starts_[static_cast<size_t>(next_)]);
    }
    while (next_ < wanted) {
        GridRec passed;
        GRD_init(&passed);
        if (read_here(&passed, false) != 0) {
            return false;
        }
    }
    return true;
}

int TextGrids::read(GridRec *grid, int mode, int *index)
{
    if (!go_to(std::max(*index, 0)) || read_here(grid, mode == 0) != 0) {
        return -1;
    }
    *index = next_ - 1;
    return 0;
}

int TextGrids::read_here(GridRec *grid, bool wants_values)
{
    std::string date;
    if (!date_line(&date)) {
        return -1;
    }
    STR_copy(grid->date, sizeof grid->date, date);
    int form = 0;
    const char *reason = read_head(grid, &form);
    if (reason == nullptr) {
        reason = kind_ == kDescriptionKind ? read_domain_text(grid) : read_projection(grid);
    }
    if (reason == nullptr && (grid->domain.nx < 1 || grid->domain.ny < 1)) {
        reason = "the grid has no points";
    }
    if (reason == nullptr) {
        reason = read_values(grid, form, wants_values);
    }
    if (reason != nullptr) {
        GRD_free(grid);
        return refuse(reason);
    }
    ++next_;
    if (in_.can_seek() && static_cast<size_t>(next_) == starts_.size()) {
        starts_.push_back(in_.place());
    }
    return 0;
}

} // namespace tyr
