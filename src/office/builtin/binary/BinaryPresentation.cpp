#include "office/builtin/binary/BinaryPresentation.h"

#include <utility>

#include "log/Treatments.h"
#include "log/Warnings.h"
#include "office/builtin/limits/Damage.h"
#include "office/builtin/reader/Refusals.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

constexpr StringView documentName = u"PowerPoint Document";
constexpr StringView currentUserName = u"Current User";
/// Of files that PowerPoint 95 can open as well: the streams of the newer version lie in a storage of their own.
constexpr StringView dualStorageName = u"PP97_DUALSTORAGE";

}  // namespace

BinaryPresentation::BinaryPresentation(std::unique_ptr<RandomAccessBytes> bytes, const Limits& limits,
                                       const SaveTerms& terms)
    : terms_(terms), bytes_(std::move(bytes)), directory_(*bytes_)
{
    if (const auto dual = directory_.Find(storage_, dualStorageName))
        storage_ = *dual;
    const auto entry = directory_.Find(storage_, documentName);
    if (!entry)
        throw Damage(documentStream, "it is missing");
    if (directory_.Entries()[*entry].size > limits.partBytes * 4)
        throw Damage(documentStream, "it is too large");
    const auto currentUser = directory_.Find(storage_, currentUserName);
    pages_ = std::make_unique<BinaryPages>(directory_.Bytes(*entry),
                                           currentUser ? directory_.Bytes(*currentUser) : std::string(), limits);
}

/// Of a file for two versions the storage of the newer one may leave the properties to the root.
std::optional<std::size_t> BinaryPresentation::PropertyStream(StringView name) const
{
    const auto entry = directory_.Find(storage_, name);
    return entry ? entry : directory_.Find(CompoundFile::root, name);
}

std::optional<std::string> BinaryPresentation::PropertyBytes(StringView name) const
{
    const auto entry = PropertyStream(name);
    return entry ? std::optional(directory_.Bytes(*entry)) : std::nullopt;
}

std::optional<std::size_t> BinaryPresentation::DesignOfSlide(std::size_t slide)
{
    return pages_->Document().Slides()[slide].design;
}

BinaryProperties& BinaryPresentation::Properties()
{
    if (!properties_) {
        FailIfOverwritten();
        properties_.emplace(PropertyBytes(summaryStream), PropertyBytes(documentSummaryStream),
                            pages_->Document().limits());
    }
    return *properties_;
}

/// What the properties tell of pages that were edited.
void BinaryPresentation::FollowPages(StringView path)
{
    std::vector<ChangedTitle> titles;
    for (auto& [slide, title] : pages_->ChangedTitles())
        titles.push_back({slide, std::move(title.before), std::move(title.after)});
    const bool hasNewAddresses = pages_->Document().External().IsChanged();
    if (titles.empty() && !hasNewAddresses)
        return;
    try {
        if (!titles.empty())
            Properties().FollowTitles(titles, SlideCount());
        if (hasNewAddresses)
            Properties().EmptyLinkList();
    } catch (const Failure& failure) {
        // Nobody has asked for the properties: that these are damaged is no reason to lose the replacements.
        Warn(String(path),
             u"The lists of titles and links in the properties could not be changed: " + failure.description);
    }
}

/// [MS-OFFCRYPTO] 2.5: a stream, or a storage of streams for signatures in XML.
std::vector<std::size_t> BinaryPresentation::Signatures() const
{
    std::vector<std::size_t> entries;
    for (const StringView name : {u"_signatures", u"_xmlsignatures"})
        if (const auto entry = directory_.Find(CompoundFile::root, name))
            entries.push_back(*entry);
    return entries;
}

/// Empty when nothing has changed.
CompoundChanges BinaryPresentation::Changes(StringView path)
{
    FailIfOverwritten();
    CompoundChanges changes;
    std::map<std::size_t, std::string>& streams = changes.streams;
    const auto put = [&](std::optional<std::size_t> entry, std::optional<std::string> content) {
        if (entry && content)
            streams.emplace(*entry, *std::move(content));
    };
    if (auto edited = pages_->Edited()) {
        FollowPages(path);
        if (const auto currentUser = directory_.Find(storage_, currentUserName))
            put(currentUser, pages_->CurrentUserFor(*edited));
        put(directory_.Find(storage_, documentName), std::move(edited));
    }
    if (properties_) {
        put(PropertyStream(summaryStream), properties_->NewSummary());
        put(PropertyStream(documentSummaryStream), properties_->NewDocumentSummary());
    }
    if (streams.empty())
        return changes;
    if (pages_->Document().NeedsPasswordToChange())
        throw Failure(FailureNumber::PermissionDenied,
                      u"The presentation needs a password to be changed; it was left as it is");
    const std::vector<std::size_t> signatures = Signatures();
    if (terms_.keepsSigned && !signatures.empty())
        throw SignatureKept();
    changes.removed.insert(signatures.begin(), signatures.end());
    return changes;
}

bool BinaryPresentation::IsMarkedAsFinal()
{
    bool isFinal = false;
    // Properties that can't be read were none of the job's business, or have failed it before.
    Skip([&] {
        // Read anew, as the file has them: a replacement in all properties may turn the mark into a text.
        BinaryProperties properties({}, PropertyBytes(documentSummaryStream));
        const CustomPropertiesReader& custom = properties.Custom();
        for (std::size_t i = 0; i < custom.Count(); ++i) {
            const powerpoint::Value value = custom.Read(i);
            const bool* const mark = std::get_if<bool>(&value);
            isFinal = isFinal || (custom.NameOf(i) == u"_MarkAsFinal" && mark != nullptr && *mark);
        }
    });
    return isFinal;
}

void BinaryPresentation::NoteSave(StringView path, const CompoundChanges& changes, bool isFinal)
{
    hasSavedChanges_ = !changes.Empty();
    if (!changes.removed.empty())
        Warn(String(path), String(signaturesRemoved));
    if (isFinal)
        Warn(String(path), String(finalChanged));
}

void BinaryPresentation::Save(StringView path)
{
    const CompoundChanges changes = Changes(path);
    OpenedFile* const opened = bytes_->Opened();
    if (changes.Empty()) {
        opened ? TouchFile(path, *opened) : TouchFile(path);
        NoteSave(path, changes, false);
        return;
    }
    // Before the save: after one into the file itself nothing can be read any more.
    const bool isFinal = IsMarkedAsFinal();
    ReplacementFile target = opened ? ReplacementFile(path, *opened, terms_)
                                    : ReplacementFile(path, ReplacementFile::Missing::Fails, terms_);
    WriteCompoundFile(directory_, changes, target);
    target.Commit();
    isOverwritten_ = opened != nullptr && target.WasWrittenInPlace();
    NoteSave(path, changes, isFinal);
}

void BinaryPresentation::RehearseSave(StringView path)
{
    const CompoundChanges changes = Changes(path);
    OpenedFile* const opened = bytes_->Opened();
    if (opened != nullptr && changes.Empty()) {
        RehearseTouch(path, *opened);
    } else if (opened != nullptr) {
        ReplacementFile target(path, *opened, terms_, ReplacementFile::Effect::Rehearsed);
        WriteCompoundFile(directory_, changes, target);
        target.Commit();
    }
    NoteSave(path, changes, !changes.Empty() && IsMarkedAsFinal());
}

void BinaryPresentation::FailIfOverwritten() const
{
    if (isOverwritten_)
        throw Failure(FailureNumber::WriteFault,
                      u"The presentation was saved in place; open it again to go on working with it");
}

}  // namespace tessarine::builtin
