#include "DeckOnDisk.h"

#include <zip.h>

#include <algorithm>
#include <stdexcept>

#include "office/builtin/Provider.h"

namespace tessarine::test
{

DeckOnDisk::DeckOnDisk(const std::string& bytes, StringView name)
    : path_(folder_.Write(name, bytes)), application_(builtin::CreateProvider()->CreateApplication())
{
    SetMode(folder_.Path(), 0755);  // for tests that put down the superuser's rights
}

std::shared_ptr<powerpoint::Presentation> DeckOnDisk::Open(const String& path) const
{
    return application_->Presentations()->Open(path, powerpoint::msoFalse, powerpoint::msoFalse, powerpoint::msoFalse);
}

void DeckOnDisk::Change(const std::function<void(powerpoint::Presentation&)>& change) const
{
    const auto presentation = Open();
    change(*presentation);
    presentation->Save();
    presentation->Close();
}

std::shared_ptr<powerpoint::Slide> SlideOf(powerpoint::Presentation& presentation, std::size_t number)
{
    return All(presentation.Slides()).at(number - 1);
}

std::shared_ptr<powerpoint::Shape> ShapeOf(powerpoint::Presentation& presentation, std::size_t slide, std::size_t shape)
{
    return All(SlideOf(presentation, slide)->Shapes()).at(shape - 1);
}

std::vector<std::shared_ptr<powerpoint::Hyperlink>> HyperlinksOf(powerpoint::Presentation& presentation,
                                                                 std::size_t slide)
{
    return All(SlideOf(presentation, slide)->Hyperlinks());
}

std::vector<std::string> AddressesOf(powerpoint::Presentation& presentation, std::size_t slide)
{
    std::vector<std::string> addresses;
    for (const auto& link : HyperlinksOf(presentation, slide))
        addresses.push_back(ToUtf8(link->Address()));
    return addresses;
}

void ReplaceInShape(powerpoint::Presentation& presentation, std::size_t slide, std::size_t shape, const String& find,
                    const String& with)
{
    const auto text = ShapeOf(presentation, slide, shape)->TextFrame()->TextRange();
    if (!text->Replace(find, with, 0, powerpoint::msoTrue, powerpoint::msoFalse))
        throw std::logic_error("the shape does not hold the text");
}

std::shared_ptr<powerpoint::DocumentProperty> PropertyOf(powerpoint::DocumentProperties& properties, StringView name)
{
    for (std::int32_t i = 1; i <= properties.Count(); ++i)
        if (auto property = properties.Item(i); property->Name() == name)
            return property;
    return nullptr;
}

namespace
{

void WalkShapes(const std::shared_ptr<powerpoint::Shapes>& shapes)
{
    for (const auto& shape : All(shapes)) {
        if (shape->HasTextFrame() != powerpoint::msoFalse)
            shape->TextFrame()->TextRange()->Find(u"Fabrikam", 0, 0, 0);
        if (shape->Type() == powerpoint::msoLinkedOLEObject)
            shape->LinkFormat()->SourceFullName();
    }
}

/// Footers and unset properties may raise; that is an answer, too.
template <class Body>
void Ask(Body body)
{
    try {
        body();
    } catch (const Failure& failure) {
        if (failure.number != FailureNumber::InvalidRequest && failure.number != FailureNumber::Unspecified)
            throw;
    }
}

}  // namespace

void WalkEverything(powerpoint::Presentation& presentation)
{
    for (const auto& slide : All(presentation.Slides())) {
        WalkShapes(slide->Shapes());
        WalkShapes(slide->NotesPage()->Shapes());
        slide->Design()->Name();
        Ask([&] { slide->HeadersFooters()->Footer()->Text(); });
        for (const auto& link : All(slide->Hyperlinks()))
            link->Address();
    }
    for (const auto& design : All(presentation.Designs())) {
        WalkShapes(design->SlideMaster()->Shapes());
        if (design->HasTitleMaster() != powerpoint::msoFalse)
            WalkShapes(design->TitleMaster()->Shapes());
    }
    WalkShapes(presentation.NotesMaster()->Shapes());
    WalkShapes(presentation.HandoutMaster()->Shapes());
    for (const auto& properties : {presentation.BuiltInDocumentProperties(), presentation.CustomDocumentProperties()})
        for (std::int32_t i = 1; i <= properties->Count(); ++i)
            Ask([&] { powerpoint::TextOf(properties->Item(i)->Value()); });
}

Raised RaisedBy(const std::function<void()>& body)
{
    try {
        body();
    } catch (const Failure& failure) {
        return {failure.number, ToUtf8(failure.description)};
    }
    return {};
}

void PrintTo(const Raised& raised, std::ostream* out)
{
    *out << raised.number << " \"" << raised.text << '"';
}

std::string ConsistencyFault(const String& path)
{
    int error = 0;
    zip_t* archive = zip_open(ToUtf8(path).c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &error);
    if (archive != nullptr) {
        zip_discard(archive);
        return {};
    }
    zip_error_t reason;
    zip_error_init_with_code(&reason, error);
    std::string text = zip_error_strerror(&reason);
    zip_error_fini(&reason);
    return text;
}

std::uint64_t IntegerAt(std::string_view bytes, std::size_t offset, std::size_t size)
{
    std::uint64_t value = 0;
    for (std::size_t i = size; i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(bytes.at(offset + i));
    return value;
}

void PutInteger(std::string& bytes, std::size_t offset, std::size_t size, std::uint64_t value)
{
    for (std::size_t i = 0; i < size; ++i, value >>= 8)
        bytes.at(offset + i) = static_cast<char>(value & 0xFF);
}

namespace
{

constexpr std::uint64_t in64 = 0xFFFFFFFF;

/// Finds the offset of a local header: in the record, or behind the sizes in the record's zip64 field.
void FindLocalHeader(std::string_view zip, EntryPlace& place)
{
    const std::size_t record = place.record;
    place.offsetField = record + 42;
    place.offsetSize = 4;
    if (IntegerAt(zip, record + 42, 4) == in64) {
        std::size_t field = record + 46 + place.name.size();
        while (IntegerAt(zip, field, 2) != 1)
            field += 4 + IntegerAt(zip, field + 2, 2);
        place.offsetField = field + 4 + (IntegerAt(zip, record + 20, 4) == in64 ? 8u : 0u) +
                            (IntegerAt(zip, record + 24, 4) == in64 ? 8u : 0u);
        place.offsetSize = 8;
    }
    place.localHeader = IntegerAt(zip, place.offsetField, place.offsetSize);
}

}  // namespace

std::vector<EntryPlace> PlacesOf(std::string_view zip)
{
    const std::size_t end = zip.rfind("PK\x05\x06");
    std::size_t directory = IntegerAt(zip, end + 16, 4);
    std::size_t directoryEnd = end;
    if (end >= 20 && zip.substr(end - 20, 4) == "PK\x06\x07") {
        directoryEnd = IntegerAt(zip, end - 12, 8);
        directory = IntegerAt(zip, directoryEnd + 48, 8);
    }
    std::vector<EntryPlace> places;
    for (std::size_t at = directory; at < directoryEnd;) {
        const std::size_t nameLength = IntegerAt(zip, at + 28, 2);
        EntryPlace& place = places.emplace_back();
        place.name = zip.substr(at + 46, nameLength);
        place.record = at;
        place.blockEnd = directory;
        FindLocalHeader(zip, place);
        at += 46 + nameLength + IntegerAt(zip, at + 30, 2) + IntegerAt(zip, at + 32, 2);
    }
    for (EntryPlace& place : places)
        for (const EntryPlace& other : places)
            if (other.localHeader > place.localHeader)
                place.blockEnd = std::min(place.blockEnd, other.localHeader);
    return places;
}

EntryPlace PlaceOf(std::string_view zip, std::string_view name)
{
    for (const EntryPlace& place : PlacesOf(zip))
        if (place.name == name)
            return place;
    throw std::invalid_argument("no entry " + std::string(name));
}

}  // namespace tessarine::test
