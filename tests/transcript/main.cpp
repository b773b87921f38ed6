// Writes down all that the library makes of the same data, for a comparison between targets: the
// sample data themselves, the bill of every shipment as text and JSON, the record afterwards, and
// the files written for users.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>
#include <string>

#include "failure.h"
#include "freight_bill.h"
#include "rating_session.h"
#include "reference/samples/sample_data.h"
#include "shipment.h"
#include "transcript/generated_shipments.h"
#include "transcript/record_text.h"
#include "transcript/written_files.h"

namespace {

namespace fs = std::filesystem;

struct Totals {
    int rated = 0;
    int refused = 0;
};

void Write(const fs::path& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

/// Rates a shipment, and writes what came of it to files beside it.
void Rate(const fs::path& shipment, const fs::path& data, Totals& totals) {
    const auto beside = [&](const char* extension) {
        return fs::path(shipment).replace_extension(extension);
    };
    cwt::RatingSession session({.data = data});
    try {
        std::string notes;
        for (const std::string& note : session.Rate(cwt::ReadShipment(shipment), 0)) {
            notes += note + '\n';
        }
        Write(beside(".bill"), notes + cwt::BillText(session.context()));
        Write(beside(".bill.json"), cwt::BillJson(session.context()).dump(2));
        ++totals.rated;
    } catch (const cwt::Refused& refusal) {
        std::string complaints;
        for (const std::string& complaint : refusal.complaints()) complaints += complaint + '\n';
        Write(beside(".refusal"), complaints);
        ++totals.refused;
    }
    Write(beside(".record"), hundredweight::transcript::RecordText(session.context()));
}

void WriteTranscript(const fs::path& directory) {
    fs::remove_all(directory);
    hundredweight::samples::WriteSampleData(directory);
    hundredweight::transcript::WriteGeneratedShipments(directory / "generated");
    Totals totals;
    for (const char* name : {"shipments", "generated"}) {
        std::set<fs::path> shipments;
        for (const auto& entry : fs::directory_iterator(directory / name)) {
            shipments.insert(entry.path());
        }
        for (const fs::path& shipment : shipments) Rate(shipment, directory, totals);
    }
    hundredweight::transcript::WriteUserFiles(directory);
    std::printf("%d shipments rated, %d refused\n", totals.rated, totals.refused);
    if (totals.rated < 200) throw std::runtime_error("too few shipments were rated");
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc != 2) throw std::runtime_error("usage: transcript DIRECTORY");
        cwt::CollectMessageBoxes();
        WriteTranscript(argv[1]);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "transcript: %s\n", error.what());
        return 1;
    }
}
