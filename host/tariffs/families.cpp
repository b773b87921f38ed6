#include <algorithm>

#include "tariffs/family.h"

namespace cwt {

const std::vector<Family>& Families() {
    static const std::vector<Family> families = [] {
        std::vector<Family> all;
        for (const auto& some : {kSettingsFamilies, kTableFamilies, kProfileFamilies}) {
            all.insert(all.end(), some.begin(), some.end());
        }
        return all;
    }();
    return families;
}

const Family* FamilyOf(std::string_view extension) {
    const auto found = std::ranges::find(Families(), extension, &Family::extension);
    return found == Families().end() ? nullptr : &*found;
}

}  // namespace cwt
