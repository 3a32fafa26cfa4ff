#include "support/BinaryReader.h"

#include <stdexcept>

#include "support/CompoundReader.h"

namespace tessarine::test::ppt
{

namespace
{

/// The record at the start of a stretch of bytes that may be longer.
BinaryRecord RecordAt(const std::string& bytes, std::size_t at)
{
    const std::uint32_t head = At(bytes, at, 2);
    const std::uint32_t length = At(bytes, at + 4);
    if (length > bytes.size() - at - 8)
        throw std::runtime_error("Records: one is longer than what holds it.");
    return {head & 0xF, head >> 4, At(bytes, at + 2, 2), bytes.substr(at + 8, length)};
}

void Collect(const std::string& bytes, std::uint32_t type, std::vector<BinaryRecord>& found)
{
    for (auto& record : RecordsOf(bytes)) {
        if (record.type == type)
            found.push_back(record);
        if (record.version == 0xF)
            Collect(record.data, type, found);
    }
}

/// Of the record in a stretch of the bytes; npos when there is none.
std::size_t PlaceIn(const std::string& bytes, std::size_t begin, std::size_t end, std::uint32_t type)
{
    for (std::size_t at = begin; at < end;) {
        if (At(bytes, at + 2, 2) == type)
            return at;
        const std::size_t next = at + 8 + At(bytes, at + 4);
        if ((At(bytes, at, 2) & 0xF) == 0xF)
            if (const std::size_t inner = PlaceIn(bytes, at + 8, next, type); inner != std::string::npos)
                return inner;
        at = next;
    }
    return std::string::npos;
}

std::vector<std::uint32_t> EditsOf(const std::string& file)
{
    const std::string stream = StreamOf(file, "PowerPoint Document");
    std::vector<std::uint32_t> edits;
    for (std::uint32_t at = At(StreamOf(file, "Current User"), 16); edits.empty() || at != 0;) {
        edits.push_back(at);
        const std::string edit = RecordAt(stream, at).data;
        if (At(edit, 8) >= at)
            throw std::runtime_error("Records: an edit that isn't before the one that names it.");
        at = At(edit, 8);
    }
    return edits;
}

bool IsText(const BinaryRecord& record)
{
    return record.type == 4000 || record.type == 4008;
}

String CharactersOf(const BinaryRecord& record)
{
    String text;
    const std::size_t step = record.type == 4000 ? 2 : 1;
    for (std::size_t i = 0; i < record.data.size(); i += step)
        text += static_cast<char16_t>(At(record.data, i, step));
    return text;
}

/// The texts in a list of records that begin at text headers.
std::vector<String> GroupsOf(const std::vector<BinaryRecord>& records)
{
    std::vector<String> groups;
    for (const auto& record : records) {
        if (record.type == 3999)
            groups.emplace_back();
        if (IsText(record) && !groups.empty())
            groups.back() = CharactersOf(record);
    }
    return groups;
}

/// The document's list of slides: each persist id with the texts behind it.
std::vector<std::pair<std::uint32_t, std::vector<String>>> SlideListOf(const std::string& file)
{
    const auto objects = LiveObjects(file);
    const std::string stream = StreamOf(file, "PowerPoint Document");
    const std::string document = objects.at(At(RecordAt(stream, EditsOf(file).front()).data, 16));
    std::vector<std::pair<std::uint32_t, std::vector<BinaryRecord>>> slides;
    for (const auto& list : FindRecords(document, 4080)) {
        if (list.instance != 0)
            continue;
        for (auto& record : RecordsOf(list.data)) {
            if (record.type == 1011)
                slides.emplace_back(At(record.data, 0), std::vector<BinaryRecord>());
            else
                slides.back().second.push_back(std::move(record));
        }
    }
    std::vector<std::pair<std::uint32_t, std::vector<String>>> all;
    for (const auto& [id, records] : slides)
        all.emplace_back(id, GroupsOf(records));
    return all;
}

std::uint32_t SumOfStyleRuns(const std::string& data, std::size_t& at, std::uint32_t wanted, bool paragraphs)
{
    // How many bytes each bit of a mask brings, in the order of the values.
    struct Value {
        std::uint32_t bits;
        std::size_t size;
    };
    static constexpr Value paragraphValues[] = {{0xF, 2},   {0x80, 2},   {0x10, 2},    {0x40, 2},    {0x20, 4},
                                                {0x800, 2}, {0x1000, 2}, {0x2000, 2},  {0x4000, 2},  {0x100, 2},
                                                {0x400, 2}, {0x8000, 2}, {0x10000, 2}, {0xE0000, 2}, {0x200000, 2}};
    static constexpr Value characterValues[] = {{0xFFFF, 2},   {0x10000, 2}, {0x200000, 2}, {0x400000, 2},
                                                {0x800000, 2}, {0x20000, 2}, {0x40000, 4},  {0x80000, 2}};
    std::uint32_t sum = 0;
    while (sum < wanted && at < data.size()) {
        sum += At(data, at);
        at += paragraphs ? 6 : 4;
        const std::uint32_t mask = At(data, at);
        at += 4;
        if (paragraphs)
            for (const auto& value : paragraphValues)
                at += (mask & value.bits) != 0 ? value.size : 0;
        else
            for (const auto& value : characterValues)
                at += (mask & value.bits) != 0 ? value.size : 0;
    }
    return sum;
}

std::uint32_t SumOfSpecialInfo(const std::string& data)
{
    std::uint32_t sum = 0;
    for (std::size_t at = 0; at < data.size();) {
        sum += At(data, at);
        const std::uint32_t flags = At(data, at + 4);
        at += 8 + ((flags & 1) != 0 ? 2 : 0) + ((flags & 2) != 0 ? 2 : 0) + ((flags & 4) != 0 ? 2 : 0);
    }
    return sum;
}

void CheckBeside(const BinaryRecord& record, const String& text, std::vector<std::string>& faults)
{
    const auto length = static_cast<std::uint32_t>(text.size());
    const auto check = [&](bool right, const std::string& what) {
        if (!right)
            faults.push_back(what + " of \"" + ToUtf8(text) + "\"");
    };
    switch (record.type) {
        case 4001: {
            std::size_t at = 0;
            check(SumOfStyleRuns(record.data, at, length + 1, true) == length + 1, "paragraph runs");
            check(SumOfStyleRuns(record.data, at, length + 1, false) == length + 1, "character runs");
            check(at == record.data.size(), "bytes of the style runs");
            break;
        }
        case 4002: {
            std::uint32_t sum = 0;
            for (std::size_t at = 0; at < record.data.size(); at += 6)
                sum += At(record.data, at);
            check(sum == length + 1, "master levels");
            break;
        }
        case 4010:
            check(SumOfSpecialInfo(record.data) == length + 1, "special info");
            break;
        case 4007:
        case 4063:
            check(At(record.data, 0) < At(record.data, 4) && At(record.data, 4) <= length, "a span");
            break;
        case 4056:
        case 4087:
        case 4088:
        case 4089:
        case 4090:
        case 4117:
            check(At(record.data, 0) < length && text[At(record.data, 0)] == u'*', "a metacharacter");
            break;
        default:
            break;
    }
}

void CheckTexts(const std::string& bytes, std::vector<std::string>& faults)
{
    String text;
    for (const auto& record : RecordsOf(bytes)) {
        if (record.type == 3999)
            text.clear();
        if (IsText(record))
            text = CharactersOf(record);
        CheckBeside(record, text, faults);
        if (record.version == 0xF)
            CheckTexts(record.data, faults);
    }
}

}  // namespace

std::uint32_t At(const std::string& bytes, std::size_t at, std::size_t size)
{
    if (at > bytes.size() || size > bytes.size() - at)
        throw std::runtime_error("Records: a value outside.");
    std::uint32_t number = 0;
    for (std::size_t i = size; i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

std::vector<BinaryRecord> RecordsOf(const std::string& bytes)
{
    std::vector<BinaryRecord> records;
    for (std::size_t at = 0; at < bytes.size(); at += 8 + records.back().data.size())
        records.push_back(RecordAt(bytes, at));
    return records;
}

std::vector<BinaryRecord> FindRecords(const std::string& bytes, std::uint32_t type)
{
    std::vector<BinaryRecord> found;
    Collect(bytes, type, found);
    return found;
}

std::size_t PlaceOfRecord(const std::string& bytes, std::uint32_t type)
{
    const std::size_t place = PlaceIn(bytes, 0, bytes.size(), type);
    if (place == std::string::npos)
        throw std::runtime_error("Records: none of type " + std::to_string(type) + ".");
    return place;
}

std::string FirstRecord(const std::string& bytes, std::uint32_t type)
{
    return RecordAt(bytes, PlaceOfRecord(bytes, type)).data;
}

std::map<std::uint32_t, std::string> LiveObjects(const std::string& file)
{
    const std::string stream = StreamOf(file, "PowerPoint Document");
    std::map<std::uint32_t, std::string> objects;
    for (const auto edit : EditsOf(file)) {
        const std::string directory = RecordAt(stream, At(RecordAt(stream, edit).data, 12)).data;
        for (std::size_t at = 0; at < directory.size();) {
            const std::uint32_t head = At(directory, at);
            at += 4;
            for (std::uint32_t i = 0; i < head >> 20; ++i, at += 4) {
                const std::uint32_t offset = At(directory, at);
                const std::size_t size = 8 + RecordAt(stream, offset).data.size();
                objects.emplace((head & 0xFFFFF) + i, stream.substr(offset, size));
            }
        }
    }
    return objects;
}

int CountOfEdits(const std::string& file)
{
    return static_cast<int>(EditsOf(file).size());
}

std::vector<std::string> SlidesOf(const std::string& file)
{
    const auto objects = LiveObjects(file);
    std::vector<std::string> slides;
    for (const auto& [id, outline] : SlideListOf(file))
        slides.push_back(objects.at(id));
    return slides;
}

std::vector<String> TextsOf(const std::string& file, int number)
{
    const auto list = SlideListOf(file);
    const auto& [id, outline] = list.at(static_cast<std::size_t>(number - 1));
    std::vector<String> texts;
    for (const auto& box : FindRecords(LiveObjects(file).at(id), 0xF00D)) {
        const auto records = RecordsOf(box.data);
        if (!records.empty() && records.front().type == 3998) {
            texts.push_back(outline.at(At(records.front().data, 0)));
            continue;
        }
        for (auto& text : GroupsOf(records))
            texts.push_back(std::move(text));
    }
    return texts;
}

std::vector<String> CharactersIn(const std::string& records)
{
    std::vector<String> texts;
    for (const auto& record : RecordsOf(records)) {
        if (IsText(record))
            texts.push_back(CharactersOf(record));
        if (record.version == 0xF)
            for (auto& text : CharactersIn(record.data))
                texts.push_back(std::move(text));
    }
    return texts;
}

std::vector<std::string> TextFaults(const std::string& records)
{
    std::vector<std::string> faults;
    CheckTexts(records, faults);
    return faults;
}

}  // namespace tessarine::test::ppt
