#include "tyr/place/table.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>

namespace {

constexpr int kHashFactor = 257;
constexpr int kHashModulus = 35177;

size_t slot_of(const TableRec &table, int key_number, const char *key)
{
    return static_cast<size_t>((key_number - 1) * table.size + TBL_hash(key) % table.size);
}

void link_behind(TableRec &table, int key_number, const char *key, int entry)
{
    const int link = static_cast<int>(table.links.size());
    TableRec::Chain &chain = table.slots[slot_of(table, key_number, key)];
    (chain.last < 0 ? chain.first : table.links[static_cast<size_t>(chain.last)].next) = link;
    chain.last = link;
    table.links.push_back({key, entry, -1});
}

} // namespace

int TBL_init(TableRec *table, int size, int element_size, int keys)
{
    TBL_free(table);
    if (element_size < 1 || keys < 1 || keys > kTableKeys) {
        return -1;
    }
    table->size = std::max(size, 1);
    table->element_size = element_size;
    table->keys = keys;
    table->slots.assign(static_cast<size_t>(table->size) * static_cast<size_t>(keys), {});
    return 0;
}

void *TBL_add(TableRec *table, const void *data, const char *key1, ...)
{
    if (table->keys == 0) {
        return nullptr;
    }
    const size_t bytes = static_cast<size_t>(table->element_size);
    auto copy = std::make_unique<std::byte[]>(bytes);
    std::memcpy(copy.get(), data, bytes);
    const int entry = static_cast<int>(table->entries.size());
    table->entries.push_back(std::move(copy));
    link_behind(*table, 1, key1, entry);
    va_list keys;
    va_start(keys, key1);
    for (int i = 2; i <= table->keys; ++i) {
        link_behind(*table, i, va_arg(keys, const char *), entry);
    }
    va_end(keys);
    return table->entries.back().get();
}

void *TBL_find(const TableRec *table, int key_number, const char *key)
{
    if (key_number < 1 || key_number > table->keys || !key) {
        return nullptr;
    }
    for (int i = table->slots[slot_of(*table, key_number, key)].first; i >= 0;) {
        const TableRec::Link &link = table->links[static_cast<size_t>(i)];
        if (link.key == key) {
            return table->entries[static_cast<size_t>(link.entry)].get();
        }
        i = link.next;
    }
    return nullptr;
}

void TBL_rewind(TableRec *table)
{
    table->next_entry = 0;
}

void *TBL_next(TableRec *table)
{
    if (table->next_entry >= static_cast<int>(table->entries.size())) {
        return nullptr;
    }
    return table->entries[static_cast<size_t>(table->next_entry++)].get();
}

void TBL_free(TableRec *table)
{
    *table = {};
}

int TBL_hash(const char *text)
{
    int h = 0;
    for (; *text; ++text) {
        h = (h * kHashFactor + static_cast<signed char>(*text)) % kHashModulus;
    }
    return h < 0 ? h + kHashModulus : h; // a text of bytes above 127 may end below 0
}
