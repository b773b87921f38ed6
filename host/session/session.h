// A run of the library that stays: a tariff set, the partner libraries, and the record between them
// in which one shipment after another is rated.
#pragma once

#include <hundredweight/rate_context.h>

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "bill/bill.h"
#include "bill/explanation.h"
#include "session/data_files.h"
#include "session/engine_answers.h"
#include "session/partner_library.h"
#include "session/shipment_check.h"
#include "session/sources.h"
#include "session/tariff_set.h"
#include "shipment/refusal.h"
#include "shipment/shipment.h"

namespace cwt {

/// What came of a shipment.
using Outcome = std::variant<Bill, Refusals>;

struct ExplainedBill {
    Bill bill;
    Explanation explanation;
};
using ExplainedOutcome = std::variant<ExplainedBill, Refusals>;

/// The cities at a postal code, with their states; when it is none, the reason.
struct CitiesAnswer {
    std::vector<std::string> cities;  ///< "Atlanta GA"; at most 25.
    Refusals refusals;
};

/// Classes and weight breaks that lines may have; when the tariff is unknown, the reason.
struct TablesAnswer {
    std::string tariff;  ///< Empty: those of the set.
    std::vector<std::string> classes;
    std::vector<WeightBreak> breaks;
    Refusals refusals;
};

/// A loaded tariff set with its level file, discounts and a running engine. Whatever is broken
/// about them, or breaks later, throws Broken.
class Session {
 public:
    explicit Session(const Sources& sources);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Rates a shipment, from the record as the load left it: no shipment sees another. The code is
    /// passed on to the engine.
    Outcome Rate(const Shipment& shipment, int request_code);

    /// The same, with the reasons for what the bill says.
    ExplainedOutcome Explain(const Shipment& shipment, int request_code);

    /// The state of a postal code that a shipment could have.
    StateAnswer StateOf(const std::string& postal_code);

    /// The cities that the engine offers at such a postal code; none where the set's tables know no
    /// lane there.
    CitiesAnswer CitiesAt(const std::string& postal_code);

    /// The classes and weight breaks of a tariff; without a name those of the engine's first one,
    /// or of the set when the engine has none.
    TablesAnswer TablesOf(const std::optional<std::string>& tariff);

    /// The names of the profiles; none when there is no file of them.
    const std::vector<std::string>& ProfileNames();

    /// Loads a profile into the record, for ProfileJson. Result: what is wrong with the name.
    Refusals LoadProfile(const std::string& name);

    /// Does at once what the first shipments to need it would have done: profiles of an earlier
    /// layout are put into today's, and the service guide is started. What cannot be had is a
    /// matter of the shipments that ask for it.
    void Prepare();

    /// Loads and starts the service guide, unless that is done.
    void StartServiceGuide();

    /// The record as the last shipment left it.
    const RateContext& context() const { return *context_; }

    /// What the partners said at their start; empty when nothing.
    const std::string& said() const { return said_; }

    /// Throws Broken when the engine answers no request, which it does not tell at its start.
    void RequireWorkingEngine();

 private:
    /// End a partner that was started, or that failed to.
    struct EndEngine {
        void operator()(RateContext* context) const;
    };
    struct EndGuide {
        void operator()(RateContext* context) const;
    };

    DataFiles& Files();
    void StartEngine();
    void Restore();
    void OpenProfiles();
    Refusals ApplyProfile(const std::string& name);
    Refusals LayOutTariff(const Shipment& shipment);
    Refusals Check(const Shipment& shipment);
    Refusals AskServiceGuide();
    [[noreturn]] void Break(const std::string& what, int32_t code) const;

    Sources sources_;
    TariffSet set_;
    PartnerLibrary engine_;
    std::optional<PartnerLibrary> service_guide_;
    RateContext* context_;  ///< The set's.
    std::unique_ptr<RateContext, EndEngine> engine_run_;
    std::unique_ptr<RateContext, EndGuide> guide_run_;
    std::unique_ptr<RateContext> loaded_;     ///< The record as the load left it.
    std::vector<std::string> notes_;          ///< On the shipment at hand.
    std::string profiles_mark_;               ///< Of the profiles that were found to be sound.
    std::vector<std::string> profile_names_;  ///< Of all of them, once they were asked for.
    KeptListing zip_tables_;                  ///< Of the profiles.
    std::filesystem::path discounts_elsewhere_;
    std::string said_;
    std::optional<DataFiles> files_;          ///< Once records are looked up.
    std::unique_ptr<RateContext> looked_at_;  ///< A copy for an explanation's look-ups.
};

}  // namespace cwt
