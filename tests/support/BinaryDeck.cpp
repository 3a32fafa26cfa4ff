#include "support/BinaryDeck.h"

#include <fstream>
#include <stdexcept>

#include "support/BinaryEncryption.h"
#include "support/BinaryLayout.h"
#include "support/BinaryRecords.h"

namespace tessarine::test::ppt
{

namespace
{

constexpr std::uint32_t PlainToken = 0xE391C05F;
constexpr std::uint32_t EncryptedToken = 0xF3D1C4DF;
const std::string DocumentName = "PowerPoint Document";
const std::string UserName = "Current User";

std::string UserEditAtom(const UserEdit& edit)
{
    std::string data = Long(edit.lastSlide) + Short(edit.version) + Byte(0) + Byte(3) + Long(edit.lastEdit) +
                       Long(edit.directory) + Long(edit.document) + Long(edit.seed) + Short(edit.lastView) + Short(0);
    if (edit.encryptSession)
        data += Long(*edit.encryptSession);
    return Atom(4085, data + edit.unknown);
}

/// Neighbouring ids share an entry: the first of them, how many, their offsets.
std::string Directory(const std::map<std::uint32_t, std::uint32_t>& offsets)
{
    std::string data;
    for (auto run = offsets.begin(); run != offsets.end();) {
        auto end = run;
        std::uint32_t count = 0;
        std::string places;
        for (; end != offsets.end() && end->first == run->first + count; ++end, ++count)
            places += Long(end->second);
        data += Long(run->first | count << 20) + places;
        run = end;
    }
    return data;
}

}  // namespace

BinaryDeck& BinaryDeck::Master(MainMaster master)
{
    if (!mastersGiven_)
        masters_.clear();
    mastersGiven_ = true;
    masters_.push_back(std::move(master));
    return *this;
}

BinaryDeck& BinaryDeck::SlideFooters(HeadersFooters footers)
{
    slideFooters_ = std::move(footers);
    return *this;
}

BinaryDeck& BinaryDeck::NotesFooters(HeadersFooters footers)
{
    notesFooters_ = std::move(footers);
    return *this;
}

BinaryDeck& BinaryDeck::SlideOrder(std::vector<int> numbers)
{
    slideOrder_ = std::move(numbers);
    return *this;
}

BinaryDeck& BinaryDeck::DocumentRecords(std::string records)
{
    documentRecords_ += std::move(records);
    return *this;
}

BinaryDeck& BinaryDeck::UnpackedObjects()
{
    unpackedObjects_ = true;
    return *this;
}

BinaryDeck& BinaryDeck::Summary(std::uint32_t id, std::string value)
{
    summary_.Put(id, std::move(value));
    return *this;
}

BinaryDeck& BinaryDeck::DocumentSummary(std::uint32_t id, std::string value)
{
    documentSummary_.Put(id, std::move(value));
    return *this;
}

BinaryDeck& BinaryDeck::Custom(const std::string& name, std::string value)
{
    custom_.Named(name, std::move(value));
    return *this;
}

BinaryDeck& BinaryDeck::CodePage(int codePage)
{
    summary_.CodePage(codePage);
    documentSummary_.CodePage(codePage);
    return CustomCodePage(codePage);
}

BinaryDeck& BinaryDeck::CustomCodePage(int codePage)
{
    custom_.CodePage(codePage);
    return *this;
}

BinaryDeck& BinaryDeck::After(const BinaryDeck& earlier)
{
    earlier_ = std::make_shared<BinaryDeck>(earlier);
    return *this;
}

BinaryDeck& BinaryDeck::PersistStep(std::uint32_t step)
{
    persistStep_ = step;
    return *this;
}

BinaryDeck& BinaryDeck::Junk(std::string bytes)
{
    junk_ = std::move(bytes);
    return *this;
}

BinaryDeck& BinaryDeck::Encrypted(String password, bool plainToken)
{
    password_ = std::move(password);
    encryptedToken_ = !plainToken;
    return *this;
}

BinaryDeck& BinaryDeck::KeyBits(std::size_t bits)
{
    keyBits_ = bits;
    return *this;
}

BinaryDeck& BinaryDeck::WithoutCurrentUser()
{
    currentUser_ = false;
    return *this;
}

BinaryDeck& BinaryDeck::PaddedCurrentUser()
{
    paddedCurrentUser_ = true;
    return *this;
}

BinaryDeck& BinaryDeck::DualStorage()
{
    dualStorage_ = true;
    return *this;
}

BinaryDeck& BinaryDeck::ChangeObject(std::uint32_t persistId, Change change)
{
    objectChanges_[persistId].push_back(std::move(change));
    return *this;
}

BinaryDeck& BinaryDeck::ChangeOffsets(std::function<void(std::map<std::uint32_t, std::uint32_t>&)> change)
{
    offsetChanges_.push_back(std::move(change));
    return *this;
}

BinaryDeck& BinaryDeck::ChangeDirectory(Change change)
{
    directoryChanges_.push_back(std::move(change));
    return *this;
}

BinaryDeck& BinaryDeck::ChangeEdit(std::function<void(UserEdit&)> change)
{
    editChanges_.push_back(std::move(change));
    return *this;
}

BinaryDeck& BinaryDeck::ChangeCurrentUser(Change change)
{
    currentUserChanges_.push_back(std::move(change));
    return *this;
}

BinaryDeck& BinaryDeck::ChangeDocument(Change change)
{
    documentChanges_.push_back(std::move(change));
    return *this;
}

BinaryDeck& BinaryDeck::ChangeFile(std::function<void(CompoundBuilder&)> change)
{
    fileChanges_.push_back(std::move(change));
    return *this;
}

bool BinaryDeck::HasNotesMaster() const
{
    if (notesMaster_)
        return true;
    for (const auto& slide : slides_)
        if (slide.notes)
            return true;
    return false;
}

std::uint32_t BinaryDeck::IdAt(std::size_t index) const
{
    return DocumentId + static_cast<std::uint32_t>(index) * persistStep_;
}

std::uint32_t BinaryDeck::MasterId(int number) const
{
    std::size_t index = 1;
    for (std::size_t i = 0; i + 1 < static_cast<std::size_t>(number); ++i)
        index += masters_.at(i).TitleShapes() ? 2 : 1;
    return IdAt(index);
}

std::uint32_t BinaryDeck::TitleMasterId(int number) const
{
    return MasterId(number) + persistStep_;
}

std::uint32_t BinaryDeck::NotesMasterId() const
{
    return MasterId(static_cast<int>(masters_.size()) + 1);
}

std::uint32_t BinaryDeck::HandoutMasterId() const
{
    return NotesMasterId() + (HasNotesMaster() ? persistStep_ : 0);
}

std::uint32_t BinaryDeck::SlideId(int number) const
{
    return HandoutMasterId() + (handoutMaster_ ? persistStep_ : 0) +
           static_cast<std::uint32_t>(number - 1) * persistStep_;
}

std::uint32_t BinaryDeck::NotesId(int number) const
{
    std::uint32_t id = SlideId(static_cast<int>(slides_.size()) + 1);
    for (std::size_t i = 0; i + 1 < static_cast<std::size_t>(number); ++i)
        id += slides_.at(i).notes ? persistStep_ : 0;
    return id;
}

std::uint32_t BinaryDeck::StorageId(int number) const
{
    return NotesId(static_cast<int>(slides_.size()) + 1) + static_cast<std::uint32_t>(number - 1) * persistStep_;
}

std::uint32_t BinaryDeck::SessionId() const
{
    return IdAt(BinaryLayout(*this).Objects().size());
}

BinaryDeck::Written BinaryDeck::Write() const
{
    Written written = earlier_ ? earlier_->Write() : Written();
    BinaryLayout layout(*this);
    auto objects = layout.Objects();
    if (password_)
        objects.push_back(CryptSession(*password_, keyBits_));
    std::map<std::uint32_t, std::uint32_t> offsets;
    for (std::size_t i = 0; i < objects.size(); ++i) {
        const std::uint32_t id = IdAt(i);
        if (const auto changes = objectChanges_.find(id); changes != objectChanges_.end())
            for (const auto& change : changes->second)
                change(objects[i]);
        const bool isSession = password_ && i + 1 == objects.size();
        if (password_ && !isSession)
            objects[i] = Encrypt(*password_, id, objects[i], keyBits_);
        if (written.objects[id] == objects[i])
            continue;
        written.stream += junk_;
        offsets[id] = static_cast<std::uint32_t>(written.stream.size());
        written.stream += objects[i];
        written.objects[id] = std::move(objects[i]);
    }
    for (const auto& change : offsetChanges_)
        change(offsets);
    std::string directory = Directory(offsets);
    for (const auto& change : directoryChanges_)
        change(directory);

    UserEdit edit;
    edit.lastSlide = slides_.empty() ? 0 : 256;
    edit.lastEdit = written.lastEdit;
    edit.directory = static_cast<std::uint32_t>(written.stream.size());
    edit.seed = IdAt(objects.size() - 1);
    if (password_)
        edit.encryptSession = edit.seed;
    written.stream += Atom(6002, directory);
    written.lastEdit = static_cast<std::uint32_t>(written.stream.size());
    for (const auto& change : editChanges_)
        change(edit);
    written.stream += UserEditAtom(edit);
    for (const auto& change : documentChanges_)
        change(written.stream);
    written.pictures = layout.Pictures();
    return written;
}

std::string BinaryDeck::CurrentUser(std::uint32_t edit) const
{
    const std::string name = "Fabrikam";
    std::string data = Long(0x14) + Long(encryptedToken_ ? EncryptedToken : PlainToken) + Long(edit) +
                       Short(static_cast<std::uint32_t>(name.size())) + Short(0x03F4) + Byte(3) + Byte(0) + Short(0) +
                       name + Long(8) + Wide(FromUtf8(name));
    std::string stream = Atom(4086, data);
    if (paddedCurrentUser_)
        stream.resize(4096);
    for (const auto& change : currentUserChanges_)
        change(stream);
    return stream;
}

std::string BinaryDeck::DocumentStream() const
{
    return Write().stream;
}

std::string BinaryDeck::Bytes() const
{
    const Written written = Write();
    CompoundBuilder file;
    CompoundMarks root;
    root.classId = {0x10, 0x8D, 0x81, 0x64, 0x9B, 0x4F, 0xCF, 0x11, 0x86, 0xEA, 0x00, 0xAA, 0x00, 0xB9, 0x29, 0xE8};
    file.Marks("", root);
    const auto add = [&](const std::string& folder) {
        file.Stream(folder + DocumentName, written.stream);
        if (currentUser_)
            file.Stream(folder + UserName, CurrentUser(written.lastEdit));
        if (!written.pictures.empty())
            file.Stream(folder + "Pictures", written.pictures);
    };
    add("");
    if (dualStorage_) {
        add("PP97_DUALSTORAGE/");
        // What PowerPoint 95 would read: nothing that a later version knows.
        file.Stream(DocumentName, std::string(600, '\x7F')).Stream(UserName, std::string(40, '\x7F'));
    }
    if (!summary_.IsEmpty())
        file.Stream("\x05SummaryInformation", PropertySetStream({{SectionKind::Summary, summary_}}));
    if (!documentSummary_.IsEmpty() || !custom_.IsEmpty()) {
        std::vector<std::pair<SectionKind, PropertySection>> sections{{SectionKind::DocumentSummary, documentSummary_}};
        if (!custom_.IsEmpty())
            sections.emplace_back(SectionKind::UserDefined, custom_);
        file.Stream(
            "\x05"
            "DocumentSummaryInformation",
            PropertySetStream(sections));
    }
    for (const auto& change : fileChanges_)
        change(file);
    return file.Bytes();
}

void BinaryDeck::WriteTo(const std::filesystem::path& path) const
{
    std::ofstream out(path, std::ios::binary);
    out << Bytes();
    if (!out.flush())
        throw std::runtime_error("The deck can't be written.");
}

}  // namespace tessarine::test::ppt
