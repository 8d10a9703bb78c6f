#pragma once

#include <cstdint>

#include "programs/profiler/input.h"
#include "programs/profiler/records.h"

/// What a layout of profiler files has to offer. A layout is its own file and one row in
/// reader.cpp.

namespace tyr {

struct LayoutRow {
    int layout; ///< its code
    /// Whether a file is of this layout. It may say at `warn` why one that looks like it isn't.
    bool (*probe)(const ProfilerInput &input);
    /// Begins reading; `input` stays as it is until `close`. @return a handle, or -1
    int (*open)(const ProfilerInput &input);
    void (*header)(const ProfilerInput &input, PrfFileInfo *info);
    /// The record of an index, or the next one of a stream. @return 1, or -1 at the end
    int (*read)(const ProfilerInput &input, int64_t index, ProfilerRecord *record);
    /// Index of a station's first record, or -1; null where records have to be read for it.
    int64_t (*find)(const char *id);
    /// Date of the record last read, where records tell one; null where the header does.
    bool (*date)(DateRec *date);
    void (*rewind)(); ///< null where nothing has to be done
    void (*close)();
};

} // namespace tyr
