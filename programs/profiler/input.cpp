#include "programs/profiler/input.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>

#include <sys/stat.h>

#include <zlib.h>

#include "tyr/base/file.h"

namespace {

using tyr::kMostInputBytes;

constexpr size_t kPiece = 65536;
constexpr std::string_view kGzipMagic = "\x1f\x8b";
constexpr const char *kTooLarge = "larger than an observation file can be";
constexpr int kGzipWindow = 15 + 16; ///< zlib's largest window, and gzip's wrapping

/// Bytes of a plain file; 0 of what tells none beforehand.
size_t size_of(std::FILE *stream)
{
    struct stat info = {};
    const bool is_plain = fstat(fileno(stream), &info) == 0 && S_ISREG(info.st_mode);
    return is_plain && info.st_size > 0 ? static_cast<size_t>(info.st_size) : 0;
}

/// Takes in a stream to its end: a plain file at one go. @return empty, or the reason why not
std::string take_stream(std::FILE *stream, std::string *bytes)
{
    const size_t size = size_of(stream);
    if (size > kMostInputBytes) {
        return kTooLarge;
    }
    bytes->resize(size);
    bytes->resize(std::fread(bytes->data(), 1, size, stream));
    if (bytes->size() < size && std::ferror(stream) != 0) {
        return std::strerror(errno);
    }
    std::array<char, kPiece> piece;
    for (;;) { // what came since, and what isn't plain
        const size_t n = std::fread(piece.data(), 1, piece.size(), stream);
        bytes->append(piece.data(), n);
        if (bytes->size() > kMostInputBytes) {
            return kTooLarge;
        }
        if (n < piece.size()) {
            return std::ferror(stream) != 0 ? std::strerror(errno) : "";
        }
    }
}

/// A decompressor that is given back on every way out.
struct Inflater {
    z_stream z = {};
    bool is_open = inflateInit2(&z, kGzipWindow) == Z_OK;
    Inflater() = default;
    Inflater(const Inflater &) = delete;
    Inflater &operator=(const Inflater &) = delete;
    ~Inflater()
    {
        if (is_open) {
            inflateEnd(&z);
        }
    }
};

/// Unpacks every member of a gzip file. @return empty, or the reason why not
std::string unpack(const std::string &packed, std::string *out)
{
    Inflater in;
    if (!in.is_open) {
        return "no memory to unpack it";
    }
    std::array<char, kPiece> piece;
    std::string source = packed; // zlib's interface takes no constant bytes
    in.z.next_in = reinterpret_cast<Bytef *>(source.data());
    in.z.avail_in = static_cast<uInt>(source.size());
    for (;;) {
        in.z.next_out = reinterpret_cast<Bytef *>(piece.data());
        in.z.avail_out = static_cast<uInt>(piece.size());
        const int status = inflate(&in.z, Z_NO_FLUSH);
        out->append(piece.data(), piece.size() - in.z.avail_out);
        if (out->size() > kMostInputBytes) {
            return "unpacks to more than an observation file can be";
        }
        if (status == Z_STREAM_END) {
            const bool is_next = in.z.avail_in > kGzipMagic.size() &&
                                 std::memcmp(in.z.next_in, kGzipMagic.data(), 2) == 0;
            if (!is_next || inflateReset(&in.z) != Z_OK) {
                return "";
            }
        } else if (status != Z_OK) {
            return in.z.avail_in == 0 ? "the gzip file is cut short" : "the gzip file is damaged";
        }
    }
}

} // namespace

std::string tyr::read_input(const char *name, ProfilerInput *input)
{
    input->name = name;
    input->bytes.clear();
    if (FILE_is_std(name) == 0 && FILE_is_dir(name) != 0) {
        return "it is a folder";
    }
    errno = 0;
    const FilePtr stream(FILE_open(name, "rb"));
    if (!stream) {
        return std::strerror(errno != 0 ? errno : ENOENT);
    }
    std::string why = take_stream(stream.get(), &input->bytes);
    if (why.empty() && input->bytes.starts_with(kGzipMagic)) {
        std::string unpacked;
        why = unpack(input->bytes, &unpacked);
        input->bytes = std::move(unpacked);
    }
    if (!why.empty()) {
        input->bytes = {};
    }
    return why;
}
