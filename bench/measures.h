// What is measured: a file for each part of the product. Each works in the current directory.
#pragma once

#include "pairs.h"

namespace hundredweight::bench {

/// How far a run goes.
struct Extent {
    int rows = 1000000;
};

/// Rows of batches, explanations and their memory, through the command.
void MeasureRows(Table& table, const Extent& extent);

/// One shipment through the command, and its memory.
void MeasureStart(Table& table, const Extent& extent);
/// Shipments in a session that stays.
void MeasureSession(Table& table, const Extent& extent);
/// The reference engine: ratings and starts, by the size of its rate base.
void MeasureEngine(Table& table, const Extent& extent);
/// Loads of tariff sets, and what the system's share of them is.
void MeasureLoading(Table& table, const Extent& extent);

/// Look-ups in files that stay as they are: minimum charges and profiles.
void MeasureResident(Table& table, const Extent& extent);
/// Point codes and tariff names.
void MeasureLookups(Table& table, const Extent& extent);

/// RateShipment, all but what the engine does.
void MeasureRating(Table& table, const Extent& extent);

}  // namespace hundredweight::bench
