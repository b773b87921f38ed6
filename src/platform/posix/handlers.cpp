#include "platform/posix/handlers.h"

#include <atomic>

namespace {

std::atomic<MessageBoxHandler> message_box_handler{nullptr};
std::atomic<QuitHandler> quit_handler{nullptr};

}  // namespace

void SetMessageBoxHandler(MessageBoxHandler handler) {
    message_box_handler = handler;
}

void SetQuitHandler(QuitHandler handler) {
    quit_handler = handler;
}

MessageBoxHandler HostMessageBoxHandler() {
    return message_box_handler;
}

QuitHandler HostQuitHandler() {
    return quit_handler;
}
