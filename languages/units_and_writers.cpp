// What a field is measured in and who writes it, by the words of the headers' comments.
#include <initializer_list>
#include <regex>
#include <set>
#include <stdexcept>
#include <string>

#include "description.h"

namespace languages {
namespace {

/// Words of a comment or a name, and what they tell. Of several, the first that is found.
struct Sign {
    std::regex words;
    std::initializer_list<const char*> tells;
};

const Sign* FindSign(std::initializer_list<const Sign*> signs, const std::string& text) {
    for (const Sign* sign : signs) {
        if (std::regex_search(text, sign->words)) return sign;
    }
    return nullptr;
}

Json Told(const Sign* sign) {
    Json tells = Json::array();
    for (const char* each : sign->tells) tells.push_back(each);
    return tells;
}

const Sign kHostsName{std::regex("^Host(Area|Bytes)"), {"host"}};
const Sign kEnginesName{std::regex("^EngineBytes?[0-9]*$"), {"engine"}};
const Sign kGuidesName{std::regex("^GuideByte"), {"service guide"}};
/// A rating refused by the engine blanks these; the service guide or the engine fills the codes.
const Sign kPointsName{std::regex("^(Orig|Dest)(State|City|ServiceCode)$"), {"host", "library"}};

const Sign kIn{std::regex("^(In:|Request:|Start:|Terminal request:)"), {"library"}};
const Sign kOut{std::regex("^Out[:.]|^The engine's own|bytes, out\\."), {"engine"}};
const Sign kInAndOut{std::regex("^In and out:"), {"library", "engine"}};
const Sign kAnswer{std::regex("^Answer|as the service guide answers"), {"service guide"}};
const Sign kBoth{std::regex("the host may( edit| change|\\.)|edited by the host|The host edits|"
                            "ost input, or|or host input|then it is host input|or by the host|"
                            "a host that .* sets it|else there is the host's|"
                            "^The host's; set to 0"),
                 {"host", "library"}};
const Sign kHost{std::regex("ost input|^The host's"), {"host"}};
const Sign kLibrary{std::regex("for the host|read by (Read|Open)|written by|[Ff]rom "
                               "(Get|Load|Open|Ver)"),
                    {"library"}};

const Sign* WriterInComment(const std::string& comment) {
    return FindSign({&kIn, &kOut, &kInAndOut, &kAnswer, &kBoth, &kHost, &kLibrary}, comment);
}

Json WritersOfRecord(const Json& record) {
    Json writers = Json::array();
    std::set<std::string> known;
    for (const Json& field : record["fields"]) {
        for (const Json& writer : field["writers"]) {
            if (known.insert(writer).second) writers.push_back(writer);
        }
    }
    return writers;
}

const Json* FindByName(const Json& list, const Json& name) {
    for (const Json& each : list) {
        if (each["name"] == name) return &each;
    }
    return nullptr;
}

/// The field's own words count first, then those of its section, its record and its type.
Json WritersOf(const Json& field, const Json& record, const Json& records) {
    const Sign* sign = FindSign({&kHostsName, &kEnginesName, &kGuidesName}, field["name"]);
    if (sign == nullptr && record["name"] == "RateContext") {
        sign = FindSign({&kPointsName}, field["name"]);
    }
    if (sign == nullptr) sign = WriterInComment(field["meaning"]);
    if (sign != nullptr) return Told(sign);
    if (field.contains("overlays")) {
        return (*FindByName(record["fields"], field["overlays"]))["writers"];
    }
    if (field.contains("section")) sign = WriterInComment(field["section"]);
    if (sign != nullptr) return Told(sign);
    sign = WriterInComment(record["meaning"]);
    if (sign != nullptr) return Told(sign);
    if (const Json* type = FindByName(records, field["type"])) return WritersOfRecord(*type);
    return Json::array({"library"});
}

/// Several things in one field, or a number that only resembles a measure.
const Sign kNoUnit{std::regex("percentages|^[0-9*-]+: weight columns|^Printable names|"
                              "^Host input: 1 =|^Records of the WGT"),
                   {}};
const Sign kRate{std::regex("ollars per hundredweight|^(Out: r|R)ate of"),
                 {"dollars per hundredweight"}};
const Sign kHundredths{std::regex("percentage times 100"), {"hundredths of a percent"}};
const Sign kTenThousandths{std::regex("factor times 10000"), {"ten-thousandths"}};
const Sign kPercent{std::regex("\\b[Pp]ercent(age)?\\b"), {"percent"}};
const Sign kCents{std::regex("100 times ZmcMinimumDollars"), {"cents"}};
const Sign kEnginesUnit{std::regex("in the engine's unit"), {"the engine's"}};
const Sign kDollars{std::regex("dollars|^(Charge of|Sum of the lines|Gross charge|Surcharge,|"
                               "Minimum charge\\b|The engine's minimum charge|Floor amount|"
                               "Minimum amount)"),
                    {"dollars"}};
const Sign kPounds{std::regex("pounds|^(Weight of|Weight that|Copy of BilledWeightText)"),
                   {"pounds"}};
const Sign kBytes{std::regex("^(Start|Length) of the .* file|^In: [0-9]+, the size of"), {"bytes"}};

Json UnitOf(const Json& field) {
    const Sign* sign = FindSign({&kNoUnit, &kRate, &kHundredths, &kTenThousandths, &kPercent,
                                 &kCents, &kEnginesUnit, &kDollars, &kPounds, &kBytes},
                                field["meaning"]);
    return sign == nullptr || sign->tells.size() == 0 ? Json() : Json(*sign->tells.begin());
}

/// What the headers say of fields without a comment of their own.
void AddMeaning(Json& field, const Json& record, const Json& records) {
    const std::string name = field["name"];
    if (name.starts_with("HostArea")) {
        field["meaning"] = "The host's: the library neither reads nor writes it.";
    } else if (field.contains("overlays")) {
        field["meaning"] = "Carried for the host as it is.";
    } else if (FindSign({&kEnginesName}, name) != nullptr) {
        field["meaning"] = "The engine's own.";
    } else if (FindSign({&kGuidesName}, name) != nullptr) {
        field["meaning"] = "The service guide's own.";
    } else if (record["name"] == "TerminalAnswer") {
        const Json* like = FindByName(records, "TerminalRecord");
        field["meaning"] = (*FindByName((*like)["fields"], name))["meaning"];
    } else if (record["name"] == "OptionRecord") {
        field["meaning"] = "The host's to interpret.";
    } else {
        throw std::runtime_error(name + " has no comment");
    }
}

}  // namespace

void AddUnitsAndWriters(Json& records) {
    for (Json& record : records) {
        for (Json& field : record["fields"]) {
            field["unit"] = UnitOf(field);
            field["writers"] = WritersOf(field, record, records);
            if (field["meaning"].get<std::string>().empty()) AddMeaning(field, record, records);
        }
    }
}

}  // namespace languages
