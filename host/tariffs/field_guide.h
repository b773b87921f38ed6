// The folder of text field by field, for its writers.
#pragma once

#include <string>

namespace cwt {

/// Every sheet and section in Markdown, a table each.
std::string FieldGuide();

/// The JSON Schema of settings.json.
std::string SettingsSchema();

}  // namespace cwt
