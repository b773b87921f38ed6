// A partner library, and what it says of itself.
#pragma once

#include <cstdio>
#include <string>

namespace cwt {

/// A partner library, unloaded at the end. Throws Broken when it cannot be loaded.
class PartnerLibrary {
 public:
    explicit PartnerLibrary(const std::string& name);
    ~PartnerLibrary();
    PartnerLibrary(const PartnerLibrary&) = delete;
    PartnerLibrary& operator=(const PartnerLibrary&) = delete;

    void* module() const { return module_; }

 private:
    void* module_;
};

/// Takes what is written to standard error while it lives: partners tell there what is wrong with
/// their data. Where no temporary file can be had, the texts go their way.
class ErrorOutput {
 public:
    ErrorOutput();
    ~ErrorOutput();
    ErrorOutput(const ErrorOutput&) = delete;
    ErrorOutput& operator=(const ErrorOutput&) = delete;

    /// The first lines so far, parted by "; " and each once.
    std::string Text() const;

    /// Lets standard error be what it was, also when a partner has ended the program meanwhile.
    static void GiveBack();

 private:
    static int standard_error;  ///< The program's own; -1 while it is in its place.

    std::FILE* file_;
};

}  // namespace cwt
