#include "batch/journal.h"

#include <fmt/core.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <vector>

#include "platform/system.h"
#include "text/path_text.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

/// The whole lines of a file; what a kill has left of one is none.
std::vector<std::string> ReadLines(std::FILE* file) {
    std::vector<std::string> lines;
    std::string line;
    std::rewind(file);
    for (int byte; (byte = std::fgetc(file)) != EOF;) {
        if (byte != '\n') {
            line += static_cast<char>(byte);
            continue;
        }
        lines.push_back(std::move(line));
        line.clear();
    }
    return lines;
}

}  // namespace

std::string Progress::Text() const {
    return Json{{"next_row", next_row},
                {"digest", digest},
                {"output_size", output_size},
                {"tally", tally.Json()}}
        .dump();
}

Progress Progress::FromText(const std::string& text) {
    const Json json = Json::parse(text);
    return {json.at("next_row").get<std::uint64_t>(), json.at("digest").get<std::uint64_t>(),
            json.at("output_size").get<std::uint64_t>(), Tally::FromJson(json.at("tally"))};
}

void RequireSameTerms(const Json& before, const Json& now) {
    for (const auto& [name, value] : now.items()) {
        const Json old = before.value(name, Json());
        if (old == value) continue;
        if (!value.is_object()) {
            throw std::runtime_error(fmt::format("--resume: the run was begun with {} {}, not {}",
                                                 name, old.dump(), value.dump()));
        }
        for (const Json& files : {old, value}) {
            for (const auto& [file, state] : files.items()) {
                if (old.value(file, Json()) == value.value(file, Json())) continue;
                throw std::runtime_error(fmt::format(
                    "--resume: {} is not what it was when the run was begun, and bills of two "
                    "tariffs must not stand in one file",
                    file));
            }
        }
    }
}

Journal::Journal(const std::filesystem::path& path, const Json& terms, bool anew) : path_(path) {
    file_.reset(std::fopen(path.string().c_str(), "a+b"));
    if (!file_) Fail();
    if (!LockFile(file_.get())) {
        throw std::runtime_error(PathText(path) + ": another run is at work on this output");
    }
    if (anew) std::filesystem::resize_file(path_, 0);
    if (!ReadKept(terms)) Append(terms.dump());
}

/// Result: whether there was a journal.
bool Journal::ReadKept(const Json& terms) {
    const std::vector<std::string> lines = ReadLines(file_.get());
    if (lines.empty()) {
        std::filesystem::resize_file(path_, 0);
        return false;
    }
    Json before;
    try {
        before = Json::parse(lines.front());
        RequireSameTerms(before, terms);
        if (lines.size() > 1) kept_ = Progress::FromText(lines.back());
    } catch (const Json::exception&) {
        throw std::runtime_error(PathText(path_) + ": this is no journal of a batch");
    }
    // What a kill has left of a line goes.
    std::uintmax_t size = 0;
    for (const std::string& line : lines) size += line.size() + 1;
    std::filesystem::resize_file(path_, size);
    return true;
}

void Journal::Keep(const Progress& progress) {
    kept_ = progress;
    Append(progress.Text());
}

void Journal::Append(const std::string& line) {
    const std::string text = line + '\n';
    errno = 0;
    std::fseek(file_.get(), 0, SEEK_END);
    if (std::fwrite(text.data(), 1, text.size(), file_.get()) < text.size() ||
        !SyncFile(file_.get())) {
        Fail();
    }
}

void Journal::Remove() {
    file_.reset();
    std::filesystem::remove(path_);
}

void Journal::Fail() const {
    const int reason = errno;
    throw std::runtime_error(PathText(path_) + ": " + std::generic_category().message(reason));
}

}  // namespace cwt
