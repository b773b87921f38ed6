// Each kind of fact of a tariff, changed as text, changes the bill as it should.
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "bill/bill.h"
#include "reference/samples/sample_folder.h"
#include "support/explained_samples.h"
#include "tariffs/translation.h"
#include "text/csv.h"

namespace cwt {
namespace {

using hundredweight::samples::SampleFolder;

/// A value put into a sheet, in a row that begins so, or into a section of settings.json.
struct Edit {
    std::string sheet, row, column, value;
};

/// What a sample shipment, with changes, then has at a place of its bill.
struct Fact {
    std::vector<Edit> edits;
    std::string sample, changes, place;
    nlohmann::json was, becomes;
};

std::string SetInSheet(const std::string& sheet, const Edit& edit) {
    std::istringstream lines(sheet);
    std::vector<std::string> names, cells;
    std::string line, edited;
    while (std::getline(lines, line)) {
        SplitCsvRow(line, names.empty() ? names : cells);
        if (line.starts_with(edit.row)) {
            const auto column = std::ranges::find(names, edit.column) - names.begin();
            cells.at(static_cast<std::size_t>(column)) = edit.value;
            line.clear();
            for (const std::string& cell : cells) {
                AppendCsvField(line.append(line.empty() ? "" : ","), cell);
            }
        }
        edited += line + '\n';
    }
    return edited;
}

void Apply(const Edit& edit, Files& folder) {
    std::string& text = folder.at(edit.sheet);
    if (edit.sheet == "settings.json") {
        nlohmann::json settings = nlohmann::json::parse(text);
        settings.at(edit.row).at(edit.column) = nlohmann::json::parse(edit.value);
        text = settings.dump();
    } else {
        const std::string before = text;
        text = SetInSheet(before, edit);
        ASSERT_NE(text, before) << edit.sheet << ' ' << edit.row;
    }
}

class TariffFactsTest : public ExplainedSamples {
 protected:
    /// The value of the bill on a folder's data.
    nlohmann::json Rated(const Files& folder, const Fact& fact) const {
        const Translation built = BuildSet(folder);
        EXPECT_FALSE(built.findings.Has(Finding::kError)) << FindingText(built.findings.list()[0]);
        for (const auto& [name, bytes] : built.files) Write(name, bytes);
        Session session({.data = directory_});
        const Outcome outcome = session.Rate(Sample(fact.sample, fact.changes), 0);
        if (const auto* refusals = std::get_if<Refusals>(&outcome)) return refusals->at(0).text;
        return BillJson(std::get<Bill>(outcome))[nlohmann::ordered_json::json_pointer(fact.place)];
    }
};

TEST_F(TariffFactsTest, ShowOnTheBill) {
    const std::string first = "01-deficit-and-discount", small = "02-minimum-charge",
                      whole_road = "16-whole-road", breaks = "1 500 1000 1800 5000 10000 20000";
    const Fact facts[] = {
        // 1205 x 40.00 + 695 x 52.10, and 100 pounds of deficit at the lower rate.
        {{{"engine/rates.csv", "SMPLNATL,2041,70,", "rate_dollars_4", "40.00"}},
         first,
         "{}",
         "/gross_charge",
         "861.92",
         "884.10"},
        {{{"engine/tariffs.csv", "SMPLNATL,", "breaks_pounds", breaks + " 30000 40000"}},
         first,
         "{}",
         "/gross_charge",
         "861.92",
         "823.62"},
        {{{"engine/lanes.csv", "SMPLNATL,300,319,600,", "minimum_dollars", "115.00"}},
         small,
         "{}",
         "/net_charge",
         "107.50",
         "127.50"},
        {{{"engine/lanes.csv", "SMPLNATL,300,319,600,", "arbitrary_dollars", "0.00"}},
         small,
         "{}",
         "/net_charge",
         "107.50",
         "95.00"},
        {{{"engine/lanes.csv", "SMPLNATL,300,319,600,", "scale", "2052"}},
         small,
         "{}",
         "/tariff/rate_code",
         "002041",
         "002052"},
        {{{"engine/points.csv", "60601,", "service", "I"}},
         small,
         "{}",
         "/destination/service",
         "D",
         "I"},
        {{{"level.csv", "SAMPLE,", "date", "2025-02-03"}},
         small,
         "{}",
         "/tariff/date",
         "2025-01-06",
         "2025-02-03"},
        {{{"minimums-by-zip.csv", "F,30000,", "floor_dollars", "120.00"}},
         first,
         "{}",
         "/charges_by_break/single_shipment/0/amount",
         98,
         120},
        {{{"tariff-names.csv", "PTGA01,PTTX01", "tariff", "SMPLNATL"}},
         "09-all-kinds",
         R"({"tariff": null})",
         "/tariff/name",
         "SMPLFAK1",
         "0113 The tariff has no lane between these points"},
        {{{"settings.json", "defaults", "rate_factor", "1.1"}},
         small,
         "{}",
         "/lines/0/rate",
         "76.00",
         "83.60"},
        // 12 percent of 3031.50, where half of it is discount.
        {{{"settings.json", "settings", "surcharge_on_gross", "true"}},
         "07-surcharge-high",
         R"({"discount": {"percent": 50}})",
         "/surcharge",
         "181.89",
         "363.78"},
        {{{"settings.json", "settings", "no_flat_discount", "true"}},
         "04-flat-discount",
         "{}",
         "/discount/percent",
         "12.50",
         "30.00"},
        {{{"profiles.csv", "Northeast,", "class_10", "100"}},
         whole_road,
         "{}",
         "/lines/0/rated_as",
         "85",
         "100"},
        // Direct service at both points, in two states: the second group.
        {{{"profiles.csv", "Default,", "discount_file", "1"},
          {"profiles.csv", "Default,", "group_2_percent_4", "20"}},
         first,
         R"({"discount": null, "profile": "Default", "service_guide": true})",
         "/discount/percent",
         "0.00",
         "20.00"},
        {{{"profile-zip-discounts.csv", "2,1,", "percent_3", "10.00"}},
         whole_road,
         "{}",
         "/discount/amount",
         "379.55",
         "89.31"},
        {{{"service-guide/points.csv", "100,119,", "terminal", "ATL01"}},
         whole_road,
         "{}",
         "/origin/terminal",
         "NYC01",
         "ATL01"},
        {{{"service-guide/transit-days.csv", "NYC01,ATL01,", "standard_days", "4"}},
         whole_road,
         "{}",
         "/transit_days/standard",
         2,
         4},
    };
    const Files folder = SampleFolder("tariff");
    for (const Fact& fact : facts) {
        SCOPED_TRACE(fact.edits[0].sheet + " " + fact.edits[0].column);
        Files edited = folder;
        for (const Edit& edit : fact.edits) Apply(edit, edited);
        EXPECT_EQ(Rated(folder, fact), fact.was);
        EXPECT_EQ(Rated(edited, fact), fact.becomes);
    }
}

}  // namespace
}  // namespace cwt
