#include "messages/message_entry.h"

namespace cwt {
namespace {

constexpr const char* kMoreMemory =
    "Give the machine more memory, or rate in fewer processes (`--jobs`).";
constexpr const char* kAnotherEngine =
    "Name an engine that has all ten functions: `--engine`, a path or a name. A library of the "
    "right name and another purpose, or of an older version, is the usual reason.";
constexpr const char* kAnotherGuide =
    "Name a service guide that has all five functions: `--service-guide`, a path or a name.";
constexpr const char* kLookAtEngineData =
    "Look at the engine's own data: `cwt inspect` tells what the engine says of them.";

constexpr MessageEntry kEngine[] = {
    {-1, nullptr,
     "The engine refused, in words of its own, which stand in the place of a message: "
     "\"0113 The tariff has no lane between these points\", say. In a refusal's JSON the code is "
     "null, in a batch's summary -1.",
     "Look the number up in the engine's manual; the page `reference-engine.md` has those of the "
     "one that ships here."},
    {113, nullptr, "There is no memory for the block in which the engine lists points.",
     kMoreMemory},
    {114, nullptr, "There is no memory for the block in which the engine answers.", kMoreMemory},
    {133, nullptr,
     "The engine could not rate at all, or does not run: most often it found no data of its own in "
     "the data directory, and has said so on standard error.",
     "Read what stands in front of the message, then put the engine's files into the data "
     "directory; `cwt inspect` starts the engine and tells whether it works."},
    {134, nullptr,
     "The engine knows a point by its postal code but not by its city, and could not list the "
     "cities that it has there.",
     "Leave `city` out: the engine takes the first on file."},
    {140, nullptr,
     "The engine told of effective tables and did not give one. The start goes on with the table "
     "incomplete.",
     kLookAtEngineData},
    {141, nullptr,
     "There is no memory for the table of the engine's tariffs. The start goes on without.",
     kMoreMemory},
    {400, nullptr, "The engine library has no function `Tolvex_GetStateEx`.", kAnotherEngine},
    {401, nullptr, "The engine library has no function `Tolvex_GetErrorStringEx`.", kAnotherEngine},
    {402, nullptr, "The engine library has no function `Tolvex_InitializeTolvexEx`.",
     kAnotherEngine},
    {403, nullptr, "The engine library has no function `Tolvex_Set_TolvexdataEx`.", kAnotherEngine},
    {404, nullptr, "The engine library has no function `Tolvex_GetEffectiveTableEx`.",
     kAnotherEngine},
    {405, nullptr, "The engine library has no function `Tolvex_GetEffectiveTableSizeEx`.",
     kAnotherEngine},
    {406, nullptr, "The engine library has no function `Tolvex_GetTablesEx`.", kAnotherEngine},
    {407, nullptr, "The engine library has no function `Tolvex_RateShipment2Ex`.", kAnotherEngine},
    {408, nullptr, "The engine library has no function `Tolvex_disp_verEx`.", kAnotherEngine},
    {409, nullptr, "The engine library has no function `Tolvex_EndTolvexEx`.", kAnotherEngine},
};

constexpr MessageEntry kServiceGuide[] = {
    {525, nullptr, "The service guide's library has no function `ServGd_Initialize`.",
     kAnotherGuide},
    {527, nullptr, "The service guide's library has no function `ServGd_GetServGuideData`.",
     kAnotherGuide},
    {528, nullptr,
     "The service guide's library has no function `ServGd_GetTerminals`, or none "
     "`ServGd_GetTermToTermDays`.",
     kAnotherGuide},
    {529, nullptr, "The service guide's library has no function `ServGd_Terminate`.",
     kAnotherGuide},
    {533, nullptr,
     "The service guide answered with a failure for the two postal codes or their terminals, or is "
     "not bound.",
     "Rate the shipment without `service_guide` when its terminals are not needed tonight. "
     "`cwt inspect` tells whether the guide starts; the page `reference-service-guide.md` tells "
     "when "
     "the one that ships here fails."},
};

}  // namespace

const std::span<const MessageEntry> kEngineMessages = kEngine;
const std::span<const MessageEntry> kServiceGuideMessages = kServiceGuide;

}  // namespace cwt
