#include "shipment/shipment_file.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <system_error>

#include "shipment/shipment_json.h"
#include "text/path_text.h"

namespace cwt {
namespace {

constexpr std::size_t kMostBytes = std::size_t{8} << 20;

[[noreturn]] void FailToRead(const std::string& name) {
    const int reason = errno;
    throw std::runtime_error(name + ": " + std::generic_category().message(reason));
}

std::string ReadAll(std::FILE* stream, const std::string& name) {
    std::string text;
    char buffer[1 << 16];
    errno = 0;
    for (std::size_t size; (size = std::fread(buffer, 1, sizeof buffer, stream)) > 0;) {
        text.append(buffer, size);
        if (text.size() > kMostBytes) break;
    }
    if (std::ferror(stream) != 0) FailToRead(name);
    return text;
}

std::string ReadFile(const std::string& name) {
    if (name == kStandardInput) return ReadAll(stdin, "standard input");
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
        std::fopen(PathOf(name).string().c_str(), "rb"), std::fclose);
    if (!file) FailToRead(name);
    return ReadAll(file.get(), name);
}

}  // namespace

Refusals ReadShipmentFile(const std::string& name, Shipment& shipment) {
    const std::string text = ReadFile(name);
    if (text.size() > kMostBytes) return {{"", "more than 8 MiB are no shipment"}};
    return ReadShipmentJson(text, shipment);
}

}  // namespace cwt
