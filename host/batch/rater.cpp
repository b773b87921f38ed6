#include "batch/rater.h"

#include <utility>

namespace cwt {
namespace {

constexpr int kNoRequestCode = 0;

void Finish(const RowForm& writer, const Row& row, Answer& answer) {
    answer.tally.Count(row);
    writer.Append(answer.bytes, row);
}

void RateRow(Session& session, const RowForms& forms, std::string_view text, Row& row,
             Answer& answer) {
    Shipment shipment;
    Refusals refusals = forms.reader.Read(text, shipment, row.passed);
    row.id = shipment.id;
    if (!refusals.empty()) {
        row.outcome = std::move(refusals);
    } else {
        Outcome outcome = session.Rate(shipment, kNoRequestCode);
        std::visit([&](auto& what) { row.outcome = std::move(what); }, outcome);
    }
    Finish(forms.writer, row, answer);
}

}  // namespace

Answer FailRow(const RowForms& forms, std::string_view text, std::uint64_t number,
               const std::string& reason) {
    Answer answer{number, {}, {}};
    Row row;
    row.number = number;
    Shipment shipment;
    forms.reader.Read(text, shipment, row.passed);
    row.id = shipment.id;
    row.outcome = Failure{reason};
    Finish(forms.writer, row, answer);
    return answer;
}

Answer RateBlock(Session& session, const RowForms& forms, const Block& block,
                 const std::map<std::uint32_t, Answer>& known,
                 const std::function<void(std::uint32_t)>& tell) {
    Answer answer{block.first_row, {}, {}};
    std::string_view rest = block.text;
    for (std::uint32_t i = 0; i < block.lengths.size(); ++i) {
        const std::string_view text = rest.substr(0, block.lengths[i]);
        rest.remove_prefix(text.size());
        if (const auto found = known.find(i); found != known.end()) {
            answer.tally.Add(found->second.tally);
            answer.bytes += found->second.bytes;
            continue;
        }
        tell(i);
        Row row;
        row.number = block.first_row + i;
        RateRow(session, forms, text, row, answer);
    }
    return answer;
}

}  // namespace cwt
