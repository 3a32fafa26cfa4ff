#pragma once

#include <string_view>

namespace tessarine::builtin
{

/// The namespaces that the engine reads. Transitional and Strict names of one vocabulary are one value (ECMA-376 parts
/// 1 and 4), so that nothing else needs to know which kind a file is.
enum class Ns {
    None,                   ///< Any other, or none.
    Presentation,           ///< p
    Drawing,                ///< a
    Spreadsheet,            ///< x, of workbooks.
    DocumentRelationships,  ///< r, on attributes
    Compatibility,          ///< mc
    Understood,    ///< Extension vocabularies whose markup is taken in alternate content (p14, a14, cx1, v, ...).
    ContentTypes,  ///< Elements of "[Content_Types].xml".
    PackageRelationships,  ///< Elements of relationship parts.
    CoreProperties,        ///< cp
    DublinCore,            ///< dc
    DublinCoreTerms,       ///< dcterms
    ExtendedProperties,
    CustomProperties,
    VariantTypes,  ///< vt, the typed values of custom properties.
    Count          ///< How many there are, for tables.
};

/// The namespace that a URI stands for, compared letter by letter (Namespaces in XML 1.0, 2.3).
Ns NamespaceOf(std::string_view uri);

}  // namespace tessarine::builtin
