#include "reference/samples/service_guide_files.h"

namespace hundredweight::samples {
namespace {

// clang-format off
constexpr const char* kTerminals =
    "# name | code | address | second line | city | state | postal code | telephone | toll-free |"
    " fax | hours | manager | electronic mail\n"
    "# A code that begins with XXX stands for no terminal of the carrier's own.\n"
    "New York Terminal | NYC01 | 48-20 Review Avenue | | Long Island City | NY | 11101 | 718-555-0110"
    " | 800-555-0110 | 718-555-0111 | Mon-Fri 06:00-20:00 | Rosa Delgado | nyc@carrier.example\n"
    "Atlanta Terminal | ATL01 | 1250 Moreland Avenue SE | Gate 3 | Atlanta | GA | 30316-3302 |"
    " 404-555-0120 | 800-555-0120 | 404-555-0121 | Mon-Fri 07:00-19:00, Sat 08:00-12:00 |"
    " Dana Whitfield | atlanta@carrier.example\n"
    "Chicago Terminal | CHI01 | 5100 West 47th Street | | Chicago | IL | 60638 | 773-555-0130 |"
    " 800-555-0130 | 773-555-0131 | Mon-Sat 00:00-24:00 | Walter Nowak | chicago@carrier.example\n"
    "Dallas Terminal | DAL01 | 4400 Irving Boulevard | | Dallas | TX | 75247 | 214-555-0140 |"
    " 800-555-0140 | 214-555-0141 | Mon-Fri 07:00-19:00 | June Castillo | dallas@carrier.example\n"
    "Los Angeles Terminal | LAX01 | 2300 East Vernon Avenue | | Vernon | CA | 90058 | 323-555-0150 |"
    " 800-555-0150 | 323-555-0151 | Mon-Fri 05:00-21:00 | Kenji Mori | la@carrier.example\n"
    "Toronto Terminal | TOR01 | 75 Commissioners Street | | Toronto | ON | M5A 1A6 | 416-555-0160 |"
    " 800-555-0160 | 416-555-0161 | Mon-Fri 07:00-18:00 | Anne Fournier | toronto@carrier.example\n"
    "Served on request | XXX01 | | | | | | | 800-555-0100 | | | | service@carrier.example\n";

constexpr const char* kPoints =
    "# postal-code prefixes | terminal | service\n"
    "100-119 | NYC01 | D\n"
    "120-149 | NYC01 | I\n"
    "300-303 | ATL01 | D\n"
    "304-319 | ATL01 | I\n"
    "600-608 | CHI01 | D\n"
    "609-629 | CHI01 | I\n"
    "750-753 | DAL01 | D\n"
    "754-799 | DAL01 | I\n"
    "900-918 | LAX01 | D\n"
    "919-961 | LAX01 | I\n"
    "967-968 | XXX01 | I\n"
    "995-999 | XXX01 | I\n"
    "M1A-M9Z | TOR01 | D\n"
    "K0A-P9Z | TOR01 | I\n";

constexpr const char* kTransitDays =
    "# terminal | terminal | standard business days | guaranteed | added at the border\n"
    "NYC01 | ATL01 | 2 | 1 |\n"
    "NYC01 | CHI01 | 2 | 1 |\n"
    "NYC01 | LAX01 | 5 | 3 |\n"
    "NYC01 | TOR01 | 2 | 2 | 1\n"
    "ATL01 | ATL01 | 1 | |\n"
    "ATL01 | CHI01 | 2 | 1 |\n"
    "ATL01 | DAL01 | 2 | 1 |\n"
    "ATL01 | TOR01 | 4 | 3 | 1\n"
    "CHI01 | LAX01 | 4 | 3 |\n"
    "CHI01 | TOR01 | 3 | 2 | 1\n";
// clang-format on

}  // namespace

FileContents ServiceGuideFiles() {
    return {{"servgd-terminals.txt", kTerminals},
            {"servgd-points.txt", kPoints},
            {"servgd-transit.txt", kTransitDays}};
}

}  // namespace hundredweight::samples
