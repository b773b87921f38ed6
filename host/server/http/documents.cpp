#include "server/http/documents.h"

#include <cwt_descriptions_files.h>
#include <cwt_pages_files.h>
#include <fmt/core.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "files/digest.h"
#include "text/json_writer.h"

namespace cwt {
namespace {

using Json = nlohmann::ordered_json;

/// A reference of a schema that stands alone, among the others: "#/$defs/point" and
/// "urn:hundredweight:bill:1#/properties/id".
std::string ReferenceTo(std::string_view reference, std::string_view own_name) {
    constexpr std::string_view kUrn = "urn:hundredweight:";
    const std::size_t hash = std::min(reference.find('#'), reference.size());
    const std::string_view pointer = reference.substr(std::min(hash + 1, reference.size()));
    std::string_view name = own_name;
    if (reference.starts_with(kUrn)) {
        name = reference.substr(0, hash).substr(kUrn.size());
        name = name.substr(0, name.find(':'));
    }
    return fmt::format("#/components/schemas/{}{}", name, pointer);
}

/// Makes a schema a part of a document.
void Embed(Json& schema, std::string_view name) {
    if (schema.is_object()) {
        schema.erase("$id");
        schema.erase("$schema");
        if (const auto reference = schema.find("$ref"); reference != schema.end()) {
            *reference = ReferenceTo(reference->get<std::string>(), name);
        }
    }
    if (!schema.is_structured()) return;
    for (Json& part : schema) Embed(part, name);
}

}  // namespace

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
    Json document, schemas;
    for (const EmbeddedFile& file : kDescriptions) {
        if (file.name == "openapi.json") {
            document = Json::parse(file.bytes);
        } else {
            const std::string name(file.name.substr(0, file.name.find('.')));
            schemas[name] = Json::parse(file.bytes);
            Embed(schemas[name], name);
        }
    }
    document["components"]["schemas"].update(schemas);
    return DocumentOf(document);
}

}  // namespace cwt
