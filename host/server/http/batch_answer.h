// The rows of a batch, rated while the client reads them.
#pragma once

#include <cstdint>
#include <deque>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "batch/row_source.h"
#include "platform/spool_file.h"
#include "server/http/desk_line.h"

namespace cwt {

struct BatchAnswerTerms {
    Form from = Form::kNdjson, to = Form::kNdjson;
    std::vector<std::string> allowed = {};  ///< Columns to pass on though they look like slips.
    std::size_t most_ahead = 2;             ///< Blocks that wait to be written.
};

/// All rows are rated by one generation. A row that costs its process is tried once more, alone,
/// and is a failed row then.
class BatchAnswer {
 public:
    /// Throws std::runtime_error, with the reason, when the rows cannot be read.
    BatchAnswer(DeskLine& line, std::unique_ptr<SpoolFile> rows, const BatchAnswerTerms& terms);

    /// What comes next; nothing at the end. The first text is the header's, if there is one. Throws
    /// std::runtime_error when it cannot go on.
    std::optional<std::string> Next();

    /// What is known of the rows before any is rated.
    struct Facts {
        std::uint64_t rows = 0;
        RowSource::RowsOfLines rows_of_lines;
        std::vector<std::string> passed;  ///< Names of the columns that nobody reads.
    };
    Facts LookThrough() const;

    /// What came of the rows so far.
    const Tally& tally() const { return tally_; }

    /// A problem that keeps it from beginning; nothing when there is none.
    std::optional<DeskReply> Begin();

 private:
    struct Given {
        Block block;
        std::future<DeskReply> reply;
    };

    void Feed();
    std::string RowByRow(const Block& block);

    DeskLine& line_;
    const std::unique_ptr<SpoolFile> rows_;
    const BatchAnswerTerms terms_;
    RowSource source_;
    const std::unique_ptr<RowForm> form_;
    BatchForms forms_;
    Pinned pinned_;
    std::deque<Given> given_;
    std::optional<DeskReply> first_;  ///< The reply to the first block.
    bool has_header_ = false;
    Tally tally_;
};

}  // namespace cwt
