#include <fmt/core.h>

#include <cmath>
#include <cstring>
#include <optional>
#include <string_view>

#include "session/explained.h"
#include "session/point_tables.h"
#include "text/code_page.h"
#include "text/field_text.h"

namespace cwt {
namespace {

/// Completes the statement by the records that name the tariff; only if they still name this one.
void ExplainLookUp(const RatedShipment& rated, Statement& statement) {
    const RateContext& context = rated.context;
    const std::string origin_zip(context.OrigZip, strnlen(context.OrigZip, 6));
    const std::string destination_zip(context.DestZip, strnlen(context.DestZip, 6));
    const std::string& points = rated.files.Table("CBS");
    const auto origin = FindPoint(points, origin_zip);
    const auto destination = FindPoint(points, destination_zip);
    std::optional<Found<TariffRecord>> tariff;
    if (origin && destination) {
        tariff = FindTariff(rated.files.Table("CMT"), origin->record, destination->record);
    }
    const bool agrees = tariff && std::memcmp(tariff->record.TariffName, context.TariffName,
                                              sizeof tariff->record.TariffName) == 0;
    if (!agrees) {
        statement.words = fmt::format(
            "The set's tables of points and tariffs named {}. By which records is not known: those "
            "that the files hold now do not name it.",
            rated.bill.tariff);
        statement.sources = {{.field = "TariffName"}};
        return;
    }
    statement.words = fmt::format(
        "{} belongs to point {} and {} to {}; between these the tariff is {}.",
        rated.bill.origin.zip, TextOf(origin->record.PointCode), rated.bill.destination.zip,
        TextOf(destination->record.PointCode), rated.bill.tariff);
    statement.sources = {rated.files.Record("CBS", origin->number),
                         rated.files.Record("CBS", destination->number),
                         rated.files.Record("CMT", tariff->number)};
}

std::string FactorText(double factor) {
    return fmt::format("{:.4f}", factor);
}

}  // namespace

void ExplainTariff(const RatedShipment& rated, Explanation& explanation) {
    const Bill& bill = rated.bill;
    Statement statement = {
        .topic = "tariff",
        .figures = {
            {"name", bill.tariff}, {"date", IsoDate(bill.date)}, {"rate_code", bill.rate_code}}};
    if (rated.shipment.tariff) {
        statement.words = fmt::format("The shipment names the tariff {}.", bill.tariff);
        statement.sources = {{.shipment = "tariff"}};
    } else {
        ExplainLookUp(rated, statement);
    }
    statement.words += fmt::format(
        " The engine was asked for the rates of {}, the date of the level file, and rated by its "
        "rate code {}.",
        IsoDate(bill.date), bill.rate_code);
    statement.sources.push_back(rated.files.Record("LVL", 1));
    statement.sources.push_back({.field = "RateCode"});
    explanation.push_back(statement);
}

void ExplainFactor(const RatedShipment& rated, Explanation& explanation) {
    constexpr float kStepsInOne = 10000;
    const RateContext& context = rated.context;
    const float own = context.RateFactor != 0.0F ? context.RateFactor : 1.0F;
    const bool converted = context.ConversionOn != 0;
    const float factor = converted ? own * context.ConversionRate : own;
    // As many decimals as the engine is sent.
    const double sent = std::nearbyint(factor * kStepsInOne) / double{kStepsInOne};
    Statement statement = {.topic = "factor", .figures = {{"factor", FactorText(sent)}}};
    const bool entered = rated.shipment.factor.has_value();
    statement.sources = {entered ? Source{.shipment = "factor"} : rated.Defaults("RateFactor")};
    if (own == 1.0F && !converted) {
        statement.words = "No factor: the rates are the tariff's own.";
    } else {
        statement.words = fmt::format("The rates are the tariff's, multiplied by {}",
                                      converted ? fmt::format("{:.6g}", own) : FactorText(sent));
        statement.words += entered ? ", as entered" : ", of the defaults";
        if (converted) {
            statement.words += fmt::format(", and by the conversion rate {:.6g}: {}",
                                           +context.ConversionRate, FactorText(sent));
            statement.sources.push_back(rated.Defaults("ConversionOn"));
            statement.sources.push_back(rated.Defaults("ConversionRate"));
        }
        statement.words += ".";
    }
    explanation.push_back(statement);
}

}  // namespace cwt
