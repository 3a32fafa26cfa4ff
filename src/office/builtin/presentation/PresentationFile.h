#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "office/builtin/matching/GroupFilter.h"
#include "office/builtin/package/Package.h"
#include "office/builtin/properties/BuiltInProperties.h"
#include "office/builtin/properties/CustomPropertyPart.h"
#include "office/builtin/reader/PresentationReader.h"
#include "office/builtin/shapes/ShapeTreePart.h"

namespace tessarine::builtin
{

class XmlDocument;

/// A presentation in a package: the parts that make it up, found by relationships alone (ECMA-376 19.2.1.26
/// `p:presentation`). Opening reads the main part; pages, properties and names are read when they are first asked for.
class PresentationFile final : public PresentationReader
{
public:
    /// Raises `BadFormat` for a package that holds no presentation, `FileCorrupt` for a damaged one (also when a slide
    /// is named but missing), and `Unspecified` for one that is protected against changes by a password.
    explicit PresentationFile(std::unique_ptr<RandomAccessBytes> bytes, const Limits& limits = Limits::Default(),
                              const SaveTerms& terms = {});

    std::size_t SlideCount() override { return slides_.size(); }
    PageReader& Slide(std::size_t slide) override { return Part(slides_[slide]); }

    /// Whatever content type the part has that the slide names as its notes page. Raises `FileCorrupt` when
    /// slides share more of notes pages, or designs of title masters, than the limits allow; so does TitleMaster.
    PageReader* NotesPage(std::size_t slide) override;

    /// Found through the slide's layout. The first design when the file doesn't say.
    std::optional<std::size_t> DesignOfSlide(std::size_t slide) override;

    std::size_t DesignCount() override { return masters_.size(); }
    String DesignName(std::size_t design) override;  ///< The theme's name; "" without one.
    PageReader& SlideMaster(std::size_t design) override { return Part(masters_[design]); }

    /// Packages have title slide layouts in the place of title masters: the master's first layout of type "title".
    PageReader* TitleMaster(std::size_t design) override;

    /// The first that the main part names; null without one.
    PageReader* NotesMaster() override { return OptionalPart(notesMaster_); }
    PageReader* HandoutMaster() override { return OptionalPart(handoutMaster_); }

    BuiltInPropertiesReader& BuiltIn() override;
    CustomPropertiesReader& Custom() override;

    /// True until every slide has been asked once, as the first walk over the slides does.
    bool SlidesMayHold(const SoughtText& sought) override;
    bool NotesMayHold(const SoughtText& sought) override;

    /// Entries of the list of titles in the extended properties follow the slides' titles. An edited package loses its
    /// digital signatures, which would not be valid any more. A warning says so, and another one tells of an edited
    /// package that is marked as final. Raises `PermissionDenied` for an edited package with signatures where
    /// the terms keep such files.
    void Save(StringView path) override;
    void RehearseSave(StringView path) override;
    void KeepShapeNames() override;
    std::optional<bool> HasSavedChanges() override { return hasSavedChanges_; }

    /// Tells of names that several entries of the zip file have.
    std::vector<String> Remarks() override;

private:
    /// Fills the lists of slides and masters. Raises as the constructor does.
    void ReadMainPart(Package::Entry main);

    /// The parts that a list of the main part names, in its order. Raises `FileCorrupt` when one is missing.
    std::vector<Package::Entry> ReadIdList(const XmlDocument& document, const char* list, const char* item,
                                           Package::Entry main);
    ShapeTreePart& Part(Package::Entry entry);        ///< The one object for a part, made when it is first asked for.
    const std::vector<Package::Entry>& NotesPages();  ///< Found when first asked for.
    /// Whether a notes page may be among the parts that have another type, or none (see UsualPlaces.h).
    bool TypesMayHideNotesPages();
    /// In front of all these parts. Reads none of them.
    GroupFilter FilterOf(const std::vector<Package::Entry>& entries);
    std::optional<Package::Entry> FindTitleMaster(Package::Entry master);  ///< The layout; nothing without one.
    /// Null for no entry.
    ShapeTreePart* OptionalPart(const std::optional<Package::Entry>& entry);
    /// What a save does before the package is written.
    struct Prepared {
        bool isChanged = false;
        std::vector<String> warnings{};
    };
    Prepared PrepareSave(StringView path);
    void NoteSave(StringView path, const Prepared& prepared);
    void FollowTitles(const std::map<Package::Entry, TextChange>& titles,
                      StringView path);             ///< `path` is for a warning.
    String NameOfPage(Package::Entry entry) const;  ///< For people: "slide 7", for other pages the part's name.
    const Relationship* SignatureOrigin();          ///< Null for a package that is not signed.
    bool DropSignatures();                          ///< False when there are none.
    bool IsMarkedAsFinal();                         ///< By the property that PowerPoint's command sets.

    const bool keepsSigned_;
    bool keepsShapeNames_ = false;
    std::optional<bool> hasSavedChanges_;        // by the last save
    Package package_;                            // in front of all that borrows it
    std::vector<Package::Entry> slides_;         // in the order of the presentation
    std::vector<Package::Entry> masters_;        // one for each design, in the order of the presentation
    std::optional<Package::Entry> notesMaster_;  // nothing when the file has none; so the next
    std::optional<Package::Entry> handoutMaster_;

    // One object for each part: a layout that is the title master of two designs is edited once.
    std::map<Package::Entry, std::unique_ptr<ShapeTreePart>> parts_;

    // All below is made when it is first asked for; most runs need little of it.
    std::map<std::size_t, String> designNames_;  // each slide asks for its design's
    std::optional<BuiltInProperties> builtIn_;
    std::optional<CustomPropertyPart> custom_;
    std::optional<std::vector<Package::Entry>> notesPages_;              // ascending
    std::map<std::size_t, std::optional<Package::Entry>> titleMasters_;  // by design
    std::map<Package::Entry, bool> isTitleLayout_;
    std::set<std::size_t> askedForNotes_;  // slides whose notes pages were asked for
    std::set<Package::Entry> namedPages_;  // those pages, and the title masters
    std::uint64_t sharedPageBytes_ = 0;    // see Limits
    std::optional<GroupFilter> slidesFilter_;
    std::optional<GroupFilter> notesFilter_;
};

}  // namespace tessarine::builtin
