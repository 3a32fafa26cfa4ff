#include "office/builtin/binary/BinaryPages.h"

#include <utility>

#include "office/builtin/binary/DesignNames.h"
#include "office/builtin/limits/Damage.h"
#include "office/builtin/records/RecordTypes.h"

namespace tessarine::builtin
{

BinaryPages::BinaryPages(std::string stream, std::string currentUser, const Limits& limits)
    : currentUser_(std::move(currentUser)), document_(std::move(stream), currentUser_, limits)
{
    for (const BinaryDocument::Slide& slide : document_.Slides()) {
        slides_.push_back(std::make_unique<BinaryPage>(document_, slide.page, BinaryPage::Kind::Slide));
        notes_.push_back(MakePage(slide.notes, BinaryPage::Kind::Notes));
    }
    for (const BinaryDocument::Design& design : document_.Designs()) {
        slideMasters_.push_back(MakePage(design.master, BinaryPage::Kind::Master));
        titleMasters_.push_back(MakePage(design.titleMaster, BinaryPage::Kind::Master));
    }
    notesMaster_ = MakePage(document_.NotesMaster(), BinaryPage::Kind::Notes);
    handoutMaster_ = MakePage(document_.HandoutMaster(), BinaryPage::Kind::Notes);
}

std::unique_ptr<BinaryPage> BinaryPages::MakePage(const std::optional<Record>& record, BinaryPage::Kind kind)
{
    return record ? std::make_unique<BinaryPage>(document_, PagePlace{*record, {}}, kind) : nullptr;
}

String BinaryPages::DesignName(std::size_t design)
{
    if (!designNames_) {
        std::vector<Record> masters;
        for (const BinaryDocument::Design& each : document_.Designs())
            masters.push_back(each.master);
        designNames_ = NamesOfDesigns(document_.Bytes(), masters, document_.limits());
    }
    return (*designNames_)[design];
}

GroupFilter BinaryPages::FilterOf(const Pages& pages)
{
    std::vector<PartFilter*> filters;
    for (const auto& page : pages)
        if (page)
            filters.push_back(&page->Filter());
    return GroupFilter(std::move(filters));
}

bool BinaryPages::SlidesMayHold(const SoughtText& sought)
{
    if (!slidesFilter_)
        slidesFilter_ = FilterOf(slides_);
    return slidesFilter_->MayHold(sought);
}

bool BinaryPages::NotesMayHold(const SoughtText& sought)
{
    if (!notesFilter_)
        notesFilter_ = FilterOf(notes_);
    return notesFilter_->MayHold(sought);
}

std::vector<BinaryPage*> BinaryPages::AllPages() const
{
    std::vector<BinaryPage*> all{notesMaster_.get(), handoutMaster_.get()};
    for (const Pages* pages : {&slides_, &notes_, &slideMasters_, &titleMasters_})
        for (const auto& page : *pages)
            all.push_back(page.get());
    return all;
}

std::optional<std::string> BinaryPages::Edited()
{
    RecordEdits edits;
    for (BinaryPage* const page : AllPages())
        if (page != nullptr)
            page->Put(edits);
    document_.External().Put(edits);
    for (const HeadersFootersText* const shared : {document_.OfSlides(), document_.OfNotes()})
        if (shared != nullptr)
            shared->Put(edits);
    if (edits.Empty())
        return {};
    const std::string_view bytes = document_.Bytes();
    std::string edited = document_.Objects().Rewritten([&](std::size_t offset, std::string& target) {
        if (document_.IsForgottenPage(offset))
            return false;
        const Record object = RecordAt(bytes, offset, bytes.size());
        if (edits.HasChangeIn(object.begin, object.end))
            target += edits.Apply(bytes, offset);
        else
            target += bytes.substr(object.begin, object.end - object.begin);
        return true;
    });
    return CheckedToRead(std::move(edited));
}

/// The pages that were edited, each beside itself as it reads now. Gives the stream back, as there need be no copy of
/// it.
std::string BinaryPages::CheckedToRead(std::string edited)
{
    BinaryPages again(std::move(edited), {}, document_.limits());
    const std::vector<BinaryPage*> pages = AllPages();
    const std::vector<BinaryPage*> pagesAgain = again.AllPages();
    bool isSame = pages.size() == pagesAgain.size();
    for (std::size_t page = 0; isSame && page < pages.size(); ++page) {
        isSame = (pages[page] == nullptr) == (pagesAgain[page] == nullptr);
        if (isSame && pages[page] != nullptr && pages[page]->IsEdited())
            isSame = pages[page]->ReadsAs(*pagesAgain[page]);
    }
    if (!isSame)
        throw FailedEdit(documentStream, "it would not read as it was meant");
    return again.document_.TakeBytes();
}

std::string BinaryPages::CurrentUserFor(std::string_view edited) const
{
    return PersistObjects::CurrentUserFor(currentUser_, edited);
}

std::vector<std::pair<std::size_t, BinaryPage::TitleChange>> BinaryPages::ChangedTitles()
{
    std::vector<std::pair<std::size_t, BinaryPage::TitleChange>> changed;
    for (std::size_t slide = 0; slide < slides_.size(); ++slide)
        if (auto title = slides_[slide]->ChangedTitle())
            changed.emplace_back(slide, std::move(*title));
    return changed;
}

}  // namespace tessarine::builtin
