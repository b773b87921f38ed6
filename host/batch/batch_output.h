// Where a batch's rows go.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "batch/journal.h"
#include "batch/row_source.h"
#include "files/packing.h"

namespace cwt {

/// Throws std::runtime_error, with the reason, when something cannot be written.
class BatchOutput {
 public:
    BatchOutput() = default;
    BatchOutput(const BatchOutput&) = delete;
    BatchOutput& operator=(const BatchOutput&) = delete;
    virtual ~BatchOutput() = default;

    /// How far the run that goes on had come.
    virtual Progress begun() const { return {}; }

    /// Whether that run had ended.
    virtual bool is_whole() const { return false; }

    /// Writes the rows of a block, or what stands before the first one.
    virtual void Write(std::string_view bytes) = 0;

    /// After each block: what was written may be kept for good, with how far that is.
    virtual void Note(Progress /*progress*/) {}

    /// Keeps what can be kept of a run that stops here. Result: how far that is.
    virtual Progress Stop() = 0;

    /// After the last block.
    virtual void Finish() = 0;
};

std::unique_ptr<BatchOutput> MakeStandardOutput();

struct OutputTerms {
    std::filesystem::path path;
    bool resume = false;
    nlohmann::ordered_json run;  ///< What the rows depend on besides the input.
    /// Called before rows are kept for good; throws when they may not be.
    std::function<void()> confirm;
};

/// A file, whole only when it has its name: until then it is called FILE.partial. FILE.journal
/// beside it says what run it is of. Throws std::runtime_error when it is there already, or was
/// begun and is not gone on with.
std::unique_ptr<BatchOutput> MakeOutputFile(const OutputTerms& terms);

/// The same as a database, with these columns passed on.
std::unique_ptr<BatchOutput> MakeOutputDatabase(const OutputTerms& terms,
                                                const std::vector<std::string>& passed);

}  // namespace cwt
