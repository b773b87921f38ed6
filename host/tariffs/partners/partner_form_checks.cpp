// What is wrong with a field of a partner's file by itself.
#include <algorithm>

#include "tariffs/partners/partner_cells.h"
#include "tariffs/partners/partner_checks.h"
#include "tariffs/partners/partner_forms.h"

namespace cwt {
namespace {

constexpr std::size_t kTariffLength = 8, kStateLength = 2, kLongestClass = 3;
constexpr const char* kNoAmount = "is no amount of dollars with two decimals, at most 9999.99";

}  // namespace

void PartnerChecks::CheckForm(std::size_t field, const std::string& text) {
    const PartnerColumn& column = table_->columns[field];
    switch (column.form) {
        case PartnerForm::kTariff:
            if (text.size() != kTariffLength) Refuse(field, 0, "is no name of eight characters");
            break;
        case PartnerForm::kDate:
            switch (PartnerDate(text)) {
                case DateKind::kNone:
                    Refuse(field, 0, "is no date");
                    break;
                case DateKind::kNoDay:
                    Warn(field, "is no day of the calendar");
                    break;
                case DateKind::kDay:
                    break;
            }
            break;
        case PartnerForm::kClasses:
            CheckClasses(field, text);
            break;
        case PartnerForm::kBreaks:
            CheckBreaks(field, text);
            break;
        case PartnerForm::kRange:
            CheckRange(field, text);
            break;
        case PartnerForm::kRates:
            CheckRates(field, text);
            break;
        case PartnerForm::kAmount:
            if (!IsPartnerAmount(text)) Refuse(field, 0, kNoAmount);
            break;
        case PartnerForm::kPostalCode:
            if (!IsPostalCode(text)) {
                Warn(field,
                     "is no postal code that a request can have: five digits, or a letter, "
                     "a digit, a letter and up to three more; a spreadsheet may have "
                     "dropped its zeros");
            }
            break;
        case PartnerForm::kState:
            if (text.size() != kStateLength) Refuse(field, 0, "is no state of two characters");
            break;
        case PartnerForm::kService:
            if (text.size() != 1) {
                Refuse(field, 0, "is no service code of one character");
            } else if (text != "D" && text != "I") {
                Warn(field, "is neither D, direct, nor I, through another carrier");
            }
            break;
        case PartnerForm::kDays:
        case PartnerForm::kText:
            if (text.empty() && column.is_needed) Refuse(field, 0, "is needed");
            if (text.size() > column.most) {
                Refuse(field, 0, "is longer than " + std::to_string(column.most) + " characters");
            } else if (column.form == PartnerForm::kDays && !text.empty() && !PartnerNumber(text)) {
                Refuse(field, 0, "is no number of days");
            }
            break;
    }
}

void PartnerChecks::CheckClasses(std::size_t field, const std::string& text) {
    const auto words = WordsOf(text);
    if (words.empty() || words.size() > kMostTableEntries) {
        return Refuse(field, 0, "is no list of 1 to 20 classes between blanks");
    }
    const auto is_long = [](std::string_view word) { return word.size() > kLongestClass; };
    if (std::ranges::any_of(words, is_long)) {
        return Refuse(field, 0, "has a class of more than three characters");
    }
    const std::set<std::string_view> different(words.begin(), words.end());
    if (different.size() != words.size()) Warn(field, "has a class twice");
}

void PartnerChecks::CheckBreaks(std::size_t field, const std::string& text) {
    const auto words = WordsOf(text);
    if (words.empty() || words.size() > kMostTableEntries) {
        return Refuse(field, 0, "is no list of 1 to 20 weights between blanks");
    }
    std::int32_t last = 0;
    for (const std::string_view word : words) {
        const auto weight = PartnerNumber(word);
        if (!weight) return Refuse(field, 0, "has something that is no whole number of pounds");
        if (last == 0 && *weight != 1) return Refuse(field, 0, "does not begin at 1 pound");
        if (*weight <= last) return Refuse(field, 0, "does not ascend");
        last = *weight;
    }
    if (last > kHighestBreak) Refuse(field, 0, "goes beyond 99999 pounds");
}

void PartnerChecks::CheckRange(std::size_t field, const std::string& text) {
    const auto span = ReadPrefixSpan(text);
    if (!span) return Refuse(field, 0, "is no range of three-character prefixes that ascends");
    const std::string_view first = std::string_view(text).substr(0, 3);
    const std::string_view last = std::string_view(text).substr(text.size() - 3);
    if (!IsPostalPrefix(first) || !IsPostalPrefix(last)) {
        Warn(field,
             "is no range of prefixes that postal codes have: three digits, or a letter, a "
             "digit and a letter");
    } else if ((first[0] <= '9') != (last[0] <= '9')) {
        Warn(field, "begins with digits and ends with letters");
    }
}

void PartnerChecks::CheckRates(std::size_t field, const std::string& text) {
    const auto words = WordsOf(text);
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (!IsPartnerAmount(words[i])) Refuse(field, i, kNoAmount);
    }
}

}  // namespace cwt
