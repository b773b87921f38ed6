#include <stdexcept>

#include "batch/row_database.h"

namespace cwt {

class RowDatabase::Connection {};

bool HasDatabase() {
    return false;
}

RowDatabase::RowDatabase(const std::string& path, const std::vector<std::string>& /*passed*/) {
    throw std::runtime_error(path + ": this build has no SQLite");
}

RowDatabase::~RowDatabase() = default;

void RowDatabase::Insert(std::string_view /*encoded_rows*/) {}

void RowDatabase::Commit(const std::string& /*state*/) {}

std::string RowDatabase::State() {
    return {};
}

void RowDatabase::Finish() {}

bool RowDatabase::IsFinished() const {
    return false;
}

}  // namespace cwt
