#include "platform/directory_listing.h"

namespace hundredweight::platform {

DirectoryListing::DirectoryListing() = default;
DirectoryListing::~DirectoryListing() = default;

}  // namespace hundredweight::platform
