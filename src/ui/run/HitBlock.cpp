#include "ui/run/HitBlock.h"

#include <memory>
#include <type_traits>
#include <utility>

#include <QDataStream>
#include <QIODevice>

#include "platform/CheckedInteger.h"

namespace tessarine
{

namespace
{

/// A value in the type that a stream knows it by: std::int64_t may be another type than qint64.
template <class Value>
using Streamed = std::conditional_t<std::is_enum_v<Value>, quint8,
                                    std::conditional_t<std::is_same_v<Value, std::int64_t>, qint64, Value>>;

int BytesOf(std::size_t units)
{
    return Checked<std::int32_t>(static_cast<std::int64_t>(units * sizeof(char16_t)));
}

/// Writes the fields that it is called with. Reader reads the same fields, so that both directions share one list.
class Writer
{
public:
    static constexpr bool Reads = false;

    Writer(QByteArray& block, SharedTexts& texts) : stream_(&block, QIODevice::WriteOnly), texts_(texts) {}

    template <class Number>
    void operator()(const Number& value)
    {
        stream_ << static_cast<Streamed<Number>>(value);
    }
    void operator()(const String& text)
    {
        // As they stand in memory: who reads them is this process.
        stream_ << static_cast<quint32>(text.size());
        stream_.writeRawData(reinterpret_cast<const char*>(text.data()), BytesOf(text.size()));
    }
    void Shared(const String& text) { stream_ << texts_.Add(text); }

private:
    QDataStream stream_;
    SharedTexts& texts_;
};

class Reader
{
public:
    static constexpr bool Reads = true;

    Reader(const QByteArray& block, const SharedTexts& texts) : stream_(block), texts_(texts) {}

    template <class Number>
    void operator()(Number& value)
    {
        value = static_cast<Number>(Value<Streamed<Number>>());
    }
    void operator()(String& text)
    {
        const auto size = Value<quint32>();
        if (stream_.device()->bytesAvailable() < BytesOf(size))
            throw CannotReadBack();
        text.resize(size);
        stream_.readRawData(reinterpret_cast<char*>(text.data()), BytesOf(size));
    }
    void Shared(String& text)
    {
        const auto number = Value<SharedTexts::Number>();
        if (number >= texts_.Count())
            throw CannotReadBack();
        text = texts_[number];
    }

private:
    template <class T>
    T Value()
    {
        T value{};
        stream_ >> value;
        // At once: a count from bytes that end too early must not be believed.
        if (stream_.status() != QDataStream::Ok)
            throw CannotReadBack();
        return value;
    }

    QDataStream stream_;
    const SharedTexts& texts_;
};

template <class Archive, class List, class Each>
void Elements(Archive& archive, List& list, Each each)
{
    std::int32_t count = Archive::Reads ? 0 : Checked<std::int32_t>(static_cast<std::int64_t>(list.size()));
    archive(count);
    if constexpr (Archive::Reads)
        list.resize(static_cast<std::size_t>(count));
    for (auto& element : list)
        each(element);
}

template <class Archive, class Value>
void Optional(Archive& archive, std::optional<Value>& value)
{
    bool isThere = value.has_value();
    archive(isThere);
    if (!isThere)
        return;
    if constexpr (Archive::Reads)
        value.emplace();
    archive(*value);
}

/// Most pairs are found nowhere: a bit for each location that was searched, another for one with a count, and only
/// these counts in full.
template <class Archive>
void Counts(Archive& archive, CounterStatus::LocationCounts& counts)
{
    std::uint32_t searched = 0;
    std::uint32_t found = 0;
    for (std::size_t row = 0; row < counts.size(); ++row) {
        searched |= std::uint32_t{counts[row] != -1} << row;
        found |= std::uint32_t{counts[row] != -1 && counts[row] != 0} << row;
    }
    archive(searched);
    archive(found);
    for (std::size_t row = 0; row < counts.size(); ++row) {
        if constexpr (Archive::Reads)
            counts[row] = (searched >> row & 1) != 0 ? 0 : -1;
        if ((found >> row & 1) != 0)
            archive(counts[row]);
    }
}

template <class Archive>
void Place(Archive& archive, HitPlace& place)
{
    archive(place.location);
    archive(place.pair);
    archive(place.slide);
    archive(place.slideTitle);
    archive(place.design);
    archive(place.property);
    archive(place.headerFooter);
    archive(place.hyperlink);
    archive(place.shape);
    archive(place.shapeName);
}

/// The hits of one text share their place, here as in memory: it stands in front of the first of them.
template <class Archive>
void HitAfter(Archive& archive, const std::shared_ptr<const HitPlace>& placeBefore, Hit& hit)
{
    bool isSamePlace = hit.place == placeBefore;
    archive(isSamePlace);
    if (isSamePlace) {
        hit.place = placeBefore;
    } else {
        HitPlace place = Archive::Reads ? HitPlace() : *hit.place;
        Place(archive, place);
        if constexpr (Archive::Reads)
            hit.place = std::make_shared<const HitPlace>(std::move(place));
    }
    archive(hit.paragraph);
    archive(hit.position);
    archive(hit.length);
    archive(hit.before);
    archive(hit.text);
    archive(hit.after);
    archive(hit.isCutBefore);
    archive(hit.isCutAfter);
    Optional(archive, hit.becomes);
    archive(hit.isCounted);
}

template <class Archive>
void Fields(Archive& archive, StoredFile& file)
{
    FileReport& report = file.report;
    archive(file.run.replaces);
    archive(file.run.counts);
    archive(report.path);
    archive(report.status);
    archive(report.error);
    Optional(archive, report.hasNewContent);
    Elements(archive, report.warnings, [&](String& warning) { archive(warning); });
    Elements(archive, report.pairs, [&](PairReport& pair) {
        archive.Shared(pair.find);
        archive.Shared(pair.replace);
        Counts(archive, pair.counts);
    });
    std::shared_ptr<const HitPlace> place;
    Elements(archive, report.hits, [&](Hit& hit) {
        HitAfter(archive, place, hit);
        place = hit.place;
    });
    Elements(archive, file.leftOut, [&](HitsLeftOut& leftOut) {
        archive(leftOut.pair);
        archive(leftOut.location);
        archive(leftOut.count);
    });
    archive(report.hitsLeftOut);
}

}  // namespace

Failure CannotReadBack()
{
    return {FailureNumber::DeviceIO, u"What was kept of a file can't be read back from the temporary file."};
}

QByteArray BlockOf(StoredFile file, SharedTexts& texts)
{
    QByteArray block;
    Writer writer(block, texts);
    Fields(writer, file);
    return block;
}

StoredFile FromBlock(const QByteArray& block, const SharedTexts& texts)
{
    StoredFile file;
    Reader reader(block, texts);
    Fields(reader, file);
    return file;
}

}  // namespace tessarine
