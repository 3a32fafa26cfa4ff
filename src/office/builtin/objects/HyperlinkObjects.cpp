#include "office/builtin/objects/HyperlinkObjects.h"

#include "log/Warnings.h"
#include "office/builtin/objects/ListObject.h"
#include "office/builtin/objects/TooLong.h"

namespace tessarine::builtin
{

namespace
{

class HyperlinkObject final : public powerpoint::Hyperlink
{
public:
    HyperlinkObject(OpenFileReference file, PageReader& page, std::size_t slide, std::size_t link)
        : file_(std::move(file)), page_(page), slide_(slide), link_(link)
    {
    }

    String Address() override { return page_.HyperlinkAddress(link_); }

    void PutAddress(const String& value) override
    {
        const String before = page_.HyperlinkAddress(link_);
        // Putting what is there is no edit: the file stays as it is, byte by byte.
        if (before != value)
            PutUnlessTooLong(
                *file_, [&] { return u"slide " + NumeralOf(slide_) + u", hyperlink to " + QuotedName(before); },
                [&] { page_.PutHyperlinkAddress(link_, value); });
    }

private:
    OpenFileReference file_;  // keeps the page alive
    PageReader& page_;
    std::size_t slide_;  // its number, from 1
    std::size_t link_;
};

class HyperlinksObject final : public ListObject<powerpoint::Hyperlink>
{
public:
    HyperlinksObject(OpenFileReference file, PageReader& page, std::size_t slide)
        : file_(std::move(file)), page_(page), slide_(slide)
    {
    }

protected:
    std::vector<std::shared_ptr<powerpoint::Hyperlink>> MakeElements() override
    {
        // Only those that are there now: indices of links that have gone are left out.
        std::vector<std::shared_ptr<powerpoint::Hyperlink>> links;
        for (const std::size_t link : page_.HyperlinkIndices())
            links.push_back(std::make_shared<HyperlinkObject>(file_, page_, slide_, link));
        return links;
    }

private:
    OpenFileReference file_;
    PageReader& page_;
    std::size_t slide_;
};

}  // namespace

std::shared_ptr<powerpoint::Hyperlinks> MakeHyperlinks(OpenFileReference file, PageReader& page, std::size_t slide)
{
    return std::make_shared<HyperlinksObject>(std::move(file), page, slide);
}

}  // namespace tessarine::builtin
