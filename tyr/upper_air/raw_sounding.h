#pragma once

// The sounding in force as a raw text file (map/raw.h), read and written.
//
//     TYRRAW
//     12Z 22 SEP 06
//     !JAN Sounding
//      Lev   P     H     T     Td    Dir Spd $
//      SFC 1006   101   22.4  20.8   180   6
//        1 1000    89 ...                      temperature levels
//     WIND 1006   101 ...                      wind levels from here
//        1  990   305 ...
//     TROP  120 15500 ...
//     MWND  180 12700 ...
//
// A "-" stands for Missing. What such a file can't hold: parts of a hPa and of metres, tenths of
// speeds and directions, the slots' map, mean wind and storm motion (which are worked out anew).

/// Reads a file and puts its sounding in force. One that can't be opened is told at `error` and
/// ends the program with code 10. Without wind levels the temperature levels are the winds too;
/// without a row "SFC" the surface is the first level. Levels beyond the array are told and left
/// out.
void THERM_read_raw(const char *name);

/// Writes the sounding in force to a file by the name convention "upa_snd", or to one for each
/// entry of `out_file`: "raw=word" and a word of its own name a convention or a file, "raw" alone
/// is "upa_snd", and entries that begin "gif" are passed over.
void THERM_out_raw();

/// Writes it to one file by its name. @return 0; -1 (told) when not all could be written
int THERM_write_raw(const char *name);
