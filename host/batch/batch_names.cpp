#include "batch/batch_names.h"

#include <filesystem>
#include <optional>
#include <stdexcept>

#include "batch/row_database.h"
#include "files/packing.h"
#include "shipment/shipment_file.h"
#include "text/path_text.h"

namespace cwt {
namespace {

struct Ending {
    const char* text;
    Form form;
};

constexpr Ending kEndings[] = {{"ndjson", Form::kNdjson},    {"jsonl", Form::kNdjson},
                               {"csv", Form::kCsv},          {"sqlite", Form::kDatabase},
                               {"sqlite3", Form::kDatabase}, {"db", Form::kDatabase}};

std::optional<Form> FormOf(const std::string& ending) {
    for (const Ending& known : kEndings) {
        if (ending == known.text) return known.form;
    }
    return std::nullopt;
}

std::optional<Form> FormOfName(const std::string& name) {
    std::filesystem::path path = PathOf(name);
    if (PackingOfName(name) != Packing::kNone) path = path.stem();
    const std::string ending = PathText(path.extension());
    return ending.empty() ? std::nullopt : FormOf(ending.substr(1));
}

[[noreturn]] void AskFor(const std::string& name, const char* option) {
    throw std::runtime_error(name + ": the name does not tell the form; " + option + " does");
}

}  // namespace

Form InputForm(const std::string& name, const std::string& told) {
    const auto form = told.empty() ? FormOfName(name) : FormOf(told);
    if (!form) AskFor(name == kStandardInput ? "standard input" : name, "--from ndjson or csv");
    if (*form == Form::kDatabase) {
        throw std::runtime_error(name + ": rows are read from NDJSON or CSV");
    }
    return *form;
}

Form OutputForm(const std::string& name, const std::string& told, Form otherwise) {
    if (name.empty() && told.empty()) return otherwise;
    const auto form = told.empty() ? FormOfName(name) : FormOf(told);
    if (!form) AskFor(name, "--to ndjson, csv or sqlite");
    if (*form != Form::kDatabase) return *form;
    if (!HasDatabase()) throw std::runtime_error("this build has no SQLite");
    if (name.empty()) throw std::runtime_error("--to sqlite: a database is written with -o FILE");
    if (PackingOfName(name) != Packing::kNone) {
        throw std::runtime_error(name + ": a database is not packed");
    }
    return *form;
}

std::vector<std::string> FilesOfOutput(const std::string& output) {
    if (output.empty()) return {};
    return {output, output + ".partial", output + ".journal"};
}

bool IsSameFile(const std::string& a, const std::string& b) {
    std::error_code error;
    return std::filesystem::equivalent(PathOf(a), PathOf(b), error) ||
           weakly_canonical(absolute(PathOf(a))) == weakly_canonical(absolute(PathOf(b)));
}

std::string AgainstName(const std::string& output) {
    std::filesystem::path path = PathOf(output);
    std::string endings;
    if (PackingOfName(output) != Packing::kNone) {
        endings = PathText(path.extension());
        path.replace_extension();
    }
    endings = PathText(path.extension()) + endings;
    path.replace_extension();
    return PathText(path) + ".against" + endings;
}

}  // namespace cwt
