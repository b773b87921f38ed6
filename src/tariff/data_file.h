// Naming and opening of the files of a tariff set.
#pragma once

#include <hundredweight/rate_context.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "frame/inline_text.h"
#include "platform/file.h"

namespace hundredweight {

inline constexpr std::size_t kLongestPath = 259;
using PathText = InlineText<kLongestPath>;

/// An open file that closes itself unless its handle is released.
class OpenFile {
 public:
    OpenFile(int handle, const platform::FileState& state) : handle_(handle), state_(state) {}
    ~OpenFile() {
        if (handle_ >= 0) platform::CloseFile(handle_);
    }
    OpenFile(OpenFile&& other) noexcept : handle_(other.Release()), state_(other.state_) {}
    OpenFile& operator=(OpenFile&&) = delete;

    explicit operator bool() const { return handle_ >= 0; }
    int handle() const { return handle_; }
    /// As it was opened.
    const platform::FileState& state() const { return state_; }
    /// Bytes when it was opened.
    int64_t length() const { return state_.size; }

    /// Reads up to `size` bytes of a file just opened, asking for no more than it has. Result:
    /// bytes read.
    std::size_t ReadHead(void* to, std::size_t size) const {
        const auto held = static_cast<uint64_t>(length());
        const auto wanted = static_cast<std::size_t>(std::min<uint64_t>(size, held));
        return platform::ReadBytes(handle_, to, wanted);
    }

    /// Hands the handle over to a field of the record.
    int32_t Release() {
        const int32_t handle = handle_;
        handle_ = -1;
        return handle;
    }

 private:
    int32_t handle_;
    platform::FileState state_;
};

/// Opens a file of a path, which may be empty.
OpenFile OpenForReading(const PathText& path);

/// Opens the set's file of an extension such as ".ZP6" in DataDir; ".DIS" is looked for in the
/// current directory first. No code is stored.
OpenFile OpenDataFile(const RateContext& context, std::string_view extension);

/// Whether the set has a file of an extension.
bool HasDataFile(const RateContext& context, std::string_view extension);

/// Opens a file of UserDir, else of DataDir.
OpenFile FindUserFile(const RateContext& context, std::string_view extension);

/// Opens DataDir + file name.
OpenFile FindInDataDir(const RateContext& context, std::string_view file_name);

/// Opens the set's text file of an extension; null when there is none.
std::FILE* OpenTextFile(const RateContext& context, std::string_view extension);

/// DataDir or UserDir + file name; empty when the path does not fit.
PathText PathInDataDir(const RateContext& context, std::string_view file_name);
PathText PathInUserDir(const RateContext& context, std::string_view file_name);

/// The path of the set's file of an extension in DataDir; empty when the name does not fit.
PathText SetPathInDataDir(const RateContext& context, std::string_view extension);

/// Where a file of the set is written: in the current directory, or in UserDir. Empty when the name
/// does not fit.
PathText SetPathInCurrentDir(const RateContext& context, std::string_view extension);
PathText SetPathInUserDir(const RateContext& context, std::string_view extension);

}  // namespace hundredweight
