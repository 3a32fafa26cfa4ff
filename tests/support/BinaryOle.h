#pragma once

#include <string>

#include "platform/String.h"

/// What stands in the storage of an OLE object [MS-OLEDS].
namespace tessarine::test::ppt
{

/// What an object of the document is.
enum class OleKind { Embedded, Linked, Control };

/// A file moniker, or with an item a composite one of file and item; with the class ids in front.
std::string MonikerOf(const String& path, const String& item = {});

/// The stream "\x01Ole"; without a moniker it is an embedded object's.
std::string OleStream(const std::string& moniker);

/// The compound file of an object with that stream and one of contents.
std::string OleStorage(const std::string& moniker);

/// ExOleObjStg: packed, or as it is.
std::string OleStorageRecord(const std::string& storage, bool packed = true);

}  // namespace tessarine::test::ppt
