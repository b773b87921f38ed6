// The partners' text files in the folder: as sheets, or as they are.
#pragma once

#include <string_view>

#include "tariffs/finding.h"
#include "tariffs/folder.h"
#include "tariffs/partners/partner_checks.h"
#include "tariffs/partners/partner_tables.h"

namespace cwt {

/// Writes files as sheets. One whose bytes its sheet would not give back, or that a build would
/// refuse, goes into the folder as it is, and is told.
class PartnerExport {
 public:
    PartnerExport(FolderWriter& folder, Findings& findings)
        : folder_(folder), findings_(findings) {}

    /// In the order of the tables.
    void Write(const PartnerTable& table, std::string_view bytes);

 private:
    /// Letters beyond ASCII are those of Windows-1252.
    void TellLetters(const PartnerTable& table, std::string_view bytes);

    FolderWriter& folder_;
    Findings& findings_;
    Findings checked_;  ///< What a build will tell.
    PartnerChecks checks_{checked_, ""};
};

/// Makes the files of a folder, checks them, and with them the names of tariffs in the set's own
/// files, which are made already.
void ReadPartnerFiles(FolderReader& folder, Files& files);

}  // namespace cwt
