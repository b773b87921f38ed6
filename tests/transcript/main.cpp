// Writes down all that the library makes of the same data, for a comparison between targets: the
// sample data themselves, the bill of every shipment as text, JSON and a batch's rows, its
// explanation, the record afterwards, and the files written for users.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "batch/row.h"
#include "bill/record_text.h"
#include "reference/samples/generated_shipments.h"
#include "reference/samples/sample_data.h"
#include "server/desk.h"
#include "session/messages.h"
#include "session/session.h"
#include "shipment/shipment_file.h"
#include "transcript/written_files.h"

namespace {

namespace fs = std::filesystem;

constexpr int kGenerated = 300;
constexpr const char* kMark = "transcript";  ///< A file by which a transcript is known.

/// The rows of a batch in one of its forms.
struct Rows {
    std::unique_ptr<cwt::RowForm> form;
    std::string text = form->Header();
};

struct Totals {
    int rated = 0;
    std::set<std::string> refusals;
    uint64_t row = 0;
    Rows ndjson{cwt::MakeNdjsonForm({"file"})};
    Rows csv{cwt::MakeCsvForm({"file"})};

    void AddRow(std::variant<cwt::Bill, cwt::Refusals, cwt::Failure> outcome,
                const std::string& file) {
        const cwt::Row written{++row, "", std::move(outcome), {file}};
        for (Rows* rows : {&ndjson, &csv}) rows->form->Append(rows->text, written);
    }
};

void Write(const fs::path& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

cwt::Outcome Rate(cwt::Session& session, const fs::path& shipment, int request_code) {
    cwt::Shipment read;
    cwt::Refusals refusals = cwt::ReadShipmentFile(shipment.string(), read);
    if (!refusals.empty()) return refusals;
    return session.Rate(read, request_code);
}

/// A bill with its notes, or the refusals, as text.
std::string OutcomeText(const cwt::Outcome& outcome) {
    std::string text;
    if (const auto* bill = std::get_if<cwt::Bill>(&outcome)) {
        for (const std::string& note : bill->notes) text += note + '\n';
        return text + cwt::BillText(*bill);
    }
    for (const cwt::Refusal& refusal : std::get<cwt::Refusals>(outcome)) {
        text += cwt::RefusalText(refusal) + '\n';
    }
    return text;
}

/// Writes why the bill says what it says, if the shipment can be read and rated.
void WriteExplanation(cwt::Session& session, const fs::path& shipment, int request_code) {
    cwt::Shipment read;
    if (!cwt::ReadShipmentFile(shipment.string(), read).empty()) return;
    const cwt::ExplainedOutcome outcome = session.Explain(read, request_code);
    if (const auto* explained = std::get_if<cwt::ExplainedBill>(&outcome)) {
        Write(fs::path(shipment).replace_extension(".explained.json"),
              cwt::ExplanationDocument(explained->bill, explained->explanation));
    }
}

/// Rates a shipment in a session of its own, and writes what came of it to files beside it. Result:
/// the text of it.
std::string Rate(const fs::path& shipment, const fs::path& data, int request_code, Totals& totals) {
    const auto beside = [&](const char* extension) {
        return fs::path(shipment).replace_extension(extension);
    };
    cwt::Session session({.data = data});
    const cwt::Outcome outcome = Rate(session, shipment, request_code);
    std::string text = OutcomeText(outcome);
    if (const auto* bill = std::get_if<cwt::Bill>(&outcome)) {
        Write(beside(".bill"), text);
        Write(beside(".bill.json"), cwt::BillJson(*bill).dump(2));
        ++totals.rated;
        totals.AddRow(*bill, shipment.filename().string());
    } else {
        Write(beside(".refusal"), text);
        Write(beside(".refusal.json"),
              cwt::RefusalsJson(std::get<cwt::Refusals>(outcome), "").dump(2));
        totals.refusals.insert(text);
        totals.AddRow(std::get<cwt::Refusals>(outcome), shipment.filename().string());
    }
    Write(beside(".record"), cwt::RecordText(session.context()));
    WriteExplanation(session, shipment, request_code);
    return text;
}

struct RatedAlone {
    fs::path shipment;
    int request_code;
    std::string text;
};

/// In one session, whatever came before it, each shipment gets the bill that it got alone.
void RateTogether(std::vector<RatedAlone> shipments, const fs::path& data) {
    constexpr int kRounds = 3;
    cwt::Session session({.data = data});
    std::minstd_rand random;
    for (int round = 0; round < kRounds; ++round) {
        std::shuffle(shipments.begin(), shipments.end(), random);
        for (const auto& [shipment, request_code, text] : shipments) {
            if (OutcomeText(Rate(session, shipment, request_code)) == text) continue;
            throw std::runtime_error(shipment.string() + " depends on what was rated before it");
        }
    }
}

/// Lets the command print what came of a shipment in every form, where the shipment is.
void Print(const fs::path& cwt, const fs::path& shipment) {
    const fs::path before = fs::current_path();
    fs::current_path(shipment.parent_path());
    const std::string file = shipment.filename().string();
    for (const std::string form : {"", "--json", "--record", "--explain"}) {
        const std::string out = file + ".printed" + form;
        std::system(
            (cwt.string() + " rate " + file + " " + form + " >" + out + " 2>" + out + ".errors")
                .c_str());
    }
    fs::current_path(before);
}

/// Lets the command rate rows, in both forms of text.
void PrintBatch(const fs::path& cwt, const fs::path& directory) {
    const fs::path before = fs::current_path();
    fs::current_path(directory);
    std::string rows;
    hundredweight::samples::WriteGeneratedRows(kGenerated,
                                               [&](const std::string& row) { rows += row; });
    Write("batch.in.ndjson", rows);
    for (const std::string out : {"batch.ndjson", "batch.csv"}) {
        std::system((cwt.string() + " batch batch.in.ndjson -o " + out + " 2>batch.log").c_str());
        fs::remove(out + ".journal");  // It tells where the data are.
    }
    fs::remove("batch.log");  // It tells the seconds.
    fs::current_path(before);
}

/// What a rating service answers about the samples.
void WriteDeskAnswers(const fs::path& directory) {
    cwt::Session session({.data = directory});
    nlohmann::ordered_json answers = nlohmann::ordered_json::array();
    const auto ask = [&](const cwt::DeskRequest& request) {
        answers.push_back(nlohmann::ordered_json::parse(cwt::AnswerRequest(session, request).body));
    };
    std::set<fs::path> shipments;
    for (const auto& entry : fs::directory_iterator(directory / "shipments")) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() == ".json" && name.find('.') == name.rfind('.')) {
            shipments.insert(entry.path());
        }
    }
    for (const fs::path& shipment : shipments) {
        std::ifstream stream(shipment, std::ios::binary);
        const std::string body(std::istreambuf_iterator<char>(stream), {});
        for (const char* route : {"rate", "check", "curve"}) ask({route, {}, body});
        ask({"rate", {{"explain", "1"}}, body});
    }
    ask({"rate", {}, "[]"});
    ask({"profiles", {}, {}});
    for (const char* name : {"Northeast", "Northeasd"}) ask({"profile", {{"name", name}}, {}});
    for (const char* tariff : {"SMPLNATL", "SMPLFAK1", "SMPLNATX", "X"}) {
        ask({"classes", {{"tariff", tariff}}, {}});
    }
    ask({"classes", {}, {}});
    for (const char* code : {"30339", "90012", "m5h 2n2", "00000", "x"}) {
        for (const char* route : {"state", "cities"}) ask({route, {{"code", code}}, {}});
    }
    Write(directory / "desk.json", answers.dump(1));
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
    std::vector<RatedAlone> rated;
    for (const char* name : {"shipments", "generated"}) {
        std::set<fs::path> shipments;
        for (const auto& entry : fs::directory_iterator(directory / name)) {
            shipments.insert(entry.path());
        }
        int request_code = 0;
        for (const fs::path& shipment : shipments) {
            const std::string text = Rate(shipment, directory, request_code % 100, totals);
            rated.push_back({shipment, request_code++ % 100, text});
            if (name == std::string("shipments")) Print(cwt, shipment);
        }
    }
    totals.AddRow(cwt::Failure{"the engine ended the program"}, "");
    Write(directory / "rows.ndjson", totals.ndjson.text);
    Write(directory / "rows.csv", totals.csv.text);
    RateTogether(rated, directory);
    WriteDeskAnswers(directory);
    PrintBatch(cwt, directory);
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
