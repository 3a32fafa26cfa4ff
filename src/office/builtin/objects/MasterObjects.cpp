#include "office/builtin/objects/MasterObjects.h"

#include "office/builtin/objects/ShapeObjects.h"

namespace tessarine::builtin
{

namespace
{

class MasterObject final : public powerpoint::Master
{
public:
    MasterObject(OpenFileReference file, PageReader& page, PageTexts texts)
        : file_(std::move(file)), page_(page), texts_(texts), shapes_(MakeShapes(file_, page))
    {
    }

    // Made once, so that walks of one master share their objects.
    std::shared_ptr<powerpoint::Shapes> Shapes() override { return shapes_; }

    std::shared_ptr<powerpoint::HeadersFooters> HeadersFooters() override
    {
        return MakeHeadersFooters(file_, page_, texts_);
    }

private:
    OpenFileReference file_;
    PageReader& page_;
    PageTexts texts_;
    std::shared_ptr<powerpoint::Shapes> shapes_;
};

}  // namespace

std::shared_ptr<powerpoint::Master> MakeMaster(OpenFileReference file, PageReader* page, PageTexts texts)
{
    // A line of its own: `file` is moved from in the next one.
    PageReader& there = file->PageOrEmpty(page);
    return std::make_shared<MasterObject>(std::move(file), there, texts);
}

}  // namespace tessarine::builtin
