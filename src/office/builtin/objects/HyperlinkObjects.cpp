#include "office/builtin/objects/HyperlinkObjects.h"

#include "office/builtin/objects/ListObject.h"

namespace tessarine::builtin
{

namespace
{

class HyperlinkObject final : public powerpoint::Hyperlink
{
public:
    HyperlinkObject(OpenFileReference file, PageReader& page, std::size_t link)
        : file_(std::move(file)), page_(page), link_(link)
    {
    }

    String Address() override { return page_.HyperlinkAddress(link_); }

    void PutAddress(const String& value) override
    {
        // Putting what is there is no edit: the file stays as it is, byte by byte.
        if (page_.HyperlinkAddress(link_) != value)
            page_.PutHyperlinkAddress(link_, value);
    }

private:
    OpenFileReference file_;  // keeps the page alive
    PageReader& page_;
    std::size_t link_;
};

class HyperlinksObject final : public ListObject<powerpoint::Hyperlink>
{
public:
    HyperlinksObject(OpenFileReference file, PageReader& page) : file_(std::move(file)), page_(page) {}

protected:
    std::vector<std::shared_ptr<powerpoint::Hyperlink>> MakeElements() override
    {
        // Only those that are there now: indices of links that have gone are left out.
        std::vector<std::shared_ptr<powerpoint::Hyperlink>> links;
        for (const std::size_t link : page_.HyperlinkIndices())
            links.push_back(std::make_shared<HyperlinkObject>(file_, page_, link));
        return links;
    }

private:
    OpenFileReference file_;
    PageReader& page_;
};

}  // namespace

std::shared_ptr<powerpoint::Hyperlinks> MakeHyperlinks(OpenFileReference file, PageReader& page)
{
    return std::make_shared<HyperlinksObject>(std::move(file), page);
}

}  // namespace tessarine::builtin
