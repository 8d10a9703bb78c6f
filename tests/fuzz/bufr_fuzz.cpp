// Any bytes as a stream of BUFR messages, read to its end.

#include "fuzz/input.h"
#include "programs/profiler/bufr_layout.h"
#include "programs/profiler/reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    const std::string path = fuzz_file(fuzz_text(data, size));
    int layout = tyr::kLayoutBufr;
    const int handle = PROF_open(path.c_str(), 0, &layout);
    ProfilerRecord record;
    const int next = -1;
    while (PROF_read(handle, &record, 0, &next) == 1) {
        PRF_print_record(0, &record);
    }
    PROF_close(handle);
    return 0;
}
