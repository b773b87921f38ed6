// What goes between the supervisor of a rating service and its processes.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace cwt {

struct ServiceMessage {
    enum Kind : std::uint32_t {
        // From a process that works for a generation.
        kReady,      ///< It can begin; what it has to say.
        kBroken,     ///< It cannot go on; the reason.
        kReply,      ///< A parcel: the reply to a request.
        kStale,      ///< The same, and the data that the process began with are no more.
        kUnchanged,  ///< What was found at a look at the data.
        kChanged,    ///< The same; the reason.
        // To such a process.
        kAsk,   ///< A parcel: a request.
        kLook,  ///< Look at the data.
        // From the front.
        kListening,  ///< The address that it listens at.
        kPin,        ///< A parcel: the current generation is wanted for more than one request.
        kUnpin,      ///< A parcel: no longer.
        kDone,       ///< All is answered, after kStop.
        // To the front.
        kPinned,  ///< A parcel, with the generation.
        kState,   ///< How the service is, as JSON.
        kSet,     ///< What the current tariff set is, as JSON.
        kStop,    ///< Take no more connections, and end when all is answered.
    };
};

/// A request or its reply on the way through the supervisor.
struct Parcel {
    std::uint64_t id = 0;
    std::uint64_t generation = 0;  ///< That is to answer; 0 for the current one.
    std::string bytes;
};

inline std::string WriteParcel(const Parcel& parcel) {
    std::string text(2 * sizeof(std::uint64_t), '\0');
    std::memcpy(text.data(), &parcel.id, sizeof parcel.id);
    std::memcpy(text.data() + sizeof parcel.id, &parcel.generation, sizeof parcel.generation);
    return text += parcel.bytes;
}

inline Parcel ReadParcel(std::string_view text) {
    Parcel parcel;
    std::memcpy(&parcel.id, text.data(), sizeof parcel.id);
    std::memcpy(&parcel.generation, text.data() + sizeof parcel.id, sizeof parcel.generation);
    parcel.bytes = text.substr(2 * sizeof(std::uint64_t));
    return parcel;
}

}  // namespace cwt
