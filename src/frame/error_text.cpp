#include "frame/error_text.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace hundredweight {
namespace {

struct ErrorMessage {
    int32_t code;
    const char* text;
};

constexpr ErrorMessage kMessages[] = {
    {101, "Invalid Origin ZIP Code."},
    {102, "Invalid Destination ZIP Code."},
    {103, "Out of Scope of Operations."},
    {104, "Invalid Territory."},
    {105, "Invalid Class."},
    {106, "Invalid Weight."},
    {107, "5 Character Postal Code Required."},
    {108, "Invalid Surcharge."},
    {109, "C.O.D amount cannot exceed $80,000.00"},
    {110, "Entry Required when Item is selected."},
    {111, "Nothing to Export"},
    {112, "Invalid Zip Code."},
    {115, "Error opening Map File"},
    {116, "Nothing to Print"},
    {117, "Failed to create printer device fonts.\nPrint not performed."},
    {118, "Discount Cannot Exceed 99.99"},
    {119, "Floor Cannot Exceed 999.99"},
    {120, "Internet browser failed to start."},
    {121, "Error Creating PRO file."},
    {122, "The maximum number of entries has been reached.\nDelete one or more items to continue."},
    {125, "Error opening PRO file."},
    {126, "Error reading PRO file."},
    {127, "Error Selected Settings not found."},
    {128, "Invalid Settings Name."},
    {129, "Error Writing PRO file."},
    {131, "Not Available for selected Tariff."},
    {132, "Invalid Currency Exchange."},
    {140, "Error reading EFCREC.TBL"},
    {141, "Error allocation EFCREC.TBL"},
    {160, "Error Creating MEF file."},
    {161, "Error writing MEF file."},
    {168, "Error allocating ZP6."},
    {175, "Error opening LIB file."},
    {181, "Error opening MC file."},
    {182, "Error opening MCH file."},
    {183, "Error opening MCA file."},
    {193, "Error allocating MCH."},
    {210, "Error opening ADJ file."},
    {214, "Error reading ADJ file."},
    {220, "Error opening BSE file."},
    {224, "Error reading BSE file."},
    {225, "Error reading BSV file."},
    {230, "Error opening CLS file."},
    {235, "Class Total Error."},
    {240, "Error opening DEF file."},
    {241, "Error creating DEF file."},
    {244, "Error reading DEF file."},
    {245, "Error writing DEF file."},
    {246, "Error writing ACC file."},
    {250, "Error opening DIS file."},
    {254, "Error reading DIS file."},
    {260, "Error opening FAC file."},
    {264, "Error reading FAC file."},
    {270, "Error opening LA file."},
    {272, "Error allocating LA."},
    {274, "Error reading LA file."},
    {280, "Error opening LAB file."},
    {284, "Error reading LAB file."},
    {290, "Error opening LAM file."},
    {292, "Error opening WEB file."},
    {300, "Error opening LVL file."},
    {302, "Error allocating LVL."},
    {304, "Error reading LVL file."},
    {305, "Error writing LVL file."},
    {312, "Error allocating MC."},
    {314, "Error reading MC file."},
    {324, "Error reading MCH file."},
    {330, "Error opening MX1 file."},
    {340, "Error opening RBA file."},
    {342, "Error allocating RBA."},
    {344, "Error reading RBA file."},
    {350, "Error opening RTE file."},
    {354, "Error reading RTE file."},
    {360, "Error opening SC file."},
    {362, "Error allocating MCA."},
    {364, "Error reading SC file."},
    {370, "Error opening SET file."},
    {374, "Error reading SET file."},
    {375, "Error opening SRV file."},
    {380, "Error opening WGT file."},
    {384, "Error reading WGT file."},
    {385, "Weight Total Error."},
    {390, "Error opening ZF1 file."},
    {394, "Error reading ZF1 file."},
    {410, "Error opening ZF2 file."},
    {414, "Error reading ZF2 file."},
    {415, "Error opening ZP2 file."},
    {416, "Error reading ZP2 file."},
    {417, "Error opening EXP file."},
    {418, "Error writing EXP file."},
    {425, "Error writing ZP3 file."},
    {435, "Error writing ZP5 file."},
    {436, "Error opening ZP6 file."},
    {437, "Error opening ZP1 file."},
    {438, "Error reading ZP6 file."},
    {444, "Error reading ZPS file."},
    {450, "Error opening TBL file."},
    {460, "Error opening SCC file."},
    {464, "Error reading SCC file."},
    {470, "Error opening MX2 file."},
    {480, "Error opening BSC file."},
    {484, "Error reading BSC file."},
    {490, "Error opening ACC file."},
    {494, "Error reading ACC file."},
    {501, "Invalid ZIP Code Combination."},
    {503, "Error opening Printer"},
    {504, "Error opening sideline file"},
    {511, "Error invalid Adjustment."},
    {512, "Error invalid LAB."},
    {513, "Invalid Factor."},
    {520, "Error creating ACC file."},
    {533, "Error occurred in Service DLL."},
    {534, "Error reading MCA file."},
};
static_assert(std::is_sorted(std::begin(kMessages), std::end(kMessages),
                             [](const ErrorMessage& a, const ErrorMessage& b) {
                                 return a.code < b.code;
                             }));

constexpr const char* kMessageOfOtherCodes = "Error occurred.";

}  // namespace

void GetErrorText(int32_t code, char* buffer) {
    const auto* const found = std::lower_bound(
        std::begin(kMessages), std::end(kMessages), code,
        [](const ErrorMessage& message, int32_t wanted) { return message.code < wanted; });
    const bool known = found != std::end(kMessages) && found->code == code;
    const std::string_view text = known ? found->text : kMessageOfOtherCodes;
    buffer[text.copy(buffer, kMessageSize - 1)] = '\0';
}

}  // namespace hundredweight
