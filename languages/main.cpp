// Describes the public headers for other languages: the directory of the headers, where to write,
// and the file of C that checks the layout.
#include <hundredweight/version.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "language.h"

namespace {

void WriteFile(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file) throw std::runtime_error(path.string() + ": cannot be written");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: describe_record HEADERS TO CHECK\n");
        return 2;
    }
    try {
        languages::Json description = languages::DescribeHeaders(argv[1]);
        description["version"] = HWT_VERSION;
        languages::LayOut(description["records"]);
        languages::AddUnitsAndWriters(description["records"]);
        const std::filesystem::path to = argv[2];
        std::filesystem::create_directories(to / "languages");
        WriteFile(to / "record.json", description.dump(1) + '\n');
        WriteFile(argv[3], languages::WriteC(description));
        WriteFile(to / "languages/Hundredweight.cs", languages::WriteCSharp(description));
        WriteFile(to / "languages/hundredweight.pas", languages::WritePascal(description));
        WriteFile(to / "languages/Hundredweight.bas", languages::WriteBasic(description));
        WriteFile(to / "languages/hundredweight_ctypes.py", languages::WritePython(description));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 2;
    }
    return 0;
}
