#include "tariffs/field_guide.h"

#include <fmt/core.h>

#include <array>

#include "tariffs/difference/subjects.h"
#include "tariffs/families/family.h"
#include "tariffs/folder.h"
#include "tariffs/partners/partner_tables.h"
#include "tariffs/record_text.h"
#include "tariffs/settings_document.h"

namespace cwt {
namespace {

/// What is written in the place of a field, and what its bytes are when nothing is.
struct FormWords {
    std::string form, nothing;
};

FormWords WordsOfField(const Field& field) {
    const std::string width = std::to_string(field.width);
    const char* const padding = field.padding == '\0' ? "empty" : "blank";
    switch (field.kind) {
        case Kind::kText:
            return {"text, " + width, padding};
        case Kind::kPostal:
            return {"postal code, " + width, padding};
        case Kind::kCode:
            return {"code, " + width, padding};
        case Kind::kRight:
            return {"number, " + width, padding};
        case Kind::kFlag:
            return {"yes or no", "blank"};
        case Kind::kInt:
            return {field.width == 2 ? "whole number, 16 bits" : "whole number, 32 bits", "0"};
        case Kind::kUnsigned:
            return {
                field.width == 2 ? "whole number from 0, 16 bits" : "whole number from 0, 32 bits",
                "0"};
        case Kind::kFloat:
            return {"decimal number", "0"};
        case Kind::kDollars:
        case Kind::kCents:
            return {"dollars", "0"};
        case Kind::kDate:
            return {"date", "blank"};
    }
    return {};
}

FormWords WordsOfColumn(const PartnerColumn& column) {
    switch (column.form) {
        case PartnerForm::kTariff:
            return {"text of 8", ""};
        case PartnerForm::kDate:
            return {"date", ""};
        case PartnerForm::kClasses:
        case PartnerForm::kBreaks:
            return {"list", ""};
        case PartnerForm::kRange:
            return {"prefix of 3", ""};
        case PartnerForm::kRates:
        case PartnerForm::kAmount:
            return {"dollars", ""};
        case PartnerForm::kPostalCode:
            return {"postal code", ""};
        case PartnerForm::kState:
            return {"text of 2", ""};
        case PartnerForm::kService:
            return {"D or I", ""};
        case PartnerForm::kDays:
            return {fmt::format("whole number, {}", column.most), "empty"};
        case PartnerForm::kText:
            return {fmt::format("text, {}", column.most), "empty"};
    }
    return {};
}

std::string Row(const std::string& name, const FormWords& words, bool is_needed,
                std::string_view meaning) {
    return fmt::format("| {} | {} | {} | {} |\n", name, words.form,
                       is_needed ? "needed" : words.nothing, meaning);
}

std::string Head(const char* kind) {
    return fmt::format("\n| {} | Form | Left out | Meaning |\n|---|---|---|---|\n", kind);
}

std::string FieldRows(std::span<const Field> fields) {
    std::string rows;
    for (const Field& field : fields) {
        const std::string name = field.count == 1
                                     ? fmt::format("`{}`", field.name)
                                     : fmt::format("`{0}_1` to `{0}_{1}`", field.name, field.count);
        rows += Row(name, WordsOfField(field), field.is_needed, field.meaning);
    }
    return rows;
}

/// The file that a family is built to: "SET.CLS", SET standing for the set's name.
std::string FileOf(const Family& family) {
    const std::string_view extension = family.extension;
    return extension.find('.') == extension.npos ? fmt::format("SET.{}", extension)
                                                 : std::string(extension);
}

/// Its heading, and what its rows are.
std::string Title(const std::string& place, const std::string& file, const std::string& words) {
    return fmt::format("\n### {}: {}\n\nFile: `{}`.", place, words, file);
}

std::string InnerSheets(const Family& family, const std::string& file) {
    std::string text;
    for (const Inner& inner : family.inner) {
        text += Title(fmt::format("`{}`", inner.sheet), file, SubjectOf(inner.sheet).words);
        text += fmt::format(" A row an entry, at most {}{}; one without a row is {}.\n",
                            inner.count, family.shape == Shape::kTable ? " a record" : "",
                            family.filling == '\0' ? "zeros" : "blank");
        text += Head("Column");
        if (family.shape == Shape::kTable) {
            text += Row(fmt::format("`{}`", kRecordColumn), {"whole number", ""}, true,
                        fmt::format("Row of `{}` that it belongs to, from 1.", family.text));
        }
        text += Row(fmt::format("`{}`", inner.number), {"whole number", ""}, true,
                    fmt::format("Number of the entry, 1 to {}.", inner.count));
        text += FieldRows(inner.fields);
        if (family.shape == Shape::kTable) {
            text += Row(fmt::format("`{}`", inner.of), {"text", ""}, false,
                        fmt::format("What `{}` says of that row: refused when it says otherwise, "
                                    "as when one of the sheets was sorted.",
                                    family.text));
        }
    }
    return text;
}

std::string SheetOf(const Family& family, const std::string& place, const std::string& file) {
    std::string text = Title(place, file, family.words);
    const bool is_section = family.shape == Shape::kSettings;
    if (family.shape == Shape::kTable) {
        text += fmt::format(" A row a record of {} bytes.", family.record_size);
    } else if (family.shape == Shape::kLines) {
        text += " A row a line.";
    } else if (family.shape == Shape::kIndexed) {
        text += " A row an entry.";
    }
    if (family.most > 0) text += fmt::format(" The library takes at most {}.", family.most);
    if (family.has_more) {
        text += fmt::format(" What the file has behind them is in `{}`.", kCarriedFile);
    }
    return text + '\n' + Head(is_section ? "Key" : "Column") + FieldRows(family.fields);
}

std::string PartnerSheet(const PartnerTable& table) {
    std::string text = Title(fmt::format("`{}`", table.SheetName()), table.file,
                             SubjectOf(table.SheetName()).words) +
                       " A row a line.\n" + Head("Column");
    for (const PartnerColumn& column : table.columns) {
        const std::string name = column.name;
        const FormWords words = WordsOfColumn(column);
        const bool is_needed = column.is_needed || words.nothing.empty();
        if (column.form == PartnerForm::kRange) {
            const std::string start = name.empty() ? "" : name + '_';
            text += Row(fmt::format("`{}first`", start), words, true, column.meaning);
            text += Row(fmt::format("`{}last`", start), {words.form, "empty"}, false,
                        "The last of the range, included; nothing: the first alone.");
        } else if (column.form == PartnerForm::kRates) {
            text +=
                Row(fmt::format("`{0}_1` to `{0}_{1}`", name, kMostTableEntries),
                    {words.form, "as many as the tariff has weight breaks"}, false, column.meaning);
        } else {
            text += Row(fmt::format("`{}`", name), words, is_needed, column.meaning);
        }
    }
    return text;
}

}  // namespace

std::string FieldGuide() {
    std::string sections = fmt::format("## Sections of `{}`\n", kSettingsFile);
    std::string sheets = "\n## Sheets\n", carried;
    for (const Family& family : Families()) {
        const std::string file = FileOf(family);
        if (family.shape == Shape::kCarried) {
            carried += fmt::format("| `{}` | `{}` | {} |\n", family.extension, file, family.words);
        } else if (family.shape == Shape::kSettings) {
            sections += SheetOf(family, fmt::format("`{}`", family.text), file);
        } else if (family.shape != Shape::kArray) {
            sheets += SheetOf(family, fmt::format("`{}`", family.text), file);
        }
        sheets += InnerSheets(family, file);
    }
    sheets += SheetOf(kZipTable, fmt::format("`{}NAME.csv`", kZipTable.text), "NAME.ZP6");
    for (const Family* family : std::array{&kOptionFile, &kEarlierOptionFile}) {
        sheets += SheetOf(*family, fmt::format("`{}NAME.csv`", family->text), "NAME");
    }
    std::string partners = "\n## Sheets of the partners\n";
    for (const PartnerTable& table : PartnerTables()) partners += PartnerSheet(table);
    return sections + sheets + partners +
           fmt::format(
               "\n## Files without a sheet\n\nTheir bytes are in `{}`.\n\n"
               "| There | File | What it is |\n|---|---|---|\n",
               kCarriedFile) +
           carried;
}

}  // namespace cwt
