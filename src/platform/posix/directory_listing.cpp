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

/// Of a load that this thread is in: another may open files for a record of its own meanwhile.
thread_local DirectoryListing* current_listing = nullptr;

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
    current_listing = this;
}

DirectoryListing::~DirectoryListing() {
    current_listing = nullptr;
}

DirectoryListing* DirectoryListing::Current() {
    return current_listing;
}

/// The names that were listed for a path's directory; null when it was not.
DirectoryListing::Names* DirectoryListing::NamesOf(std::string_view path) {
    const SystemPath directory = DirectoryName(path);
    for (std::size_t i = 0; i < count_; ++i) {
        Names& names = listed_[i];
        if (!EqualIgnoringCase(Beginning(LastComponent(path)), names.beginning)) continue;
        if (std::string_view(directory) == names.directory) return &names;
        if (!IsSameFile(directory.c_str(), names.directory.c_str())) continue;
        names.directory = directory;
        return &names;
    }
    return nullptr;
}

bool DirectoryListing::List(std::string_view path) {
    if (NamesOf(path) != nullptr) return true;
    if (count_ == kMostDirectories) return false;
    Names& names = listed_[count_];
    names.directory = DirectoryName(path);
    names.beginning = SystemPath(Beginning(LastComponent(path)));
    names.size = 0;
    const Directory directory = OpenDirectoryOf(path);
    if (!directory) return false;
    errno = 0;
    while (const dirent* entry = readdir(directory.get())) {
        const std::string_view name = entry->d_name;
        const bool wanted =
            name.size() <= kLongestName &&
            EqualIgnoringCase(name.substr(0, names.beginning.size()), names.beginning);
        if (wanted && !names.Add(name)) return false;
    }
    if (errno != 0) return false;
    ++count_;
    return true;
}

bool DirectoryListing::Names::Add(std::string_view name) {
    const std::size_t needed = size + name.size() + 1;
    if (needed > capacity) {
        const std::size_t room = std::max<std::size_t>(1024, 2 * needed);
        Block<> larger = AllocateBlock(room);
        if (!larger) return false;
        if (size > 0) std::memcpy(larger.get(), names.get(), size);
        names = std::move(larger);
        capacity = room;
    }
    names.get()[size] = static_cast<unsigned char>(name.size());
    std::memcpy(names.get() + size + 1, name.data(), name.size());
    size = needed;
    return true;
}

SystemPath DirectoryListing::Find(std::string_view path) {
    const Names* const listed = NamesOf(path);
    if (listed == nullptr) return {};
    const std::string_view directory = DirectoryOf(path);
    const std::string_view wanted = LastComponent(path).substr(listed->beginning.size());
    std::string_view found;
    std::string_view name;
    for (std::size_t at = 0; at < listed->size; at += name.size() + 1) {
        const unsigned char* const entry = listed->names.get() + at;
        name = {reinterpret_cast<const char*>(entry + 1), *entry};
        if (!EqualIgnoringCase(name.substr(listed->beginning.size()), wanted)) continue;
        if (!found.empty() && found < name) continue;
        if (IsRegularFile(SystemPath(directory).Append(name).c_str())) found = name;
    }
    return found.empty() ? SystemPath() : SystemPath(directory).Append(found);
}

}  // namespace hundredweight::platform
