#include "office/builtin/records/RecordEdits.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/records/Record.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{

namespace
{

void PutLength(std::string& bytes, std::size_t record)
{
    const std::size_t length = bytes.size() - record - Record::headerSize;
    if (length > std::numeric_limits<std::uint32_t>::max())
        throw Failure(FailureNumber::BadFormat, u"The presentation would become too large");
    std::string number;
    AppendU32(number, static_cast<std::uint32_t>(length));
    bytes.replace(record + 4, 4, number);
}

}  // namespace

void RecordEdits::Replace(std::size_t begin, std::size_t end, std::string bytes)
{
    Edit& edit = edits_.try_emplace(begin, Edit{.end = begin, .bytes = {}}).first->second;
    edit.end = std::max(edit.end, end);
    edit.bytes += bytes;
}

std::string RecordEdits::Apply(std::string_view bytes, std::size_t offset) const
{
    const Record record = RecordAt(bytes, offset, bytes.size());
    std::string target;
    target.reserve(record.end - record.begin);
    target.append(bytes, record.begin, Record::headerSize);
    AppendRecords(bytes, record.ContentBegin(), record.end, target);
    PutLength(target, 0);
    return target;
}

bool RecordEdits::HasChangeIn(std::size_t begin, std::size_t end) const
{
    const auto isIn = [&](const auto& changes) {
        const auto first = changes.lower_bound(begin);
        return first != changes.end() && first->first < end;
    };
    return isIn(edits_) || isIn(overwritten_);
}

/// Bytes that stay but for what is overwritten in them.
void RecordEdits::AppendContent(std::string_view bytes, std::size_t begin, std::size_t end, std::string& target) const
{
    const std::size_t start = target.size();
    target.append(bytes, begin, end - begin);
    for (auto change = overwritten_.lower_bound(begin); change != overwritten_.end() && change->first < end; ++change)
        target.replace(start + change->first - begin, change->second.size(), change->second);
}

/// Those of a container. Goes down only where there is something to change, so that no depth matters but that of edits.
void RecordEdits::AppendRecords(std::string_view bytes, std::size_t begin, std::size_t end, std::string& target) const
{
    std::size_t at = begin;
    while (true) {
        const auto edit = edits_.lower_bound(at);
        if (edit == edits_.end() || edit->first >= end)
            break;
        // Whole records in front of the one that the change is at or in.
        const std::size_t untouched = at;
        Record record = RecordAt(bytes, at, end);
        while (record.end <= edit->first)
            record = RecordAt(bytes, record.end, end);
        AppendContent(bytes, untouched, record.begin, target);
        at = record.begin;
        if (at == edit->first) {
            target += edit->second.bytes;
            at = edit->second.end;
        }
        if (at > record.begin)
            continue;
        // It stays, maybe behind an insertion, and may hold changes itself.
        const auto inside = edits_.upper_bound(at);
        if (inside == edits_.end() || inside->first >= record.end) {
            AppendContent(bytes, at, record.end, target);
        } else {
            if (!record.IsContainer() || inside->first < record.ContentBegin())
                throw FailedEdit(documentStream, "it is not at a record");
            const std::size_t start = target.size();
            target.append(bytes, at, Record::headerSize);
            AppendRecords(bytes, record.ContentBegin(), record.end, target);
            PutLength(target, start);
        }
        at = record.end;
    }
    AppendContent(bytes, at, end, target);
}

}  // namespace tessarine::builtin
