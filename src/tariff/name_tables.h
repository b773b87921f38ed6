// The base-rate point codes (CBS) and tariff names (CMT): one copy for the whole process.
#pragma once

#include <hundredweight/rate_context.h>

#include <cstdint>

#include "frame/block.h"
#include "frame/search_tree.h"

namespace hundredweight {

/// Point code of a range of postal codes; ranges ascend. Texts are padded with blanks.
struct CbsRecord {
    char LowZip[6];
    char HighZip[6];
    char PointCode[6];
};
static_assert(sizeof(CbsRecord) == 18);

/// Tariff name of a pair of point codes; pairs ascend.
struct CmtRecord {
    char OrigPointCode[6];
    char DestPointCode[6];
    char TariffName[8];
};
static_assert(sizeof(CmtRecord) == 20);

struct NameTables {
    Block<CbsRecord> CbsTable;  ///< Null when not loaded.
    int32_t CbsCount = 0;
    Block<CmtRecord> CmtTable;  ///< Null when not loaded.
    int32_t CmtCount = 0;
    SearchTree<CbsRecord> CbsTree;  ///< Of the table; empty when there was no memory for it.
    SearchTree<CmtRecord> CmtTree;  ///< The same.
};
extern NameTables name_tables;

/// Reads CBS, then CMT when CBS succeeded. Result: 1 when both were read, else 0; no code.
int32_t ReadNameTables(const RateContext& context);
int32_t ReadCbsFile(const RateContext& context);
int32_t ReadCmtFile(const RateContext& context);

/// Frees both tables. Result: 1.
int32_t FreeNameTables();

}  // namespace hundredweight
