#pragma once

#include <optional>

#include "platform/String.h"

namespace tessarine
{

class CustomProperties;

/// Where a job takes its pairs from.
enum class ListSource {
    Internal,  ///< The project's own list.
    External,  ///< The list file that the job names.
};

/// What a job keeps in its project's custom properties. Readers go by the position; the names are written alone.
struct JobProperties {
    String listFile{};                         ///< 1 "FindAndReplaceFilePath": path of an external list.
    ListSource source = ListSource::Internal;  ///< 2 "FindAndReplaceListSource": "INTERNAL" or "EXTERNAL".
    String languageFile{};                     ///< 3 "LANG": file name of the language in use.
};

/// Appends the three properties.
void AddJobProperties(CustomProperties& properties, const JobProperties& values);

/// Appends a language alone, at whatever position comes next.
void AddLanguage(CustomProperties& properties, const String& language);

/// Whether the first two properties are there, so that the job tells where its pairs come from.
bool HasListSource(const CustomProperties& properties);

/// The list file without blanks around it, and the source; any text but "EXTERNAL" (case and blanks around it don't
/// count) is Internal. Each logs a line and raises `ObjectNotSet` when its property is missing.
String ListFileOf(const CustomProperties& properties);
ListSource ListSourceOf(const CustomProperties& properties);

/// Changes the source. Logs and raises as ListSourceOf.
void PutListSource(CustomProperties& properties, ListSource source);

/// The language file, or nothing when the job lacks the third property.
std::optional<String> LanguageFileOf(const CustomProperties& properties);

}  // namespace tessarine
