// Any bytes as a level and as a time, and what they mean in a sounding.

#include <cstddef>
#include <cstdint>
#include <string>

#include "tyr/var/label.h"
#include "tyr/var/layer.h"
#include "tyr/var/level.h"
#include "tyr/var/time_range.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    VarRec record;
    VAR_init(&record);
    VAR_level(text.c_str(), &record.level_kind, &record.level_value);
    VAR_time(text.c_str(), &record.time);
    int kind = 0;
    float bottom = 0.0F;
    float top = 0.0F;
    float extra = 0.0F;
    VAR_layer_limits(&record, &kind, &bottom, &top, &extra);
    VAR_encode_layer(kind, &record.level_kind, &record.level_value, bottom, top);
    char label[kVarLabelSize];
    VAR_record_label(&record, label);
    return 0;
}
