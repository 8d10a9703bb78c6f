#pragma once

// Prompts. At each of them `set name value` changes a resource (and `set` alone lists all) and the
// question is repeated; `exit`, and the end of standard input, end the program with code 0.

/// Room of an answer of ASK_word.
inline constexpr int kAskWordRoom = 20;

/// The first word of the answer, cut to size - 1 characters. A null answer is allocated (malloc,
/// size + 1 bytes). Returns the answer.
char *ASK_text(const char *prompt, char *answer, int size);
/// The same for a word of at most 19 characters (allocates 81 bytes).
char *ASK_word(const char *prompt, char *answer);
float ASK_real(const char *prompt);
int ASK_int(const char *prompt);
/// Serves `set` and `exit`; returns 1 if the line was a `set` command, else 0.
int ASK_command(const char *line);
