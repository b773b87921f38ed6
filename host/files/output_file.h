// A file that is written under another name first, and takes its own when it is whole.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace cwt {

class OutputFile {
 public:
    /// Throws std::runtime_error, like every call, when the file is there already and may not be
    /// replaced, or cannot be written.
    OutputFile(const std::string& path, bool replace);
    /// Removes what has not been finished.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    void Write(std::string_view text);
    void Finish();

 private:
    void RequireAbsence() const;
    [[noreturn]] void Fail() const;

    std::filesystem::path path_, working_path_;
    bool replace_;
    std::ofstream stream_;
};

}  // namespace cwt
