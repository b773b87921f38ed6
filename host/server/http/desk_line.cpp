#include "server/http/desk_line.h"

#include <utility>

#include "server/service_messages.h"

namespace cwt {

void DeskLine::Say(std::uint32_t kind, const std::string& text) {
    const std::lock_guard lock(sending_);
    foreman_.Send({kind, text});
}

std::future<std::string> DeskLine::Send(std::uint32_t kind, std::uint64_t generation,
                                        const std::string& bytes) {
    std::future<std::string> answer;
    std::uint64_t id = 0;
    {
        const std::lock_guard lock(mutex_);
        id = ++last_id_;
        answer = open_[id].get_future();
    }
    Say(kind, WriteParcel({id, generation, bytes}));
    return answer;
}

std::future<DeskReply> DeskLine::Ask(const DeskRequest& request, std::uint64_t generation) {
    return std::async(std::launch::deferred, [answer = Send(ServiceMessage::kAsk, generation,
                                                            WriteRequest(request))]() mutable {
        return ReadReply(answer.get());
    });
}

void DeskLine::Receive() {
    while (auto message = foreman_.Receive()) {
        const std::lock_guard lock(mutex_);
        switch (message->kind) {
            case ServiceMessage::kState:
                state_ = nlohmann::json::parse(message->bytes);
                break;
            case ServiceMessage::kSet:
                set_ = std::move(message->bytes);
                break;
            case ServiceMessage::kStop:
                is_stopping_ = true;
                break;
            default: {
                const Parcel parcel = ReadParcel(message->bytes);
                auto open = open_.extract(parcel.id);
                if (open.empty()) break;  // Asked by a front that was lost.
                open.mapped().set_value(message->kind == ServiceMessage::kPinned
                                            ? std::to_string(parcel.generation)
                                            : parcel.bytes);
            }
        }
    }
}

nlohmann::json DeskLine::state() const {
    const std::lock_guard lock(mutex_);
    return state_;
}

std::string DeskLine::set() const {
    const std::lock_guard lock(mutex_);
    return set_;
}

Pinned::Pinned(DeskLine& line)
    : line_(line), generation_(std::stoull(line.Send(ServiceMessage::kPin, 0, {}).get())) {}

Pinned::~Pinned() {
    line_.Say(ServiceMessage::kUnpin, WriteParcel({0, generation_, {}}));
}

}  // namespace cwt
