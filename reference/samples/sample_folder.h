// The sample data as they lie in the source tree, carried within the program.
#pragma once

#include <string_view>

#include "reference/samples/file_contents.h"

namespace hundredweight::samples {

/// The files of one of the folders: "tariff", the set and its partners' files as text;
/// "second-choices", files that variants of the set have in the place of its own; "shipments".
FileContents SampleFolder(std::string_view name);

/// A tariff to begin with, as text. What is the same for all, the states, is the sample's.
FileContents TemplateFolder();

/// The data files that a folder of text gives.
const FileContents& BuiltFolder(std::string_view name);

}  // namespace hundredweight::samples
