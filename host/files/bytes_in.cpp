#include "files/bytes_in.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "files/packing.h"
#include "platform/system.h"
#include "shipment/shipment_file.h"
#include "text/path_text.h"

namespace cwt {
namespace {

/// A file as it is.
class PlainBytes : public BytesIn {
 public:
    explicit PlainBytes(const std::string& name)
        : name_(name == kStandardInput ? "standard input" : name),
          file_(name == kStandardInput ? stdin : std::fopen(PathOf(name).string().c_str(), "rb")) {
        if (file_ == nullptr) Fail();
        std::setvbuf(file_, nullptr, _IONBF, 0);
    }

    ~PlainBytes() override {
        if (file_ != nullptr && file_ != stdin) std::fclose(file_);
    }

    std::size_t Read(std::span<char> buffer) override {
        errno = 0;
        const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file_);
        if (std::ferror(file_) != 0 && !IsInterrupted()) Fail();
        position_ += count;
        return count;
    }

    std::uint64_t position() const override { return position_; }
    const std::string& name() const { return name_; }

 private:
    [[noreturn]] void Fail() const {
        const int reason = errno;
        throw std::runtime_error(name_ + ": " + std::generic_category().message(reason));
    }

    std::string name_;
    std::FILE* file_;
    std::uint64_t position_ = 0;
};

/// A file that may be packed, which its first bytes tell.
class FileBytes : public BytesIn {
 public:
    explicit FileBytes(const std::string& name) : file_(name), packed_(kChunk, '\0') {
        Fill();
        const Packing packing = PackingOf(rest_);
        if (packing != Packing::kNone) unpacker_ = MakeUnpacker(packing);
    }

    std::size_t Read(std::span<char> buffer) override {
        std::size_t read = 0;
        while (read < buffer.size()) {
            if (rest_.empty() && !is_at_end_) Fill();
            const std::size_t count = Take(buffer.subspan(read));
            if (count == 0 && rest_.empty() && is_at_end_) break;
            read += count;
        }
        if (read < buffer.size() && unpacker_ && !unpacker_->is_complete() && !IsInterrupted()) {
            throw std::runtime_error(file_.name() + ": the packed file is cut");
        }
        return read;
    }

    std::uint64_t position() const override { return file_.position() - rest_.size(); }

 private:
    static constexpr std::size_t kChunk = std::size_t{1} << 18;

    void Fill() {
        const std::size_t count = file_.Read(packed_);
        is_at_end_ = count < packed_.size();
        rest_ = std::string_view(packed_).substr(0, count);
    }

    std::size_t Take(std::span<char> buffer) {
        if (unpacker_) {
            try {
                return unpacker_->Unpack(rest_, buffer);
            } catch (const std::runtime_error& error) {
                throw std::runtime_error(file_.name() + ": " + error.what());
            }
        }
        const std::size_t count = rest_.copy(buffer.data(), buffer.size());
        rest_.remove_prefix(count);
        return count;
    }

    PlainBytes file_;
    std::string packed_;
    std::string_view rest_;
    bool is_at_end_ = false;
    std::unique_ptr<Unpacker> unpacker_;
};

}  // namespace

std::unique_ptr<BytesIn> OpenBytes(const std::string& name) {
    return std::make_unique<FileBytes>(name);
}

}  // namespace cwt
