// The rows of a batch at the desk.
#include "server/desk_batch.h"

#include <fmt/format.h>

#include <charconv>
#include <stdexcept>

#include "batch/rater.h"

namespace cwt {
namespace {

constexpr const char* kCsv = "csv";
constexpr std::string_view kBetween("\0", 1);  // No cell holds it.

/// A term that the front has written.
const std::string& Term(const DeskRequest& request, const char* name) {
    return request.terms.at(name);
}

template <class Number>
Number NumberOf(std::string_view text) {
    Number number{};
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    if (end.ec != std::errc() || end.ptr != text.data() + text.size()) {
        throw std::logic_error("a block without the lengths of its rows");
    }
    return number;
}

std::vector<std::string> PartsOf(std::string_view text) {
    std::vector<std::string> parts;
    while (!text.empty()) {
        const std::string_view part = parts.emplace_back(text.substr(0, text.find(kBetween)));
        text.remove_prefix(std::min(part.size() + 1, text.size()));
    }
    return parts;
}

std::vector<std::uint32_t> LengthsOf(std::string_view text) {
    std::vector<std::uint32_t> lengths;
    while (!text.empty()) {
        const std::string_view length = text.substr(0, text.find(' '));
        lengths.push_back(NumberOf<std::uint32_t>(length));
        text.remove_prefix(std::min(length.size() + 1, text.size()));
    }
    return lengths;
}

}  // namespace

DeskRequest BatchRequest(Block block, const BatchForms& forms) {
    DeskRequest request = {"batch",
                           {{"from", forms.from},
                            {"to", forms.to},
                            {"header", forms.header},
                            {"passed", fmt::to_string(fmt::join(forms.passed, kBetween))},
                            {"first_row", fmt::to_string(block.first_row)},
                            {"lengths", fmt::to_string(fmt::join(block.lengths, " "))}},
                           {}};
    request.body = std::move(block.text);
    return request;
}

DeskReply AnswerBatch(Session& session, const DeskRequest& request) {
    Block block;
    block.first_row = NumberOf<std::uint64_t>(Term(request, "first_row"));
    block.lengths = LengthsOf(Term(request, "lengths"));
    block.text = request.body;
    const auto reader =
        Term(request, "from") == kCsv
            ? MakeCsvReader(Term(request, "header"), PartsOf(Term(request, "passed")))
            : MakeNdjsonReader();
    const bool to_csv = Term(request, "to") == kCsv;
    const auto form = to_csv ? MakeCsvForm(reader->passed()) : MakeNdjsonForm(reader->passed());
    const RowForms forms = {*reader, *form};
    const Answer answer = RateBlock(session, forms, block, {}, [](std::uint32_t /*row*/) {});
    return {200, to_csv ? "text/csv" : "application/x-ndjson", answer.bytes, answer.tally};
}

}  // namespace cwt
