#include "tyr/base/bytes.h"

#include <algorithm>
#include <bit>

namespace {

enum ByteOrder { kNeverSwap = -1, kBigEndian = 1, kLittleEndian = 2 };

struct State {
    bool swap = true;
} state;

int reverse(void *word, int size)
{
    if (!state.swap) {
        return -1;
    }
    auto *bytes = static_cast<unsigned char *>(word);
    std::reverse(bytes, bytes + size);
    return 0;
}

} // namespace

void BYTE_set_order(int order)
{
    constexpr int host = std::endian::native == std::endian::big ? kBigEndian : kLittleEndian;
    state.swap = order != kNeverSwap && order != host;
}

int BYTE_swap4(void *word)
{
    return reverse(word, 4);
}

int BYTE_swap8(void *word)
{
    return reverse(word, 8);
}

int BYTE_swap4n(void *words, int count)
{
    if (!state.swap) {
        return -1;
    }
    auto *bytes = static_cast<unsigned char *>(words);
    for (int i = 0; i < count; ++i) {
        reverse(bytes + 4L * i, 4);
    }
    return 0;
}
