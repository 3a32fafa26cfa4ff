#include "model/JobProperties.h"

#include "model/CustomProperties.h"
#include "platform/CaseFolding.h"
#include "platform/Failure.h"

namespace tessarine
{

namespace
{

/// The positions of the properties. They are found by position, never by name, as readers of saved jobs have always
/// done: a property put in front of these would be taken for the list file.
constexpr std::int32_t listFile = 1;
constexpr std::int32_t listSource = 2;
constexpr std::int32_t language = 3;

constexpr StringView external = u"EXTERNAL";
constexpr StringView languageName = u"LANG";

CustomProperty& PropertyAt(const CustomProperties& properties, std::int32_t position)
{
    return *NotNull(properties.Item(position));
}

String TextOf(ListSource source)
{
    return String(source == ListSource::External ? external : u"INTERNAL");
}

}  // namespace

void AddJobProperties(CustomProperties& properties, const JobProperties& values)
{
    properties.Add(u"FindAndReplaceFilePath", values.listFile);
    properties.Add(u"FindAndReplaceListSource", TextOf(values.source));
    AddLanguage(properties, values.languageFile);
}

void AddLanguage(CustomProperties& properties, const String& value)
{
    properties.Add(String(languageName), value);
}

bool HasListSource(const CustomProperties& properties)
{
    return properties.Count() >= listSource;
}

String ListFileOf(const CustomProperties& properties)
{
    return Trim(PropertyAt(properties, listFile).PropertyValue);
}

ListSource ListSourceOf(const CustomProperties& properties)
{
    const String text = ToUpper(Trim(PropertyAt(properties, listSource).PropertyValue));
    // Any other text, the empty one too, means the list in the grid.
    return text == external ? ListSource::External : ListSource::Internal;
}

void PutListSource(CustomProperties& properties, ListSource source)
{
    PropertyAt(properties, listSource).PropertyValue = TextOf(source);
}

std::optional<String> LanguageFileOf(const CustomProperties& properties)
{
    if (properties.Count() < language)
        return std::nullopt;
    return PropertyAt(properties, language).PropertyValue;
}

}  // namespace tessarine
