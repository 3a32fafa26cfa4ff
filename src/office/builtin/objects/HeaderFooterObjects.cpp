#include "office/builtin/objects/HeaderFooterObjects.h"

#include "office/builtin/reader/Refusals.h"
#include "platform/ParagraphBreaks.h"

namespace tessarine::builtin
{

namespace
{

class HeaderFooterObject final : public powerpoint::HeaderFooter
{
public:
    HeaderFooterObject(OpenFileReference file, PageReader& page, HeaderFooterKind kind)
        : file_(std::move(file)), page_(page), kind_(kind)
    {
    }

    String Text() override
    {
        auto text = page_.HeaderFooter(kind_);
        if (!text)
            throw NoHeaderFooter();
        return std::move(*text);
    }

    void PutText(const String& value) override
    {
        const String text = WithParagraphBreaks(value);
        // Text() raises where the page shows none. Putting what is there is no edit of the file.
        if (Text() != text)
            page_.PutHeaderFooter(kind_, text);
    }

private:
    OpenFileReference file_;  // keeps the page alive
    PageReader& page_;
    HeaderFooterKind kind_;
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
    HeadersFootersObject(OpenFileReference file, PageReader& page, CanHaveHeader canHaveHeader)
        : file_(std::move(file)), page_(page), canHaveHeader_(canHaveHeader)
    {
    }

    std::shared_ptr<powerpoint::HeaderFooter> Header() override
    {
        if (canHaveHeader_ == CanHaveHeader::No)
            // An object all the same, of which only the text raises, as for a footer that a slide doesn't show.
            return std::make_shared<NoHeader>();
        return std::make_shared<HeaderFooterObject>(file_, page_, HeaderFooterKind::Header);
    }

    std::shared_ptr<powerpoint::HeaderFooter> Footer() override
    {
        return std::make_shared<HeaderFooterObject>(file_, page_, HeaderFooterKind::Footer);
    }

private:
    OpenFileReference file_;
    PageReader& page_;
    CanHaveHeader canHaveHeader_;
};

}  // namespace

std::shared_ptr<powerpoint::HeadersFooters> MakeHeadersFooters(OpenFileReference file, PageReader& page,
                                                               CanHaveHeader canHaveHeader)
{
    return std::make_shared<HeadersFootersObject>(std::move(file), page, canHaveHeader);
}

}  // namespace tessarine::builtin
