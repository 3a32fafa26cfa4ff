#include "support/BinaryLayout.h"

#include "support/BinaryOle.h"
#include "support/BinaryRecords.h"

namespace tessarine::test::ppt
{

namespace
{

constexpr std::uint32_t FirstMasterId = 0x80000000;
constexpr std::uint32_t FirstSlideId = 256;
constexpr std::uint32_t FollowsMaster = 7;

std::vector<String> TitlesOf(const std::vector<SlideContent>& slides)
{
    std::vector<String> titles;
    for (const auto& slide : slides)
        titles.push_back(slide.Title());
    return titles;
}

std::string ColorScheme(std::uint32_t instance)
{
    static constexpr std::uint32_t colors[] = {0xFFFFFF, 0, 0x808080, 0, 0xE3E0BB, 0x993333, 0x999900, 0x00CC99};
    std::string bytes;
    for (const auto color : colors)
        bytes += Long(color);
    return Atom(2032, bytes, instance);
}

std::string SlideAtom(std::uint32_t layout, std::uint32_t masterId, std::uint32_t notesId, std::uint32_t flags)
{
    return Record(2, 0, 1007,
                  Long(layout) + std::string(8, '\0') + Long(masterId) + Long(notesId) + Short(flags) + Short(0));
}

std::string PersistAtom(std::uint32_t persistId, std::uint32_t texts, std::uint32_t id)
{
    constexpr std::uint32_t HasOtherData = 4;
    return Atom(1011, Long(persistId) + Long(HasOtherData) + Long(texts) + Long(id) + Long(0));
}

/// What texts of a type look like where nothing else is said: here the size alone, equal on all five levels.
std::string MasterStyle(std::uint32_t textType, std::uint32_t points)
{
    constexpr std::uint32_t Levels = 5;
    constexpr std::uint32_t FirstWithNumberedLevels = 5;
    constexpr std::uint32_t SizeOfCharacters = 1U << 17;
    std::string levels = Short(Levels);
    for (std::uint32_t level = 0; level < Levels; ++level)
        levels += (textType >= FirstWithNumberedLevels ? Short(level) : "") + Long(0) + Long(SizeOfCharacters) +
                  Short(points);
    return Atom(4003, levels, textType);
}

std::string MasterStyles()
{
    return MasterStyle(TitleText, 44) + MasterStyle(BodyText, 32) + MasterStyle(NotesText, 12) +
           MasterStyle(CenterBodyText, 32) + MasterStyle(CenterTitleText, 44) + MasterStyle(HalfBodyText, 28) +
           MasterStyle(QuarterBodyText, 24);
}

/// Fonts, and what all texts look like.
std::string Environment(const std::string& fonts)
{
    constexpr std::uint32_t Nothing = 0;
    return Container(1010, Container(2005, fonts) + Atom(4004, Long(Nothing)) + Atom(4005, Short(0) + Long(Nothing)) +
                               Atom(4009, Long(Nothing)) + MasterStyle(OtherText, 18));
}

std::string Font()
{
    std::string name = Wide(u"Arial");
    name.resize(64);
    return Atom(4023, name + Long(0x22040000));
}

}  // namespace

BinaryLayout::BinaryLayout(const BinaryDeck& deck) : deck_(deck), parts_(TitlesOf(deck.slides_))
{
    std::uint32_t next = FirstMasterId;
    for (const auto& master : deck.masters_) {
        masterIds_.push_back(next++);
        titleMasterIds_.push_back(master.TitleShapes() ? next++ : 0);
    }
}

std::vector<std::string> BinaryLayout::Objects()
{
    std::vector<std::string> objects{""};
    for (std::size_t i = 0; i < deck_.masters_.size(); ++i) {
        objects.push_back(Master(deck_.masters_[i]));
        if (deck_.masters_[i].TitleShapes())
            objects.push_back(TitleMaster(deck_.masters_[i], masterIds_[i]));
    }
    if (deck_.HasNotesMaster())
        objects.push_back(PageMaster(deck_.notesMaster_.value_or(std::vector<Shape>{}), true));
    if (deck_.handoutMaster_)
        objects.push_back(PageMaster(*deck_.handoutMaster_, false));
    for (std::size_t i = 0; i < deck_.slides_.size(); ++i)
        objects.push_back(Slide(i));
    for (std::size_t i = 0; i < deck_.slides_.size(); ++i)
        if (deck_.slides_[i].notes)
            objects.push_back(Notes(i));
    objects.front() = Document();
    for (const auto& storage : parts_.Storages())
        objects.push_back(OleStorageRecord(storage, !deck_.unpackedObjects_));
    return objects;
}

std::string BinaryLayout::Master(const MainMaster& master)
{
    BinaryPage page(parts_, false);
    std::string records = SlideAtom(1, 0, 0, 0) + ColorScheme(6) + MasterStyles();
    if (master.headersFooters_)
        records += master.headersFooters_->Record(0);
    records += page.Drawing(master.shapes_) + ColorScheme(1);
    if (!master.nameless_)
        records += CString(master.name_, 2);
    return Container(1016, records + master.records_);
}

std::string BinaryLayout::TitleMaster(const MainMaster& master, std::uint32_t masterId)
{
    BinaryPage page(parts_, false);
    return Container(1006,
                     SlideAtom(2, masterId, 0, FollowsMaster) + page.Drawing(*master.TitleShapes()) + ColorScheme(1));
}

std::string BinaryLayout::PageMaster(const std::vector<Shape>& shapes, bool notes)
{
    BinaryPage page(parts_, false);
    const std::string records = page.Drawing(shapes) + ColorScheme(1);
    if (!notes)
        return Container(4041, records);
    return Container(1008, Record(1, 0, 1009, Long(0) + Short(0) + Short(0)) + records);
}

std::string BinaryLayout::Slide(std::size_t index)
{
    const SlideContent& slide = deck_.slides_[index];
    constexpr std::uint32_t TitleAndBody = 1;
    const auto masterIndex = static_cast<std::size_t>((slide.titleMaster != 0 ? slide.titleMaster : slide.master) - 1);
    const std::uint32_t masterId =
        slide.titleMaster != 0 ? titleMasterIds_.at(masterIndex) : masterIds_.at(masterIndex);
    BinaryPage page(parts_, true);
    std::string records = SlideAtom(TitleAndBody, masterId,
                                    slide.notes ? FirstSlideId + static_cast<std::uint32_t>(index) : 0, FollowsMaster);
    if (slide.hidden) {
        constexpr std::uint32_t HiddenFlag = 4;
        records += Atom(1017, Long(0) + Long(0) + Short(0) + Short(HiddenFlag) + Long(0));
    }
    if (slide.headersFooters)
        records += slide.headersFooters->Record(0);
    records += page.Drawing(slide.shapes) + ColorScheme(1) + slide.records;
    outlines_.push_back(page.Outline());
    return Container(1006, records);
}

std::string BinaryLayout::Notes(std::size_t index)
{
    const NotesPage& notes = *deck_.slides_[index].notes;
    BinaryPage page(parts_, false);
    std::string records =
        Record(1, 0, 1009, Long(FirstSlideId + static_cast<std::uint32_t>(index)) + Short(FollowsMaster) + Short(0));
    if (notes.headersFooters)
        records += notes.headersFooters->Record(0);
    return Container(1008, records + page.Drawing(notes.shapes) + ColorScheme(1));
}

std::string BinaryLayout::Document()
{
    std::string records = DocumentAtom() + parts_.ExternalObjects(deck_.StorageId(1), deck_.persistStep_) +
                          Environment(Font()) + parts_.DrawingGroup() + MasterList() + Container(2000, "");
    if (deck_.slideFooters_)
        records += deck_.slideFooters_->Record(3);
    if (deck_.notesFooters_)
        records += deck_.notesFooters_->Record(4);
    records += SlideList() + NotesList() + deck_.documentRecords_ + Atom(1002, "");
    return Container(1000, records);
}

std::string BinaryLayout::DocumentAtom() const
{
    const std::string sizes = Long(5760) + Long(4320) + Long(4320) + Long(5760) + Long(5) + Long(10);
    return Record(1, 0, 1001,
                  sizes + Long(deck_.HasNotesMaster() ? deck_.NotesMasterId() : 0) +
                      Long(deck_.handoutMaster_ ? deck_.HandoutMasterId() : 0) + Short(1) + Short(0) + Byte(0) +
                      Byte(0) + Byte(0) + Byte(1));
}

std::string BinaryLayout::MasterList() const
{
    std::string list;
    for (std::size_t i = 0; i < masterIds_.size(); ++i) {
        const int number = static_cast<int>(i) + 1;
        list += PersistAtom(deck_.MasterId(number), 0, masterIds_[i]);
        if (titleMasterIds_[i] != 0)
            list += PersistAtom(deck_.TitleMasterId(number), 0, titleMasterIds_[i]);
    }
    return Container(4080, list, 1);
}

std::string BinaryLayout::SlideList() const
{
    std::vector<int> order = deck_.slideOrder_;
    for (std::size_t i = 0; deck_.slideOrder_.empty() && i < deck_.slides_.size(); ++i)
        order.push_back(static_cast<int>(i) + 1);
    std::string list;
    for (const int number : order) {
        const auto index = static_cast<std::size_t>(number - 1);
        if (!deck_.slides_.at(index).listed)
            continue;
        const auto& outline = outlines_[index];
        list += PersistAtom(deck_.SlideId(number), static_cast<std::uint32_t>(outline.size()),
                            FirstSlideId + static_cast<std::uint32_t>(index));
        for (const auto& text : outline)
            list += text;
        list += deck_.slides_[index].outlineRecords;
    }
    return list.empty() ? "" : Container(4080, list, 0);
}

std::string BinaryLayout::NotesList() const
{
    std::string list;
    for (std::size_t i = 0; i < deck_.slides_.size(); ++i)
        if (deck_.slides_[i].notes)
            list +=
                PersistAtom(deck_.NotesId(static_cast<int>(i) + 1), 0, FirstSlideId + static_cast<std::uint32_t>(i));
    return list.empty() ? "" : Container(4080, list, 2);
}

}  // namespace tessarine::test::ppt
