// What is wrong with the rate base and the terminals, row by row and as a whole.
//
// What a partner would not start on is an error, what it takes and was hardly meant a warning. Of a
// file that is in the folder as it is, all are warnings: it comes back as it was.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tariffs/finding.h"
#include "tariffs/partners/hidden_ranges.h"
#include "tariffs/partners/partner_tables.h"

namespace cwt {

class PartnerChecks {
 public:
    /// Where a cell of the present row stands, and what it holds.
    struct Spot {
        Place place;
        std::string words;  ///< "scale \"2041\"".
    };
    using Locate = std::function<Spot(std::size_t field, std::size_t cell)>;

    /// `day` is the one that the engine is sent, YYYYMMDD; empty when the set has none.
    PartnerChecks(Findings& findings, std::string day)
        : findings_(findings), day_(std::move(day)) {}

    /// The tables come in their order. `file` is the sheet or the file, as places name it.
    void Begin(const PartnerTable& table, std::string file, bool is_as_it_is, Locate locate);
    /// Checks a row. Result: whether its partner would take it.
    bool Check(const std::vector<std::string>& fields, std::size_t line);
    /// Something is wrong with a row that could not be read as one; none is there then.
    void Refuse(std::size_t field, std::size_t cell, const std::string& reason);
    void RefuseLine(std::size_t line, const std::string& reason);
    /// Rows of the table are missing, and it has been told.
    void Break() { State().is_broken = true; }
    void End();
    /// The table is there, and cannot be checked.
    void Skip(const PartnerTable& table) { states_[table.id] = {true, true}; }

    /// Checks the tables together: some of a partner's may be missing.
    void Finish();
    /// Checks the names of the tariffs between point codes.
    void CheckTariffNames(std::string_view file, const std::string& sheet);

 private:
    struct Tariff {
        std::vector<std::string> classes;
        std::size_t breaks = 0;
        std::map<std::string, std::set<std::string>> scales;  ///< Classes that have rates.
    };
    struct TableState {
        bool is_there = false;
        bool is_broken = false;  ///< What refers to it cannot be checked.
    };
    using Fields = std::vector<std::string>;

    TableState& State() { return states_[table_->id]; }
    bool IsWhole(PartnerTable::Id id) const {
        return states_[id].is_there && !states_[id].is_broken;
    }
    void Warn(std::size_t field, const std::string& reason);
    /// `kind` is what findings of the same kind share, `detail` what they do not.
    void Tell(Finding::Level level, Place place, const std::string& words, const std::string& kind,
              const std::string& detail = "");

    // By the form of a field; in partner_form_checks.cpp.
    void CheckForm(std::size_t field, const std::string& text);
    void CheckClasses(std::size_t field, const std::string& text);
    void CheckBreaks(std::size_t field, const std::string& text);
    void CheckRange(std::size_t field, const std::string& text);
    void CheckRates(std::size_t field, const std::string& text);

    /// Refuses the row's tariff when there is none of its name. Result: null then.
    Tariff* FindTariff(const std::string& name);
    void CheckTerminal(std::size_t field, const std::string& code);
    void TellMore();

    void AddTariff(const Fields& fields);
    void AddRates(const Fields& fields);
    void CheckRateCode(const std::string& scale);
    void AddLane(const Fields& fields);
    void AddPoint(const Fields& fields);
    void AddTransit(const Fields& fields);
    void TellHidden(const RangeRows& rows);

    Findings& findings_;
    std::string day_;
    const PartnerTable* table_ = nullptr;
    std::string file_;
    bool is_as_it_is_ = false;
    Locate locate_;
    std::size_t line_ = 0;
    bool is_taken_ = true;                                                ///< The present row.
    std::map<std::pair<Finding::Level, std::string>, std::size_t> told_;  ///< How often, by kind.

    std::array<TableState, PartnerTable::kTransit + 1> states_;
    std::map<std::string, Tariff, std::less<>> tariffs_;
    std::map<std::string, RangeRows> lanes_;  ///< By tariff.
    std::vector<PrefixSpan> served_;          ///< By any lane.
    std::vector<PrefixSpan> known_;           ///< In any state.
    RangeRows state_rows_, area_rows_;
    std::set<std::string, std::less<>> terminals_;
    std::map<std::pair<std::string, std::string>, std::size_t> transit_lines_;
};

}  // namespace cwt
