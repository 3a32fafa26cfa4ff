#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/DeckParts.h"
#include "support/DeckProperties.h"
#include "support/DeckShapes.h"
#include "support/DeckText.h"
#include "support/ZipBuilder.h"

/// The deck builder: presentations made in code, so that a test shows the structure that matters and nothing else.
///
///     Deck().Slide(Title(u"Hello"), TextBox(Paragraph(TextRun(u"Fab").Bold(), TextRun(u"rikam GmbH")))).Bytes()
///
/// Nothing asked for gives the smallest valid package: no slide, one master, layout and theme. The same calls give the
/// same bytes everywhere.
namespace tessarine::test
{

/// What the content type of the main part says.
enum class DeckKind { Pptx, Pptm, Potx, Potm, Ppsx, Ppsm, Ppam };

class Deck
{
public:
    /// Appends a slide, made of shapes, NotesPage, HiddenSlide, OnLayout, NamedSlide, Related; or a SlideContent.
    template <class... Parts>
    Deck& Slide(Parts&&... parts)
    {
        slides_.emplace_back(std::forward<Parts>(parts)...);
        return *this;
    }

    Deck& Master(SlideMaster master);  ///< The first one takes the place of the default master.

    /// Master of notes pages or handouts. With no shapes the part is there and empty. The first notes page of a deck
    /// makes a plain notes master where none is asked for.
    template <class... Shapes>
    Deck& NotesMaster(Shapes... shapes)
    {
        return SetPageMaster(PageMaster::Notes, {std::move(shapes)...});
    }
    template <class... Shapes>
    Deck& HandoutMaster(Shapes... shapes)
    {
        return SetPageMaster(PageMaster::Handout, {std::move(shapes)...});
    }

    Deck& Core(std::string element, String value);  ///< "dc:title" of docProps/core.xml
    Deck& App(std::string element, String value);   ///< "Company" of docProps/app.xml
    Deck& Custom(String name, const std::string& kind, StringView value, const String& linkTarget = {});
    Deck& CustomXml(String name, std::string valueXml);

    Deck& Kind(DeckKind kind);    ///< The default is Pptx.
    Deck& Macros();               ///< A vbaProject part; the kind stays as it is.
    Deck& ModifyVerifier();       ///< A password for changing.
    Deck& ReadOnlyRecommended();  ///< What PowerPoint asks about when it opens the file.
    Deck& MarkAsFinal();          ///< The custom property _MarkAsFinal.
    Deck& Signed();               ///< Signature origin and one signature, not valid.
    Deck& Media(const std::string& name, std::size_t size, unsigned seed);  ///< Stored, related from the main part.
    Deck& MainPart(std::string name);                             ///< In the folder "ppt", "ppt/presentation2.xml".
    Deck& Strict();                                               ///< All parts in the Strict form, see ToStrict.
    Deck& Prefixes(std::map<std::string, std::string> prefixes);  ///< {{"p", "ns0"}, {"a", ""}}
    Deck& SlideOrder(std::vector<int> numbers);                   ///< Order of the list of slides, by part number.

    /// Raw doors. Names are those of the finished package; a door to an entry that isn't there raises
    /// std::invalid_argument when the package is made.
    Deck& Entry(const std::string& name, std::string bytes);  ///< Replaces an entry or adds one at the end.
    Deck& Without(const std::string& name);                   ///< Leaves an entry out.
    Deck& Edit(const std::string& name, std::string from, std::string to);  ///< Every `from`; none is an error.
    Deck& Utf16(const std::string& name);                                   ///< The part in UTF-16, see ToUtf16Part.
    Deck& Bom(const std::string& name);                                ///< The part with a byte order mark in front.
    Deck& Store(const std::string& name);                              ///< Not deflated.
    Deck& Rename(const std::string& name, std::string newName);        ///< Of the zip entry alone.
    Deck& DuplicateEntry(const std::string& name, std::string bytes);  ///< A second entry of that name, at the end.
    Deck& MoveToFront(const std::string& name);
    Deck& Modified(const std::string& name,
                   DosDateTime modified);  ///< Date and time of one entry; ModifiedAll of each.
    Deck& ModifiedAll(DosDateTime modified);
    Deck& ExternalAttributes(const std::string& name, std::uint32_t attributes);
    Deck& Extra(const std::string& name, std::string fields);  ///< See ExtraField.
    Deck& EntryComment(const std::string& name, std::string comment);
    Deck& DataDescriptor();                         ///< On every entry.
    Deck& DataDescriptor(const std::string& name);  ///< On one.
    Deck& Zip64();                                  ///< On every entry, and the zip64 end records.
    Deck& Backslashes();                            ///< In all names of the zip directory.
    Deck& Prefix(std::string junk);                 ///< Bytes in front of the whole package.
    Deck& Comment(std::string text);                ///< Of the whole package.

    std::string Bytes() const;  ///< The finished package.
    void WriteTo(const std::filesystem::path& path) const;

    /// The content of an entry as it goes into the package, unpacked; std::invalid_argument when there is none.
    std::string EntryBytes(const std::string& name) const;

private:
    using Door = std::function<void(ZipBuilder&)>;

    Deck& SetPageMaster(PageMaster kind, std::vector<Shape> shapes);
    Deck& Through(Door door);
    Deck& OnEntry(const std::string& name, std::function<void(ZipEntry&)> change);

    PackageParts Parts() const;
    ZipBuilder Package() const;
    void WriteMain(PackageParts& package, PartWriter& main) const;
    void WriteSlides(PackageParts& package, PartWriter& main, std::string& list) const;
    void WriteSignature(PackageParts& package, PartWriter& root) const;

    std::vector<SlideContent> slides_;
    std::vector<SlideMaster> masters_;
    std::map<PageMaster, std::vector<Shape>> pageMasters_;
    DeckProperties properties_;
    DeckKind kind_ = DeckKind::Pptx;
    std::string mainPart_ = "ppt/presentation.xml";
    bool macros_ = false;
    bool signed_ = false;
    bool strict_ = false;
    bool modifyVerifier_ = false;
    bool readOnlyRecommended_ = false;
    std::map<std::string, std::string> prefixes_;
    std::vector<int> slideOrder_;
    std::vector<std::tuple<std::string, std::size_t, unsigned>> media_;
    std::vector<Door> doors_;
};

}  // namespace tessarine::test
