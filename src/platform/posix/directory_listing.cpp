#include "platform/directory_listing.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/file.h"
#include "platform/posix/directory.h"

namespace hundredweight::platform {
namespace {

constexpr std::size_t kLongestName = sizeof(dirent::d_name) - 1;
static_assert(kLongestName <= 0xFF);

thread_local DirectoryListing* listing_of_thread = nullptr;

/// A name up to its extension.
std::string_view Beginning(std::string_view name) {
    return name.substr(0, name.rfind('.') + 1);
}

bool IsRegularFile(const char* path) {
    struct stat status = {};
    return stat(path, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

DirectoryListing::DirectoryListing() {
    listing_of_thread = this;
}

DirectoryListing::~DirectoryListing() {
    listing_of_thread = nullptr;
}

DirectoryListing* DirectoryListing::Current() {
    return listing_of_thread;
}

bool DirectoryListing::HasListed(std::string_view path) {
    if (!listed_ || !EqualIgnoringCase(Beginning(LastComponent(path)), beginning_)) return false;
    const SystemPath directory = DirectoryName(path);
    if (std::string_view(directory) == directory_) return true;
    if (!IsSameFile(directory.c_str(), directory_.c_str())) return false;
    directory_ = directory;
    return true;
}

bool DirectoryListing::List(std::string_view path) {
    if (HasListed(path)) return true;
    directory_ = DirectoryName(path);
    beginning_ = SystemPath(Beginning(LastComponent(path)));
    size_ = 0;
    listed_ = false;
    const Directory directory = OpenDirectoryOf(path);
    if (!directory) return false;
    errno = 0;
    while (const dirent* entry = readdir(directory.get())) {
        const std::string_view name = entry->d_name;
        const bool wanted = name.size() <= kLongestName &&
                            EqualIgnoringCase(name.substr(0, beginning_.size()), beginning_);
        if (wanted && !Add(name)) return false;
    }
    return listed_ = errno == 0;
}

bool DirectoryListing::Add(std::string_view name) {
    const std::size_t size = size_ + name.size() + 1;
    if (size > capacity_) {
        const std::size_t capacity = std::max<std::size_t>(1024, 2 * size);
        Block<> larger = AllocateBlock(capacity);
        if (!larger) return false;
        if (size_ > 0) std::memcpy(larger.get(), names_.get(), size_);
        names_ = std::move(larger);
        capacity_ = capacity;
    }
    names_.get()[size_] = static_cast<unsigned char>(name.size());
    std::memcpy(names_.get() + size_ + 1, name.data(), name.size());
    size_ = size;
    return true;
}

SystemPath DirectoryListing::Find(std::string_view path) const {
    const std::string_view directory = DirectoryOf(path);
    const std::string_view wanted = LastComponent(path).substr(beginning_.size());
    std::string_view found;
    std::string_view name;
    for (std::size_t at = 0; at < size_; at += name.size() + 1) {
        const unsigned char* const entry = names_.get() + at;
        name = {reinterpret_cast<const char*>(entry + 1), *entry};
        if (!EqualIgnoringCase(name.substr(beginning_.size()), wanted)) continue;
        if (!found.empty() && found < name) continue;
        if (IsRegularFile(SystemPath(directory).Append(name).c_str())) found = name;
    }
    return found.empty() ? SystemPath() : SystemPath(directory).Append(found);
}

}  // namespace hundredweight::platform
