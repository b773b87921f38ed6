#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>

#include "batch/row.h"
#include "shipment/shipment_json.h"
#include "shipment/shipment_reader.h"
#include "text/csv.h"
#include "text/json_writer.h"

namespace cwt {
namespace {

using Texts = std::vector<std::string>;

std::string Joined(const Texts& texts) {
    return fmt::to_string(fmt::join(texts, "|"));
}

TEST(Rows, ACsvTextPartsIntoTheSameRowsHoweverItArrives) {
    const std::string open = "a quoted field is not closed", behind = "something follows";
    const struct {
        std::string text;
        Texts rows;  // Fields between bars, or how the complaint begins.
        std::size_t longest = 1000;
    } cases[] = {
        {"", {}},
        {"a,b\nc", {"a|b", "c"}},
        {"a,b\r\n\r\n,\n", {"a|b", "", "|"}},
        {"\"a,\"\"b\"\"\r\nc\",\"\"\nd\n", {"a,\"b\"\r\nc|", "d"}},
        {"a \"b\" c,d\"\n\"e\"\r\n", {"a \"b\" c|d\"", "e"}},
        {"1,\"open\n2,b\n3,c\n", {open, "2|b", "3|c"}},
        {"1,\"open\n2,\"b\"\n3,\"c\"\n", {open, "2|b", "3|c"}},
        {"1,\"a\"b\"\n2,\"c\nd\",e\r\n", {behind, "2|c\nd|e"}},
        {"1,\"a\" ,b\n2", {behind, "2"}},
        // A quote that is not closed within the longest row is none.
        {"1,\"open\n2,b\n3,\"c\"\n", {open, "2|b", "3|c"}, 14},
    };
    for (const auto& [text, rows, longest] : cases) {
        Texts found;
        for (std::string_view rest = text; !rest.empty();) {
            const std::size_t end = CsvRowEnd(rest, true, longest);
            ASSERT_LE(end, rest.size()) << text;
            for (std::size_t size = 0; size < rest.size(); ++size) {
                const std::size_t early = CsvRowEnd(rest.substr(0, size), false, longest);
                EXPECT_TRUE(early == rest.npos || early == end) << text << ", " << size << " bytes";
            }
            Texts fields;
            const std::string fault = SplitCsvRow(rest.substr(0, end), fields);
            const std::size_t shown = rows.size() > found.size() ? rows[found.size()].size() : 0;
            found.push_back(fault.empty() ? Joined(fields) : fault.substr(0, shown));
            rest.remove_prefix(end);
        }
        EXPECT_EQ(found, rows) << text;
    }
}

std::string PrintedRefusals(const Refusals& refusals, const Shipment& shipment) {
    std::string text;
    for (const Refusal& refusal : refusals) text += RefusalText(refusal) + "\n";
    if (!refusals.empty()) return text;
    for (const Point& point : {shipment.origin, shipment.destination}) {
        text += Joined({point.zip, point.city, point.state, point.territory,
                        point.intrastate ? "true" : "false"}) +
                "\n";
    }
    for (const ShipmentLine& line : shipment.lines) {
        text += line.class_code + " " + std::to_string(line.weight) + "\n";
    }
    text += Joined({shipment.id, shipment.description, shipment.tariff.value_or("none"),
                    shipment.profile.value_or("none"), std::to_string(shipment.factor.value_or(-1)),
                    shipment.service_guide ? "true" : "false"});
    const Discount discount = shipment.discount.value_or(Discount{-1, -1, -1});
    const Surcharge surcharge = shipment.surcharge.value_or(Surcharge{-1, -1, -1});
    for (const double number :
         {discount.percent, discount.flat_percent, discount.floor, surcharge.low_percent,
          surcharge.high_percent, double(surcharge.break_index)}) {
        text += "|" + std::to_string(number);
    }
    return text;
}

/// What becomes of a shipment with some of its cells set, or of the JSON form with the same.
std::string FromCells(const std::vector<std::pair<std::string, std::string>>& cells) {
    std::map<std::string, std::string> row = {{"origin_zip", "30303"},
                                              {"destination_zip", "60601"},
                                              {"class_1", "70"},
                                              {"weight_1", "500"}};
    for (const auto& [name, cell] : cells) row[name] = cell;
    Texts header, fields;
    for (const auto& [name, cell] : row) {
        header.push_back(name);
        AppendCsvField(fields.emplace_back(), cell);
    }
    Shipment shipment;
    Texts passed;
    const Refusals refusals = MakeCsvReader(fmt::format("{}\r\n", fmt::join(header, ",")), {})
                                  ->Read(fmt::to_string(fmt::join(fields, ",")), shipment, passed);
    return PrintedRefusals(refusals, shipment);
}

std::string FromJson(const std::string& patch) {
    auto json = nlohmann::json::parse(R"({"origin": {"zip": "30303"}, "destination":
        {"zip": "60601"}, "lines": [{"class": "70", "weight": 500}]})");
    json.merge_patch(nlohmann::json::parse(patch));
    Shipment shipment;
    const Refusals refusals = ReadShipmentJson(json.dump(), shipment);
    return PrintedRefusals(refusals, shipment);
}

TEST(Rows, CellsAreJudgedLikeTheMembersOfTheJsonForm) {
    const struct {
        std::vector<std::pair<std::string, std::string>> cells;
        const char* json;
    } cases[] = {
        {{{"id", " A1 "}, {"description", "a \"b\",\r\nc"}, {"tariff", ""}, {"profile", "  "}},
         R"({"id": "A1", "description": "a \"b\",\r\nc"})"},
        {{{"origin_zip", "2134"}, {"destination_zip", "501.0"}},
         R"({"origin": {"zip": "02134"}, "destination": {"zip": "00501"}})"},
        {{{"origin_zip", "m5h 2n2"}, {"destination_zip", "30303-1234"}},
         R"({"origin": {"zip": "M5H2N2"}, "destination": {"zip": "30303"}})"},
        {{{"origin_zip", ""}}, R"({"origin": {"zip": null}})"},
        {{{"origin_city", "Atlanta"},
          {"origin_state", "GA"},
          {"origin_territory", "b"},
          {"origin_intrastate", "FALSE"},
          {"destination_city", "Québec"},
          {"destination_state", "QC"},
          {"destination_territory", "T"},
          {"service_guide", "True"}},
         R"({"origin": {"city": "Atlanta", "state": "GA", "territory": "b", "intrastate": false},
             "destination": {"city": "Québec", "state": "QC", "territory": "T"},
             "service_guide": true})"},
        {{{"service_guide", "yes"}, {"origin_intrastate", "0"}},
         R"({"service_guide": "yes", "origin": {"intrastate": 0}})"},
        {{{"weight_1", " 1205.0 "},
          {"class_1", "77.50"},
          {"class_2", "70.0"},
          {"weight_2", "1E+03"}},
         R"({"lines": [{"class": 77.5, "weight": 1205}, {"class": "70", "weight": 1000}]})"},
        {{{"weight_1", "1,205"}, {"class_1", "070"}},
         R"({"lines": [{"class": "070", "weight": "1"}]})"},
        {{{"weight_1", "1205.5"}}, R"({"lines": [{"class": "70", "weight": 1205.5}]})"},
        {{{"weight_1", "nan"}}, R"({"lines": [{"class": "70", "weight": "nan"}]})"},
        {{{"class_3", "50"}, {"weight_3", "7"}, {"class_2", ""}, {"weight_2", " "}},
         R"({"lines": [{"class": "70", "weight": 500}, {"class": "50", "weight": 7}]})"},
        {{{"class_8", "50"}}, R"({"lines": [{"class": "70", "weight": 500}, {"class": "50"}]})"},
        {{{"class_1", ""}, {"weight_1", ""}}, R"({"lines": null})"},
        {{{"factor", "1.25"},
          {"discount_percent", "45.5"},
          {"discount_flat_percent", ".5"},
          {"discount_floor", "12"}},
         R"({"factor": 1.25, "discount": {"percent": 45.5, "flat_percent": 0.5, "floor": 12}})"},
        {{{"factor", "x"}, {"discount_percent", "45.555"}, {"discount_floor", "$5"}},
         R"({"factor": "x", "discount": {"percent": 45.555, "floor": "$5"}})"},
        {{{"factor", "0.90000000000000000001"},
          {"discount_percent", "45.500000000000001"},
          {"discount_floor", "0012.5000000000000000"},
          {"weight_1", "99.99999999999999999"}},
         R"({"factor": "0.90000000000000000001",
             "discount": {"percent": 45.555, "floor": 12.5},
             "lines": [{"class": "70", "weight": 0.5}]})"},
        {{{"surcharge_low_percent", "1"},
          {"surcharge_high_percent", "2.5"},
          {"surcharge_break_index", "3"}},
         R"({"surcharge": {"low_percent": 1, "high_percent": 2.5, "break_index": 3}})"},
        {{{"surcharge_low_percent", "1000"}}, R"({"surcharge": {"low_percent": 1000}})"},
    };
    for (const auto& [cells, json] : cases) EXPECT_EQ(FromCells(cells), FromJson(json)) << json;
}

TEST(Rows, AHeaderThatWouldLoseAColumnIsRefused) {
    const std::string wanted = "origin_zip,destination_zip,class_1,weight_1";
    const struct {
        std::string header;
        Texts allowed;
        std::string answer;  // The columns that pass, or a part of the complaint.
    } cases[] = {
        {"\xEF\xBB\xBF" + wanted + "\r\n", {}, ""},
        {wanted + ", carrier ,date,weight,zip,city,class,cost_center,origin_county,profit,Service,"
                  "destination_date,state,rate,\"a;b\"",
         {},
         "carrier|date|weight|zip|city|class|cost_center|origin_county|profit|Service|"
         "destination_date|state|rate|a;b"},
        {wanted + ",discont_percent", {}, "\"discount_percent\" is most likely meant"},
        {wanted + ",discont_percent", {"discont_percent"}, "discont_percent"},
        {wanted + ",Discount %", {}, "\"discount_percent\""},
        {wanted + ",discount", {}, "\"discount_percent\""},
        {wanted + ",floor", {}, "\"discount_floor\""},
        {wanted + ",dest_state", {}, "\"destination_state\""},
        {wanted + ",Id", {}, "\"id\""},
        {wanted + ",tarfif", {}, "\"tariff\""},
        {wanted + ",wieght_2", {}, "\"weight_2\""},
        {wanted + ",weight2", {}, "\"weight_2\""},
        {wanted + ",Class 02", {}, "\"class_2\""},
        {wanted + ",class_9", {}, "lines 1 to 8, the last is \"class_8\""},
        {wanted + ",weight_0", {}, "the last is \"weight_8\""},
        {wanted + ",note,note", {}, "\"note\" is there twice"},
        {"origin_zip,class_1", {}, "destination_zip, weight_1"},
        {"origin_zip;destination_zip;class_1;weight_1", {}, "semicolons"},
        {"origin_zip\tdestination_zip\tclass_1\tweight_1", {}, "tabs"},
        {wanted + ",\"note", {}, "not closed"},
        {wanted + ",\xFF", {}, "UTF-8"},
    };
    for (const auto& [header, allowed, answer] : cases) {
        std::string found;
        try {
            found = Joined(MakeCsvReader(header, allowed)->passed());
            EXPECT_EQ(found, answer) << header;
        } catch (const std::runtime_error& error) {
            found = error.what();
            EXPECT_NE(found.find(answer), found.npos) << header << ": " << found;
            EXPECT_FALSE(answer.empty()) << header << ": " << found;
        }
    }
}

TEST(Rows, ARowThatDoesNotFitItsHeaderIsRefusedWhole) {
    const auto reader = MakeCsvReader("note,origin_zip,destination_zip,class_1,weight_1", {});
    const std::string row = "n,30303,60601,70,";
    const std::pair<std::string, std::string> cases[] = {
        {row + "500\r\n", ""},
        {row + "500,9", "the header has 5 columns, the row 6"},
        {"", "the header has 5 columns, the row 1"},
        {row + "\"500", "not closed"},
        {row + std::string("5\0", 2), "zero byte"},
        {row + "\xC3", "UTF-8"},
        {row + std::string(ShipmentReader::kLongestRow, '5'), "1 MiB"}};
    for (const auto& [text, complaint] : cases) {
        Shipment shipment;
        Texts passed;
        const Refusals refusals = reader->Read(text, shipment, passed);
        ASSERT_EQ(refusals.size(), complaint.empty() ? 0u : 1u) << complaint;
        for (const Refusal& refusal : refusals) {
            EXPECT_NE(refusal.text.find(complaint), std::string::npos) << refusal.text;
        }
        EXPECT_EQ(passed, Texts{complaint.empty() ? "n" : ""}) << complaint;
    }
}

Bill SomeBill() {
    Bill bill;
    bill.id = "A\"1\"";
    bill.description = "x, y\u00e9\x01";
    bill.tariff = "SMPLNATL";
    bill.date = "01-02-2024";
    bill.rate_code = "000001";
    bill.origin = {"30303", "Atlanta", "GA", "", ""};
    bill.destination = {"60601", "", "IL", "CHI", "D"};
    bill.transit_days = TransitDays{2, std::nullopt, 0};
    bill.lines = {{"70", "60", 1205, "31.20", "375.96"}, {"77", "77", 695, "40.00", "278.00"}};
    bill.deficit = {"", "", 100, "30.00", "30.00"};
    bill.total_weight = 1900, bill.billed_weight = 2000;
    bill.gross = "683.96", bill.discount_percent = "45.50", bill.discount_amount = "311.20";
    bill.surcharge = "0.05", bill.minimum = "99.00", bill.net = "372.76", bill.total_due = "372.81";
    bill.single_shipment_charges = {
        {"L5C", 0, 900, false}, {"M2M", 2000, 684, true}, {"M5M", 5000, 700, false}};
    bill.notes = {"one", "two"};
    return bill;
}

Texts Fields(const std::string& row) {
    Texts fields;
    EXPECT_EQ(SplitCsvRow(row, fields), "");
    return fields;
}

TEST(Rows, EveryFormSaysWhatCameOfTheRow) {
    const Bill bill = SomeBill();
    const Refusals refusals = {{"lines[0].class", "Invalid Class.", 105, "71", {"70", "60"}},
                               {"factor", "too high", -1}};
    const Row rows[] = {{1, bill.id, bill, {"77", "x,y"}},
                        {2, "", refusals, {"", "z"}},
                        {3, "A3", Failure{"the engine ended the program"}, {}}};
    const auto ndjson = MakeNdjsonForm({"cost_center", "Status"});
    const auto csv = MakeCsvForm({"cost_center", "Status"});
    const Texts names = Fields(csv->Header());
    EXPECT_EQ(std::set(names.begin(), names.end()).size(), names.size()) << "a name twice";
    const std::pair<const char*, std::array<const char*, 3>> cells[] = {
        {"row", {"1", "2", "3"}},
        {"id", {"A\"1\"", "", "A3"}},
        {"status", {"rated", "refused", "failed"}},
        {"cost_center", {"77", "", ""}},
        {"input_Status", {"x,y", "z", ""}},
        {"tariff_date", {"2024-01-02", "", ""}},
        {"transit_days_standard", {"2", "", ""}},
        {"transit_days_guaranteed", {"", "", ""}},
        {"rated_as_1", {"60", "", ""}},
        {"charge_2", {"278.00", "", ""}},
        {"charge_8", {"", "", ""}},
        {"deficit_charge", {"30.00", "", ""}},
        {"weight_break", {"2000", "", ""}},
        {"total_due", {"372.81", "", ""}},
        {"notes", {"one; two", "", ""}},
        {"code", {"", "105", ""}},
        {"place", {"", "lines[0].class", ""}},
        {"reason",
         {"",
          "lines[0].class \"71\": Invalid Class. (code 105); possible: 70, 60; factor: too high",
          "the engine ended the program"}}};
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        std::string line;
        csv->Append(line, rows[i]);
        const Texts fields = Fields(line);
        ASSERT_EQ(fields.size(), names.size()) << line;
        for (const auto& [name, texts] : cells) {
            const auto column = std::find(names.begin(), names.end(), name) - names.begin();
            ASSERT_LT(column, names.size()) << name;
            EXPECT_EQ(fields[static_cast<std::size_t>(column)], texts[i]) << name;
        }
        line.clear();
        ndjson->Append(line, rows[i]);
        const auto json = nlohmann::ordered_json::parse(line);
        EXPECT_EQ(json.dump() + "\n", line);
        EXPECT_EQ(json["row"], rows[i].number);
        EXPECT_EQ(json["columns"]["cost_center"], i == 0 ? "77" : "");
        EXPECT_EQ(json.value("bill", nlohmann::ordered_json()), i == 0 ? BillJson(bill) : nullptr);
        EXPECT_EQ(json.value("refusals", nlohmann::ordered_json()),
                  i == 1 ? RefusalsJson(refusals, "")["refusals"] : nullptr);
    }
    std::string indented;
    JsonWriter writer(indented, JsonWriter::kIndented);
    WriteJson(writer, bill);
    EXPECT_EQ(indented, BillJson(bill).dump(2));
}

}  // namespace
}  // namespace cwt
