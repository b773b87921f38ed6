// The state that a postal code lies in.
#include <hundredweight/exports.h>

#include <algorithm>
#include <cstring>
#include <string_view>

#include "frame/failure.h"
#include "frame/numbers.h"
#include "frame/search.h"
#include "frame/text.h"
#include "tariff/state_tables.h"

using namespace hundredweight;

namespace {

constexpr int32_t kNothingFound = 0;
constexpr int32_t kOffshore = 265;
constexpr std::size_t kPrefixLength = 3;
constexpr std::size_t kMexicanLength = 6;  // Five digits and the marker.

constexpr char kMexico[2] = {'M', 'X'};

using Prefix = char[kPrefixLength];

/// "YY" marks a prefix outside the scope of operations, "XX" one that has no state.
int32_t JudgeState(RateContext& context, std::string_view state) {
    if (state == "YY") return Fail(context, kOutOfScope);
    if (state == "XX") return Fail(context, kNothingFound);
    return 1;
}

bool IsOffshore(std::string_view state) {
    return state == "HI" || state == "AK" || state == "PR";
}

int32_t FindDigitState(RateContext& context, const Prefix& prefix, char* state, char* attribute_a,
                       char* attribute_b) {
    const int32_t entry = ReadInteger(WholeField(prefix)) - 1;
    if (entry < 0) return Fail(context, kNothingFound);
    ScRecord record;
    std::memcpy(&record, context.ScTable[entry], sizeof record);
    std::memcpy(state, record.State, sizeof record.State);
    *attribute_a = record.AttributeA;
    *attribute_b = record.AttributeB;
    if (IsOffshore(WholeField(record.State))) return Fail(context, kOffshore);
    return JudgeState(context, WholeField(record.State));
}

const SccRecord* FindRange(const RateContext& context, const Prefix& key) {
    const auto* const table = reinterpret_cast<const SccRecord*>(context.SccTable);
    return Search(table, context.SccCount, [&](const SccRecord& record) {
        if (std::memcmp(record.High, key, kPrefixLength) < 0) return 1;
        return std::memcmp(record.Low, key, kPrefixLength) > 0 ? -1 : 0;
    });
}

int32_t FindLetterState(RateContext& context, const Prefix& prefix, char* state) {
    const SccRecord* const range = FindRange(context, prefix);
    if (range == nullptr) return Fail(context, kNothingFound);
    std::memcpy(state, range->State, sizeof range->State);
    return JudgeState(context, WholeField(range->State));
}

}  // namespace

int32_t HWT_CALL GetStateCode(RateContext* context, const char* postal_code, char* state,
                              char* attribute_a, char* attribute_b) {
    const bool table_loaded = context->ScTable[0][0] != 0;
    if (context->TariffSourceCode != 'N' && !table_loaded) {
        return TolvexGetStateCode(postal_code, state);
    }
    const std::string_view code = postal_code;
    if (code.size() == kMexicanLength && code.back() == 'M') {
        std::memcpy(state, kMexico, sizeof kMexico);
        return 1;
    }
    Prefix prefix = {};
    CopyText(prefix, code);
    return IsDigit(prefix[0]) ? FindDigitState(*context, prefix, state, attribute_a, attribute_b)
                              : FindLetterState(*context, prefix, state);
}

int32_t HWT_CALL GetZipcIndex(RateContext* context, const char* key) {
    Prefix prefix = {};
    CopyText(prefix, TerminatedText(key, sizeof prefix));
    const SccRecord* const range = FindRange(*context, prefix);
    if (range == nullptr) return -1;
    return static_cast<int32_t>(range - reinterpret_cast<const SccRecord*>(context->SccTable));
}
