#include "model/Project.h"

#include <algorithm>
#include <span>
#include <vector>

#include "files/Files.h"
#include "files/RandomAccessFile.h"
#include "log/ErrorLog.h"
#include "log/Treatments.h"
#include "model/KeepFailure.h"
#include "model/LogPlaces.h"
#include "model/ProjectKeys.h"
#include "model/PropertyBag.h"
#include "platform/CaseFolding.h"
#include "platform/CheckedInteger.h"
#include "platform/FolderOf.h"
#include "platform/Messages.h"
#include "saving/ReplacementFile.h"

namespace tessarine
{

namespace
{

/// The extension is what follows the last dot of the whole path, even when that dot stands in a folder's name.
bool HasProjectExtension(StringView path)
{
    const std::size_t dot = path.rfind(u'.');
    return dot != StringView::npos && ToUpper(path.substr(dot + 1)) == u"TSQ";
}

/// The folder of a project's file; a path must name one.
String FolderOfProject(const String& path)
{
    const StringView folder = FolderOf(path);
    if (folder.empty())
        throw Failure(FailureNumber::InvalidProcedureCall, u"Invalid procedure call or argument");
    return String(WithoutTrailingSeparator(folder));
}

/// Fills fields from a bag. A key that is not there gives the empty value. A value of another type is taken as the
/// platform converts it, except that a text is neither a boolean nor a number (13).
class FieldReader
{
public:
    explicit FieldReader(const PropertyBag& bag) : bag_(bag) {}

    void operator()(const String& key, bool& field) const { field = Number(key) != 0; }
    void operator()(const String& key, std::int32_t& field) const { field = Number(key); }
    void operator()(const String& key, String& field) const
    {
        const auto value = bag_.ReadProperty(key);
        field = value ? std::visit(ToText(), *value) : String();
    }

    /// All stored options, each by its key.
    void operator()(RunOptions& options) const
    {
        for (const StoredOption& option : StoredOptions)
            std::visit([&](auto field) { (*this)(option.key, options.*field); }, option.field);
    }

    /// All switches, each by `prefix` and its key.
    void operator()(const String& prefix, OptionSetting& setting) const
    {
        for (const OptionKey& key : OptionKeys)
            (*this)(prefix + key.name, setting.*key.field);
    }

    /// A count of items or properties. Writers keep to 16 bits; a larger number is an Overflow.
    std::int16_t Count(StringView key) const { return Checked<std::int16_t>(Number(String(key))); }

private:
    struct ToText {
        String operator()(bool value) const { return value ? u"True" : u"False"; }
        String operator()(std::int32_t value) const { return FromUtf8(std::to_string(value)); }
        String operator()(const String& value) const { return value; }
    };

    std::int32_t Number(const String& key) const
    {
        const auto value = bag_.ReadProperty(key);
        if (!value)
            return 0;
        if (const bool* boolean = std::get_if<bool>(&*value))
            // -1 is the number of "true" in everything that jobs and lists store.
            return *boolean ? -1 : 0;
        if (const std::int32_t* number = std::get_if<std::int32_t>(&*value))
            return *number;
        throw Failure(FailureNumber::TypeMismatch, u"Type mismatch: " + key + u" is a text");
    }

    const PropertyBag& bag_;
};

/// Puts a file's block into the bag. Reads no more than the block that the file begins with: what is left of a longer,
/// older file is not part of it. What is wrong with bytes that are no block goes to `fault`.
void ReadStoredBlock(const String& path, PropertyBag& bag, std::optional<ProjectFault>& fault)
{
    const RandomAccessFile file(path);
    std::vector<std::byte> bytes(std::min<std::uint64_t>(file.Size(), PropertyBag::HeaderLength));
    file.Read(0, bytes);
    // A file shorter than the header goes to PutContents as it is, which tells what is wrong with it.
    if (bytes.size() == PropertyBag::HeaderLength) {
        const auto length = PropertyBag::BlockLength(std::span(bytes).first<PropertyBag::HeaderLength>());
        // A length that can't be right is left to PutContents as well: no memory is taken for it.
        if (length > bytes.size() && length <= PropertyBag::LongestBlock) {
            bytes.resize(std::min(file.Size(), *length));
            file.Read(0, bytes);
        }
    }
    try {
        // A file that is not a bag is noticed here, while it is still open; `file` closes it on the way out.
        bag.PutContents(bytes);
    } catch (const Failure& failure) {
        fault = PropertyBag::FaultOf(bytes);
        throw Failure(failure.number, failure.description + u": " + path);
    }
}

void ReadItems(const FieldReader& read, FindAndReplaceItems& items, const std::shared_ptr<Project>& owner)
{
    const std::int16_t count = read.Count(ItemCountKey);
    // A negative count, which no writer makes, is an empty list.
    for (std::int32_t i = 0; i < count; ++i) {
        const String key = ItemKey(i);
        const auto setting = std::make_shared<OptionSetting>();
        read(key, *setting);
        String findWhat;
        String replaceWith;
        read(key + u"FindWhat", findWhat);
        read(key + u"ReplaceWith", replaceWith);
        items.Add(findWhat, replaceWith, setting, owner);
    }
}

/// Name and value of a stored custom property. A value is cut at its first vertical bar, as the bar has no escape.
void ReadCustomProperties(const FieldReader& read, CustomProperties& properties)
{
    const std::int16_t count = read.Count(CustomPropertyCountKey);
    for (std::int32_t n = 1; n <= count; ++n) {
        String joined;
        read(PropertyKey(n), joined);
        const std::size_t bar = joined.find(u'|');
        if (bar == String::npos)
            throw Failure(FailureNumber::SubscriptOutOfRange,
                          u"Subscript out of range: " + PropertyKey(n) + u" has no vertical bar");
        const std::size_t end = joined.find(u'|', bar + 1);
        properties.Add(joined.substr(0, bar), joined.substr(bar + 1, end - bar - 1));
    }
}

void WriteRunOptions(PropertyBag& bag, const RunOptions& options)
{
    for (const StoredOption& option : StoredOptions)
        std::visit([&](auto field) { bag.WriteProperty(option.key, options.*field); }, option.field);
}

void WriteOptionSetting(PropertyBag& bag, const String& prefix, const OptionSetting& setting)
{
    for (const OptionKey& key : OptionKeys)
        bag.WriteProperty(prefix + key.name, setting.*key.field);
}

void WriteProject(PropertyBag& bag, const Project& project)
{
    const std::int32_t itemCount = NotNull(project.FindAndReplaceList)->Count();
    bag.WriteProperty(String(ItemCountKey), itemCount);
    WriteRunOptions(bag, *NotNull(project.options));
    WriteOptionSetting(bag, {}, *NotNull(project.FindAndReplaceItemsOptionSetting));

    // Readers take 16 bits. A longer list would be a job that can't be opened again, so the save fails before it has
    // touched the file.
    Checked<std::int16_t>(itemCount);
    std::int32_t i = 0;
    for (const auto& item : project.FindAndReplaceList->NewEnum()) {
        const String key = ItemKey(i++);
        bag.WriteProperty(key + u"FindWhat", item->FindWhat);
        bag.WriteProperty(key + u"ReplaceWith", item->ReplaceWith);
        WriteOptionSetting(bag, key, *NotNull(item->OptionSetting));
    }

    const auto customPropertyCount = Checked<std::int16_t>(NotNull(project.CustomProperies)->Count());
    // Numbered from 1, unlike the items, whose keys count from 0.
    std::int32_t n = 0;
    for (const auto& property : project.CustomProperies->NewEnum())
        bag.WriteProperty(PropertyKey(++n), property->ProperyName + u"|" + property->PropertyValue);
    bag.WriteProperty(String(CustomPropertyCountKey), std::int32_t{customPropertyCount});
}

/// The file that a path names, or null when there is none.
std::unique_ptr<RandomAccessFile> OldFile(const String& path)
{
    try {
        return std::make_unique<RandomAccessFile>(path);
    } catch (const Failure& failure) {
        // Of a file that is there but can't be read the tail is unknown; taken for missing, it would lose that tail.
        if (failure.number != FailureNumber::SystemFileNotFound)
            throw;
        return nullptr;
    }
}

/// Puts the block over the start of a file, all or nothing; into the file itself where its folder takes no other one. A
/// file is not emptied first, so the tail of an older one
/// that is longer stays after the block: readers take the length that the block gives.
void StoreBlock(const String& path, std::string_view block)
{
    const auto old = OldFile(path);
    ReplacementFile file(path, ReplacementFile::Missing::IsMade, {.inPlaceWhereFolderIsClosed = true});
    file.Write(std::as_bytes(std::span(block)));
    if (old && old->Size() > block.size())
        file.CopyFrom(*old, block.size(), old->Size() - block.size());
    file.Commit();
}

}  // namespace

bool Project::LoadProject(const String& vFilepath, std::int32_t& vError)
{
    const LoggedFile logged(vFilepath);
    return LogAndReturn({u"LoadProject", ProjectPlace}, [&] {
        return KeepFailure(FileFailure, [&] {
            LoadFault.reset();
            if (!FileExists(vFilepath)) {
                vError = 1;
                return false;
            }
            if (!HasProjectExtension(vFilepath)) {
                vError = 2;
                return false;
            }
            PropertyBag bag;
            ReadStoredBlock(vFilepath, bag, LoadFault);
            LoadFault = ProjectFault::Damaged;  // until all of it has been taken

            const FieldReader read(bag);
            // Into a project of its own: what fails halfway leaves the options and pairs in force as they are.
            const auto loaded = std::make_shared<Project>();
            read(*loaded->options);
            read({}, *loaded->FindAndReplaceItemsOptionSetting);
            ReadItems(read, *loaded->FindAndReplaceList, shared_from_this());
            // Appended to the project at once, before anything else of it changes: a failure here leaves those before
            // it. A project that has custom properties keeps them in front, so that a job opened later does not change
            // the language and list source of the window, which are found by position.
            ReadCustomProperties(read, *NotNull(CustomProperies));

            options = loaded->options;
            FindAndReplaceList = loaded->FindAndReplaceList;
            FindAndReplaceItemsOptionSetting = loaded->FindAndReplaceItemsOptionSetting;
            LoadFault.reset();
            return true;
        });
    });
}

void Project::SaveAsProject(String& vFilepath, bool)
{
    const LoggedFile logged(vFilepath);
    LogAndReturn({u"SaveAsProject", ProjectPlace}, [&] {
        KeepFailure(FileFailure, [&] {
            if (vFilepath.empty())
                return;
            const String folder = FolderOfProject(vFilepath);
            if (!FolderExists(folder)) {
                ShowMessage(folder + u" directory is not present.", MessageIcon::Information);
                return;
            }
            if (!HasProjectExtension(vFilepath))
                // In the caller's text, so that the caller knows the file's name.
                vFilepath += u".tsq";
            PropertyBag bag;
            WriteProject(bag, *this);
            StoreBlock(vFilepath, bag.Contents());
        });
    });
}

void Project::SaveProject()
{
    if (!path_.empty())
        SaveAsProject(path_, true);
}

}  // namespace tessarine
