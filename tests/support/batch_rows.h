// Rows as a batch writes them, with every kind of change between two tariffs.
#pragma once

#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace hundredweight {

using Json = nlohmann::ordered_json;

/// A bill of one line, from Atlanta to Chicago unless told.
struct BillFigures {
    const char *charge, *percent, *discount, *net, *surcharge, *due;
    const char* minimum = "50.00";
    int weight = 1000, deficit = 0;
    const char* deficit_charge = "20.00";
    const char *gross = charge, *rated_as = "70", *origin = "30303", *destination = "60601";
};

inline Json Rated(int row, const std::string& id, const BillFigures& figures) {
    const auto point = [](const char* zip) {
        return Json{{"zip", zip}, {"city", nullptr}, {"state", "GA"}};
    };
    Json deficit;
    if (figures.deficit != 0) {
        deficit = {
            {"weight", figures.deficit}, {"rate", "20.00"}, {"charge", figures.deficit_charge}};
    }
    Json breaks = Json::array();
    for (const int lowest : {1, 1000, 2000}) {
        breaks.push_back(
            {{"label", "x"}, {"weight", lowest}, {"amount", 9}, {"raised_to_floor", true}});
    }
    const Json bill = {
        {"schema", "hundredweight/bill/1"},
        {"currency", "USD"},
        {"tariff", {{"name", "SMPLNATL"}, {"date", "2025-01-06"}}},
        {"origin", point(figures.origin)},
        {"destination", point(figures.destination)},
        {"lines",
         {{{"class", "70"},
           {"rated_as", figures.rated_as},
           {"weight", figures.weight},
           {"charge", figures.charge}}}},
        {"deficit", deficit},
        {"total_weight", figures.weight},
        {"billed_weight", figures.weight + figures.deficit},
        {"gross_charge", figures.gross},
        {"discount", {{"percent", figures.percent}, {"amount", figures.discount}}},
        {"net_charge", figures.net},
        {"minimum_charge", figures.minimum},
        {"surcharge", figures.surcharge},
        {"total_due", figures.due},
        {"charges_by_break", {{"minimum", breaks}, {"single_shipment", Json::array()}}}};
    return {{"schema", "hundredweight/row/1"},
            {"row", row},
            {"id", id},
            {"status", "rated"},
            {"bill", bill}};
}

inline Json Refused(int row, const std::string& id, const char* written) {
    return {{"schema", "hundredweight/row/1"},
            {"row", row},
            {"id", id},
            {"status", "refused"},
            {"refusals",
             {{{"place", "lines[0].class"},
               {"code", 105},
               {"text", "Invalid Class."},
               {"written", written},
               {"alternatives", {"70", "85"}}}}}};
}

inline Json Failed(int row, const std::string& id) {
    return {{"schema", "hundredweight/row/1"},
            {"row", row},
            {"id", id},
            {"status", "failed"},
            {"reason", "the engine ended the program"}};
}

inline std::string Lines(const std::vector<Json>& rows) {
    std::string text;
    for (const Json& row : rows) text += row.dump() + '\n';
    return text;
}

/// The same rows as CSV, with a column of the sender's own.
inline std::string Csv(const std::vector<Json>& rows) {
    std::string names =
        "row,id,status,cost_center,currency,tariff,tariff_date,origin_zip,destination_zip";
    for (int i = 1; i <= 8; ++i)
        names += fmt::format(",class_{0},rated_as_{0},weight_{0},charge_{0}", i);
    names +=
        ",deficit_weight,deficit_charge,total_weight,billed_weight,weight_break,gross_charge,"
        "discount_percent,discount_amount,net_charge,minimum_charge,surcharge,total_due,reason\r\n";
    for (const Json& row : rows) {
        std::string id = row["id"];
        for (std::size_t at = 0; (at = id.find('"', at)) != id.npos; at += 2) id.insert(at, 1, '"');
        names += fmt::format("{},\"{}\",{},own,", row["row"].dump(), id,
                             row["status"].get<std::string>());
        if (!row.contains("bill")) {
            names += std::string(49, ',') +
                     (row.contains("reason")
                          ? row["reason"].get<std::string>()
                          : fmt::format("\"lines[0].class \"\"{}\"\": Invalid Class. (code 105); "
                                        "possible: 70, 85\"",
                                        row["refusals"][0]["written"].get<std::string>())) +
                     "\r\n";
            continue;
        }
        const Json& bill = row["bill"];
        const auto text = [](const Json& value) {
            return value.is_string() ? value.get<std::string>() : value.dump();
        };
        const int billed = bill["billed_weight"];
        names += fmt::format("USD,{},{},{},{},", text(bill["tariff"]["name"]),
                             text(bill["tariff"]["date"]), text(bill["origin"]["zip"]),
                             text(bill["destination"]["zip"]));
        for (const auto& [key, value] : bill["lines"][0].items()) names += text(value) + ",";
        names += std::string(28, ',');
        names += bill["deficit"].is_null()
                     ? ","
                     : text(bill["deficit"]["weight"]) + "," + text(bill["deficit"]["charge"]);
        names += fmt::format(",{},{},{}", text(bill["total_weight"]), billed,
                             billed >= 2000 ? 2000 : 1000);
        for (const Json* value :
             {&bill["gross_charge"], &bill["discount"]["percent"], &bill["discount"]["amount"],
              &bill["net_charge"], &bill["minimum_charge"], &bill["surcharge"], &bill["total_due"]})
            names += "," + text(*value);
        names += ",\r\n";
    }
    return names;
}

inline const std::vector<Json> kOld = {
    Rated(1, "plain", {"100.00", "10.00", "10.00", "90.00", "9.00", "99.00"}),
    Rated(2, "at, \"minimum\"", {"40.00", "10.00", "4.00", "50.00", "0.00", "50.00"}),
    Rated(3, "deficit",
          {.charge = "300.00",
           .percent = "0.00",
           .discount = "0.00",
           .net = "320.00",
           .surcharge = "0.00",
           .due = "320.00",
           .weight = 1900,
           .deficit = 100,
           .gross = "320.00",
           .origin = "M5H2N2",
           .destination = "64000M"}),
    Rated(4, "discount", {"100.00", "10.00", "10.00", "90.00", "0.00", "90.00"}),
    Rated(5, "stays", {"25.00", "0.00", "0.00", "25.00", "0.00", "25.00", "0.00"}),
    Rated(6, "lost", {"77.77", "0.00", "0.00", "77.77", "0.00", "77.77"}),
    Refused(7, "won", "71"),
    Refused(8, "otherwise", "71"),
    Failed(9, "failed"),
    Rated(10, "free", {"0.00", "0.00", "0.00", "0.00", "0.00", "0.00", "0.00"})};

inline const std::vector<Json> kNew = {
    Rated(1, "plain", {"104.90", "10.00", "10.49", "94.41", "9.44", "103.85"}),
    Rated(2, "at, \"minimum\"", {"60.00", "10.00", "6.00", "54.00", "0.00", "54.00"}),
    Rated(3, "deficit",
          {.charge = "310.00",
           .percent = "0.00",
           .discount = "0.00",
           .net = "310.00",
           .surcharge = "0.00",
           .due = "310.00",
           .weight = 1900,
           .origin = "M5H2N2",
           .destination = "64000M"}),
    Rated(4, "discount",
          {.charge = "100.00",
           .percent = "12.00",
           .discount = "12.00",
           .net = "88.00",
           .surcharge = "0.00",
           .due = "88.00",
           .rated_as = "60"}),
    kOld[4],
    Refused(6, "lost", "70"),
    Rated(7, "won", {"33.00", "0.00", "0.00", "33.00", "0.00", "33.00"}),
    Refused(8, "otherwise", "72"),
    kOld[8],
    Rated(10, "free", {"5.00", "0.00", "0.00", "5.00", "0.00", "5.00", "0.00"})};

}  // namespace hundredweight
