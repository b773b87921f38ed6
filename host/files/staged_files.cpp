#include "files/staged_files.h"

#include <fmt/core.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <system_error>

#include "platform/system.h"
#include "text/letters.h"
#include "text/path_text.h"

namespace cwt {
namespace {

namespace fs = std::filesystem;

constexpr const char* kAside = ".cwt-staged";
constexpr const char* kOld = "old";
constexpr const char* kOldHeart = "old-heart";
constexpr const char* kLock = "lock";

[[noreturn]] void Fail(const fs::path& path, const std::string& reason) {
    throw std::runtime_error(PathText(path) + ": " + reason);
}

bool IsThere(const fs::path& path) {
    std::error_code ignored;
    return exists(symlink_status(path, ignored));
}

std::vector<fs::path> MissingDirectories(const fs::path& directory) {
    std::vector<fs::path> missing;
    for (fs::path path = directory; !path.empty() && !exists(path); path = path.parent_path()) {
        missing.insert(missing.begin(), path);
    }
    return missing;
}

}  // namespace

StagedFiles::StagedFiles(const fs::path& directory)
    : directory_(absolute(directory / "").parent_path()),
      aside_(directory_ / kAside),
      lock_(nullptr, std::fclose) {
    try {
        Open();
    } catch (const fs::filesystem_error& error) {
        Clear();
        Fail(error.path1(), error.code().message());
    } catch (...) {
        Clear();
        throw;
    }
}

void StagedFiles::Open() {
    made_ = MissingDirectories(directory_);
    create_directories(aside_);
    Own();
    found_leftovers_ = IsThere(path()) || IsThere(aside_ / kOld);
    PutBackLeftovers();
    create_directory(path());
}

/// A mark that only the lock's owner can have written tells that the file is still the one there:
/// another may have removed it, at its end, before it was locked here.
void StagedFiles::Own() {
    const fs::path file = aside_ / kLock;
    errno = 0;
    lock_.reset(std::fopen(PathText(file).c_str(), "ab"));
    if (!lock_) Fail(file, std::generic_category().message(errno != 0 ? errno : EIO));
    const std::string mark =
        fmt::format("{:08x}{:08x}\n", std::random_device()(), std::random_device()());
    std::string content;
    if (LockFile(lock_.get())) {
        is_ours_ = true;
        std::fputs(mark.c_str(), lock_.get());
        errno = 0;
        if (std::fflush(lock_.get()) != 0) Fail(file, std::generic_category().message(errno));
        std::ifstream stream(file, std::ios::binary);
        content.assign(std::istreambuf_iterator<char>(stream), {});
    }
    is_ours_ = content.ends_with(mark);
    if (!is_ours_) Fail(directory_, "another cwt is writing to this directory");
}

/// The heart stays away: with it, old and new files would pass for a whole.
void StagedFiles::PutBackLeftovers() {
    if (IsThere(aside_ / kOld)) {
        for (const auto& entry : fs::recursive_directory_iterator(aside_ / kOld)) {
            const fs::path home = directory_ / entry.path().lexically_relative(aside_ / kOld);
            if (!entry.is_directory() && !IsThere(home)) rename(entry.path(), home);
        }
    }
    for (const fs::path& left : {aside_ / kOld, aside_ / kOldHeart, path()}) remove_all(left);
}

StagedFiles::~StagedFiles() {
    Clear();
}

void StagedFiles::Clear() noexcept {
    std::error_code ignored;
    bool has_lock = false;
    if (is_ours_) {
        for (const fs::path& left : {path(), aside_ / kOld, aside_ / kOldHeart}) {
            remove_all(left, ignored);
        }
        fs::remove(aside_ / kLock, ignored);
        has_lock = IsThere(aside_ / kLock);
    }
    lock_.reset();
    // Some systems remove no file that is open.
    if (has_lock) fs::remove(aside_ / kLock, ignored);
    // What is not empty stays.
    fs::remove(aside_, ignored);
    for (; !made_.empty(); made_.pop_back()) fs::remove(made_.back(), ignored);
}

void StagedFiles::Install(const Replacement& replacement) {
    try {
        PutAway(replacement);
        for (const bool is_heart : {false, true}) {
            for (const std::string& name : replacement.coming) {
                if ((name == replacement.heart) != is_heart) continue;
                Move(path() / PathOf(name), directory_ / PathOf(name));
            }
        }
        moved_.clear();
        made_.clear();
    } catch (const fs::filesystem_error& error) {
        Undo();
        Fail(error.path2().empty() ? error.path1() : error.path2(), error.code().message());
    } catch (...) {
        Undo();
        throw;
    }
}

void StagedFiles::PutAway(const Replacement& replacement) {
    std::vector<std::string> names = replacement.leaving;
    names.insert(names.end(), replacement.coming.begin(), replacement.coming.end());
    const auto is_heart = [&](const std::string& name) {
        return LowerCase(name) == LowerCase(replacement.heart);
    };
    std::stable_partition(names.begin(), names.end(), is_heart);
    std::erase_if(names,
                  [&](const std::string& name) { return !IsThere(directory_ / PathOf(name)); });
    for (const std::string& name : names) {
        if (is_directory(directory_ / PathOf(name))) {
            Fail(directory_ / PathOf(name), "is a directory, where a file is wanted");
        }
    }
    for (const std::string& name : names) {
        const fs::path file = directory_ / PathOf(name);
        // Where case is not told apart, another name of the same file has gone before.
        if (!IsThere(file)) continue;
        const bool is_kept = std::ranges::find(replacement.kept, name) != replacement.kept.end();
        Move(file, is_kept ? fs::path(file) += ".bak"
                           : aside_ / (is_heart(name) ? kOldHeart : kOld) / PathOf(name));
    }
}

void StagedFiles::Move(const fs::path& from, const fs::path& to) {
    create_directories(to.parent_path());
    rename(from, to);
    moved_.emplace_back(from, to);
}

/// The heart, which went first, comes back last.
void StagedFiles::Undo() {
    for (; !moved_.empty(); moved_.pop_back()) {
        std::error_code ignored;
        rename(moved_.back().second, moved_.back().first, ignored);
    }
}

}  // namespace cwt
