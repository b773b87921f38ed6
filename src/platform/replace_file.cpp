#include "platform/replace_file.h"

#include "platform/temporary_name.h"

namespace hundredweight::platform {
namespace {

constexpr int kAttempts = 100;

/// Empty when it does not fit.
SystemPath PathBeside(std::string_view path, std::string_view name) {
    const std::string_view directory = DirectoryOf(path);
    if (directory.size() + name.size() > kLongestSystemPath) return {};
    return SystemPath(directory).Append(name);
}

/// Writes a file of a name that nothing has, in a path's directory. Another process may be first to
/// have a name.
template <class Write>
WriteOutcome WriteTemporary(std::string_view path, SystemPath& temporary, Write write) {
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        temporary = PathBeside(path, MakeTemporaryName());
        if (temporary.empty()) break;
        const WriteOutcome outcome = write(temporary.c_str());
        if (outcome != WriteOutcome::kNotCreated || !FileExists(temporary.c_str())) return outcome;
    }
    return WriteOutcome::kNotCreated;
}

/// Makes a file by `write`, and gives it a name that nothing has yet.
template <class Write>
WriteOutcome WriteOnce(const DirectoryTurn& turn, const char* path, Write write) {
    if (!turn) return WriteOutcome::kNotCreated;
    SystemPath temporary;
    const WriteOutcome outcome = WriteTemporary(path, temporary, write);
    if (outcome != WriteOutcome::kWritten || RenameUnlessExists(temporary.c_str(), path)) {
        return outcome;
    }
    RemoveFile(temporary.c_str());
    return WriteOutcome::kNotCreated;
}

}  // namespace

Replacement::Replacement(const DirectoryTurn& turn, const char* path, std::string_view working_name)
    : path_(turn ? FileToReplace(path) : SystemPath()) {
    if (path_.empty()) return;
    if (!turn.Covers(path_.c_str())) own_turn_.emplace(path_.c_str());
    const bool alone = own_turn_ ? own_turn_->alone() : turn.alone();
    // Two processes that are not kept apart would write the same file.
    if (alone && !working_name.empty()) working_path_ = PathBeside(path_, working_name);
}

Replacement::~Replacement() {
    if (!written_.empty()) RemoveFile(written_.c_str());
}

WriteOutcome Replacement::Write(const void* content, std::size_t size, const char* model) {
    if (path_.empty() || (own_turn_ && !*own_turn_)) return WriteOutcome::kNotCreated;
    SystemPath temporary = working_path_;
    if (model == nullptr) model = path_.c_str();
    const auto write = [&](const char* name) { return WriteNewFile(name, content, size, model); };
    WriteOutcome outcome = WriteOutcome::kNotCreated;
    if (working_path_.empty()) {
        outcome = WriteTemporary(path_, temporary, write);
    } else if (!IsSameName(working_path_, path_)) {
        RemoveFile(working_path_.c_str());
        outcome = write(working_path_.c_str());
    }
    if (outcome == WriteOutcome::kWritten) written_ = temporary;
    return outcome;
}

bool Replacement::TakeName() {
    if (!RenameOver(written_.c_str(), path_.c_str())) return false;
    written_ = {};
    return true;
}

WriteOutcome ReplaceFile(const DirectoryTurn& turn, const char* path, const void* content,
                         std::size_t size) {
    Replacement replacement(turn, path);
    const WriteOutcome outcome = replacement.Write(content, size);
    if (outcome != WriteOutcome::kWritten || replacement.TakeName()) return outcome;
    return WriteOutcome::kNotCreated;
}

WriteOutcome CreateFileOnce(const DirectoryTurn& turn, const char* path, const void* content,
                            std::size_t size) {
    return WriteOnce(turn, path, [&](const char* temporary) {
        return WriteNewFile(temporary, content, size, nullptr);
    });
}

WriteOutcome CopyFileOnce(const DirectoryTurn& turn, const char* from, const char* path) {
    return WriteOnce(turn, path,
                     [&](const char* temporary) { return CopyToNewFile(from, temporary); });
}

}  // namespace hundredweight::platform
