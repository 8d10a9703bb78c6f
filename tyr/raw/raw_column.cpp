#include "tyr/raw/raw_column.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "tyr/raw/raw_rec.h"

namespace {

constexpr int kFirstNamed = 1000;

struct State {
    std::vector<std::string> names;
};

State state;

} // namespace

const char *tyr::raw_column_name(long column)
{
    if (column <= kRawFields) {
        return nullptr;
    }
    const long index = column - kFirstNamed;
    if (index >= 0 && index < static_cast<long>(state.names.size())) {
        return state.names[static_cast<size_t>(index)].c_str();
    }
    return column > INT32_MAX ? reinterpret_cast<const char *>(static_cast<std::intptr_t>(column))
                              : "";
}

int RAW_name_column(const char *name)
{
    const auto found = std::find(state.names.begin(), state.names.end(), name);
    const auto index = found - state.names.begin();
    if (found == state.names.end()) {
        state.names.emplace_back(name);
    }
    return kFirstNamed + static_cast<int>(index);
}
