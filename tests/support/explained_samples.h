// Explanations of sample shipments, on data that a test may change.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <string>

#include "bill/explanation.h"
#include "reference/samples/sample_data.h"
#include "session/messages.h"
#include "session/session.h"
#include "shipment/shipment_file.h"

namespace cwt {

/// The sample data in a directory that is removed afterwards.
class ExplainedSamples : public ::testing::Test {
 protected:
    ExplainedSamples() {
        CollectMessageBoxes();
        do {
            directory_ = std::filesystem::temp_directory_path() /
                         ("hundredweight-" + std::to_string(std::random_device()()));
        } while (!std::filesystem::create_directory(directory_));
        hundredweight::samples::WriteSampleData(directory_);
    }
    ~ExplainedSamples() override { std::filesystem::remove_all(directory_); }

    std::string Content(const std::string& name) const {
        std::ifstream file(directory_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    void Write(const std::string& name, const std::string& content) const {
        std::ofstream(directory_ / name, std::ios::binary) << content;
    }

    /// Writes bytes over a file of the data, from an offset on.
    void Put(const std::string& name, std::size_t at, const std::string& bytes) const {
        std::string content = Content(name);
        content.replace(at, bytes.size(), bytes);
        Write(name, content);
    }

    /// A record of a file that does not change, from 1.
    std::string Record(const std::string& name, int number, std::size_t size) const {
        std::string& content = read_[name];
        if (content.empty()) content = Content(name);
        const std::size_t at = static_cast<std::size_t>(number - 1) * size;
        EXPECT_LE(at + size, content.size()) << name << " record " << number;
        return content.substr(std::min(at, content.size()), size);
    }

    /// A sample shipment with changes.
    Shipment Sample(const std::string& name, const std::string& changes = "{}") const {
        nlohmann::json json = nlohmann::json::parse(Content("shipments/" + name + ".json"));
        json.merge_patch(nlohmann::json::parse(changes));
        Write("changed.json", json.dump());
        Shipment shipment;
        EXPECT_TRUE(ReadShipmentFile((directory_ / "changed.json").string(), shipment).empty());
        return shipment;
    }

    std::filesystem::path directory_;

 private:
    mutable std::map<std::string, std::string> read_;  ///< Files that records were asked of.
};

inline std::string FigureOf(const Statement& statement, const std::string& name) {
    for (const Figure& figure : statement.figures) {
        if (figure.name == name) return figure.text;
    }
    return "none";
}

/// What the bill has for a figure of a topic; nothing for figures of the data alone.
inline std::map<std::string, std::string> FiguresOfBill(const Bill& bill) {
    std::map<std::string, std::string> figures = {
        {"origin.zip", bill.origin.zip},
        {"origin.state", bill.origin.state},
        {"destination.zip", bill.destination.zip},
        {"destination.state", bill.destination.state},
        {"guide.origin_terminal", bill.origin.terminal},
        {"guide.destination_service", bill.destination.service},
        {"tariff.name", bill.tariff},
        {"tariff.rate_code", bill.rate_code},
        {"deficit.weight", std::to_string(bill.deficit.weight)},
        {"gross.gross_charge", bill.gross},
        {"discount.percent", bill.discount_percent},
        {"discount.amount", bill.discount_amount},
        {"minimum.minimum_charge", bill.minimum},
        {"net.net_charge", bill.net},
        {"surcharge.surcharge", bill.surcharge},
        {"due.total_due", bill.total_due}};
    if (bill.deficit.weight != 0) {
        figures["deficit.rate"] = bill.deficit.rate;
        figures["deficit.charge"] = bill.deficit.charge;
    }
    for (std::size_t i = 0; i < bill.lines.size(); ++i) {
        const std::string line = "line" + std::to_string(i + 1) + ".";
        figures[line + "class"] = bill.lines[i].class_code;
        figures[line + "rated_as"] = bill.lines[i].rated_as;
        figures[line + "weight"] = std::to_string(bill.lines[i].weight);
        figures[line + "rate"] = bill.lines[i].rate;
        figures[line + "charge"] = bill.lines[i].charge;
    }
    return figures;
}

/// Takes every figure of the bill off `wanted` that the explanation has, expecting it to be equal.
inline void ExpectFigures(const Explanation& explanation,
                          std::map<std::string, std::string> wanted) {
    for (const Statement& statement : explanation) {
        const std::string line = FigureOf(statement, "line");
        const std::string topic = statement.topic + (line == "none" ? "" : line) + ".";
        for (const Figure& figure : statement.figures) {
            const auto of_bill = wanted.find(topic + figure.name);
            if (of_bill == wanted.end()) continue;
            EXPECT_EQ(figure.text, of_bill->second) << of_bill->first;
            wanted.erase(of_bill);
        }
    }
    EXPECT_TRUE(wanted.empty()) << wanted.begin()->first;
}

}  // namespace cwt
