#include "tyr/grid_files/grid_file.h"

#include <array>
#include <cstring>
#include <memory>
#include <string>

#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/base/netcdf_library_private.h"
#include "tyr/base/str.h"
#include "tyr/base/whole_file.h"
#include "tyr/grid/coded_grids_private.h"
#include "tyr/grid/netcdf_grids_private.h"
#include "tyr/grid/text_grids_private.h"
#include "tyr/grid_files/grid_grib_private.h"
#include "tyr/grid_files/grid_words_private.h"

using namespace tyr;

namespace {

/// An open file: what of its forms isn't used is null.
struct Entry {
    GridFile file = {0, 0, -1};
    std::string name;
    bool is_written = false;
    bool is_given_up = false; ///< written, but not to be kept
    tyr::WholeFile out;
    FilePtr in;
    std::unique_ptr<tyr::TextGrids> text;
    std::unique_ptr<tyr::CodedGrids> coded;
    std::unique_ptr<tyr::GridGrib> grib;
    std::unique_ptr<tyr::NcFile> netcdf;
    std::unique_ptr<tyr::NetcdfOwn> own;
    std::unique_ptr<tyr::NetcdfModel> model;
};

struct State {
    std::array<std::unique_ptr<Entry>, kMaxGridFiles> entries;
    std::string number_format = "%14.8e\n";
};
State state;

bool is_handle(int handle)
{
    return handle >= 0 && handle < kMaxGridFiles;
}

Entry *entry_of(int handle)
{
    return is_handle(handle) ? state.entries[static_cast<size_t>(handle)].get() : nullptr;
}

bool is_text_kind(int kind)
{
    return kind >= kGridOldText && kind <= kGridDescription;
}

std::string expanded(const char *path)
{
    std::array<char, kFileNameRoom> name{};
    FILE_expand(path, name.data());
    return name.data();
}

bool open_netcdf(Entry *entry)
{
    int id = -1;
    if (entry->is_written) {
        if (!tyr::has_netcdf_library() || !entry->out.open_by_name(entry->name.c_str()) ||
            tyr::nc().create(entry->out.path().c_str(), NC_CLOBBER | NC_64BIT_OFFSET, &id) !=
                NC_NOERR) {
            return false;
        }
    } else {
        id = tyr::nc_open_checked(entry->name.c_str());
    }
    if (id == -1) {
        return false;
    }
    const int64_t size = entry->is_written ? 0 : FILE_size(entry->name.c_str());
    entry->netcdf = std::make_unique<tyr::NcFile>(id, entry->name, size);
    if (entry->is_written || entry->netcdf->dim("grid") != -1) {
        entry->own = std::make_unique<tyr::NetcdfOwn>(entry->netcdf.get());
    } else {
        entry->model = std::make_unique<tyr::NetcdfModel>(entry->netcdf.get());
    }
    return true;
}

bool open_stream(Entry *entry, int handle, const char *mode)
{
    const char *path = entry->name.c_str();
    if (entry->is_written) {
        return mode[0] == 'a' ? entry->out.open_to_add(path) : entry->out.open(path);
    }
    std::FILE *stream = FILE_open(path, mode);
    entry->in.reset(stream);
    if (stream == nullptr) {
        return false;
    }
    if (entry->file.kind == kGridGrib) {
        entry->grib = std::make_unique<tyr::GridGrib>(handle, stream, entry->name);
    } else if (entry->file.kind == kGridCoded) {
        entry->coded = std::make_unique<tyr::CodedGrids>(stream, entry->name);
    } else {
        entry->text = std::make_unique<tyr::TextGrids>(stream, entry->file.kind, entry->name);
    }
    return true;
}

/// Opens in the first free entry from `lowest` on.
int open_entry(const char *path, int kind, const char *mode, int lowest)
{
    int handle = lowest;
    while (is_handle(handle) && entry_of(handle) != nullptr) {
        ++handle;
    }
    if (!is_handle(handle)) {
        return -1;
    }
    const std::string format = tyr::grid_read_words();
    if (!format.empty()) {
        GRD_set_number_format(format.c_str());
    }
    auto entry = std::make_unique<Entry>();
    entry->file.kind = kind;
    entry->name = expanded(path);
    entry->is_written = mode[0] != 'r';
    const bool is_stream = is_text_kind(kind) || kind == kGridGrib || kind == kGridCoded;
    if (is_stream ? !open_stream(entry.get(), handle, mode)
                  : kind != kGridNetcdf || mode[0] == 'a' || !open_netcdf(entry.get())) {
        return -1;
    }
    state.entries[static_cast<size_t>(handle)] = std::move(entry);
    return handle;
}

/// Reads by the form of the file.
int read_form(Entry *entry, GridRec *grid, int mode, int *index)
{
    if (entry->text) {
        return entry->text->read(grid, mode, index);
    }
    if (entry->coded) {
        return entry->coded->read(grid, mode, index);
    }
    if (entry->grib) {
        return entry->grib->read(grid, mode, index);
    }
    if (entry->own) {
        return entry->own->read(grid, mode, index);
    }
    return entry->model ? entry->model->read(grid, mode, index) : -1;
}

} // namespace

int GRD_open(const char *path, int mode, int *kind)
{
    const char *name = path != nullptr ? path : "";
    if (*name == '\0' || std::strcmp(name, "-") == 0) {
        *kind = *kind == kGridBinary || *kind == kGridGrib ? *kind : static_cast<int>(kGridText);
    }
    if ((mode != 0 && mode != 1) || (mode == 1 && *kind == kGridUnknown)) {
        return -1;
    }
    if (*kind == kGridUnknown) {
        const int found = GRD_file_type(name);
        if (found == -1) {
            return -1;
        }
        *kind = found;
    }
    return open_entry(name, *kind, mode == 0 ? "r" : "w", 0);
}

int tyr::grid_open_out(const char *path, int kind, int lowest, bool append)
{
    return open_entry(path, kind, append ? "a" : "w", lowest);
}

int GRD_close(int handle)
{
    if (!is_handle(handle)) {
        return -1;
    }
    const std::unique_ptr<Entry> entry = std::move(state.entries[static_cast<size_t>(handle)]);
    if (!entry) {
        return 0;
    }
    if (entry->is_written && entry->own) {
        entry->own->finish();
    }
    bool is_good = !entry->netcdf || entry->netcdf->close() == 0;
    entry->grib.reset();
    if (!entry->is_written) {
        return is_good ? 0 : -1;
    }
    if (!is_good || entry->is_given_up) {
        entry->out.drop();
        return -1;
    }
    return entry->out.keep() == 0 ? 0 : -1;
}

void tyr::grid_give_up(int handle)
{
    if (Entry *entry = entry_of(handle)) {
        entry->is_given_up = true;
    }
}

int GRD_rewind(int handle)
{
    Entry *entry = entry_of(handle);
    if (entry != nullptr) {
        entry->file.index = -1;
    }
    if (entry != nullptr && entry->text) {
        entry->text->rewind();
    } else if (entry != nullptr && entry->coded) {
        entry->coded->rewind();
    } else if (entry != nullptr && entry->grib) {
        entry->grib->rewind();
    }
    return is_handle(handle) ? 0 : -1;
}

GridFile *GRD_get_file(int handle)
{
    Entry *entry = entry_of(handle);
    return entry != nullptr ? &entry->file : nullptr;
}

int GRD_read_header(int handle, GridFileInfo *info)
{
    Entry *entry = entry_of(handle);
    *info = GridFileInfo{};
    int result = -1;
    if (entry == nullptr) {
        return -1;
    }
    entry->file.index = -1;
    if (entry->grib) {
        return entry->grib->read_header(info, &entry->file.grid_type);
    }
    if (entry->text) {
        result = entry->text->read_header(info);
    } else if (entry->coded) {
        result = entry->coded->read_header(info);
    } else if (entry->own && !entry->is_written) {
        result = entry->own->read_header(info);
    } else if (entry->model) {
        result = entry->model->read_header(info);
    }
    entry->file.grid_type = info->grid_type;
    return result;
}

int GRD_write_header(int handle, const GridFileInfo *info)
{
    Entry *entry = entry_of(handle);
    if (entry == nullptr || !entry->is_written) {
        return -1;
    }
    switch (entry->file.kind) {
    case kGridOldText:
    case kGridGrib:
    case kGridCoded:
        return 0;
    case kGridText:
    case kGridBinary:
        return std::fputs("TYRGRID\n", entry->out.stream()) == EOF ? -1 : 0;
    case kGridNetcdf:
        entry->own->set_header(*info);
        return 0;
    default:
        return -1;
    }
}

int GRD_read(int handle, GridRec *grid, int mode, int *index)
{
    Entry *entry = entry_of(handle);
    if (entry == nullptr || entry->is_written) {
        return -1;
    }
    GridRec read;
    GRD_init(&read);
    const int result = read_form(entry, &read, mode, index);
    if (result == 0) {
        GRD_free(grid);
        *grid = read;
        entry->file.index = *index;
    }
    return result;
}

int GRD_write(int handle, const GridRec *grid, int /*mode*/, int *index)
{
    Entry *entry = entry_of(handle);
    if (entry == nullptr || !entry->is_written || grid->values == nullptr) {
        return -1;
    }
    const int kind = entry->file.kind;
    const char *reason = "grids of this kind can't be written";
    if (kind >= kGridOldText && kind <= kGridBinary) {
        reason = tyr::write_text_grid(entry->out.stream(), *grid, kind == kGridBinary,
                                      state.number_format.c_str());
    } else if (kind == kGridNetcdf) {
        reason = entry->own->write(*grid, *index);
    }
    if (reason != nullptr) {
        MSG_out(kMsgWarn, "GRD_write: %s: %s\n", entry->name.c_str(), reason);
        return -1;
    }
    return 0;
}

void GRD_set_number_format(const char *format)
{
    const std::string text = format;
    const size_t percent = text.find('%');
    const size_t letter = text.find_first_not_of("+-# 0123456789.", percent + 1);
    constexpr size_t kLongest = 30;
    if (percent == std::string::npos || letter == std::string::npos || text.size() > kLongest ||
        letter - percent > 8 || std::strchr("efgEFG", text[letter]) == nullptr ||
        text.find('%', percent + 1) != std::string::npos) {
        MSG_out(kMsgWarn, "GRD_set_number_format: not a format of one number: %s\n", format);
        return;
    }
    const bool is_parted = std::strchr(" \t\n", text.back()) != nullptr;
    state.number_format = is_parted ? text : text + "\n";
}
