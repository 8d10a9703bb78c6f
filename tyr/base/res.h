#pragma once

#include <cstddef>
#include <string>
#include <vector>

// The resource store: named texts in order of first storage. It knows no types; the conversions
// stand in base/convert.h.

/// Type codes of resources.
enum ResType {
    kResFlag = 1,
    kResInt = 2,
    kResShort = 3,
    kResLong = 4,
    kResReal = 5,
    kResText = 6,
    kResTextCopy = 7,
    kResPath = 8,
    kResMessage = 9,
    kResDraw = 10,
    kResCurrent = 11,
    kResHour = 12,
    kResRegion = 13,
    kResNameConv = 14,
    kResIngestor = 15,
    kResFileParam = 16,
    kResDevice = 17,
    kResPlotType = 18,
    kResLongByInt = 19,
    kResDomain = 20,
    kResList = 21,
    kResBatch = 22,
    kResHelp = 23
};

/// One stored resource, as RES_all shows it.
struct ResourceRec {
    int index = 0; ///< place in the program's option list, kMissingInt for a free resource
    std::string name;
    std::string value;
    bool has_value = false; ///< false for a name without a value
    int type = kResText;
};

/// Stores a copy of name and value (null for none) under an exact, case-sensitive name; a known
/// name keeps its place. Returns 0, -1 for a null name or no memory.
int RES_set(int index, const char *name, const char *value, int type);
/// Stores; a value that exists stays, with the new one joined behind it by a newline.
int RES_append(int index, const char *name, const char *value, int type);
/// Stores a free resource: RES_set(kMissingInt, name, value, kResText).
int RES_put(const char *name, const char *value);
/// The value: null if the name isn't stored, the empty text for a name without a value. Valid
/// until the name is stored again.
const char *RES_get(const char *name);
/// True if the name is stored with a value, be it the empty text.
bool RES_has_value(const char *name);
/// Splits the value, at newlines for a resource of type 21, else at commas. Returns the count; 0
/// with a null array if there is none. The caller frees with STR_free_list.
int RES_get_list(const char *name, int *count, char ***array);
/// The same as strings.
std::vector<std::string> RES_list(const char *name);
/// Prints each resource at mask 8.
void RES_print_all();
/// The resources in order of first storage.
std::vector<ResourceRec> RES_all();

/// Room of the buffer for RES_program_name.
inline constexpr size_t kProgramNameRoom = 32;
/// Base name of the program, "Tyr" before start-up. With a null buffer the caller owns the
/// (malloc'ed) result.
char *RES_program_name(char *buffer);
/// Takes the program's first argument for RES_program_name.
void RES_set_program(const char *argument);
