#pragma once

// Byte order of binary files. A swap flag, on at the start, says whether the swap routines act.

/// Order of the data to come: 1 big-endian, 2 little-endian (the flag goes off when the host has
/// that order, else on), -1 never swap, any other always swap.
void BYTE_set_order(int order);

/// Reverse the bytes of one 4- or 8-byte word, or of `count` 4-byte words, in place, at any
/// alignment. Return 0, or -1 with the data untouched when the flag is off.
int BYTE_swap4(void *word);
int BYTE_swap8(void *word);
int BYTE_swap4n(void *words, int count);
