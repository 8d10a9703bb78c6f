// Any bytes as a selection of stations (line 1) and a city database (the rest).

#include <vector>

#include "fuzz/input.h"
#include "tyr/base/str.h"
#include "tyr/place/city.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    std::string text = fuzz_text(data, size);
    const std::vector<std::string> words = STR_fields(fuzz_line(text), ',');
    std::vector<char *> list;
    for (const std::string &word : words) {
        list.push_back(const_cast<char *>(word.c_str()));
    }
    const std::string path = fuzz_file(text);
    int count = 0;
    const int handle = CTY_open_file(path.c_str(), &count);
    CityRec record;
    while (handle > 0 && CTY_read_record(handle, &record) >= 1) {
        CTY_match(static_cast<int>(list.size()), list.data(), &record);
    }
    CTY_close_file(handle);
    for (const std::string &word : words) {
        int wmo = 0;
        char id[kWmoIdRoom];
        CTY_id_to_wmo(word.c_str(), &wmo);
        CTY_wmo_to_id(id, wmo);
        CTY_search(word.c_str(), path.c_str(), &record);
    }
    return 0;
}
