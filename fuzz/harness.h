// What the targets share: the record of a run with nothing around it, a data directory in memory,
// and the facts that hold after every run.
#pragma once

#include <hundredweight/exports.h>

#include <cstddef>
#include <cstring>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "parts.h"
#include "reference/samples/file_contents.h"

namespace hundredweight::fuzz {

/// Ends the program with a finding unless a fact holds.
void Require(bool holds, const char* fact);

/// Adds to the outcome of the inputs run since it was last taken: results, texts shown, records.
void NoteOutcome(std::string_view bytes);
void NoteOutcome(int32_t result);
uint64_t TakeOutcome();

/// Rates what is in a record as a shipment of its own.
int32_t RateAnew(RateContext* context);

/// A directory in memory with files of its own, in which a run may put others. The process works
/// in "user" below it, which is also the directory of the user's own files.
class DataDirectory {
 public:
    explicit DataDirectory(samples::FileContents files);
    ~DataDirectory();

    /// A part named for a file takes its place, one named for it behind a '-' removes it. A name
    /// behind "user/" is the user's own.
    void Put(const Parts& parts);
    void Write(const std::string& name, std::string_view content);
    /// Puts the directory's own files back and removes all others.
    void Restore();

    std::string Path() const { return path_.string() + "/"; }
    std::string UserPath() const { return Path() + "user/"; }
    /// Parts that put and remove the directory's own files.
    Parts FileParts() const;
    /// What is in the user's directory, by name.
    samples::FileContents UserFiles() const;

 private:
    const std::filesystem::path path_;
    const samples::FileContents files_;
    std::set<std::string> changed_;
};

/// Rate base and terminals of the reference partners, short enough to be read at every run.
samples::FileContents PartnerFiles();

/// Zeros in the fields of the record that a host may write: all but pointers, handles, the counts
/// of the library's blocks, and the host's own areas, which are guards here.
Parts HostFieldParts();

/// A zeroed record that lies at an odd address and ends where its heap block ends, with the
/// partners in this program bound. When it goes, they are ended and all files closed, and every
/// descriptor must be free again.
class Record {
 public:
    explicit Record(const DataDirectory& directory);
    ~Record();

    RateContext& operator*() const { return *context_; }
    RateContext* operator->() const { return context_; }

    /// Puts parts named for host-writable fields into them, as much of each as fits.
    void PutFields(const Parts& parts);
    /// Requires that nothing before the record, nor any of the host's own areas in it, was written.
    void CheckGuard() const;
    /// Makes a call twice and requires that the second has the same result and leaves the record
    /// as the first did, but for pointers, and handles, whose numbers the system chooses.
    template <class Call>
    int32_t CallTwice(const char* fact, Call call) {
        const int32_t result = call(context_);
        NoteOutcome(result);
        NoteFields();
        const std::string before(block_.get(), kBlockSize);
        Require(call(context_) == result, fact);
        RequireSame(before, fact);
        return result;
    }
    /// Notes what is in the record, but for pointers, handles and paths.
    void NoteFields() const;
    /// Requires that the texts that the load of a set, or a rating, leaves end in their fields.
    void CheckSetTexts() const;
    void CheckRatedTexts() const;

 private:
    static constexpr std::size_t kBlockSize = 1 + sizeof(RateContext);
    void RequireSame(const std::string& before, const char* fact) const;

    const int first_free_descriptor_;
    const std::unique_ptr<char[]> block_;
    RateContext* const context_;
};

}  // namespace hundredweight::fuzz
