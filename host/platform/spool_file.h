// A temporary file without a name, which is gone with the process that has it.
#pragma once

#include <string>
#include <string_view>

namespace cwt {

class SpoolFile {
 public:
    /// Throws std::runtime_error, with the reason, when it cannot be had; so does Append when the
    /// disk is full.
    SpoolFile();
    ~SpoolFile();
    SpoolFile(const SpoolFile&) = delete;
    SpoolFile& operator=(const SpoolFile&) = delete;

    void Append(std::string_view bytes);

    /// A name by which this process can open it.
    std::string name() const;

 private:
    int number_;
};

}  // namespace cwt
