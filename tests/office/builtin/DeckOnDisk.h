#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "model/PowerPoint.h"
#include "platform/Failure.h"
#include "support/Deck.h"
#include "support/PackageCompare.h"
#include "support/PackageReader.h"
#include "support/TemporaryFolder.h"

namespace tessarine::test
{

/// The part of a deck's first slide, as the builder names it.
inline const std::string slide1 = "ppt/slides/slide1.xml";

/// A file in a folder of its own, and the built-in engine that opens it through the automation surface.
class DeckOnDisk
{
public:
    explicit DeckOnDisk(const std::string& bytes, StringView name = u"deck.pptx");
    explicit DeckOnDisk(const Deck& deck, StringView name = u"deck.pptx") : DeckOnDisk(deck.Bytes(), name) {}

    const String& Path() const { return path_; }
    const TemporaryFolder& Folder() const { return folder_; }
    std::string Bytes() const { return ContentOf(path_); }  ///< As it lies on the disk now.
    PackageReader Package() const { return PackageReader(Bytes()); }

    /// Opens the file with the one application of this object.
    std::shared_ptr<powerpoint::Presentation> Open() const { return Open(path_); }
    std::shared_ptr<powerpoint::Presentation> Open(const String& path) const;

    /// Opens, lets `change` change something, saves and closes.
    void Change(const std::function<void(powerpoint::Presentation&)>& change) const;

private:
    TemporaryFolder folder_;
    String path_;
    std::shared_ptr<powerpoint::Application> application_;
};

/// All elements of a collection of the surface.
template <class Element>
std::vector<std::shared_ptr<Element>> All(const std::shared_ptr<powerpoint::Collection<Element>>& collection)
{
    std::vector<std::shared_ptr<Element>> elements;
    const auto walk = collection->NewEnum();
    while (auto element = walk->Next())
        elements.push_back(std::move(element));
    return elements;
}

/// A slide of a presentation, and the shapes and links on it; numbers count from 1.
std::shared_ptr<powerpoint::Slide> SlideOf(powerpoint::Presentation& presentation, std::size_t number);
std::shared_ptr<powerpoint::Shape> ShapeOf(powerpoint::Presentation& presentation, std::size_t slide,
                                           std::size_t shape);
std::vector<std::shared_ptr<powerpoint::Hyperlink>> HyperlinksOf(powerpoint::Presentation& presentation,
                                                                 std::size_t slide = 1);
std::vector<std::string> AddressesOf(powerpoint::Presentation& presentation, std::size_t slide = 1);

/// Replaces the first hit in a shape. Raises std::logic_error when there is none.
void ReplaceInShape(powerpoint::Presentation& presentation, std::size_t slide, std::size_t shape, const String& find,
                    const String& with);

/// A property of a collection by its name; null when there is none.
std::shared_ptr<powerpoint::DocumentProperty> PropertyOf(powerpoint::DocumentProperties& properties, StringView name);

/// Walks everything that a job can reach: shapes and their texts, notes, masters, links, properties.
void WalkEverything(powerpoint::Presentation& presentation);

/// Number and text of the failure that a body raises; 0 and "" for none. Other exceptions pass through.
struct Raised {
    std::int32_t number = 0;
    std::string text;
};
Raised RaisedBy(const std::function<void()>& body);
void PrintTo(const Raised& raised, std::ostream* out);

/// Matches a Raised by its number and a part of its text.
MATCHER_P2(FailsWith, number, part, "")
{
    return arg.number == number && arg.text.find(part) != std::string::npos;
}

/// Checks the file with libzip's strict reading (ZIP_CHECKCONS); its message, or "" when it is content.
std::string ConsistencyFault(const String& path);

/// The file's little-endian integer of `size` bytes at an offset, and a way to put one.
std::uint64_t IntegerAt(std::string_view bytes, std::size_t offset, std::size_t size);
void PutInteger(std::string& bytes, std::size_t offset, std::size_t size, std::uint64_t value);

/// Where an entry of a plain zip file stands: its central record and its local header.
struct EntryPlace {
    std::string name;
    std::size_t record = 0;
    std::size_t localHeader = 0;
    std::size_t blockEnd = 0;     ///< Start of the next entry or of the directory.
    std::size_t offsetField = 0;  ///< Where the offset of the local header is written, in four bytes or eight.
    std::size_t offsetSize = 0;
};
std::vector<EntryPlace> PlacesOf(std::string_view zip);
EntryPlace PlaceOf(std::string_view zip, std::string_view name);

}  // namespace tessarine::test
