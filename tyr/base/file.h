#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>

// Names and files. A standard-stream name is the empty text, `-`, `std` or `stdn` in any case; a
// path name begins with `/`, `.` or `~`. All routines expand a leading `~` first.

/// Room of every buffer that takes a file name.
inline constexpr size_t kFileNameRoom = 4096;

/// Opens a file: a standard-stream name gives standard input (mode r) or output, `|command` a pipe;
/// for writing and appending the directories are made. Returns null on failure, silently.
FILE *FILE_open(const char *name, const char *mode);
/// Closes what FILE_open gave: pipes by their own close, standard streams are only flushed.
/// Returns 0 when all was written (and the command of a pipe ended well), else -1.
int FILE_close(FILE *stream);

/// Owner of a stream of FILE_open.
struct FileCloser {
    void operator()(FILE *stream) const { FILE_close(stream); }
};
using FilePtr = std::unique_ptr<FILE, FileCloser>;

/// 1 for a standard-stream name, else whether the file can be examined.
int FILE_exists(const char *name);
int FILE_is_std(const char *name);
int FILE_is_path(const char *name);
int FILE_is_dir(const char *name);
int FILE_is_regular(const char *name);
int FILE_is_fifo(const char *name);
int FILE_is_device(const char *name); ///< character or block device
long FILE_size(const char *name);     ///< bytes, -1 if missing
long FILE_mtime(const char *name);    ///< seconds since 1970, -1 if missing
int FILE_remove(const char *name);    ///< 0, -1 on failure

/// Joins a directory (null: none) and a name into out[kFileNameRoom]; standard-stream and path
/// names stand for themselves. Returns out.
char *FILE_join(const char *directory, const char *name, char *out);
/// Appends `/` unless the text is empty or ends in one; the buffer needs room for it.
void FILE_add_slash(char *path);
/// Expands `~` and `~user` into out[kFileNameRoom]; other names, and unknown users, are copied.
void FILE_expand(const char *name, char *out);
/// Makes the directories of a path, leaving off that many trailing components. Turns each `\` of
/// the path into `/`. Returns 1 if the directories stand, else 0.
int FILE_make_dirs(char *path, int leave);
