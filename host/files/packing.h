// Packed files: gzip and Zstandard.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace cwt {

enum class Packing { kNone, kGzip, kZstandard };

/// How a file is packed that begins with these bytes.
Packing PackingOf(std::string_view beginning);

/// How a file of this name is packed: "bills.ndjson.gz".
Packing PackingOfName(std::string_view name);

/// Packs a text so that packed texts behind one another are the packed whole. Throws
/// std::runtime_error where this build cannot.
std::string Pack(Packing packing, std::string_view text);

class Unpacker {
 public:
    Unpacker() = default;
    Unpacker(const Unpacker&) = delete;
    Unpacker& operator=(const Unpacker&) = delete;
    virtual ~Unpacker() = default;

    /// Takes packed bytes off the front and writes what they hold. Result: the bytes written, which
    /// may be none. Throws std::runtime_error for damaged bytes.
    virtual std::size_t Unpack(std::string_view& packed, std::span<char> buffer) = 0;

    /// Whether what was unpacked so far could be a whole file.
    virtual bool is_complete() const = 0;
};

/// Throws std::runtime_error where this build has no library for it.
std::unique_ptr<Unpacker> MakeUnpacker(Packing packing);

}  // namespace cwt
