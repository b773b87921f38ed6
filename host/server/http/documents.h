// What the service has to show besides what it rates: its pages and its description.
#pragma once

#include <string>
#include <string_view>

#include "files/embedded_file.h"

namespace cwt {

/// The page at a path, "/" being index.html; null when there is none.
const EmbeddedFile* FindPage(std::string_view path);

/// A text that another content changes, in quotes.
std::string TagOf(const EmbeddedFile& page);

/// The description of the service, OpenAPI 3.1, with the schemas of what it takes and gives.
std::string OpenApiDocument();

}  // namespace cwt
