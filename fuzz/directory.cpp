// The data directory of a run.
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "harness.h"

namespace hundredweight::fuzz {
namespace fs = std::filesystem;
namespace {

fs::path MakeDirectory() {
    std::error_code none;
    const bool in_memory = std::getenv("TMPDIR") == nullptr && fs::is_directory("/dev/shm", none);
    const fs::path parent = in_memory ? "/dev/shm" : fs::temp_directory_path();
    std::string path = (parent / "hundredweight-fuzz-XXXXXX").string();
    if (mkdtemp(path.data()) == nullptr) std::abort();
    return path;
}

void WriteContent(const fs::path& path, std::string_view content) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file < 0) return;  // A mutated name may be no file's.
    if (write(file, content.data(), content.size()) < 0) std::abort();
    close(file);
}

}  // namespace

DataDirectory::DataDirectory(samples::FileContents files)
    : path_(MakeDirectory()), files_(std::move(files)) {
    for (const auto& [name, content] : files_) WriteContent(path_ / name, content);
    fs::create_directory(path_ / "user");
    fs::current_path(path_ / "user");
}

DataDirectory::~DataDirectory() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

void DataDirectory::Put(const Parts& parts) {
    for (const auto& [name, content] : parts) {
        if (name.starts_with('-') && files_.contains(name.substr(1))) {
            changed_.insert(name.substr(1));
            fs::remove(path_ / name.substr(1));
        } else if (files_.contains(name)) {
            changed_.insert(name);
            WriteContent(path_ / name, content);
        } else if (name.starts_with("user/") && name.find('/', 5) == std::string::npos) {
            WriteContent(path_ / name, content);
        }
    }
}

void DataDirectory::Restore() {
    for (const std::string& name : changed_) WriteContent(path_ / name, files_.at(name));
    changed_.clear();
    for (const fs::path& each : {path_, path_ / "user"}) {
        for (const auto& entry : fs::directory_iterator(each)) {
            const std::string name = entry.path().filename();
            if (each == path_ && (files_.contains(name) || name == "user")) continue;
            fs::remove_all(entry);
        }
    }
}

Parts DataDirectory::FileParts() const {
    Parts parts;
    for (const auto& [name, content] : files_) {
        parts.insert(parts.end(), {{name, content}, {"-" + name, ""}});
    }
    return parts;
}

samples::FileContents DataDirectory::UserFiles() const {
    samples::FileContents files;
    for (const auto& entry : fs::directory_iterator(path_ / "user")) {
        std::ifstream file(entry.path(), std::ios::binary);
        files[entry.path().filename()] = {std::istreambuf_iterator<char>(file), {}};
    }
    return files;
}

samples::FileContents PartnerFiles() {
    return {
        {"tolvex-tariffs.txt",
         "SMPLNATL | 01-06-2025 | 100 70 50 | 1 500 1000 2000\n"
         "SMPLFAK1 | 01-06-2025 | FAK | 1 500\n"
         "BureauE1 | 01-06-2025 | 100 70 | 1 500\n"},
        {"tolvex-rates.txt",
         "SMPLNATL | 2041 | 100 | 88.40 74.20 62.00 52.10\n"
         "SMPLNATL | 2041 | 70 | 65.00 54.50 45.60 38.30\n"
         "SMPLNATL | 2041 | 50 | 49.90 41.90 35.00 29.40\n"
         "SMPLFAK1 | 3010 | FAK | 66.60 56.40\n"},
        {"tolvex-lanes.txt",
         "SMPLNATL | 300-319 | 600-629 | 2041 | 95.00 | 12.50\n"
         "SMPLNATL | 600-629 | K0A-P9Z | 2041 | 138.00 | 25.00\n"
         "SMPLFAK1 | 300-319 | 600-629 | 3010 | 89.00 | 0.00\n"},
        {"tolvex-points.txt",
         "30303 | Atlanta | GA | D\n60521 | Hinsdale | IL | D\n60521 | Oak Brook | IL | D\n"
         "60601 | Chicago | IL | D\nM5H2N2 | Toronto | ON | D\n"},
        {"tolvex-states.txt", "300-319 | GA\n600-620 | IL\nK0A-P9Z | ON\n"},
        {"servgd-terminals.txt",
         "Atlanta Terminal | ATL01 | 1250 Moreland Avenue SE | Gate 3 | Atlanta | GA | 30316-3302 |"
         " 404-555-0120 | 800-555-0120 | 404-555-0121 | Mon-Fri | Dana Whitfield | a@b.example\n"
         "Toronto Terminal | TOR01 | | | Toronto | ON | M5A 1A6 | | | | | |\n"
         "Served on request | XXX01 | | | | | | | | | | |\n"},
        {"servgd-points.txt", "300-303 | ATL01 | D\n600-608 | XXX01 | I\nM1A-M9Z | TOR01 | D\n"},
        {"servgd-transit.txt", "ATL01 | ATL01 | 1 | |\nATL01 | TOR01 | 4 | 3 | 1\n"},
    };
}

}  // namespace hundredweight::fuzz
