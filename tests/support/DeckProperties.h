#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/String.h"
#include "support/PartWriter.h"

namespace tessarine::test
{

/// Document properties of a deck under construction. A part is written when it has at least one property.
class DeckProperties
{
public:
    /// core.xml, by element: "dc:title", "cp:keywords", "dcterms:created" (gets its xsi:type).
    void Core(std::string element, String value) { core_.emplace_back(std::move(element), std::move(value)); }

    /// app.xml, by element: "Company", "TotalTime".
    void App(std::string element, String value) { app_.emplace_back(std::move(element), std::move(value)); }

    /// custom.xml: a value of the kind vt:`kind` ("lpwstr", "i4", "bool", "filetime" …). `linkTarget` may be empty.
    void Custom(String name, const std::string& kind, StringView value, const String& linkTarget = {});

    /// custom.xml: the value's element as XML, for vectors and the like.
    void CustomXml(String name, std::string valueXml, String linkTarget = {});

    /// Writes the parts that are needed; `root` gets the relationships to them.
    void Write(PackageParts& package, PartWriter& root) const;

private:
    struct CustomProperty {
        String name;
        std::string valueXml;
        String linkTarget;
    };
    std::vector<std::pair<std::string, String>> core_;
    std::vector<std::pair<std::string, String>> app_;
    std::vector<CustomProperty> custom_;
};

}  // namespace tessarine::test
