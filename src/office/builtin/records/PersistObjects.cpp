#include "office/builtin/records/PersistObjects.h"

#include <algorithm>
#include <set>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/records/Record.h"
#include "office/builtin/records/RecordTypes.h"

namespace tessarine::builtin
{

namespace
{

/// CurrentUserAtom ([MS-PPT] 2.3.2): the header, the size of what follows, a token, the offset of the newest edit.
constexpr std::size_t currentEditOffset = Record::headerSize + 8;

/// Fields of UserEditAtom ([MS-PPT] 2.3.3), from its content on.
constexpr std::size_t editLastEdit = 8;
constexpr std::size_t editDirectory = 12;
constexpr std::size_t editDocument = 16;
constexpr std::size_t editSize = 0x1C;
constexpr std::size_t editEncryption = 28;  // of a longer one

/// An entry of a directory tells its first object in 20 bits, and how many follow in 12.
constexpr std::uint32_t idBits = 0xFFFFF;
constexpr std::uint32_t mostInEntry = 0xFFF;

void PutU32(std::string& bytes, std::size_t offset, std::size_t number)
{
    std::string written;
    AppendU32(written, static_cast<std::uint32_t>(number));
    bytes.replace(offset, written.size(), written);
}

}  // namespace

PersistObjects::PersistObjects(std::string_view stream, std::string_view currentUser) : stream_(stream)
{
    const auto newest = NewestEdit(currentUser);
    if (!newest)
        throw Damage(documentStream, "it holds no user edit");
    newestEdit_ = *newest;
    const std::string_view edit = RecordAt(stream_, newestEdit_, stream_.size()).Content(stream_);
    document_ = U32At(edit, editDocument);
    // The token alone tells nothing: it may be that of a plain file.
    if (edit.size() >= editEncryption + 4)
        encryptionSession_ = U32At(edit, editEncryption);

    // From the newest edit to the first; what is named already is newer.
    std::set<std::size_t> seen;
    for (std::optional<std::size_t> at = newest; at;) {
        seen.insert(*at);
        const std::string_view content = RecordAt(stream_, *at, stream_.size()).Content(stream_);
        ReadDirectory(U32At(content, editDirectory));
        const std::size_t last = U32At(content, editLastEdit);
        if (last == 0)
            break;
        // A pointer that leads nowhere or back: the edit that stands before is the one that was meant.
        at = IsEditAt(last) && !seen.contains(last) && last < *at ? last : LastEditBefore(*at);
    }
    KeepNewest();
    if (!IsEncrypted())
        CheckObjects();
}

std::size_t PersistObjects::Document() const
{
    const auto document = Find(document_);
    if (!document || RecordAt(stream_, *document, stream_.size()).type != record::Document)
        throw Damage(documentStream, "its newest edit names no document");
    return *document;
}

std::optional<std::size_t> PersistObjects::Find(PersistId id) const
{
    const auto found = std::ranges::lower_bound(offsets_, id, {}, &std::pair<PersistId, std::size_t>::first);
    return found == offsets_.end() || found->first != id ? std::nullopt : std::optional(found->second);
}

std::optional<std::size_t> PersistObjects::NewestEdit(std::string_view currentUser) const
{
    if (currentUser.size() >= currentEditOffset + 4 && U16At(currentUser, 2) == record::CurrentUserAtom) {
        const std::size_t offset = U32At(currentUser, currentEditOffset);
        if (IsEditAt(offset))
            return offset;
    }
    return LastEditBefore(stream_.size());
}

/// Looks for the bytes of its header, as gaps between records can't be stepped over.
std::optional<std::size_t> PersistObjects::LastEditBefore(std::size_t end) const
{
    using namespace std::string_view_literals;
    constexpr std::string_view head = "\x00\x00\xF5\x0F"sv;
    for (std::size_t at = end; at > 0;) {
        at = stream_.rfind(head, at - 1);
        if (at == std::string_view::npos)
            break;
        if (IsEditAt(at))
            return at;
    }
    return {};
}

bool PersistObjects::IsEditAt(std::size_t offset) const
{
    if (offset >= stream_.size() || stream_.size() - offset < Record::headerSize + editSize)
        return false;
    const std::uint32_t length = U32At(stream_, offset + 4);
    return U16At(stream_, offset + 2) == record::UserEditAtom && length >= editSize &&
           length <= stream_.size() - offset - Record::headerSize;
}

void PersistObjects::ReadDirectory(std::size_t offset)
{
    const Record directory = RecordAt(stream_, offset, stream_.size());
    if (directory.type != record::PersistDirectoryAtom && directory.type != record::OldPersistDirectoryAtom)
        throw Damage(documentStream, "a user edit names no directory of objects", offset);
    const std::string_view content = directory.Content(stream_);
    // Edits of their own have directories of their own: more than all bytes are in none.
    directoryBytes_ += content.size();
    if (directoryBytes_ > stream_.size())
        throw Damage(documentStream, "its directories of objects overlap", directory.begin);
    for (std::size_t at = 0; content.size() - at >= 4;) {
        const std::uint32_t entry = U32At(content, at);
        at += 4;
        const std::uint32_t count = entry >> 20;
        if (count > (content.size() - at) / 4)
            throw Damage(documentStream, "a directory of objects is cut", directory.begin);
        for (std::uint32_t i = 0; i < count; ++i, at += 4)
            offsets_.emplace_back((entry & idBits) + i, U32At(content, at));
    }
}

/// Of several entries for one object the first counts, which is that of the newest edit.
void PersistObjects::KeepNewest()
{
    std::ranges::stable_sort(offsets_, {}, &std::pair<PersistId, std::size_t>::first);
    const auto isSame = [](const auto& left, const auto& right) { return left.first == right.first; };
    offsets_.erase(std::unique(offsets_.begin(), offsets_.end(), isSame), offsets_.end());
}

/// Each object is read at most once then, however many there are.
void PersistObjects::CheckObjects() const
{
    std::vector<std::size_t> begins;
    for (const auto& [id, offset] : offsets_)
        begins.push_back(offset);
    std::ranges::sort(begins);
    std::size_t end = 0;
    for (const std::size_t begin : begins) {
        if (begin < end)
            throw Damage(documentStream, "two of its objects overlap", begin);
        end = RecordAt(stream_, begin, stream_.size()).end;
    }
}

std::string PersistObjects::Rewritten(const Append& append) const
{
    std::vector<std::pair<std::size_t, PersistId>> order;
    for (const auto& [id, offset] : offsets_)
        order.emplace_back(offset, id);
    std::ranges::sort(order);
    std::string target;
    target.reserve(stream_.size() + stream_.size() / 8);  // as it grows it would take twice its size
    std::vector<std::pair<PersistId, std::size_t>> places;
    for (const auto& [offset, id] : order) {
        const std::size_t begin = target.size();
        if (append(offset, target))
            places.emplace_back(id, begin);
    }
    std::ranges::sort(places);
    const std::size_t directoryOffset = target.size();
    std::string directory;
    for (auto first = places.begin(); first != places.end();) {
        std::uint32_t count = 0;
        std::string entries;
        for (; first != places.end() && count < mostInEntry &&
               (count == 0 || first->first == std::prev(first)->first + 1);
             ++first, ++count)
            AppendU32(entries, static_cast<std::uint32_t>(first->second));
        AppendU32(directory, (std::prev(first)->first + 1 - count) | count << 20);
        directory += entries;
    }
    target += RecordOf(record::PersistDirectoryAtom, 0, 0, directory);

    const Record oldEdit = RecordAt(stream_, newestEdit_, stream_.size());
    std::string edit(oldEdit.Content(stream_));
    PutU32(edit, editLastEdit, 0);
    PutU32(edit, editDirectory, directoryOffset);
    target += RecordLike(oldEdit, edit);
    return target;
}

std::string PersistObjects::WithoutEncryption(std::string decrypted) const
{
    PutU32(decrypted, newestEdit_ + Record::headerSize + editEncryption, 0);
    return decrypted;
}

std::string PersistObjects::CurrentUserFor(std::string_view old, std::string_view rewrittenStream)
{
    std::string current(old);
    // One that is missing stays away: the last edit of the stream is found without it.
    if (current.size() >= currentEditOffset + 4) {
        const PersistObjects rewritten(rewrittenStream, {});
        PutU32(current, currentEditOffset, rewritten.newestEdit_);
    }
    return current;
}

}  // namespace tessarine::builtin
