// The states of postal codes, as the SC and SCC files give them.
#pragma once

namespace hundredweight {

/// State of one 3-digit ZIP prefix.
struct ScRecord {
    char State[2];
    char AttributeA;
    char AttributeB;
};
static_assert(sizeof(ScRecord) == 4);

/// State or province of a range of 3-character prefixes; ranges ascend and do not overlap.
struct SccRecord {
    char State[2];
    char Low[3];
    char High[3];
};
static_assert(sizeof(SccRecord) == 8);

}  // namespace hundredweight
