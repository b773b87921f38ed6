// A run of the library: a tariff set, the partner libraries and the record between them.
#pragma once

#include <hundredweight/rate_context.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "shipment/shipment.h"

namespace cwt {

/// Where a run finds its files.
struct Sources {
    std::filesystem::path data;  ///< Directory of the tariff set, the engine's data and profiles.
    std::string set = "SAMPLE";  ///< Base name of the tariff set.
    std::string engine = "tolvex";
    std::string service_guide = "servgd";
};

/// The nearest directory, from `start`, which is absolute, upward, that holds the settings of a
/// set; `start` itself when there is none.
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

/// A loaded tariff set with its level file, discounts and a running engine.
class RatingSession {
 public:
    explicit RatingSession(const Sources& sources);
    ~RatingSession();
    RatingSession(const RatingSession&) = delete;
    RatingSession& operator=(const RatingSession&) = delete;

    RateContext& context() { return set_.context(); }

    /// Enters a shipment and checks it. Throws Refused with all that is wrong with it.
    void Check(const Shipment& shipment);

    /// Checks and rates a shipment; the results are in the record. Throws Refused. Result: what
    /// the library showed on the way.
    std::vector<std::string> Rate(const Shipment& shipment, int request_code);

 private:
    void ApplyProfile(const std::string& name);
    void LayOutTariff(const Shipment& shipment);
    void AskServiceGuide();

    Sources sources_;
    TariffSet set_;
    PartnerLibrary engine_;
    std::optional<PartnerLibrary> service_guide_;
};

}  // namespace cwt
