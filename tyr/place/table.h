#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// A hash table whose entries have one to three keys each and an order of insertion.

inline constexpr int kTableKeys = 3; ///< most keys of an entry

/// A table; TBL_init makes it ready. The fields are the routines' own.
struct TableRec {
    struct Link {
        std::string key;
        int entry; ///< index of the entry
        int next;  ///< next link of the chain, -1 at its end
    };
    int size = 0;         ///< hash slots a key
    int element_size = 0; ///< bytes of an entry
    int keys = 0;
    int next_entry = 0;                                ///< what TBL_next gives
    std::vector<std::unique_ptr<std::byte[]>> entries; ///< in order of insertion
    std::vector<Link> links;
    struct Chain {
        int first = -1, last = -1; ///< links; -1 for none
    };
    std::vector<Chain> slots; ///< `size` chains a key
};

/// Empties a table and gives it its shape.
/// @param size  hash slots a key; below 1 counts as 1
/// @param element_size  bytes that TBL_add copies of each entry
/// @param keys  1 to kTableKeys
/// @return 0; -1 for a shape that can't be
int TBL_init(TableRec *table, int size, int element_size, int keys);

/// Adds a copy of an entry behind the last one, under as many keys (const char*) as the table has.
/// Keys needn't be unique: the first entry added under a key is the one that is found.
/// @return the stored entry, which stays at its place until TBL_init or TBL_free; null for a
/// table without a shape
void *TBL_add(TableRec *table, const void *data, const char *key1, ...);

/// The first entry under a key, compared exactly; null if there is none.
/// @param key_number  1 to the table's keys
void *TBL_find(const TableRec *table, int key_number, const char *key);

/// Walk in order of insertion: back to the beginning; the next entry, null at the end.
void TBL_rewind(TableRec *table);
void *TBL_next(TableRec *table);

/// Empties a table; it has no shape then.
void TBL_free(TableRec *table);

/// Hash of a text: h = (h * 257 + c) % 35177 over its characters as signed bytes.
int TBL_hash(const char *text);
