#include "office/builtin/records/Record.h"

#include <gtest/gtest.h>

#include "office/builtin/records/RecordEdits.h"
#include "platform/Failure.h"
#include "support/BinaryRecords.h"

/// Records of the binary format, and their changes: the lengths around them follow, and nothing else moves.
namespace tessarine::test
{
namespace
{

using builtin::ForEachRecord;
using builtin::Record;
using builtin::RecordAt;
using builtin::RecordEdits;
using builtin::RecordOf;
using builtin::Records;

constexpr std::uint16_t box = 1000;
constexpr std::uint16_t leaf = 4008;

std::string Leaf(const std::string& content)
{
    return ppt::Atom(leaf, content);
}

std::string Box(const std::string& content)
{
    return ppt::Container(box, content, 1);
}

std::int32_t NumberOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const Failure& failure) {
        return failure.number;
    }
    return 0;
}

TEST(Records, HaveTheFieldsOfTheirHeader)
{
    const std::string bytes = ppt::Record(3, 0xABC, 0x1234, "content");
    const Record record = RecordAt(bytes, 0, bytes.size());

    EXPECT_EQ(record.type, 0x1234);
    EXPECT_EQ(record.instance, 0xABC);
    EXPECT_EQ(record.version, 3);
    EXPECT_EQ(record.Content(bytes), "content");
    EXPECT_FALSE(record.IsContainer());
    EXPECT_EQ(RecordOf(0x1234, 0xABC, 3, "content"), bytes);
}

TEST(Records, AreThoseOfTheirContainer)
{
    const std::string bytes = Box(Leaf("a") + Leaf("") + Leaf("ccc")) + Leaf("outside");
    std::vector<std::string> contents;
    for (const Record& record : Records(bytes, RecordAt(bytes, 0, bytes.size())))
        contents.emplace_back(record.Content(bytes));

    EXPECT_EQ(contents, (std::vector<std::string>{"a", "", "ccc"}));
}

TEST(Records, EndBeforeBytesThatHoldNoHeader)
{
    const std::string bytes = Box(Leaf("a") + "1234567");
    int count = 0;
    for (const Record& record : Records(bytes, RecordAt(bytes, 0, bytes.size())))
        count += record.type == leaf ? 1 : 100;

    EXPECT_EQ(count, 1);
}

TEST(Records, LongerThanWhatHoldsThemAreDamage)
{
    std::string bytes = Box(Leaf("abc"));
    bytes[8 + 4] = 4;

    EXPECT_EQ(NumberOf([&] {
                  for (const Record& record : Records(bytes, RecordAt(bytes, 0, bytes.size())))
                      EXPECT_EQ(record.type, 0);
              }),
              FailureNumber::FileCorrupt);
}

TEST(Records, OutsideOfTheBytesAreDamage)
{
    const std::string bytes = Leaf("abc");

    EXPECT_EQ(NumberOf([&] { RecordAt(bytes, bytes.size(), bytes.size()); }), FailureNumber::FileCorrupt);
    EXPECT_EQ(NumberOf([&] { RecordAt(bytes, 1u << 31, bytes.size()); }), FailureNumber::FileCorrupt);
    EXPECT_EQ(NumberOf([&] { RecordAt(bytes, 0, bytes.size() - 1); }), FailureNumber::FileCorrupt);
}

TEST(Records, OfAnyDepthAreGoneThrough)
{
    std::string bytes = Leaf("inmost");
    constexpr int depth = 10'000;
    for (int i = 0; i < depth; ++i)
        bytes = Box(bytes);
    int boxes = 0;
    std::string found;
    ForEachRecord(bytes, RecordAt(bytes, 0, bytes.size()), [&](const Record& record) {
        boxes += record.IsContainer() ? 1 : 0;
        if (record.type == leaf)
            found = record.Content(bytes);
    });

    EXPECT_EQ(boxes, depth - 1);
    EXPECT_EQ(found, "inmost");
}

TEST(RecordEdits, LeaveEverythingElseAsItWas)
{
    const std::string bytes = "front" + Box(Leaf("a") + Box(Leaf("b") + Leaf("c")) + Leaf("d")) + "back";
    const std::size_t c = bytes.find("c") - Record::headerSize;
    RecordEdits edits;
    edits.Replace(c, c + Leaf("c").size(), Leaf("a longer one"));

    EXPECT_EQ(edits.Apply(bytes, 5), Box(Leaf("a") + Box(Leaf("b") + Leaf("a longer one")) + Leaf("d")));
}

TEST(RecordEdits, TakeRecordsOut)
{
    const std::string bytes = Box(Leaf("a") + Leaf("b") + Leaf("c"));
    RecordEdits edits;
    edits.Replace(8, 8 + 2 * Leaf("a").size(), {});

    EXPECT_EQ(edits.Apply(bytes, 0), Box(Leaf("c")));
}

TEST(RecordEdits, InsertInFrontOfARecordThatIsChangedItself)
{
    const std::string bytes = Box(Box(Leaf("a")));
    RecordEdits edits;
    edits.Replace(16, 16 + Leaf("a").size(), Leaf("changed"));
    edits.Replace(8, 8, Leaf("first"));
    edits.Replace(8, 8, Leaf("second"));

    EXPECT_EQ(edits.Apply(bytes, 0), Box(Leaf("first") + Leaf("second") + Box(Leaf("changed"))));
}

TEST(RecordEdits, OverwriteBytesBesideOtherChanges)
{
    const std::string bytes = Box(Leaf("abcd") + Leaf("x"));
    RecordEdits edits;
    edits.Overwrite(bytes.find("bc"), "BC");
    const std::size_t x = bytes.find("x") - Record::headerSize;
    edits.Replace(x, x + Leaf("x").size(), Leaf("xyz"));

    EXPECT_EQ(edits.Apply(bytes, 0), Box(Leaf("aBCd") + Leaf("xyz")));
}

TEST(RecordEdits, OfManyRecordsAreAllMade)
{
    std::string content;
    std::string wanted;
    RecordEdits edits;
    for (int i = 0; i < 1000; ++i) {
        const std::size_t begin = 8 + content.size();
        content += Leaf(std::to_string(i));
        wanted += i % 3 == 0 ? Leaf("changed " + std::to_string(i)) : Leaf(std::to_string(i));
        if (i % 3 == 0)
            edits.Replace(begin, 8 + content.size(), Leaf("changed " + std::to_string(i)));
    }

    EXPECT_EQ(edits.Apply(Box(content), 0), Box(wanted));
}

TEST(RecordEdits, ThatAreAtNoRecordFailTheSave)
{
    const std::string bytes = Box(Leaf("abcd"));
    RecordEdits edits;
    edits.Replace(8 + Record::headerSize + 1, 8 + Record::headerSize + 2, "?");

    EXPECT_EQ(NumberOf([&] { edits.Apply(bytes, 0); }), FailureNumber::FileCorrupt);
}

}  // namespace
}  // namespace tessarine::test
