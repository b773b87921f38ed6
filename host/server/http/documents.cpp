#include "server/http/documents.h"

#include <cwt_descriptions_files.h>
#include <cwt_pages_files.h>
#include <fmt/core.h>

#include <nlohmann/json.hpp>

#include "files/digest.h"
#include "text/json_writer.h"

namespace cwt {

const EmbeddedFile* FindPage(std::string_view path) {
    const std::string_view name = path == "/" ? "index.html" : path.substr(1);
    for (const EmbeddedFile& page : kPages) {
        if (page.name == name) return &page;
    }
    return nullptr;
}

std::string TagOf(const EmbeddedFile& page) {
    return fmt::format("\"{:016x}\"", Digest(0, page.bytes));
}

std::string OpenApiDocument() {
    using Json = nlohmann::ordered_json;
    Json document, schemas;
    for (const EmbeddedFile& file : kDescriptions) {
        if (file.name == "openapi.json") {
            document = Json::parse(file.bytes);
        } else {
            schemas[std::string(file.name.substr(0, file.name.find('.')))] =
                Json::parse(file.bytes);
        }
    }
    document["components"]["schemas"].update(schemas);
    return DocumentOf(document);
}

}  // namespace cwt
