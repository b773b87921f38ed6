#include "tariff/name_tables.h"

#include "tariff/data_file.h"
#include "tariff/whole_file.h"

namespace hundredweight {

NameTables name_tables;

namespace {

/// Reads one table. A short read leaves in the block what arrived; a block that cannot be had shows
/// as a short read.
template <class Record>
int32_t ReadNameTable(const RateContext& context, const char* extension, Block<Record>& table,
                      int32_t& count, SearchTree<Record>& tree) {
    const OpenFile file = OpenDataFile(context, extension);
    if (!file) return 0;
    WholeFile whole = ReadWholeFile(file);
    count = whole.length / static_cast<int32_t>(sizeof(Record));
    table.reset(reinterpret_cast<Record*>(whole.block.release()));
    tree.Build(table.get(), count);
    return whole.outcome == LoadOutcome::kLoaded ? 1 : 0;
}

}  // namespace

int32_t ReadCbsFile(const RateContext& context) {
    return ReadNameTable(context, ".CBS", name_tables.CbsTable, name_tables.CbsCount,
                         name_tables.CbsTree);
}

int32_t ReadCmtFile(const RateContext& context) {
    return ReadNameTable(context, ".CMT", name_tables.CmtTable, name_tables.CmtCount,
                         name_tables.CmtTree);
}

int32_t ReadNameTables(const RateContext& context) {
    return ReadCbsFile(context) == 1 && ReadCmtFile(context) == 1 ? 1 : 0;
}

int32_t FreeNameTables() {
    name_tables.CbsTable.reset();
    name_tables.CbsTree.Release();
    name_tables.CmtTable.reset();
    name_tables.CmtTree.Release();
    return 1;
}

}  // namespace hundredweight
