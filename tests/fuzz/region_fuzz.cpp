// Any bytes as a region file, looked up and listed.

#include <array>

#include "fuzz/input.h"
#include "tyr/place/region.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    const std::string path = fuzz_file(fuzz_text(data, size));
    DOM_read_regions(path.c_str());
    DOM_region_table();
    std::array<char, kDomainTextRoom> out;
    for (const char *word : {"us", "a", ""}) {
        DOM_region_lookup(path.c_str(), word, out.data());
    }
    DOM_region_lookup(path.c_str(), nullptr, out.data());
    return 0;
}
