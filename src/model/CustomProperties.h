#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "model/KeyedCollection.h"
#include "platform/String.h"

namespace tessarine
{

/// A named string of a project.
struct CustomProperty {
    String PropertyValue;  ///< A job file keeps it up to its first vertical bar.
    String ProperyName;
};

/// The named strings of a project, in order; not a presentation's custom document properties. JobProperties.h tells
/// what the first three stand for.
///
/// A failing operation writes one line to the error log and gives its empty result.
class CustomProperties
{
public:
    /// Appends a property and returns it. A key already in use adds nothing and gives null.
    std::shared_ptr<CustomProperty> Add(const String& ProperyName, const String& PropertyValue,
                                        const String& sKey = {});

    std::shared_ptr<CustomProperty> Item(const IndexKey& vntIndexKey) const;  ///< Null for a bad position or key.
    std::int32_t Count() const;
    void Remove(const IndexKey& vntIndexKey);  ///< Later properties close up. A bad position or key changes nothing.

    /// The properties in order, for a for-each loop.
    std::vector<std::shared_ptr<CustomProperty>> NewEnum() const;

private:
    KeyedCollection<CustomProperty> items_;
};

}  // namespace tessarine
