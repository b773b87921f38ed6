// The rows that a batch writes, one for each that it reads.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "bill/bill.h"
#include "shipment/refusal.h"

namespace cwt {

/// A shipment that nobody has judged, since something broke on the way.
struct Failure {
    std::string reason;
};

struct Row {
    std::uint64_t number = 0;  ///< From 1.
    std::string id;            ///< The shipment's; empty when it has none that can be read.
    std::variant<Bill, Refusals, Failure> outcome;
    /// Texts of the columns that nobody reads, in their order; those that are left out are empty.
    std::vector<std::string> passed;
};

/// A form that rows are written in.
class RowForm {
 public:
    RowForm() = default;
    RowForm(const RowForm&) = delete;
    RowForm& operator=(const RowForm&) = delete;
    virtual ~RowForm() = default;

    /// What stands before the first row; may be empty.
    virtual std::string Header() const { return {}; }

    virtual void Append(std::string& out, const Row& row) const = 0;
};

/// The names of the columns that nobody reads go with them into the rows.
std::unique_ptr<RowForm> MakeNdjsonForm(std::vector<std::string> passed);
std::unique_ptr<RowForm> MakeCsvForm(std::vector<std::string> passed);

/// Bytes for RowDatabase::Insert.
std::unique_ptr<RowForm> MakeDatabaseForm(std::vector<std::string> passed);

}  // namespace cwt
