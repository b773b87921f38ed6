#include "server/http/batch_answer.h"

#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

#include "batch/rater.h"

namespace cwt {
namespace {

constexpr int kOk = 200;
constexpr auto kAllRows = std::numeric_limits<std::uint64_t>::max();

const char* NameOf(Form form) {
    return form == Form::kCsv ? "csv" : "ndjson";
}

/// Whether a process, or its partner, is to blame for the request rather than the service.
bool IsLoss(const DeskReply& reply) {
    return reply.status == StatusOf(ProblemKind::kPartnerEnded) ||
           reply.status == StatusOf(ProblemKind::kPartnerLate);
}

std::string DetailOf(const DeskReply& problem) {
    return nlohmann::json::parse(problem.body).value("detail", std::string());
}

}  // namespace

BatchAnswer::BatchAnswer(DeskLine& line, std::unique_ptr<SpoolFile> rows,
                         const BatchAnswerTerms& terms)
    : line_(line),
      rows_(std::move(rows)),
      terms_(terms),
      source_(rows_->name(), terms.from, terms.allowed),
      form_(terms.to == Form::kCsv ? MakeCsvForm(source_.reader().passed())
                                   : MakeNdjsonForm(source_.reader().passed())),
      forms_{NameOf(terms.from), NameOf(terms.to), source_.header(), source_.reader().passed()},
      pinned_(line) {}

BatchAnswer::Facts BatchAnswer::LookThrough() const {
    RowSource source(rows_->name(), terms_.from, terms_.allowed);
    Facts facts;
    while (const auto block = source.Next(kAllRows)) facts.rows += block->lengths.size();
    facts.rows_of_lines = source.rows_of_lines();
    facts.passed = source.reader().passed();
    return facts;
}

void BatchAnswer::Feed() {
    while (given_.size() < terms_.most_ahead) {
        std::optional<Block> block = source_.Next(kAllRows);
        if (!block) return;
        auto reply = line_.Ask(BatchRequest(*block, forms_), pinned_.generation());
        given_.push_back({std::move(*block), std::move(reply)});
    }
}

std::optional<DeskReply> BatchAnswer::Begin() {
    if (pinned_.generation() == 0) {
        return ProblemReply(ProblemKind::kNotReady, "The data are not loaded yet");
    }
    Feed();
    if (given_.empty()) return std::nullopt;
    first_ = given_.front().reply.get();
    if (first_->status == kOk || IsLoss(*first_)) return std::nullopt;
    return std::exchange(first_, std::nullopt);
}

std::optional<std::string> BatchAnswer::Next() {
    if (!std::exchange(has_header_, true)) {
        if (std::string header = form_->Header(); !header.empty()) return header;
    }
    Feed();
    if (given_.empty()) return std::nullopt;
    Given given = std::move(given_.front());
    given_.pop_front();
    DeskReply reply = first_ ? *std::exchange(first_, std::nullopt) : given.reply.get();
    if (IsLoss(reply)) return RowByRow(given.block);
    if (reply.status != kOk) throw std::runtime_error(DetailOf(reply));
    tally_.Add(reply.tally);
    return std::move(reply.body);
}

std::string BatchAnswer::RowByRow(const Block& block) {
    const RowForms row_forms = {source_.reader(), *form_};
    std::string rows;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < block.lengths.size(); ++i) {
        Block one;
        one.first_row = block.first_row + i;
        one.lengths = {block.lengths[i]};
        one.text = block.text.substr(begin, block.lengths[i]);
        begin += block.lengths[i];
        const DeskReply reply = line_.Ask(BatchRequest(one, forms_), pinned_.generation()).get();
        if (IsLoss(reply)) {
            const Answer failed = FailRow(row_forms, one.text, one.first_row, DetailOf(reply));
            tally_.Add(failed.tally);
            rows += failed.bytes;
        } else if (reply.status == kOk) {
            tally_.Add(reply.tally);
            rows += reply.body;
        } else {
            throw std::runtime_error(DetailOf(reply));
        }
    }
    return rows;
}

}  // namespace cwt
