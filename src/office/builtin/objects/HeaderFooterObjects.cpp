#include "office/builtin/objects/HeaderFooterObjects.h"

#include "log/Warnings.h"
#include "office/builtin/reader/Refusals.h"
#include "platform/Failure.h"
#include "platform/ParagraphBreaks.h"

namespace tessarine::builtin
{

namespace
{

class HeaderFooterObject final : public powerpoint::HeaderFooter
{
public:
    HeaderFooterObject(OpenFileReference file, PageReader& page, HeaderFooterKind kind, PageTexts texts)
        : file_(std::move(file)), page_(page), kind_(kind), texts_(texts)
    {
    }

    String Text() override
    {
        auto text = Read();
        if (!text && texts_ != PageTexts::BothEvenIfDeleted)
            throw NoHeaderFooter();
        return std::move(text).value_or(String());
    }

    void PutText(const String& value) override
    {
        const String text = WithParagraphBreaks(value);
        // Text() raises where the page shows none. Putting what is there is no edit of the file.
        if (Text() == text)
            return;
        // A deleted one that reads "" is no place for a text.
        if (!page_.HeaderFooter(kind_))
            throw NoHeaderFooter();
        page_.PutHeaderFooter(kind_, text);
    }

private:
    /// The search of slide footers passes over any failure, so that a page that can't be read is told of here.
    std::optional<String> Read()
    {
        try {
            return page_.HeaderFooter(kind_);
        } catch (const Failure& failure) {
            Warn(file_->Path(), u"A page could not be read: " + failure.description);
            throw;
        }
    }

    OpenFileReference file_;  // keeps the page alive
    PageReader& page_;
    HeaderFooterKind kind_;
    PageTexts texts_;
};

/// The header of a slide.
class NoHeader final : public powerpoint::HeaderFooter
{
public:
    String Text() override { throw NoHeaderFooter(); }
    void PutText(const String&) override { throw NoHeaderFooter(); }
};

class HeadersFootersObject final : public powerpoint::HeadersFooters
{
public:
    HeadersFootersObject(OpenFileReference file, PageReader& page, PageTexts texts)
        : file_(std::move(file)), page_(page), texts_(texts)
    {
    }

    std::shared_ptr<powerpoint::HeaderFooter> Header() override
    {
        if (texts_ == PageTexts::FooterOnly)
            // An object all the same, of which only the text raises, as for a footer that a slide doesn't show.
            return std::make_shared<NoHeader>();
        return std::make_shared<HeaderFooterObject>(file_, page_, HeaderFooterKind::Header, texts_);
    }

    std::shared_ptr<powerpoint::HeaderFooter> Footer() override
    {
        return std::make_shared<HeaderFooterObject>(file_, page_, HeaderFooterKind::Footer, texts_);
    }

private:
    OpenFileReference file_;
    PageReader& page_;
    PageTexts texts_;
};

}  // namespace

std::shared_ptr<powerpoint::HeadersFooters> MakeHeadersFooters(OpenFileReference file, PageReader& page,
                                                               PageTexts texts)
{
    return std::make_shared<HeadersFootersObject>(std::move(file), page, texts);
}

}  // namespace tessarine::builtin
