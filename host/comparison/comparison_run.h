// Compares two outputs of a batch and writes what was asked for.
#pragma once

#include <string>

#include "comparison/comparison.h"

namespace cwt {

struct ComparisonRequest {
    ComparedFiles files;
    std::string csv;   ///< Shipments side by side go to this file; empty: to none.
    bool all = false;  ///< Every shipment, not only those that changed.
    std::string page;  ///< The HTML page; empty: none.
    bool replace = false;
};

/// Throws Broken when the files cannot be compared or written; then no file of the request has been
/// made or replaced by half.
Comparison RunComparison(const ComparisonRequest& request);

}  // namespace cwt
