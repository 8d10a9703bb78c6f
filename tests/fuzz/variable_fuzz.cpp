// Any bytes as a variable expression: parsed, asked about and labelled.

#include <cstddef>
#include <cstdint>
#include <string>

#include "tyr/var/expression.h"
#include "tyr/var/label.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    VAR_decode(nullptr, text.c_str());
    char label[kVarLabelSize];
    for (int i = 0; i < VAR_count(); ++i) {
        VAR_is_point(i);
        VAR_make_label(i, label);
    }
    return 0;
}
