// A run of the library: a tariff set, an engine and the record between them.
#pragma once

#include <hundredweight/rate_context.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace cwt {

/// Where a run finds its files.
struct Sources {
    std::filesystem::path data;  ///< Directory of the tariff set and of the engine's data.
    std::string set = "SAMPLE";  ///< Base name of the tariff set.
    std::string engine = "tolvex";
};

/// The nearest directory, from `start` upward, that holds the settings of a set; `start` itself
/// when there is none.
std::filesystem::path FindDataDirectory(const std::filesystem::path& start, const std::string& set);

/// A zeroed record that knows where its files are, and its release. Throws Broken when a name does
/// not fit the record.
class TariffSet {
 public:
    explicit TariffSet(const Sources& sources);
    ~TariffSet();
    TariffSet(const TariffSet&) = delete;
    TariffSet& operator=(const TariffSet&) = delete;

    RateContext& context() { return *context_; }

    /// Reads the defaults, if there are any, and the whole set. Result: the code of a failure, or
    /// 0.
    int32_t Load();

 private:
    std::unique_ptr<RateContext> context_;
};

/// A tariff set with its level file and a running engine.
class RatingSession {
 public:
    explicit RatingSession(const Sources& sources);
    ~RatingSession();
    RatingSession(const RatingSession&) = delete;
    RatingSession& operator=(const RatingSession&) = delete;

    RateContext& context() { return set_.context(); }

    /// Rates what has been entered in the record. Throws Refused. Result: what the library showed
    /// on the way.
    std::vector<std::string> Rate(int request_code);

 private:
    TariffSet set_;
    void* engine_module_ = nullptr;
};

}  // namespace cwt
