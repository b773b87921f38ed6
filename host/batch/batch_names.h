// What the names of a batch's files tell.
#pragma once

#include <string>
#include <vector>

#include "batch/row_source.h"

namespace cwt {

/// The form of an input or output: what is told, if anything, else what the name's ending says.
/// Throws std::runtime_error when neither does, or when the form cannot be had there.
Form InputForm(const std::string& name, const std::string& told);
Form OutputForm(const std::string& name, const std::string& told, Form otherwise);

/// The files that a run writes rows and its state to; none for standard output.
std::vector<std::string> FilesOfOutput(const std::string& output);

/// Whether two names are of one file, which need not be there.
bool IsSameFile(const std::string& a, const std::string& b);

/// What the same rows under other data go to: "bills.against.csv" beside "bills.csv".
std::string AgainstName(const std::string& output);

}  // namespace cwt
