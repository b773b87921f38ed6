// How far a batch has come, kept beside its output, so that a run that was killed can go on.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "batch/tally.h"

namespace cwt {

/// Rows that are written for good.
struct Progress {
    std::uint64_t next_row = 1;
    std::uint64_t digest = 0;       ///< Of the input's rows before it.
    std::uint64_t output_size = 0;  ///< Bytes; 0 for a database, which knows itself.
    Tally tally;

    std::string Text() const;
    static Progress FromText(const std::string& text);
};

/// A line that says under what terms the run rates, and one for each time that it was kept. The
/// file is this process's while the journal lives.
class Journal {
 public:
    /// Goes on with the journal that is there, or begins it, or begins it anew. Throws
    /// std::runtime_error when another run has it, or other terms, whose difference it names.
    Journal(const std::filesystem::path& path, const nlohmann::ordered_json& terms, bool anew);

    /// What was kept last; nothing when there is none yet.
    const std::optional<Progress>& kept() const { return kept_; }

    void Keep(const Progress& progress);
    void Remove();

 private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    bool ReadKept(const nlohmann::ordered_json& terms);
    void Append(const std::string& line);
    [[noreturn]] void Fail() const;

    std::filesystem::path path_;
    std::unique_ptr<std::FILE, Close> file_;
    std::optional<Progress> kept_;
};

/// Throws std::runtime_error that names what differs between the terms of two runs.
void RequireSameTerms(const nlohmann::ordered_json& before, const nlohmann::ordered_json& now);

}  // namespace cwt
