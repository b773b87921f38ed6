// What a load asks of each file of the sample set.
#pragma once

#include "support/sample_set.h"

namespace hundredweight {

struct FileFacts {
    std::string extension;
    unsigned not_read;     // Variations of the set in which a load does without the file; in others
    int32_t missing;       // what a load ends with when there is no such file,
    std::uintmax_t least;  // the bytes that it must have, 0 when all that it has are read,
    int32_t shorter;       // and what a load ends with when fewer can be read.
};
inline constexpr unsigned kNever = 0, kOwnZp7 = kEngine | kNoZp7, kOwnLab = kEngine | kNoLab,
                          kOwnZips = kEngine | kSkipZips, kOwnBase = kEngine | kNoBase,
                          kOwnBse = kOwnBase | kNoBse, kOwnMca = kOwnBase | kNoMca;
inline const FileFacts kFiles[] = {
    {"SET", kNever, 370, 283, 374},       {"ACC", kNoAcc, 490, 123, 494},
    {"SCC", kSkipZips, 460, 0, 460},      {"ZP6", kSkipZips, 436, 0, 438},
    {"WGT", kEngine, 380, 21, 385},       {"MCH", kEngine, 182, 0, 324},
    {"CLS", kEngine, 230, 5, 235},        {"ZFM", kEngine, 456, 29, 457},
    {"ZP7", kOwnZp7, 582, 0, 584},        {"ZF2", kOwnZips, 410, 38, 414},
    {"RTC", kOwnZips, 350, 0, kLoads},    {"RCL", kOwnZips, 350, 0, kLoads},
    {"BSC", kOwnZips, 480, 96, 484},      {"FAC", kOwnBase, 260, 802, 264},
    {"FCC", kOwnZips, 260, 1352, 264},    {"BSE", kOwnBse, 220, 1328, 224},
    {"ZF1", kOwnBase, 390, 29, 394},      {"LA", kOwnBase, 270, 0, 274},
    {"RBA", kOwnBase, 340, 0, 344},       {"LMC", kOwnBase, 181, 0, 314},
    {"MC", kOwnBase, 181, 0, 314},        {"LCA", kOwnMca, 183, 0, 534},
    {"MCA", kOwnMca, 183, 0, 534},        {"LAB", kOwnLab, 280, 0, kLoads},
    {"LAM", kOwnLab, 290, 0, kLoads},     {"ADJ", kOwnLab, 210, 0, 214},
    {"TBL", kEngine, 450, 0, kLoads},     {"RTE", kEngine, 350, 0, kLoads},
    {"RTL", kEngine, 350, 0, kLoads},     {"BSV", kNever, kLoads, 75, 225},
    {"ZPS", kNever, kLoads, 628, 444},    {"MEF", kNever, kLoads, 350, kLoads},
    {"MET", kNever, kLoads, 283, kLoads}, {"SC", kNever, kLoads, 3996, kLoads},
    {"WSM", kNever, kLoads, 7, kLoads},   {"CBS", kNever, kLoads, 0, kLoads},
    {"CMT", kNever, kLoads, 0, kLoads},   {"SZP", kNever, kLoads, 0, kLoads},
    {"DCH", kNever, 269, 0, 269}};

}  // namespace hundredweight
