#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

/// Thin access to netCDF files. One file is current; an index or range, set beforehand,
/// says what a getter reads. Values come out in the type asked for, converted by the library; a
/// variable of characters can't be read as a number, and reads as a failure.

/// Lets complaints of the netCDF library be printed (1) or not (0).
void CDF_set_quiet(int flag);

/// Opens a file read-only (mode 0) or creates one (mode 1) and makes it current.
/// @return its id, or -1
int CDF_open(const char *name, int mode);

/// Opens a file that is in memory, read-only, in any format of the library, and makes it current.
/// Formats 1 and 2 are read directly, the others by the library, which is loaded only then. The
/// bytes stay as they are until it is closed.
/// @param[out] whole_records  records that lie wholly in the bytes; of netCDF-4 the largest number
/// @return its id, or -1; -1 too for a classic file whose header or fixed part is cut short, of
///         which the library would make zeros
int CDF_open_memory(std::string_view bytes, int64_t *whole_records);

/// The names of the current file's variables, `most` of them, between commas.
std::string CDF_variable_names(int most);

/// Makes an open file current.
void CDF_set_current(int id);

/// Closes the current file.
void CDF_close();

/// Id of a dimension or variable of the current file, or -1.
int CDF_dim_id(const char *name);
int CDF_var_id(const char *name);

/// 1 if a variable holds numbers, 0 if characters or if the id is bad.
int CDF_is_number(int var);

/// Size of a dimension; of the unlimited one for -1. 0 where there is none.
int64_t CDF_record_count(int dimension);

/// Sets n start values, each with count 1.
void CDF_set_index(std::initializer_list<long> start);
template <class... Long> void CDF_set_index(int /*n*/, Long... start)
{
    CDF_set_index({static_cast<long>(start)...});
}

/// Sets n pairs of start and count.
void CDF_set_range(std::initializer_list<long> pairs);
template <class... Long> void CDF_set_range(int /*n*/, Long... pairs)
{
    CDF_set_range({static_cast<long>(pairs)...});
}

/// Reads `length` characters, along one more dimension behind the index set, and ends them.
/// The buffer needs length + 1 bytes. @return 1; 0 for a bad id or a failure, the buffer untouched
int CDF_get_text(int var, int length, char *buffer);

/// One value at the index set; -9999 (a byte: -1) for a bad id or a failure.
float CDF_get_float(int var);
double CDF_get_double(int var);
long CDF_get_long(int var);
signed char CDF_get_byte(int var);

/// Reads the range set as floats; `out` needs room for the product of the counts.
/// @return 0; -1 for a bad id or a failure, `out` then untouched or partly filled
int CDF_get_float_array(int var, float *out);

/// The value of a numeric attribute of a variable. @return 0, or -1 where it isn't there
int CDF_get_attribute(int var, const char *name, double *value);

/// Copies a text attribute of a variable, cut at size - 1. @return 0, or -1 where it isn't there
int CDF_get_text_attribute(int var, const char *name, char *out, int size);
