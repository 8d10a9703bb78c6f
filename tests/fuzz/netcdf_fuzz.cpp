// Any bytes as a profiler file, every record of it evaluated.

#include "fuzz/input.h"
#include "programs/profiler/evaluate.h"
#include "programs/profiler/reader.h"
#include "programs/profiler/walk.h"
#include "tyr/base/str.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    const std::string path = fuzz_file(fuzz_text(data, size));
    if (PRF_open_file(path.c_str()) == 0) {
        return 0;
    }
    ProfilerRecord record;
    while (PRF_next_station(&record) == 1) {
        for (const char *name : {"wbrb", "hel", "dewd"}) {
            VarRec variable;
            VAR_init(&variable);
            STR_copy(variable.name, sizeof variable.name, name);
            variable.level_kind = 105;
            variable.level_value = 1500;
            PlotValue value = {};
            PRF_evaluate(&record, &variable, &value);
        }
    }
    PRF_close_file();
    return 0;
}
