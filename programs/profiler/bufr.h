#pragma once

#include <cstdint>
#include <cstdio>

#include "programs/profiler/records.h"

/// Reader of wind-profiler reports in WMO BUFR messages (FM 94, editions 2 and 3; uncompressed
/// data, element descriptors of the table in bufr_table.h, replication with a count, the operators
/// 2 01 and 2 06), each message possibly behind a bulletin heading.
/// Its state lives on from file to file: a message that was only partly used up when its file was
/// closed goes on at the next read.

/// The next n bits (0 to 32) of the message, most significant first. Behind the end of the message
/// they are 0, and the report is refused.
unsigned BUFR_get_bits(unsigned n);

/// Decodes one element of a table row, under the operators in force.
float BUFR_get_value(int row);

/// Reads the next report of the stream.
/// A message over 4000 bytes ends the walk in silence, one that can't be decoded (an edition,
/// descriptor, width or count beyond this reader, compressed data, a cut message) with a message
/// that names the file and the reason.
/// @return 1, or -1 at the end of the stream or of what can be read
int bufr_read_record(std::FILE *stream, const char *name, ProfilerRecord *record);

/// Date and time that the message of the last report tells. False, with `date` left alone, where
/// they can't be.
bool bufr_message_date(DateRec *date);
