// The records and functions as a language declares them.
#pragma once

#include <map>
#include <string>

#include "description.h"

namespace languages {

/// A language's names of the types of C, and what each is called where it is an argument.
using TypeNames = std::map<std::string, std::string>;

/// The whole file that a language is given, of the document that record.json holds.
std::string WriteC(const Json& description);
std::string WriteCSharp(const Json& description);
std::string WritePascal(const Json& description);
std::string WriteBasic(const Json& description);
std::string WritePython(const Json& description);

/// The record that has a type's name, or null.
const Json* FindRecord(const Json& description, const std::string& name);

/// The type's name in a language; one that has none there is a mistake.
std::string NameOf(const std::string& type, const TypeNames& names);

/// Fields that name the bytes of a field.
Json OverlaysOf(const Json& record, const Json& field);

/// A position or size as a constant expression: "250 + 10 * WIDER", where WIDER is the bytes by
/// which a pointer is wider than 4.
std::string ByWidth(const Json& bytes, const std::string& wider);

/// What the generated files say of themselves.
std::string FileNotice(const Json& description);

}  // namespace languages
