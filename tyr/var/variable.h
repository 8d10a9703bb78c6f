#pragma once

#include <cstddef>

inline constexpr int kMaxVariables = 60;      ///< records of the variable list
inline constexpr size_t kVarNameSize = 20;    ///< bytes of VarRec::name
inline constexpr size_t kVarUnitsSize = 16;   ///< bytes of VarRec::units
inline constexpr size_t kVarFormatSize = 103; ///< bytes of VarRec::format

/// One parsed variable of an expression. Unset numbers are kMissingInt, unset texts empty.
struct VarRec {
    int type;                    ///< how to draw it, a VarType
    char name[kVarNameSize];     ///< name as given, or the catalogue's
    char units[kVarUnitsSize];   ///< wanted units; empty: as evaluated
    int var_number;              ///< catalogue number, with ensemble coding added
    int var_a;                   ///< second number of the catalogue entry
    int var_b;                   ///< third number of the catalogue entry
    int var_c;                   ///< fourth number of the catalogue entry
    int var_d;                   ///< fifth number of the catalogue entry
    int time_class;              ///< result of VAR_time: 1 from defaults, 2 explicit
    int time;                    ///< forecast hour, or a range code (var/time_range.h)
    int level_class;             ///< result of VAR_level
    int level_kind;              ///< LevelKind (var/level.h)
    int level_value;             ///< value in the unit of the kind
    char format[kVarFormatSize]; ///< attribute and format tokens for the plot
    int role;                    ///< function depth * 10 + VarRole
};

/// Last digit of VarRec::role: what a record is in its expression. A plain record inside groups
/// has the depth of the group added to kRolePlain.
enum VarRole : int {
    kRolePlain = 0,
    kRoleFunction = 2,
    kRoleWord = 4, ///< one of the words map, plot, frame, panel (the whole role is 4)
    kRoleGroup = 5,
    kRoleVector = 6,
    kRoleSecond = 8 ///< second record of a function with a vector result
};

/// Sets a record to its start values.
void VAR_init(VarRec *record);

/// Empties the list: every record to its start values, the count to 0.
void VAR_reset();

/// Number of records; they stay valid until the next VAR_decode, VAR_reset or VAR_menu.
int VAR_count();
/// Sets the number of records, bounded to 0..kMaxVariables. For the parser.
void VAR_set_count(int count);
/// First record of the list (never null; room for kMaxVariables).
VarRec *VAR_get_list();
/// Record i, 0 to kMaxVariables - 1; null outside. A record at the count or beyond is unset.
VarRec *VAR_get(int i);

/// 1 if record i is drawn at points: its type is at or below 9 but none of map, frame, panel, or
/// is above 23. 0 outside the list.
int VAR_is_point(int i);
/// Tests of the type of record i: 1 or 0; 0 outside the list.
int VAR_is_map(int i);
int VAR_is_frame(int i);
int VAR_is_panel(int i);
int VAR_is_grid(int i);   ///< type 10 to 17
int VAR_is_vector(int i); ///< type 20 to 23
/// Tests of the last digit of the role of record i, 1 or 0; 0 outside the list.
int VAR_is_plain(int i);       ///< 0
int VAR_is_in_group(int i);    ///< 1: plain, one group deep
int VAR_is_function(int i);    ///< 2
int VAR_is_group(int i);       ///< 5: head of a group
int VAR_is_vector_head(int i); ///< 6: head of a vector
int VAR_is_second(int i);      ///< 8: second record of a vector function

/// Prints a record in one line at the levels of the mask: name, units, time, level kind and value,
/// number, type, role and format.
void VAR_print(unsigned mask, const VarRec *record);
