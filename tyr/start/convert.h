#pragma once

#include <cstddef>

/// Room that a destination of type 7 (text copy) needs; longer values are cut.
inline constexpr size_t kTextCopyRoom = 160;

/// Converts a resource's text by a type code of base/res.h into a destination:
/// 1 int; 2 int (0x for hexadecimal); 3 short; 4 and 19 long; 5 float; 6 and 17 const char* into
/// the value; 7 char[kTextCopyRoom]; 13 and 20 DomainRec; 8 char*, a malloc'ed copy that ends in
/// `/`; 9, 10, 12, 16, 18, 22 and 23 act by themselves and need no destination (message, draw list,
/// hour, file parameter, plot type, batch, help). Returns 1 when the value was looked at, else 0.
int RES_convert(const char *value, void *destination, int type);

/// Converts a stored value by a type code; 0 if it isn't stored or without a destination. A name
/// without a value sets a flag and leaves every other destination alone.
int RES_get_value(const char *name, void *destination, int type);
