#include <stdexcept>

#include "reference/samples/file_contents.h"
#include "reference/samples/sample_folder.h"
#include "tariffs/families/family.h"

namespace hundredweight::samples {
namespace {

/// Whether a variant has a file that not all have.
bool Belongs(const std::string& extension, const SetOptions& options) {
    const std::set<std::string> mexico = {"MEF", "MET", "ZP7", "ZFM"};
    const std::set<std::string> long_forms = {"LMC", "LCA"}, short_forms = {"MC", "MCA"};
    const std::set<std::string> preferred = {"RTC", "RTE"}, fallbacks = {"RCL", "RTL"};
    if (mexico.contains(extension)) return options.mexico;
    if (long_forms.contains(extension)) return options.long_forms;
    if (short_forms.contains(extension)) return !options.long_forms;
    if (preferred.contains(extension)) return !options.fallbacks;
    if (fallbacks.contains(extension)) return options.fallbacks;
    return true;
}

void Set(std::string& record, std::string_view name, const char* text) {
    for (const cwt::Column& column : cwt::ColumnsOf(cwt::FamilyOf("SET")->fields)) {
        if (column.name != name) continue;
        record.replace(column.offset, column.field->width,
                       cwt::BytesOfText(*column.field, text).bytes.value());
        return;
    }
    throw std::logic_error("the settings have no such field");
}

/// The settings of a variant that is rated by its own tables, or has a Mexican part.
void Adapt(std::string& settings, const SetOptions& options) {
    const auto yes_if = [](bool condition) { return condition ? "yes" : "no"; };
    Set(settings, "mexico_zip_file", yes_if(options.mexico));
    for (const char* name : {"label_files", "second_minimum_file"}) {
        Set(settings, name, yes_if(!options.engine));
    }
    for (const char* name : {"no_base_tables", "skip_zip_tables", "no_base_rate_file"}) {
        Set(settings, name, yes_if(options.engine));
    }
    Set(settings, "tariff_source", options.engine ? "1" : "N");
}

/// Files of the built sample whose names begin so.
FileContents FilesNamed(std::string_view beginning) {
    FileContents files;
    for (const auto& [name, bytes] : BuiltFolder("tariff")) {
        if (name.starts_with(beginning)) files[name] = bytes;
    }
    return files;
}

}  // namespace

FileContents TariffSetFiles(const SetOptions& options) {
    const std::string beginning = std::string(kBaseName) + '.';
    FileContents all = FilesNamed(beginning);
    all.insert(BuiltFolder("second-choices").begin(), BuiltFolder("second-choices").end());
    FileContents files;
    for (auto& [name, bytes] : all) {
        const std::string extension = name.substr(beginning.size());
        if (!Belongs(extension, options) || options.omitted.contains(extension)) continue;
        std::string content = bytes;
        if (extension == "SET") Adapt(content, options);
        const auto length = options.lengths.find(extension);
        if (length != options.lengths.end()) content.resize(length->second, '\0');
        files[name] = content;
    }
    return files;
}

FileContents EngineFiles() {
    return FilesNamed("tolvex-");
}

FileContents ServiceGuideFiles() {
    return FilesNamed("servgd-");
}

FileContents ProfileFiles() {
    return FilesNamed("PROFILE.");
}

FileContents Shipments() {
    return SampleFolder("shipments");
}

}  // namespace hundredweight::samples
