// Where a run finds its files.
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace cwt {

struct Sources {
    std::filesystem::path data;  ///< Directory of the tariff set, the engine's data and profiles.
    std::string set = "SAMPLE";  ///< Base name of the tariff set.
    std::string engine = "tolvex";
    std::string service_guide = "servgd";
};

/// The files of a directory. The library tells names apart by case only where both exist.
class Listing {
 public:
    /// Of the files whose names have an ending, in any letters. Throws Broken when the directory
    /// cannot be listed.
    explicit Listing(const std::filesystem::path& directory, const std::string& ending = "");

    /// The file of a name; an empty path when there is none.
    std::filesystem::path Find(const std::string& name) const;

    /// All of them, by name.
    std::vector<std::filesystem::path> files() const;

 private:
    std::multimap<std::string, std::filesystem::path> files_;  ///< By name in capital letters.
};

/// The same of a directory that is listed only when it has no file of the exact name.
std::filesystem::path FindFile(const std::filesystem::path& directory, const std::string& name);

/// The same of files with one ending, for shipment after shipment: the listing serves as long as
/// the directory proves that no name has come or gone.
class KeptListing {
 public:
    KeptListing(std::filesystem::path directory, std::string ending)
        : directory_(std::move(directory)), ending_(std::move(ending)) {}

    /// Throws Broken when the directory is to be listed and cannot be.
    std::filesystem::path Find(const std::string& name);

 private:
    std::filesystem::path directory_;
    std::string ending_;
    std::string mark_;  ///< Of the directory when it was listed.
    std::optional<Listing> listing_;
};

/// The directory of a set, or, when `set` is empty, of any: `given` when that is not empty, else
/// the nearest from `start` upward that holds the set's settings. Throws Broken when there is none.
std::filesystem::path FindDataDirectory(const std::filesystem::path& given,
                                        const std::filesystem::path& start, const std::string& set);

/// The base names of a directory's sets. Throws Broken when it cannot be listed.
std::vector<std::string> SetsIn(const std::filesystem::path& directory);

/// The base name of the one set in a directory. Throws Broken when there is none, or more than one.
std::string OnlySetIn(const std::filesystem::path& directory);

/// The same data wherever a partner changes the directory to, as far as the record has room for
/// their path.
Sources Fixed(Sources sources);

/// Throw Broken, with the reason, when a file cannot be written, or read to its end.
void RequireWritable(const std::filesystem::path& file);
void RequireReadable(const std::filesystem::path& file);

/// Throws Broken when a file of equal records ends within one: it has been cut short, or damaged.
/// What fills a file up (Ctrl-Z, blanks, zeros, line ends) is allowed.
void RequireWholeRecords(const std::filesystem::path& file, std::size_t record_size);

/// Throws Broken when a file of one record is shorter than it. What follows the record is allowed.
void RequireRecord(const std::filesystem::path& file, std::size_t record_size);

}  // namespace cwt
