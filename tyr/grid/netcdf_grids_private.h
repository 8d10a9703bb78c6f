#pragma once

#include <array>
#include <string>
#include <vector>

#include "tyr/grid/grid.h"
#include "tyr/grid/grid_info.h"

namespace tyr {

/// An open netCDF file with the bounds of what it holds; closes at the end.
class NcFile {
  public:
    NcFile(int id, std::string name, int64_t size) : id_(id), name_(std::move(name)), size_(size) {}
    ~NcFile();
    NcFile(const NcFile &) = delete;
    NcFile &operator=(const NcFile &) = delete;

    int id() const { return id_; }
    const std::string &name() const { return name_; }
    int64_t size() const { return size_; } ///< bytes of the file
    int close();                           ///< 0; -1 where not all was written

    int var(const char *name) const; ///< -1 where it isn't there
    int dim(const char *name) const;
    size_t length(int dim) const; ///< 0 for -1
    std::vector<int> dims_of(int var) const;
    /// The element at an index of a variable (any rank; one of rank 0 has one), else the default.
    double number(int var, size_t index, double otherwise) const;
    /// Row `index` of a variable of characters, without trailing blanks.
    std::string text(int var, size_t index) const;
    std::string attribute(int var, const char *name) const;      ///< a text; empty for none
    int attribute_number(const char *name, int otherwise) const; ///< a global one

  private:
    int id_;
    std::string name_;
    int64_t size_;
};

/// Opens for reading; -1, told, for a file that isn't whole: the library reads what lies beyond
/// a file's end as zeros.
int nc_open_checked(const char *path);

/// Grids in the system's own netCDF layout: unlimited dimension `grid`, `x`, `y`, `string_len` 50.
/// Info and date keep 50 characters. `units`, `parm1`, `parm2` and `parm3` are kept too.
class NetcdfOwn {
  public:
    explicit NetcdfOwn(NcFile *file) : file_(file) {}
    int read_header(GridFileInfo *info);
    int read(GridRec *grid, int mode, const int *index);
    /// Keeps the header until the first grid tells the size of x and y.
    void set_header(const GridFileInfo &info);
    /// @return null, or why the grid can't be written
    const char *write(const GridRec &grid, int index);
    /// Defines a file that got a header and no grid.
    void finish();
    int count() const; ///< grids in the file

  private:
    bool define(size_t nx, size_t ny);
    const char *put(const GridRec &grid, size_t index);

    NcFile *file_;
    GridFileInfo info_ = {};
    bool has_header_ = false, is_defined_ = false;
};

/// Grids of a model's netCDF file in a foreign layout: one variable at one level and time, the
/// variable the outer loop. The environment's GRIDVAR names one more variable, as code 0, and
/// GRIBQP hours that are added to the time of precipitation (code 50).
class NetcdfModel {
  public:
    explicit NetcdfModel(NcFile *file);
    int read_header(GridFileInfo *info);
    int read(GridRec *grid, int mode, const int *index);

  private:
    struct Found {
        int id, code;
        bool has_time, has_level;
        size_t places;
    };
    struct Place {
        const Found *variable;
        size_t time, level;
    };
    void find_variables();
    bool find_place(int index, Place *place) const;
    void set_level(const Place &place, GridRec *grid) const;
    void set_level_by_form(int code, GridRec *grid) const;
    bool set_domain(GridRec *grid) const;
    void set_grid_id(GridRec *grid) const;
    bool read_values(const Place &place, GridRec *grid) const;
    void set_label(const Place &place, GridRec *grid) const;

    NcFile *file_;
    int lon_dim_, lat_dim_, level_dim_, time_dim_, record_dim_;
    int form_ = 0;
    DateRec run_;
    std::vector<Found> found_;
};

} // namespace tyr
