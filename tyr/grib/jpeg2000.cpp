#include <algorithm>
#include <cstring>
#include <memory>

#include <openjpeg.h>

#include "tyr/base/msg.h"
#include "tyr/grib/packing_private.h"

namespace tyr {
namespace {

struct Memory {
    Octets data;
    size_t at = 0;
};

OPJ_SIZE_T read_memory(void *out, OPJ_SIZE_T count, void *user)
{
    auto *memory = static_cast<Memory *>(user);
    const size_t left = memory->data.size() - memory->at;
    if (left == 0) {
        return static_cast<OPJ_SIZE_T>(-1);
    }
    count = std::min(count, left);
    std::memcpy(out, memory->data.data() + memory->at, count);
    memory->at += count;
    return count;
}

OPJ_OFF_T skip_memory(OPJ_OFF_T count, void *user)
{
    auto *memory = static_cast<Memory *>(user);
    const auto left = static_cast<OPJ_OFF_T>(memory->data.size() - memory->at);
    count = std::clamp(count, -static_cast<OPJ_OFF_T>(memory->at), left);
    memory->at += static_cast<size_t>(count);
    return count;
}

OPJ_BOOL seek_memory(OPJ_OFF_T to, void *user)
{
    auto *memory = static_cast<Memory *>(user);
    if (to < 0 || static_cast<size_t>(to) > memory->data.size()) {
        return OPJ_FALSE;
    }
    memory->at = static_cast<size_t>(to);
    return OPJ_TRUE;
}

struct StreamFreer {
    void operator()(opj_stream_t *stream) const { opj_stream_destroy(stream); }
};
struct CodecFreer {
    void operator()(opj_codec_t *codec) const { opj_destroy_codec(codec); }
};
struct ImageFreer {
    void operator()(opj_image_t *image) const { opj_image_destroy(image); }
};
using StreamPtr = std::unique_ptr<opj_stream_t, StreamFreer>;
using CodecPtr = std::unique_ptr<opj_codec_t, CodecFreer>;
using ImagePtr = std::unique_ptr<opj_image_t, ImageFreer>;

StreamPtr open_memory(Memory *memory)
{
    StreamPtr stream(opj_stream_create(std::max<size_t>(memory->data.size(), 1), OPJ_TRUE));
    if (stream != nullptr) {
        opj_stream_set_read_function(stream.get(), read_memory);
        opj_stream_set_skip_function(stream.get(), skip_memory);
        opj_stream_set_seek_function(stream.get(), seek_memory);
        opj_stream_set_user_data_length(stream.get(), memory->data.size());
        opj_stream_set_user_data(stream.get(), memory, nullptr);
    }
    return stream;
}

/// Decodes the code stream, if its image has no more than `most` points: its header is looked at
/// before any point is allocated.
ImagePtr decode(Octets data, size_t most)
{
    Memory memory = {data};
    const StreamPtr stream = open_memory(&memory);
    const CodecPtr codec(opj_create_decompress(OPJ_CODEC_J2K));
    opj_dparameters_t parameters;
    opj_set_default_decoder_parameters(&parameters);
    opj_image_t *head = nullptr;
    if (stream == nullptr || codec == nullptr ||
        opj_setup_decoder(codec.get(), &parameters) == OPJ_FALSE ||
        opj_read_header(stream.get(), codec.get(), &head) == OPJ_FALSE) {
        return nullptr;
    }
    ImagePtr image(head);
    if (image->numcomps != 1 || image->x1 <= image->x0 || image->y1 <= image->y0 ||
        std::uint64_t{image->x1 - image->x0} * (image->y1 - image->y0) > most ||
        opj_decode(codec.get(), stream.get(), image.get()) == OPJ_FALSE ||
        image->comps[0].data == nullptr) {
        return nullptr;
    }
    return image;
}

} // namespace

size_t unpack_jpeg2000(const PackingRec &packing, Octets data, float *out, size_t count)
{
    if (packing.bits == 0) {
        return unpack_simple(packing, data, out, count);
    }
    const ImagePtr image = decode(data, count);
    if (image == nullptr) {
        MSG_out(kMsgWarn, "jpc_decode error\n");
        return 0;
    }
    const opj_image_comp_t &points = image->comps[0];
    const size_t n = std::min(size_t{points.w} * points.h, count);
    const double factor = packing.binary_scale * packing.decimal_scale;
    const double base = packing.reference * packing.decimal_scale;
    for (size_t i = 0; i < n; ++i) {
        out[i] = static_cast<float>(points.data[i] * factor + base);
    }
    return n;
}

} // namespace tyr
