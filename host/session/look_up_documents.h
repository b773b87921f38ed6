// What a session tells besides bills, as JSON that is printed.
#pragma once

#include <string>
#include <vector>

#include "session/session.h"

namespace cwt {

struct PlacedCode {
    std::string postal_code;
    std::string state;
};

/// Of the schema hundredweight/states/1; the refusals are of the codes that lie in no state.
std::string StatesDocument(const std::vector<PlacedCode>& placed, const Refusals& refusals);

/// Of the schema hundredweight/cities/1.
std::string CitiesDocument(const std::string& postal_code, const std::vector<std::string>& cities);

/// Of the schema hundredweight/classes/1.
std::string ClassesDocument(const TablesAnswer& tables);

/// Of the schema hundredweight/profiles/1.
std::string ProfilesDocument(const std::vector<std::string>& names);

}  // namespace cwt
