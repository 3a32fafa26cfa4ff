#include "office/builtin/binary/BinaryDocument.h"

#include <algorithm>
#include <set>
#include <unordered_set>
#include <utility>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/records/Decryption.h"
#include "office/builtin/records/RecordTypes.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

/// SlideListWithText ([MS-PPT] 2.4.14): what a list is of.
constexpr std::uint16_t listOfSlides = 0;
constexpr std::uint16_t listOfMasters = 1;
constexpr std::uint16_t listOfNotes = 2;

/// HeadersFooters in the document: for whom.
constexpr std::uint16_t forSlides = 3;
constexpr std::uint16_t forNotes = 4;

/// Fields of DocumentAtom ([MS-PPT] 2.4.2), of SlidePersistAtom (2.4.14.5), and of SlideAtom (2.5.10).
constexpr std::size_t documentNotesMaster = 24;
constexpr std::size_t documentHandoutMaster = 28;
constexpr std::size_t persistObject = 0;
constexpr std::size_t persistSlideId = 12;
constexpr std::size_t slideMasterId = 12;
constexpr std::size_t slideNotesId = 16;

/// InteractiveInfoAtom ([MS-PPT] 2.8.2).
constexpr std::size_t interactionHyperlink = 4;
constexpr std::size_t interactionAction = 8;
constexpr std::size_t interactionType = 12;
constexpr std::uint8_t hyperlinkAction = 4;

/// The first child of that type.
std::optional<Record> ChildOf(std::string_view bytes, const Record& container, std::uint16_t type)
{
    for (const Record& child : Records(bytes, container))
        if (child.type == type)
            return child;
    return {};
}

/// A number in the SlideAtom of a page; 0 without one.
std::uint32_t SlideAtomField(std::string_view bytes, const Record& page, std::size_t field)
{
    const auto atom = ChildOf(bytes, page, record::SlideAtom);
    return atom && atom->Holds(field + 4) ? U32At(atom->Content(bytes), field) : 0;
}

std::optional<std::uint32_t> NumberIn(std::string_view bytes, const Record& page, std::uint16_t type)
{
    const auto atom = ChildOf(bytes, page, type);
    return atom && atom->Holds(4) ? std::optional(U32At(atom->Content(bytes), 0)) : std::nullopt;
}

/// The atom of an InteractiveInfo; nothing for one without.
std::optional<Record> InteractionAtom(std::string_view bytes, const Record& info)
{
    const auto atom = ChildOf(bytes, info, record::InteractiveInfoAtom);
    return atom && atom->Holds(interactionType + 1) ? atom : std::nullopt;
}

}  // namespace

BinaryDocument::BinaryDocument(std::string stream, std::string currentUser, const Limits& limits)
    : limits_(limits), stream_(std::move(stream)), objects_(stream_, currentUser), kept_(limits_.keptBytes)
{
    if (objects_.IsEncrypted())
        Decrypt(currentUser);
    ReadDocument();
}

/// Where it needs no password to be opened.
void BinaryDocument::Decrypt(std::string_view currentUser)
{
    auto plain = DecryptedByPowerPoint(stream_, objects_);
    if (!plain)
        throw Failure(FailureNumber::Unspecified,
                      u"The presentation is encrypted and needs a password to be opened; save it without the password "
                      u"first");
    needsPasswordToChange_ = true;
    stream_ = *std::move(plain);
    objects_ = PersistObjects(stream_, currentUser);
}

void BinaryDocument::ReadDocument()
{
    const Record document = RecordAt(stream_, objects_.Document(), stream_.size());
    std::vector<Listed> slides;
    std::vector<Listed> masters;
    std::map<std::uint32_t, Record> notes;
    std::optional<Record> external;
    for (const Record& child : Records(stream_, document)) {
        const std::string_view content = child.Content(stream_);
        if (child.type == record::DocumentAtom && child.Holds(documentHandoutMaster + 4)) {
            notesMaster_ = PageAt(U32At(content, documentNotesMaster));
            handoutMaster_ = PageAt(U32At(content, documentHandoutMaster));
        } else if (child.type == record::ExternalObjectList && !external) {
            external = child;
        } else if (child.type == record::HeadersFooters && child.instance == forSlides && !ofSlides_) {
            ofSlides_.emplace(stream_, child);
        } else if (child.type == record::HeadersFooters && child.instance == forNotes && !ofNotes_) {
            ofNotes_.emplace(stream_, child);
        } else if (child.type == record::SlideListWithText && child.instance == listOfSlides && slides.empty()) {
            slides = ReadList(child);
        } else if (child.type == record::SlideListWithText && child.instance == listOfMasters && masters.empty()) {
            masters = ReadList(child);
        } else if (child.type == record::SlideListWithText && child.instance == listOfNotes) {
            for (const Listed& listed : ReadList(child))
                if (const auto page = PageAt(listed.object))
                    notes.try_emplace(listed.id, *page);
        }
    }
    external_ = ExternalObjects(stream_, external);
    ReadMasters(masters);
    ReadSlides(std::move(slides), notes);
    for (const auto* master : {&notesMaster_, &handoutMaster_})
        if (*master)
            listedPages_.push_back((*master)->begin);
    std::ranges::sort(listedPages_);
}

std::vector<BinaryDocument::Listed> BinaryDocument::ReadList(const Record& list) const
{
    std::vector<Listed> all;
    for (const Record& atom : Records(stream_, list)) {
        if (atom.type != record::SlidePersistAtom) {
            if (!all.empty())
                AddToTexts(all.back().texts, atom);
            continue;
        }
        if (all.size() >= limits_.slides)
            throw Damage(documentStream, "it has too many slides", atom.begin);
        if (!atom.Holds(persistSlideId + 4))
            throw Damage(documentStream, "an entry of a list of slides is cut", atom.begin);
        const std::string_view content = atom.Content(stream_);
        all.push_back({U32At(content, persistObject), U32At(content, persistSlideId), {}});
    }
    return all;
}

/// A page as a container of its own; nothing for an object that there is not.
std::optional<Record> BinaryDocument::PageAt(PersistId object) const
{
    const auto offset = object == 0 ? std::nullopt : objects_.Find(object);
    if (!offset)
        return {};
    const Record page = RecordAt(stream_, *offset, stream_.size());
    return page.IsContainer() ? std::optional(page) : std::nullopt;
}

Record BinaryDocument::ListedPage(const Listed& listed) const
{
    // Leaving it out silently would make the counts lie.
    const auto page = PageAt(listed.object);
    if (!page || (page->type != record::Slide && page->type != record::MainMaster))
        throw Damage(documentStream, "a list of slides names one that is missing");
    return *page;
}

void BinaryDocument::ReadMasters(const std::vector<Listed>& masters)
{
    std::set<std::size_t> seen;
    std::map<std::uint32_t, std::uint32_t> originals;  // what a master's own number was: number in the file
    std::vector<std::pair<const Listed*, Record>> mains;
    std::vector<std::pair<const Listed*, Record>> titles;
    for (const Listed& listed : masters) {
        const Record page = ListedPage(listed);
        if (!seen.insert(page.begin).second)
            throw Damage(documentStream, "a list of masters names one twice", page.begin);
        listedPages_.push_back(page.begin);
        (page.type == record::MainMaster ? mains : titles).emplace_back(&listed, page);
        if (const auto original = NumberIn(stream_, page, record::RoundTripOriginalMainMasterId12Atom))
            originals.try_emplace(*original, listed.id);
    }
    // Later versions write a layout that a slide uses as a main master of its own, which names the one it is of.
    std::vector<std::pair<std::uint32_t, std::uint32_t>> layouts;
    for (const auto& [listed, page] : mains) {
        const auto composite = NumberIn(stream_, page, record::RoundTripCompositeMasterId12Atom);
        const auto original = composite ? originals.find(*composite) : originals.end();
        if (original != originals.end() && original->second != listed->id) {
            layouts.emplace_back(listed->id, original->second);
            continue;
        }
        designOfMaster_.try_emplace(listed->id, designs_.size());
        designs_.push_back({page, {}});
    }
    for (const auto& [layout, master] : layouts)
        if (const auto design = designOfMaster_.find(master); design != designOfMaster_.end())
            designOfMaster_.try_emplace(layout, design->second);
    for (const auto& [listed, page] : titles) {
        const auto design = designOfMaster_.find(SlideAtomField(stream_, page, slideMasterId));
        if (design == designOfMaster_.end())
            continue;
        designOfMaster_.try_emplace(listed->id, design->second);
        if (auto& title = designs_[design->second].titleMaster; !title)
            title = page;
    }
}

void BinaryDocument::ReadSlides(std::vector<Listed> slides, const std::map<std::uint32_t, Record>& notes)
{
    std::unordered_set<std::size_t> seen(listedPages_.begin(), listedPages_.end(), 4 * slides.size());
    for (Listed& listed : slides) {
        Slide slide{{ListedPage(listed), std::move(listed.texts)}, {}, {}};
        // It would be searched once for each name, however large it is.
        if (!seen.insert(slide.page.record.begin).second)
            throw Damage(documentStream, "a list of slides names one twice", slide.page.record.begin);
        listedPages_.push_back(slide.page.record.begin);
        const auto design = designOfMaster_.find(SlideAtomField(stream_, slide.page.record, slideMasterId));
        if (design != designOfMaster_.end())
            slide.design = design->second;
        else if (!designs_.empty())
            slide.design = 0;
        const auto page = notes.find(SlideAtomField(stream_, slide.page.record, slideNotesId));
        // One page belongs to one slide; a second one that names it would show what is the first one's.
        if (page != notes.end() && seen.insert(page->second.begin).second) {
            slide.notes = page->second;
            listedPages_.push_back(page->second.begin);
        }
        slides_.push_back(std::move(slide));
    }
    for (const auto& [id, page] : notes)
        listedPages_.push_back(page.begin);
}

bool BinaryDocument::IsForgottenPage(std::size_t offset) const
{
    const Record page = RecordAt(stream_, offset, stream_.size());
    const bool isPage = page.type == record::Slide || page.type == record::Notes || page.type == record::MainMaster;
    return isPage && !std::ranges::binary_search(listedPages_, offset);
}

std::size_t& BinaryDocument::UsesOf(ExternalObjectId hyperlink)
{
    if (!uses_)
        CountUses();
    return (*uses_)[hyperlink];
}

void BinaryDocument::CountUses()
{
    uses_.emplace();
    for (const auto& [id, offset] : objects_.All())
        ForEachRecord(stream_, RecordAt(stream_, offset, stream_.size()), [this](const Record& record) {
            if (record.type == record::InteractiveInfo)
                if (const auto hyperlink = HyperlinkOf(stream_, record))
                    ++(*uses_)[*hyperlink];
        });
}

void BinaryDocument::Grow(std::size_t bytes)
{
    grown_ += bytes;
    if (grown_ > limits_.grownBytes)
        throw Failure(FailureNumber::BadFormat, u"The presentation would become too large");
}

std::optional<ExternalObjectId> HyperlinkOf(std::string_view bytes, const Record& interactiveInfo)
{
    const auto atom = InteractionAtom(bytes, interactiveInfo);
    if (!atom)
        return {};
    const std::string_view content = atom->Content(bytes);
    // LinkTo_Slide, _URL, _OtherPresentation, _OtherFile; the ones before jump in the show.
    constexpr std::uint8_t firstType = 7;
    constexpr std::uint8_t lastType = 10;
    const auto type = static_cast<std::uint8_t>(content[interactionType]);
    if (static_cast<std::uint8_t>(content[interactionAction]) != hyperlinkAction || type < firstType || type > lastType)
        return {};
    return U32At(content, interactionHyperlink);
}

std::size_t HyperlinkFieldOf(std::string_view bytes, const Record& interactiveInfo)
{
    return InteractionAtom(bytes, interactiveInfo).value().ContentBegin() + interactionHyperlink;
}

}  // namespace tessarine::builtin
