#include "office/builtin/presentation/PresentationFile.h"

#include <algorithm>
#include <array>
#include <set>
#include <unordered_set>
#include <variant>

#include "log/Treatments.h"
#include "log/Warnings.h"
#include "office/builtin/limits/Damage.h"
#include "office/builtin/presentation/UsualPlaces.h"
#include "office/builtin/reader/Refusals.h"
#include "office/builtin/xml/XmlDocument.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

using enum Ns;

/// Content types of the main part: presentation, template and show, each plain and with macros, and the add-in;
/// compared in lower case. The type decides, not the file's extension.
constexpr std::array<std::string_view, 7> mainTypes{
    "application/vnd.openxmlformats-officedocument.presentationml.presentation.main+xml",
    "application/vnd.ms-powerpoint.presentation.macroenabled.main+xml",
    "application/vnd.openxmlformats-officedocument.presentationml.template.main+xml",
    "application/vnd.ms-powerpoint.template.macroenabled.main+xml",
    "application/vnd.openxmlformats-officedocument.presentationml.slideshow.main+xml",
    "application/vnd.ms-powerpoint.slideshow.macroenabled.main+xml",
    "application/vnd.ms-powerpoint.addin.macroenabled.main+xml",
};

constexpr std::string_view noPresentation = "The file is not a presentation";

}  // namespace

PresentationFile::PresentationFile(std::unique_ptr<RandomAccessBytes> bytes, const Limits& limits,
                                   const SaveTerms& terms)
    : keepsSigned_(terms.keepsSigned), package_(std::move(bytes), limits, terms)
{
    if (!package_.Find(ContentTypes::entryName)) {
        // OpenDocument files are zip files with such an entry: no damage, but something else.
        if (package_.Find("mimetype"))
            throw NotAPresentation("The file is not an Office Open XML presentation");
        throw Damage(ContentTypes::entryName, "it is missing");
    }
    const Relationship* relationship = package_.RelationshipsOf(std::nullopt).FirstOf("officeDocument");
    if (relationship == nullptr)
        throw Damage("_rels/.rels", "it names no main document");
    const auto main = package_.Follow(std::nullopt, relationship);
    if (!main)
        throw Damage(relationship->target, "it is missing");
    const std::string type = package_.Types().TypeOf(package_.NameOf(*main));
    if (std::ranges::find(mainTypes, std::string_view(type)) == mainTypes.end())
        throw NotAPresentation(std::string(noPresentation) + " (its main part is of type \"" + type + "\")");
    ReadMainPart(*main);
}

void PresentationFile::ReadMainPart(Package::Entry main)
{
    std::string bytes = package_.ReadXml(main);
    const XmlDocument document(bytes, package_.NameOf(main), package_.limits());
    const Node root = document.Root();
    if (!document.Is(root, Presentation, "presentation"))
        throw Damage(package_.NameOf(main), "it is not a presentation part");
    // Protected against changes by a password: a run opens every file for writing, so that it would have to give one.
    if (document.Child(root, Presentation, "modifyVerifier"))
        throw Failure(FailureNumber::Unspecified, u"The presentation needs a password to be changed");

    slides_ = ReadIdList(document, "sldIdLst", "sldId", main);
    masters_ = ReadIdList(document, "sldMasterIdLst", "sldMasterId", main);
    for (const auto& [list, item, place] : {std::tuple{"notesMasterIdLst", "notesMasterId", &notesMaster_},
                                            std::tuple{"handoutMasterIdLst", "handoutMasterId", &handoutMaster_}}) {
        const auto found = ReadIdList(document, list, item, main);
        if (!found.empty())
            *place = found.front();
    }
}

std::vector<Package::Entry> PresentationFile::ReadIdList(const XmlDocument& document, const char* list,
                                                         const char* item, Package::Entry main)
{
    std::vector<Package::Entry> entries;
    std::unordered_set<Package::Entry> named;
    const Relationships& relationships = package_.RelationshipsOf(main);
    for (const Node node : document.Child(document.Root(), Presentation, list).ChildElements()) {
        if (!document.Is(node, Presentation, item))
            continue;
        const auto* relationship =
            relationships.Find(document.Attribute(node, Ns::DocumentRelationships, "id").value_or(""));
        const auto entry = package_.Follow(main, relationship);
        // Leaving it out silently would make the counts lie.
        if (!entry)
            throw Damage(package_.NameOf(main),
                         std::string(item) + " names a part that is missing" +
                             (relationship == nullptr ? "" : ": " + std::string(relationship->target)));
        // It would be searched once for each name, however large it is.
        if (!named.insert(*entry).second)
            throw Damage(package_.NameOf(main), std::string(item) + " names a part twice");
        if (entries.size() >= package_.limits().slides)
            throw Damage(package_.NameOf(main), "it has too many slides");
        entries.push_back(*entry);
    }
    return entries;
}

ShapeTreePart& PresentationFile::Part(Package::Entry entry)
{
    auto& part = parts_[entry];
    if (!part) {
        part = std::make_unique<ShapeTreePart>(package_, entry);
        if (keepsShapeNames_)
            part->KeepShapeNames();
    }
    return *part;
}

ShapeTreePart* PresentationFile::OptionalPart(const std::optional<Package::Entry>& entry)
{
    return entry ? &Part(*entry) : nullptr;
}

PageReader* PresentationFile::NotesPage(std::size_t slide)
{
    const Package::Entry entry = slides_[slide];
    const auto notes = package_.Follow(entry, package_.RelationshipsOf(entry).FirstOf("notesSlide"));
    if (!notes)
        return nullptr;
    // A page that many slides name is walked for each of them, however large it is.
    if (askedForNotes_.insert(slide).second && !namedPages_.insert(*notes).second)
        sharedPageBytes_ += package_.SizeOf(*notes);
    if (sharedPageBytes_ > package_.limits().sharedPageBytes)
        throw Damage(package_.NameOf(*notes), "too many slides name it as their notes page");
    return &Part(*notes);
}

/// All there are, by their content type (ECMA-376 13.3.5). The relationships of all slides, of which to read them costs
/// as much as a few slides, are asked only where one of them may have another type or none.
const std::vector<Package::Entry>& PresentationFile::NotesPages()
{
    if (notesPages_)
        return *notesPages_;
    notesPages_ = package_.PartsOfType("application/vnd.openxmlformats-officedocument.presentationml.notesslide+xml");
    if (!TypesMayHideNotesPages())
        return *notesPages_;
    std::set<Package::Entry> pages(notesPages_->begin(), notesPages_->end());
    for (const Package::Entry slide : slides_)
        if (const auto notes = package_.Follow(slide, package_.RelationshipsOf(slide).FirstOf("notesSlide")))
            pages.insert(*notes);
    notesPages_->assign(pages.begin(), pages.end());
    return *notesPages_;
}

bool PresentationFile::TypesMayHideNotesPages()
{
    std::vector<bool> isKnown(package_.EntryCount());
    for (const std::vector<Package::Entry>* list : {&slides_, &masters_, &*notesPages_})
        for (const Package::Entry entry : *list)
            isKnown[entry] = true;
    for (const std::optional<Package::Entry>& master : {notesMaster_, handoutMaster_})
        if (master)
            isKnown[*master] = true;
    return package_.HasPart([&](Package::Entry entry, std::string_view name, std::string_view type) {
        return !isKnown[entry] && !IsInUsualPlace(name, type);
    });
}

std::optional<std::size_t> PresentationFile::DesignOfSlide(std::size_t slide)
{
    if (masters_.empty())
        return std::nullopt;
    const Package::Entry entry = slides_[slide];
    // A slide names its layout and the layout its master; neither names a design (ECMA-376 13.3.8, 13.3.9).
    const auto layout = package_.Follow(entry, package_.RelationshipsOf(entry).FirstOf("slideLayout"));
    if (!layout)
        return 0;
    const auto master = package_.Follow(*layout, package_.RelationshipsOf(*layout).FirstOf("slideMaster"));
    const auto found = master ? std::ranges::find(masters_, *master) : masters_.end();
    return found == masters_.end() ? 0 : static_cast<std::size_t>(found - masters_.begin());
}

PageReader* PresentationFile::TitleMaster(std::size_t design)
{
    if (const auto known = titleMasters_.find(design); known != titleMasters_.end())
        return OptionalPart(known->second);
    const std::optional<Package::Entry> layout = FindTitleMaster(masters_[design]);
    if (layout && !namedPages_.insert(*layout).second) {
        sharedPageBytes_ += package_.SizeOf(*layout);
        if (sharedPageBytes_ > package_.limits().sharedPageBytes)
            throw Damage(package_.NameOf(*layout), "too many designs have it as their title master");
    }
    return OptionalPart(titleMasters_[design] = layout);
}

std::optional<Package::Entry> PresentationFile::FindTitleMaster(Package::Entry master)
{
    // A copy, as the master may be let go when a layout is read.
    const std::vector<std::string> ids = Part(master).Read().layoutIds;
    for (const std::string& id : ids) {
        const auto layout = package_.Follow(master, package_.RelationshipsOf(master).Find(id));
        if (!layout)
            continue;
        // Masters may name layouts over and over, and layouts are large.
        auto known = isTitleLayout_.find(*layout);
        if (known == isTitleLayout_.end())
            known = isTitleLayout_.emplace(*layout, Part(*layout).Read().layoutType == "title").first;
        if (known->second)
            return layout;
    }
    return std::nullopt;
}

String PresentationFile::DesignName(std::size_t design)
{
    if (const auto known = designNames_.find(design); known != designNames_.end())
        return known->second;
    const Package::Entry master = masters_[design];
    // A package has no design of its own: PowerPoint shows the name of the master's theme.
    const auto theme = package_.Follow(master, package_.RelationshipsOf(master).FirstOf("theme"));
    if (!theme)
        return designNames_[design] = {};
    std::string bytes = package_.ReadXml(*theme);
    const XmlDocument document(bytes, package_.NameOf(*theme), package_.limits());
    return designNames_[design] = FromUtf8(document.Attribute(document.Root(), "name"));
}

BuiltInPropertiesReader& PresentationFile::BuiltIn()
{
    if (!builtIn_)
        builtIn_.emplace(package_);
    return *builtIn_;
}

CustomPropertiesReader& PresentationFile::Custom()
{
    if (!custom_)
        custom_.emplace(package_);
    return *custom_;
}

GroupFilter PresentationFile::FilterOf(const std::vector<Package::Entry>& entries)
{
    std::vector<PartFilter*> filters;
    for (const Package::Entry entry : entries)
        filters.push_back(&Part(entry).Filter());
    return GroupFilter(std::move(filters));
}

bool PresentationFile::SlidesMayHold(const SoughtText& sought)
{
    if (!slidesFilter_)
        slidesFilter_ = FilterOf(slides_);
    // The first walk asks slide by slide: a slide that may hold the text is then read from bytes that are at hand.
    return !slidesFilter_->HasGathered() || slidesFilter_->MayHold(sought);
}

bool PresentationFile::NotesMayHold(const SoughtText& sought)
{
    if (!notesFilter_)
        notesFilter_ = FilterOf(NotesPages());
    return notesFilter_->MayHold(sought);
}

void PresentationFile::Save(StringView path)
{
    const Prepared prepared = PrepareSave(path);
    package_.Save(path);
    NoteSave(path, prepared);
}

void PresentationFile::RehearseSave(StringView path)
{
    const Prepared prepared = PrepareSave(path);
    package_.RehearseSave(path);
    NoteSave(path, prepared);
}

PresentationFile::Prepared PresentationFile::PrepareSave(StringView path)
{
    // First, because only this tells the package what has changed.
    std::map<Package::Entry, TextChange> titles;
    Prepared prepared;
    std::vector<String>& warnings = prepared.warnings;
    for (const auto& [entry, part] : parts_) {
        ShapeTreePart::Flushed flushed = part->Flush();
        if (flushed.leavesOtherText)
            warnings.push_back(NameOfPage(entry) +
                               u": a changed shape has another form for older programs, which keeps the old text");
        if (flushed.title)
            titles.emplace(entry, std::move(*flushed.title));
    }
    FollowTitles(titles, path);
    if (builtIn_)
        builtIn_->Flush();
    // Before its own edits are handed on: a replacement in all properties may turn the mark into a text.
    const bool wasFinal = custom_ && IsMarkedAsFinal();
    if (custom_)
        custom_->Flush();
    // Only now: removing signatures is a change itself.
    const bool isChanged = package_.IsChanged();
    if (isChanged && keepsSigned_ && SignatureOrigin() != nullptr)
        throw SignatureKept();
    // Before the save: after one into the file itself nothing can be read any more.
    const bool isFinal = isChanged && (wasFinal || IsMarkedAsFinal());
    if (isChanged && DropSignatures())
        warnings.emplace_back(signaturesRemoved);
    if (isFinal)
        warnings.emplace_back(finalChanged);
    prepared.isChanged = isChanged;
    return prepared;
}

void PresentationFile::NoteSave(StringView path, const Prepared& prepared)
{
    hasSavedChanges_ = prepared.isChanged;
    for (const String& warning : prepared.warnings)
        Warn(String(path), warning);
}

void PresentationFile::KeepShapeNames()
{
    keepsShapeNames_ = true;
    for (const auto& [entry, part] : parts_)
        part->KeepShapeNames();
}

String PresentationFile::NameOfPage(Package::Entry entry) const
{
    const auto slide = std::ranges::find(slides_, entry);
    return slide == slides_.end() ? FromUtf8(package_.NameOf(entry))
                                  : u"slide " + NumeralOf(slide - slides_.begin() + 1);
}

std::vector<String> PresentationFile::Remarks()
{
    const std::optional<std::string_view> name = package_.NameGivenTwice();
    if (!name)
        return {};
    return {u"has several entries named \"" + FromUtf8(*name) + u"\" in its zip file; only the last one counts"};
}

bool PresentationFile::IsMarkedAsFinal()
{
    bool isFinal = false;
    // Properties that can't be read were none of the job's business, or have failed it before.
    Skip([&] {
        // Read anew, as the package has it: edits of the properties are not in it yet.
        const CustomPropertyPart properties(package_);
        for (std::size_t i = 0; i < properties.Count(); ++i) {
            if (properties.NameOf(i) != u"_MarkAsFinal")
                continue;
            const powerpoint::Value value = properties.Read(i);
            const bool* const mark = std::get_if<bool>(&value);
            isFinal = isFinal || (mark != nullptr && *mark);
        }
    });
    return isFinal;
}

/// A name that was replaced in a title must not stay in the list of titles, which file managers show.
void PresentationFile::FollowTitles(const std::map<Package::Entry, TextChange>& titles, StringView path)
{
    std::vector<ChangedTitle> changed;
    for (std::size_t slide = 0; slide < slides_.size() && !titles.empty(); ++slide)
        // Titles of other parts, such as layouts, are not in the list.
        if (const auto title = titles.find(slides_[slide]); title != titles.end())
            changed.push_back({slide, title->second.before, title->second.after});
    if (changed.empty())
        return;
    try {
        BuiltIn();
    } catch (const Failure& failure) {
        // Nobody has asked for the properties: that these are damaged is no reason to lose the replacements.
        Warn(String(path), u"The list of titles in the properties could not be changed: " + failure.description);
        return;
    }
    builtIn_->FollowTitles(changed, slides_.size());
}

const Relationship* PresentationFile::SignatureOrigin()
{
    const Relationship* relationship = package_.RelationshipsOf(std::nullopt).FirstOf("origin");
    // Kinds are told by the last word of a type, and others may end in "origin".
    const bool isSignature =
        relationship != nullptr && relationship->type.find("digital-signature") != std::string::npos;
    return isSignature ? relationship : nullptr;
}

bool PresentationFile::DropSignatures()
{
    const Relationship* relationship = SignatureOrigin();
    if (relationship == nullptr)
        return false;
    if (const auto origin = package_.Follow(std::nullopt, relationship)) {
        std::vector<Package::Entry> gone{*origin};
        for (const Relationship& signature : package_.RelationshipsOf(*origin).All())
            if (const auto entry = package_.Follow(*origin, &signature))
                gone.push_back(*entry);
        if (const auto links = package_.Find(RelationshipPartName(package_.NameOf(*origin))))
            gone.push_back(*links);
        std::vector<std::string_view> names;
        for (const Package::Entry entry : gone) {
            names.push_back(package_.NameOf(entry));
            package_.Remove(entry);
        }
        package_.Types().RemoveOverrides(names);
    }
    package_.RelationshipsOf(std::nullopt).Remove(relationship->id);
    return true;
}

}  // namespace tessarine::builtin
