// The bytes of a batch's input: a file or standard input, as it is or packed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace cwt {

class BytesIn {
 public:
    BytesIn() = default;
    BytesIn(const BytesIn&) = delete;
    BytesIn& operator=(const BytesIn&) = delete;
    virtual ~BytesIn() = default;

    /// Fills the buffer as far as there are bytes. Result: how many; fewer only at the end, or when
    /// the program was asked to stop. Throws std::runtime_error, with the reason, when the input
    /// cannot be read, or is packed and damaged or cut.
    virtual std::size_t Read(std::span<char> buffer) = 0;

    /// Bytes of the file so far, packed ones if it is.
    virtual std::uint64_t position() const = 0;
};

/// Opens a file, or standard input ("-"). What begins like gzip or Zstandard is unpacked, whatever
/// its name. Throws std::runtime_error as above.
std::unique_ptr<BytesIn> OpenBytes(const std::string& name);

}  // namespace cwt
