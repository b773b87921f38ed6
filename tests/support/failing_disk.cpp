#include "support/failing_disk.h"

#include <cerrno>
#include <cstdlib>

namespace hundredweight {

bool FailingDisk::Strikes() {
    if (current == nullptr) return false;
    if (current->struck) return current->cut == Cut::kAllFailFromThere;
    return current->struck = current->to_strike > 0 && --current->to_strike == 0;
}

int FailingDisk::Fail() {
    if (current->cut == Cut::kProcessDies) std::_Exit(kDied);
    errno = EIO;
    return -1;
}

bool FailingDisk::ContentStrikes() {
    if (current != nullptr) current->flushed = false;
    const bool strikes = Strikes();
    if (strikes) current->content_struck = true;
    return strikes;
}

bool FailingDisk::FlushStrikes() {
    if (current == nullptr) return false;
    const bool unflushed = !current->flushed;
    const bool strikes = Strikes();
    current->content_struck |= strikes && unflushed;
    current->flushed |= !strikes;
    return strikes;
}

void FailingDisk::NoteName() {
    if (current != nullptr) current->named_unflushed |= !current->flushed;
}

void FailingDisk::CountRead(std::ptrdiff_t size) {
    if (current != nullptr && size > 0) current->bytes_read += static_cast<std::size_t>(size);
}

}  // namespace hundredweight
