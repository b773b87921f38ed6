// The engine's answers in the columns of its records.
#pragma once

#include <hundredweight/engine_interface.h>

#include "reference/engine/rate_base.h"
#include "reference/engine/rating.h"

namespace hundredweight::reference {

void WriteTables(EngineTablesSection& section, const Tariff& tariff);
void WriteEffectiveTable(EfcRecord& record, const Tariff& tariff);
void WriteVersion(EngineVersionBlock& block);

/// Writes every out field of the record; those of a request that was not rated read as zero.
void WriteAnswer(EngineRateRecord& record, const RateBase& base, const RateRequest& request,
                 const Rating& rating);

}  // namespace hundredweight::reference
