#pragma once

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "office/builtin/package/Package.h"
#include "office/builtin/presentation/TextOfParts.h"
#include "office/builtin/properties/BuiltInProperties.h"
#include "office/builtin/properties/CustomPropertyPart.h"
#include "office/builtin/shapes/ShapeTreePart.h"
#include "office/builtin/matching/TextMatch.h"

namespace tessarine::builtin
{

class XmlDocument;

/// An opened presentation: its package and the parts that make it up, found by relationships alone
/// (ECMA-376 19.2.1.26 `p:presentation`).
class PresentationFile
{
public:
    /// Raises -2147024885 for a package that holds no presentation, -2147023504 for a damaged one (a slide that is
    /// named but missing among them), -2147467259 for one that is protected against changes by a password.
    explicit PresentationFile(std::unique_ptr<RandomAccessBytes> bytes, const Limits& limits = Limits::Default());

    std::size_t SlideCount() const { return slides_.size(); }
    ShapeTreePart& Slide(std::size_t index) { return Part(slides_[index]); }
    ShapeTreePart* NotesPage(std::size_t slide);   ///< Null when the slide has none of the content type of notes pages.
    std::size_t DesignOfSlide(std::size_t slide);  ///< The first design when the file does not say.

    std::size_t DesignCount() const { return masters_.size(); }
    ShapeTreePart* SlideMaster(std::size_t design);  ///< Null, like the others here, for a design that is not there.
    ShapeTreePart* TitleMaster(
        std::size_t design);                ///< The master's first layout of type "title"; null when there is none.
    String DesignName(std::size_t design);  ///< The theme's name; "" without one.

    ShapeTreePart* NotesMaster();  ///< Null when the presentation has none.
    ShapeTreePart* HandoutMaster();

    BuiltInProperties& BuiltIn();
    CustomPropertyPart& Custom();

    /// The search text prepared; the last one is kept, as a run looks for one text all through a file.
    const TextPattern& Pattern(const String& findWhat, bool matchCase, bool wholeWords);

    const SoughtText& Sought(const String& text);  ///< Likewise.

    /// False only when no shape's text of any slide, or of any notes page, holds the text, whatever the case.
    bool SlidesMayHold(const String& text);
    bool NotesMayHold(const String& text);

    /// Replaces the file by one with the edits, all or nothing; without edits only its modification time moves. An
    /// edited package loses its digital signatures, which would not be valid any more; the error log says so.
    void Save(StringView path);

private:
    void ReadMainPart(Package::Entry main);
    std::vector<Package::Entry> ReadIdList(const XmlDocument& document, const char* list, const char* item,
                                           Package::Entry main);
    ShapeTreePart& Part(Package::Entry entry);
    const std::vector<Package::Entry>& NotesPages();
    TextOfParts MakeTextOf(const std::vector<Package::Entry>& entries);
    ShapeTreePart* OptionalPart(const std::optional<Package::Entry>& entry);
    void DropSignatures(StringView path);

    Package package_;
    std::vector<Package::Entry> slides_;
    std::vector<Package::Entry> masters_;
    std::optional<Package::Entry> notesMaster_;
    std::optional<Package::Entry> handoutMaster_;
    std::map<Package::Entry, std::unique_ptr<ShapeTreePart>> parts_;
    std::optional<BuiltInProperties> builtIn_;
    std::optional<CustomPropertyPart> custom_;
    std::optional<TextPattern> pattern_;
    std::optional<SoughtText> sought_;
    std::optional<std::vector<Package::Entry>> notesPages_;
    std::optional<TextOfParts> slidesText_;
    std::optional<TextOfParts> notesText_;
};

}  // namespace tessarine::builtin
