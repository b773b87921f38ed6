// Files that are written aside, and take their places in a directory together.
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace cwt {

/// What takes the places of what.
struct Replacement {
    std::vector<std::string> coming;   ///< Names of files that were written aside.
    std::vector<std::string> leaving;  ///< Files that go, besides those that are replaced.
    std::vector<std::string> kept;     ///< Those of both that stay as "NAME.bak".
    /// The file without which nobody reads the others: it goes first and comes last.
    std::string heart;
};

class StagedFiles {
 public:
    /// Makes the directory when it is missing, and a place aside within it. What a process that was
    /// ended amid its work has left there is put back or removed. Throws std::runtime_error, like
    /// every call, when another is at work on the directory, or the system refuses.
    explicit StagedFiles(const std::filesystem::path& directory);
    /// Removes what is aside, and the directory when it was made for nothing.
    ~StagedFiles();
    StagedFiles(const StagedFiles&) = delete;
    StagedFiles& operator=(const StagedFiles&) = delete;

    /// Where files are written first.
    std::filesystem::path path() const { return aside_ / "new"; }
    /// Whether a process was ended amid its work on the directory.
    bool found_leftovers() const { return found_leftovers_; }
    /// Puts all in their places. When that fails, the directory is as it was.
    void Install(const Replacement& replacement);

 private:
    void Open();
    void Own();
    void Clear() noexcept;
    void PutBackLeftovers();
    void Move(const std::filesystem::path& from, const std::filesystem::path& to);
    void PutAway(const Replacement& replacement);
    void Undo();

    std::filesystem::path directory_, aside_;
    std::vector<std::filesystem::path> made_;  ///< Directories, the outermost first.
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> lock_;
    bool is_ours_ = false;  ///< Nobody else is at work on the directory.
    std::vector<std::pair<std::filesystem::path, std::filesystem::path>> moved_;
    bool found_leftovers_ = false;
};

}  // namespace cwt
