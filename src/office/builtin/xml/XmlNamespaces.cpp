#include "office/builtin/xml/XmlNamespaces.h"

#include <algorithm>
#include <array>

namespace tessarine::builtin
{

namespace
{

struct Entry {
    std::string_view uri;
    Ns value;
};

constexpr std::array known{
    Entry{"http://schemas.openxmlformats.org/presentationml/2006/main", Ns::Presentation},
    Entry{"http://purl.oclc.org/ooxml/presentationml/main", Ns::Presentation},
    Entry{"http://schemas.openxmlformats.org/drawingml/2006/main", Ns::Drawing},
    Entry{"http://purl.oclc.org/ooxml/drawingml/main", Ns::Drawing},
    Entry{"http://schemas.openxmlformats.org/spreadsheetml/2006/main", Ns::Spreadsheet},
    Entry{"http://purl.oclc.org/ooxml/spreadsheetml/main", Ns::Spreadsheet},
    Entry{"http://schemas.openxmlformats.org/officeDocument/2006/relationships", Ns::DocumentRelationships},
    Entry{"http://purl.oclc.org/ooxml/officeDocument/relationships", Ns::DocumentRelationships},
    Entry{"http://schemas.openxmlformats.org/markup-compatibility/2006", Ns::Compatibility},
    Entry{"http://schemas.openxmlformats.org/package/2006/content-types", Ns::ContentTypes},
    Entry{"http://schemas.openxmlformats.org/package/2006/relationships", Ns::PackageRelationships},
    Entry{"http://schemas.openxmlformats.org/package/2006/metadata/core-properties", Ns::CoreProperties},
    Entry{"http://purl.org/dc/elements/1.1/", Ns::DublinCore},
    Entry{"http://purl.org/dc/terms/", Ns::DublinCoreTerms},
    Entry{"http://schemas.openxmlformats.org/officeDocument/2006/extended-properties", Ns::ExtendedProperties},
    Entry{"http://purl.oclc.org/ooxml/officeDocument/extendedProperties", Ns::ExtendedProperties},
    Entry{"http://schemas.openxmlformats.org/officeDocument/2006/custom-properties", Ns::CustomProperties},
    Entry{"http://purl.oclc.org/ooxml/officeDocument/customProperties", Ns::CustomProperties},
    Entry{"http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes", Ns::VariantTypes},
    Entry{"http://purl.oclc.org/ooxml/officeDocument/docPropsVTypes", Ns::VariantTypes},
    Entry{"urn:schemas-microsoft-com:vml", Ns::Understood},
};

/// Microsoft's extension vocabularies come in families by year; all of those that PowerPoint writes are understood.
bool IsOfficeExtension(std::string_view uri)
{
    constexpr std::string_view base = "http://schemas.microsoft.com/office/";
    if (!uri.starts_with(base))
        return false;
    uri.remove_prefix(base.size());
    return uri.starts_with("powerpoint/") || uri.starts_with("drawing/");
}

}  // namespace

Ns NamespaceOf(std::string_view uri)
{
    const auto found = std::ranges::find(known, uri, &Entry::uri);
    if (found != known.end())
        return found->value;
    return IsOfficeExtension(uri) ? Ns::Understood : Ns::None;
}

}  // namespace tessarine::builtin
