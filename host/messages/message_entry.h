// Why a message comes, and what to do about it, in tables by subject.
#pragma once

#include <cstdint>
#include <span>

namespace cwt {

struct MessageEntry {
    int32_t code;
    /// What the cause goes on from: the extension of a file of the set; null for none.
    const char* file;
    const char* cause;  ///< {} is the size of the file's record in bytes.
    const char* cure;   ///< Null: that of files of the set.
};

/// Of a shipment, its profile and the user's entries.
extern const std::span<const MessageEntry> kShipmentMessages;
extern const std::span<const MessageEntry> kProfileMessages;

/// Of the files of a tariff set: those that every host reads, and those that one without an engine
/// reads besides.
extern const std::span<const MessageEntry> kSetMessages;
extern const std::span<const MessageEntry> kOwnTableMessages;
extern const std::span<const MessageEntry> kWrittenFileMessages;

/// Of the partners.
extern const std::span<const MessageEntry> kEngineMessages;
extern const std::span<const MessageEntry> kServiceGuideMessages;

}  // namespace cwt
