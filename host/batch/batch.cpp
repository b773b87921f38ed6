#include "batch/batch.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "batch/batch_output.h"
#include "batch/batch_terms.h"
#include "batch/crew.h"
#include "batch/progress_line.h"
#include "platform/system.h"
#include "shipment/shipment_file.h"
#include "text/code_page.h"
#include "text/path_text.h"

namespace cwt {
namespace {

using Clock = std::chrono::steady_clock;

/// Rows from the first up to the end, which is none of them.
struct Slice {
    std::uint64_t begin = 1, end = std::numeric_limits<std::uint64_t>::max();
};

Slice SliceOf(const BatchOptions& options) {
    if (!options.part) return {};
    RowSource source(options.input, options.from, options.allowed);
    std::uint64_t rows = 0;
    while (const auto block = source.Next(Slice().end)) rows = block->next_row() - 1;
    // Shares in whole numbers that do not overflow, the first ones a row larger.
    const auto begin_of = [&](std::uint64_t number) {
        const std::uint64_t share = rows / options.part->count, rest = rows % options.part->count;
        return 1 + (number - 1) * share + std::min(number - 1, rest);
    };
    return {begin_of(options.part->number), begin_of(options.part->number + 1)};
}

std::unique_ptr<RowForm> MakeForm(Form form, const std::vector<std::string>& passed) {
    if (form == Form::kCsv) return MakeCsvForm(passed);
    if (form == Form::kDatabase) return MakeDatabaseForm(passed);
    return MakeNdjsonForm(passed);
}

std::unique_ptr<BatchOutput> MakeOutput(const BatchOptions& options, const RowSource& source,
                                        const std::vector<std::string>& passed, DataWatch& data) {
    if (options.output.empty()) return MakeStandardOutput();
    const OutputTerms terms{PathOf(options.output), options.resume,
                            TermsOf(options, source.header(), data),
                            [&data] { data.RequireUnchanged(); }};
    if (options.to == Form::kDatabase) return MakeOutputDatabase(terms, passed);
    return MakeOutputFile(terms);
}

std::uint64_t InputSize(const std::string& input) {
    std::error_code error;
    const std::uintmax_t size =
        input == kStandardInput ? 0 : std::filesystem::file_size(PathOf(input), error);
    return error ? 0 : size;
}

class Batch {
 public:
    explicit Batch(const BatchOptions& options)
        : options_(options),
          slice_(SliceOf(options)),
          source_(options.input, options.from, options.allowed),
          form_(MakeForm(options.to, source_.reader().passed())),
          packing_(PackingOfName(options.output)),
          data_(options.sources),
          output_(MakeOutput(options, source_, source_.reader().passed(), data_)),
          progress_(output_->begun()) {}

    BatchResult Run() {
        SkipToBegin();
        if (output_->is_whole()) return ResultOfWhole();
        crew_ = MakeCrew({options_.sources,
                          {source_.reader(), *form_},
                          packing_,
                          options_.jobs,
                          options_.timeout,
                          [this] { data_.RequireUnchanged(); }});
        ProgressLine line(options_.progress, InputSize(options_.input), progress_.tally.rows());
        const std::uint64_t rows_before = progress_.tally.rows();
        while (FeedAndTake()) line.Show(progress_.tally, input_bytes_);
        BatchResult result;
        if (IsInterrupted()) {
            progress_ = output_->Stop();
            result.stopped_before = progress_.next_row;
        } else {
            data_.RequireUnchanged();
            output_->Finish();
            SayRowsOfLines();
        }
        result.tally = progress_.tally;
        result.rows_here = progress_.tally.rows() - rows_before;
        result.seconds = std::chrono::duration<double>(Clock::now() - begin_).count();
        return result;
    }

 private:
    /// The run had ended, unless its input has grown since.
    BatchResult ResultOfWhole() {
        if (source_.Next(slice_.end)) {
            throw std::runtime_error(fmt::format("--resume: {} is whole, and {} has more rows now",
                                                 options_.output, options_.input));
        }
        options_.say(options_.output + ": is whole already, and nothing was rated");
        BatchResult result;
        result.tally = progress_.tally;
        return result;
    }

    /// Leaves out what another slice, or an earlier run, sees to.
    void SkipToBegin() {
        if (const auto& passed = source_.reader().passed(); !passed.empty()) {
            options_.say(Printable(
                fmt::format("note: columns passed on unread: {}", fmt::join(passed, ", "))));
        }
        const bool is_begun = progress_.next_row > slice_.begin;
        const std::uint64_t digest = source_.SkipTo(is_begun ? progress_.next_row : slice_.begin);
        if (is_begun && digest != progress_.digest) {
            throw std::runtime_error(
                fmt::format("--resume: {}: the rows before row {} are not those that were rated",
                            options_.input, progress_.next_row));
        }
        if (is_begun) {
            if (!output_->is_whole()) {
                options_.say(fmt::format("going on at row {}", progress_.next_row));
            }
        } else if ((!options_.part || options_.part->number == 1) && progress_.output_size == 0) {
            if (const std::string header = form_->Header(); !header.empty()) {
                output_->Write(Pack(packing_, header));
            }
        }
    }

    /// Has the crew at work and writes what is next in order. False when nothing is left.
    bool FeedAndTake() {
        constexpr std::size_t kMostAhead = 8;  // Blocks for each worker that wait to be written.
        while (!is_read_ && !IsInterrupted() && crew_->HasRoom() &&
               given_.size() < kMostAhead * options_.jobs) {
            std::optional<Block> block = source_.Next(slice_.end);
            is_read_ = !block;
            if (!block) break;
            given_[block->first_row] = {block->next_row(), block->digest, block->input_bytes, {}};
            crew_->Give(std::move(*block));
        }
        if (IsInterrupted() || given_.empty()) return false;
        if (std::optional<Answer> answer = crew_->Take()) {
            SayOnce(crew_->said());
            given_.at(answer->first_row).answer = std::move(answer);
        }
        WriteInOrder();
        return true;
    }

    void WriteInOrder() {
        for (auto first = given_.begin(); first != given_.end() && first->second.answer;
             first = given_.erase(first)) {
            const Given& block = first->second;
            output_->Write(block.answer->bytes);
            progress_.tally.Add(block.answer->tally);
            progress_.next_row = block.next_row;
            progress_.digest = block.digest;
            input_bytes_ = block.input_bytes;
            output_->Note(progress_);
        }
    }

    /// A quote too many makes rows into one, which is as well-formed as a cell of several lines.
    void SayRowsOfLines() {
        const auto& [rows, first] = source_.rows_of_lines();
        if (rows == 0) return;
        options_.say(fmt::format("note: {} {} of several lines, the first is row {}", rows,
                                 rows == 1 ? "row is" : "rows are", first));
    }

    void SayOnce(const std::string& said) {
        if (said.empty() || is_said_) return;
        is_said_ = true;
        options_.say("note: " + said);
    }

    /// A block that the crew has, until it is written.
    struct Given {
        std::uint64_t next_row, digest, input_bytes;
        std::optional<Answer> answer;
    };

    const BatchOptions& options_;
    const Clock::time_point begin_ = Clock::now();
    const Slice slice_;
    RowSource source_;
    const std::unique_ptr<RowForm> form_;
    const Packing packing_;
    DataWatch data_;
    const std::unique_ptr<BatchOutput> output_;
    Progress progress_;  ///< What is written.
    std::unique_ptr<Crew> crew_;
    std::map<std::uint64_t, Given> given_;  ///< By the first row.
    std::uint64_t input_bytes_ = 0;
    bool is_read_ = false;
    bool is_said_ = false;
};

}  // namespace

BatchResult RunBatch(const BatchOptions& options) {
    return Batch(options).Run();
}

}  // namespace cwt
