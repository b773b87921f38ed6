#include "batch/batch_output.h"

#include <fmt/core.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "batch/row_database.h"
#include "platform/system.h"
#include "text/path_text.h"

namespace cwt {
namespace {

namespace fs = std::filesystem;

class StandardOutput : public BatchOutput {
 public:
    void Write(std::string_view bytes) override {
        errno = 0;
        if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) < bytes.size() ||
            std::fflush(stdout) != 0) {
            const int reason = errno;
            throw std::runtime_error("standard output: " + std::generic_category().message(reason));
        }
    }

    void Note(Progress progress) override { written_ = std::move(progress); }
    Progress Stop() override { return written_; }
    void Finish() override {}

 private:
    Progress written_;
};

fs::path WithEnding(fs::path path, const char* ending) {
    return path += ending;
}

/// What files and databases have in common: their names and their journal.
class KeptOutput : public BatchOutput {
 public:
    explicit KeptOutput(const OutputTerms& terms)
        : path_(terms.path), partial_(WithEnding(terms.path, ".partial")), confirm_(terms.confirm) {
        is_whole_ = exists(path_);
        const fs::path journal = WithEnding(path_, ".journal");
        if (is_whole_ && exists(partial_)) {
            throw std::runtime_error(fmt::format(
                "{}: is there already, and {} is of a run that has not ended; remove one of them",
                PathText(path_), PathText(partial_.filename())));
        }
        if (is_whole_ && (!terms.resume || !exists(journal))) {
            const char* const rest =
                terms.resume      ? ", and not by the run that would be gone on with"
                : exists(journal) ? "; remove it to rate anew, or --resume tells whether it is "
                                    "whole and of these rows, options and data"
                                  : "; remove it to rate anew";
            throw std::runtime_error(PathText(path_) + ": is there already" + rest);
        }
        if (!terms.resume && exists(partial_)) {
            throw std::runtime_error(fmt::format(
                "{}: a run was begun and has not ended; --resume goes on with it, or remove that "
                "file",
                PathText(partial_)));
        }
        const bool is_new = !is_whole_ && !exists(partial_);
        journal_.emplace(journal, terms.run, is_new);
    }

    bool is_whole() const override { return is_whole_; }

 protected:
    void GiveName() {
        fs::rename(partial_, path_);
        is_whole_ = true;
    }

    /// Leaves nothing of a run that has kept nothing.
    void Discard() {
        std::error_code error;
        if (is_whole_ || !fs::remove(partial_, error)) return;
        journal_->Remove();
    }

    const fs::path path_, partial_;
    const std::function<void()> confirm_;
    std::optional<Journal> journal_;
    bool is_whole_ = false;
};

class RowFile : public KeptOutput {
 public:
    explicit RowFile(const OutputTerms& terms) : KeptOutput(terms) {
        const std::optional<Progress>& kept = journal_->kept();
        if (kept) written_ = *kept;
        if (is_whole_) {
            RequireSize(path_);
            return;
        }
        file_ = std::fopen(partial_.string().c_str(), "ab");
        if (file_ == nullptr) Fail();
        RequireSize(partial_);
        // What came after it was kept last goes.
        resize_file(partial_, written_.output_size);
    }

    ~RowFile() override {
        if (file_ != nullptr) std::fclose(file_);
        if (!journal_->kept()) Discard();
    }

    Progress begun() const override { return written_; }

    void Write(std::string_view bytes) override {
        errno = 0;
        if (std::fwrite(bytes.data(), 1, bytes.size(), file_) < bytes.size()) Fail();
        written_.output_size += bytes.size();
    }

    void Note(Progress progress) override {
        constexpr std::chrono::milliseconds kLongest(2000);
        progress.output_size = written_.output_size;
        written_ = std::move(progress);
        if (Clock::now() - kept_at_ < between_) return;
        Keep();
        between_ = std::min(2 * between_, kLongest);
    }

    Progress Stop() override {
        Keep();
        return written_;
    }

    void Finish() override {
        Keep();
        if (std::fclose(std::exchange(file_, nullptr)) != 0) Fail();
        GiveName();
    }

 private:
    using Clock = std::chrono::steady_clock;

    void Keep() {
        confirm_();
        errno = 0;
        if (!SyncFile(file_)) Fail();
        journal_->Keep(written_);
        kept_at_ = Clock::now();
    }

    /// What is longer was written after it was kept last.
    void RequireSize(const fs::path& path) const {
        const std::uintmax_t size = file_size(path);
        if (is_whole_ ? size == written_.output_size : size >= written_.output_size) return;
        throw std::runtime_error(PathText(path) + ": is not of the size that its journal says");
    }

    [[noreturn]] void Fail() const {
        const int reason = errno;
        throw std::runtime_error(PathText(partial_) + ": " +
                                 std::generic_category().message(reason));
    }

    std::FILE* file_ = nullptr;
    Progress written_;
    Clock::time_point kept_at_ = Clock::now();
    std::chrono::milliseconds between_{100};
};

class DatabaseFile : public KeptOutput {
 public:
    DatabaseFile(const OutputTerms& terms, const std::vector<std::string>& passed)
        : KeptOutput(terms) {
        if (!is_whole_) database_.emplace(PathText(partial_), passed);
        if (is_whole_ || database_->IsFinished()) {
            kept_ = journal_->kept().value_or(Progress());
        } else if (const std::string state = database_->State(); !state.empty()) {
            kept_ = Progress::FromText(state);
        }
        written_ = kept_;
    }

    ~DatabaseFile() override {
        database_.reset();
        if (kept_.next_row == 1) Discard();
    }

    Progress begun() const override { return kept_; }

    void Write(std::string_view bytes) override { database_->Insert(bytes); }

    /// Transactions end at the same rows in every run, which makes the same file.
    void Note(Progress progress) override {
        constexpr int kBlocks = 16;
        written_ = std::move(progress);
        if (++blocks_ % kBlocks == 0) Keep();
    }

    Progress Stop() override { return kept_; }

    void Finish() override {
        if (database_ && !database_->IsFinished()) {
            Keep();
            journal_->Keep(written_);
            database_->Finish();
        }
        database_.reset();
        GiveName();
    }

 private:
    void Keep() {
        confirm_();
        database_->Commit(written_.Text());
        kept_ = written_;
    }

    std::optional<RowDatabase> database_;
    Progress written_, kept_;
    int blocks_ = 0;
};

}  // namespace

std::unique_ptr<BatchOutput> MakeStandardOutput() {
    return std::make_unique<StandardOutput>();
}

std::unique_ptr<BatchOutput> MakeOutputFile(const OutputTerms& terms) {
    return std::make_unique<RowFile>(terms);
}

std::unique_ptr<BatchOutput> MakeOutputDatabase(const OutputTerms& terms,
                                                const std::vector<std::string>& passed) {
    return std::make_unique<DatabaseFile>(terms, passed);
}

}  // namespace cwt
