#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>

#include "office/builtin/records/Record.h"
#include "office/builtin/records/RecordEdits.h"
#include "platform/String.h"

namespace tessarine::builtin
{

/// The number by which shapes and texts name an external object.
using ExternalObjectId = std::uint32_t;

/// What an external object of a shape is.
enum class ExternalObjectKind : std::uint8_t { Embedded, Linked, Control, Media };

/// The document's list of what lies outside of it ([MS-PPT] 2.10.1): hyperlinks, OLE objects, media.
class ExternalObjects
{
public:
    /// `list` is the container in the document; nothing for a document without one. Borrows the bytes.
    ExternalObjects(std::string_view bytes, const std::optional<Record>& list);

    /// Nothing for an object that the list doesn't hold, and for hyperlinks.
    std::optional<ExternalObjectKind> KindOf(ExternalObjectId id) const;
    /// The persist object with the storage of an OLE object; nothing without one.
    std::optional<std::uint32_t> StorageOf(ExternalObjectId id) const;

    bool IsHyperlink(ExternalObjectId id) const { return hyperlinks_.contains(id); }
    String Address(ExternalObjectId id) const;    ///< "" for a hyperlink to a place in this file.
    bool LeadsInside(ExternalObjectId id) const;  ///< To a place in a file, beside the address.

    /// Leads a hyperlink elsewhere.
    void PutAddress(ExternalObjectId id, const String& address);
    /// A further hyperlink like another one. Gives its number.
    ExternalObjectId Copy(ExternalObjectId id, const String& address);
    void Remove(ExternalObjectId id);

    bool IsChanged() const { return isChanged_; }
    /// Hands the changes on.
    void Put(RecordEdits& target) const;

private:
    struct Hyperlink {
        Record record;  // that it was read from, or the one that it is a copy of
        std::optional<String> name;
        std::optional<String> target;
        bool leadsInside = false;
        bool isCopy = false;
        bool isChanged = false;
        bool isRemoved = false;
    };
    struct OleObject {
        ExternalObjectKind kind;
        std::optional<std::uint32_t> storage;
    };

    void ReadHyperlink(const Record& record);
    void ReadObject(const Record& record, ExternalObjectKind kind);
    std::string BytesOf(ExternalObjectId id, const Hyperlink& hyperlink) const;

    std::string_view bytes_;
    std::optional<Record> seed_;  // ExObjListAtom: the greatest number given so far
    ExternalObjectId greatest_ = 0;
    bool hasCopies_ = false;
    bool isChanged_ = false;
    std::map<ExternalObjectId, Hyperlink> hyperlinks_;
    std::map<ExternalObjectId, OleObject> objects_;
};

}  // namespace tessarine::builtin
