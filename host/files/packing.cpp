#include "files/packing.h"

#include <zlib.h>
#include <zstd.h>

#include <stdexcept>

namespace cwt {
namespace {

constexpr int kGzipWindow = 15 + 16;  ///< The largest window, with gzip's header.
constexpr int kGzipLevel = 4;
constexpr int kZstandardLevel = 3;

[[noreturn]] void FailToUnpack(const char* reason) {
    throw std::runtime_error(std::string("the packed file is damaged: ") + reason);
}

/// zlib takes what it reads as bytes that it could write.
Bytef* BytesOf(std::string_view text) {
    return reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
}

std::string PackGzip(std::string_view text) {
    z_stream stream = {};
    if (deflateInit2(&stream, kGzipLevel, Z_DEFLATED, kGzipWindow, MAX_MEM_LEVEL,
                     Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::runtime_error("there is no memory to pack with gzip");
    }
    std::string packed(deflateBound(&stream, text.size()), '\0');
    stream.next_in = BytesOf(text);
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = BytesOf(packed);
    stream.avail_out = static_cast<uInt>(packed.size());
    const int result = deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    if (result != Z_STREAM_END) throw std::runtime_error("packing with gzip failed");
    return packed;
}

std::string PackZstandard(std::string_view text) {
    std::string packed(ZSTD_compressBound(text.size()), '\0');
    const std::size_t size =
        ZSTD_compress(packed.data(), packed.size(), text.data(), text.size(), kZstandardLevel);
    if (ZSTD_isError(size) != 0) throw std::runtime_error(ZSTD_getErrorName(size));
    packed.resize(size);
    return packed;
}

class GzipUnpacker : public Unpacker {
 public:
    GzipUnpacker() {
        if (inflateInit2(&stream_, kGzipWindow) != Z_OK) throw std::bad_alloc();
    }
    ~GzipUnpacker() override { inflateEnd(&stream_); }

    std::size_t Unpack(std::string_view& packed, std::span<char> buffer) override {
        if (is_complete_ && packed.empty()) return 0;
        if (is_complete_) inflateReset(&stream_);
        stream_.next_in = BytesOf(packed);
        stream_.avail_in = static_cast<uInt>(packed.size());
        stream_.next_out = reinterpret_cast<Bytef*>(buffer.data());
        stream_.avail_out = static_cast<uInt>(buffer.size());
        const int result = inflate(&stream_, Z_NO_FLUSH);
        packed.remove_prefix(packed.size() - stream_.avail_in);
        if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR) {
            FailToUnpack(stream_.msg != nullptr ? stream_.msg : "no gzip");
        }
        is_complete_ = result == Z_STREAM_END;
        return buffer.size() - stream_.avail_out;
    }

    bool is_complete() const override { return is_complete_; }

 private:
    z_stream stream_ = {};
    bool is_complete_ = false;  ///< A member has ended; another may follow.
};

class ZstandardUnpacker : public Unpacker {
 public:
    ZstandardUnpacker() : stream_(ZSTD_createDStream()) {
        if (stream_ == nullptr) throw std::bad_alloc();
    }
    ~ZstandardUnpacker() override { ZSTD_freeDStream(stream_); }

    std::size_t Unpack(std::string_view& packed, std::span<char> buffer) override {
        if (is_complete_ && packed.empty()) return 0;
        ZSTD_inBuffer in{packed.data(), packed.size(), 0};
        ZSTD_outBuffer out{buffer.data(), buffer.size(), 0};
        const std::size_t left = ZSTD_decompressStream(stream_, &out, &in);
        if (ZSTD_isError(left) != 0) FailToUnpack(ZSTD_getErrorName(left));
        packed.remove_prefix(in.pos);
        is_complete_ = left == 0;
        return out.pos;
    }

    bool is_complete() const override { return is_complete_; }

 private:
    ZSTD_DStream* stream_;
    bool is_complete_ = false;
};

}  // namespace

std::string Pack(Packing packing, std::string_view text) {
    switch (packing) {
        case Packing::kGzip:
            return PackGzip(text);
        case Packing::kZstandard:
            return PackZstandard(text);
        case Packing::kNone:
            break;
    }
    return std::string(text);
}

std::unique_ptr<Unpacker> MakeUnpacker(Packing packing) {
    if (packing == Packing::kGzip) return std::make_unique<GzipUnpacker>();
    return std::make_unique<ZstandardUnpacker>();
}

}  // namespace cwt
