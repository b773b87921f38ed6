#include <algorithm>

#include "tariffs/folder.h"

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

const char* TextFileOf(const Family& family) {
    switch (family.shape) {
        case Shape::kSettings:
            return kSettingsFile;
        case Shape::kArray:
            return family.inner.front().sheet;
        case Shape::kCarried:
            return kCarriedFile;
        case Shape::kTable:
        case Shape::kIndexed:
        case Shape::kLines:
            break;
    }
    return family.text;
}

}  // namespace cwt
