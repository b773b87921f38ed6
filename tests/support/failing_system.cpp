#include "support/failing_system.h"

#include <unistd.h>

#include <algorithm>

#include "support/failing_disk.h"

using namespace hundredweight;

extern "C" {
void* __real_calloc(std::size_t count, std::size_t size);
ssize_t __real_read(int descriptor, void* buffer, std::size_t size);

void* __wrap_calloc(std::size_t count, std::size_t size) {
    if (allocations_to_failure > 0 && --allocations_to_failure == 0) return nullptr;
    return __real_calloc(count, size);
}

ssize_t __wrap_read(int descriptor, void* buffer, std::size_t size) {
    if (FailingDisk::Strikes()) return FailingDisk::Fail();
    const std::size_t readable = std::min(size, bytes_to_end);
    if (bytes_to_end != SIZE_MAX) bytes_to_end -= readable;
    return FailingDisk::CountRead(__real_read(descriptor, buffer, readable));
}
}
