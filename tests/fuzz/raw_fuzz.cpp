// Any bytes as a name with its column (line 1) and a raw data file (the rest), read in every way.

#include "fuzz/input.h"
#include "tyr/raw/raw.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz_begin();
    std::string text = fuzz_text(data, size);
    std::string word = fuzz_line(text);
    const std::string path = fuzz_file(text);
    RAW_file_type(path.c_str());
    std::string name = path + word;
    int wanted = 0;
    char *format = nullptr;
    const int handle = RAW_file_open(name.data(), &wanted, &format, kRawRead);
    RawHeader header;
    RAW_read_header(handle, &header);
    RAW_field_label(handle, wanted);
    const long columns[] = {wanted, kRawAllWords, kRawId, kRawFirstValue + 1,
                            RAW_name_column(word.c_str())};
    for (const long column : columns) {
        RawValue value;
        for (int tries = 0; tries < 1000; ++tries) {
            if (RAW_read_value(handle, &value, column, nullptr) < 0) {
                break;
            }
        }
        int line = 2;
        RAW_read_value(handle, &value, column, &line);
        RAW_rewind(handle);
    }
    RAW_close(handle);
    return 0;
}
