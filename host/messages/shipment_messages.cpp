#include "messages/message_entry.h"

namespace cwt {
namespace {

constexpr const char* kPostalCodeCure =
    "Write the postal code in one of the forms behind \"possible\". Three digits are enough only "
    "where the set's `zip_digits` is 3, and Canadian codes are taken only where its "
    "`skip_zip_tables` is no.";
constexpr const char* kOnlyOfProfiles =
    "See that the user who rates may read and write `PROFILE.FIL`: the library opens it for "
    "writing too.";

constexpr MessageEntry kShipment[] = {
    {101, nullptr,
     "`origin.zip` is no postal code: it has fewer digits in front than the set's `zip_digits` "
     "asks for, begins with neither digit nor letter, is too long, or begins with a letter where "
     "it has fewer than three characters or the set is without ZIP tables.",
     kPostalCodeCure},
    {102, nullptr,
     "`destination.zip` is no postal code: it has fewer digits in front than the set's "
     "`zip_digits` asks for, begins with neither digit nor letter, is too long, or begins with a "
     "letter where it has fewer than three characters or the set is without ZIP tables.",
     kPostalCodeCure},
    {103, nullptr,
     "The carrier does not go there. At `origin.zip` or `destination.zip`: the set's table of "
     "states marks the postal code YY, not served. At `origin and destination`: the territories do "
     "not meet (an origin must be B, F, X or Y, a destination B, T, X or Y, and not both X), the "
     "origin is not served within its own state, or the point codes of the two have no tariff in "
     "`NAME.CMT`.",
     "See whether the postal codes, `territory` and `intrastate` are what was meant. To serve the "
     "lane, correct `states.csv` or `provinces.csv`, or add it to `tariff-names.csv`, and build "
     "the set; or name the shipment's `tariff`."},
    {105, nullptr,
     "The `class` of the line is none of the tariff's; or the profile's class map makes one of it "
     "that the tariff has not.",
     "Take one of those behind \"possible\". For one that the profile makes, correct the class map "
     "of the profile: `cwt profiles NAME` shows it."},
    {106, nullptr,
     "No weight break that is in use holds the `weight` of the line; those whose name begins with "
     "XXX are out of use.",
     "Check the weight, in whole pounds. The breaks are those that `cwt inspect` shows, of "
     "`weight-breaks.csv`, or else the engine's."},
    {118, nullptr,
     "A discount is negative or too high. At `discount.percent` and `discount.flat_percent`: above "
     "99.99. At `discount`: a weight break would get 99.985 percent or more, which an engine takes "
     "for the end of the list, whether entered, of the profile or of the discount file.",
     "Write the percentage as 45.5 and not 0.455 or 4550. When none was entered, correct the "
     "profile's discounts or the discount file, `NAME.DIS`."},
    {119, nullptr, "`discount.floor` is negative or above 999.99 dollars.",
     "Write the floor in dollars, up to 999.99."},
    {265, nullptr,
     "`origin.zip` or `destination.zip` lies in Alaska, Hawaii or Puerto Rico by the set's table "
     "of states, `NAME.SC`.",
     "Rate it by another tariff; if the state is wrong, correct `states.csv` and build the set."},
    {266, nullptr,
     "`origin.zip` and `destination.zip` both begin with a letter: both are Canadian.",
     "One end of a shipment must be a ZIP: these tariffs cross the border once."},
    {501, nullptr,
     "A range of base-rate point codes, `NAME.CBS`, is missing for one of the two postal codes, so "
     "that no tariff can be found.",
     "Add the postal code to `point-codes.csv` and build the set; or name the shipment's "
     "`tariff`."},
    {513, nullptr,
     "`factor` is not between 0.0001 and 9.9999 in steps of 0.0001, or is not so any more when the "
     "conversion rate of the user's defaults is on it. At `defaults` the shipment has none, and "
     "that rate alone is not.",
     "Correct the factor, or the conversion rate in `NAME.DEF`, the section `defaults` of "
     "`settings.json`."},
};

constexpr MessageEntry kProfile[] = {
    {121, nullptr,
     "`PROFILE.FIL` could not be created, copied from the data directory, or brought from an "
     "earlier layout to the present one.",
     "Look for room on the disk and for the rights of the directory: the user who rates makes "
     "files there, `PROFILE.TMP` and `PROFILE.ZSA` among them."},
    {125, nullptr, "`PROFILE.FIL` is not there, or may not be read and written.", kOnlyOfProfiles},
    {126, nullptr,
     "`PROFILE.FIL` could not be read at the profile, or has no profile of the number that a host "
     "asks for.",
     "See whether the file is a whole number of records of 17897 bytes: `cwt profiles` and "
     "`cwt inspect` tell. Copy it back, or build it from `profiles.csv`."},
    {127, nullptr, "`PROFILE.FIL` has no profile of the name in `profile`.",
     "Take a name as `cwt profiles` lists it, letter for letter; the nearest one stands behind "
     "\"possible\"."},
};

}  // namespace

const std::span<const MessageEntry> kShipmentMessages = kShipment;
const std::span<const MessageEntry> kProfileMessages = kProfile;

}  // namespace cwt
