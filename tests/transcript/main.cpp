// Writes down all that the library makes of the same data, for a comparison between targets: the
// sample data themselves, the bill of every shipment as text and JSON, the record afterwards, and
// the files written for users.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>
#include <string>

#include "bill/freight_bill.h"
#include "bill/record_text.h"
#include "reference/samples/generated_shipments.h"
#include "reference/samples/sample_data.h"
#include "session/failure.h"
#include "session/rating_session.h"
#include "shipment/shipment.h"
#include "transcript/written_files.h"

namespace {

namespace fs = std::filesystem;

constexpr int kGenerated = 300;
constexpr const char* kMark = "transcript";  ///< A file by which a transcript is known.

struct Totals {
    int rated = 0;
    std::set<std::string> refusals;
};

void Write(const fs::path& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

/// Rates a shipment, and writes what came of it to files beside it.
void Rate(const fs::path& shipment, const fs::path& data, int request_code, Totals& totals) {
    const auto beside = [&](const char* extension) {
        return fs::path(shipment).replace_extension(extension);
    };
    cwt::RatingSession session({.data = data});
    try {
        std::string notes;
        for (const std::string& note : session.Rate(cwt::ReadShipment(shipment), request_code)) {
            notes += note + '\n';
        }
        Write(beside(".bill"), notes + cwt::BillText(session.context()));
        Write(beside(".bill.json"), cwt::BillJson(session.context()).dump(2));
        ++totals.rated;
    } catch (const std::runtime_error& refusal) {
        Write(beside(".refusal"), refusal.what() + std::string("\n"));
        totals.refusals.insert(refusal.what());
    }
    Write(beside(".record"), cwt::RecordText(session.context()));
}

/// Lets the command print what came of a shipment in every form, where the shipment is.
void Print(const fs::path& cwt, const fs::path& shipment) {
    const fs::path before = fs::current_path();
    fs::current_path(shipment.parent_path());
    const std::string file = shipment.filename().string();
    for (const std::string form : {"", "--json", "--record"}) {
        const std::string out = file + ".printed" + form;
        std::system(
            (cwt.string() + " rate " + file + " " + form + " >" + out + " 2>" + out + ".errors")
                .c_str());
    }
    fs::current_path(before);
}

void WriteTranscript(const fs::path& directory, const fs::path& cwt) {
    if (fs::exists(directory) && !fs::exists(directory / kMark)) {
        throw std::runtime_error("the directory is there and is no transcript");
    }
    fs::remove_all(directory);
    hundredweight::samples::WriteSampleData(directory);
    Write(directory / kMark, "");
    hundredweight::samples::WriteGeneratedShipments(directory / "generated", kGenerated);
    Totals totals;
    for (const char* name : {"shipments", "generated"}) {
        std::set<fs::path> shipments;
        for (const auto& entry : fs::directory_iterator(directory / name)) {
            shipments.insert(entry.path());
        }
        int request_code = 0;
        for (const fs::path& shipment : shipments) {
            Rate(shipment, directory, request_code++ % 100, totals);
            if (name == std::string("shipments")) Print(cwt, shipment);
        }
    }
    hundredweight::transcript::WriteUserFiles(directory);
    std::printf("%d shipments rated, %zu kinds of refusal\n", totals.rated, totals.refusals.size());
    if (totals.rated < 200 || totals.refusals.size() < 10) {
        throw std::runtime_error("the shipments are too much alike");
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc != 3) throw std::runtime_error("usage: transcript DIRECTORY CWT");
        cwt::CollectMessageBoxes();
        WriteTranscript(fs::absolute(argv[1]), fs::absolute(argv[2]).make_preferred());
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "transcript: %s\n", error.what());
        return 1;
    }
}
