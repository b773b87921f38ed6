#include "support/failing_disk.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <random>
#include <thread>

namespace hundredweight {

bool FailingDisk::Strikes() {
    if (current == nullptr) return false;
    if (current->fault == Fault::kAllDelayed) {
        thread_local std::minstd_rand chance{std::random_device()()};
        std::this_thread::sleep_for(std::chrono::microseconds(chance() % 2000));
        return false;
    }
    if (current->struck) return current->fault == Fault::kAllFailFromThere;
    return current->struck = current->to_strike > 0 && --current->to_strike == 0;
}

void FailingDisk::Fail() {
    const Fault fault = current->fault;
    if (fault == Fault::kDiesBefore || fault == Fault::kDiesAfter) std::_Exit(kDied);
    errno = fault == Fault::kDiskFull ? ENOSPC : fault == Fault::kInterrupted ? EINTR : EIO;
}

int FailingDisk::NoteFlush(int result) {
    if (current == nullptr) return result;
    current->content_struck |=
        result != 0 && !current->flushed && current->fault != Fault::kInterrupted;
    current->flushed |= result == 0;
    return result;
}

void FailingDisk::NoteName() {
    if (current != nullptr) current->named_unflushed |= !current->flushed;
}

}  // namespace hundredweight
