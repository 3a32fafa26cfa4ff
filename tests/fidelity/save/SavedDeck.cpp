#include "SavedDeck.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "office/builtin/Provider.h"
#include "platform/Failure.h"

namespace tessarine::test
{

namespace
{

std::shared_ptr<powerpoint::Presentation> Open(const String& path)
{
    return builtin::CreateProvider()->CreateApplication()->Presentations()->Open(path, 0, 0, 0);
}

}  // namespace

SavedDeck::SavedDeck(const Deck& deck) : old_(deck.Bytes()), path_(folder_.Write(u"deck.pptx", old_))
{
    const TemporaryFolder aside;
    const String copy = aside.Write(u"deck.pptx", old_);
    Edited(copy)->Save();
    new_ = ContentOf(copy);
    if (new_ == old_)
        throw std::logic_error("the edit changes nothing");
}

std::shared_ptr<powerpoint::Presentation> SavedDeck::Edited(const String& path)
{
    auto presentation = Open(path);
    const auto shape = presentation->Slides()->NewEnum()->Next()->Shapes()->NewEnum()->Next();
    if (!shape->TextFrame()->TextRange()->Replace(u"Fabrikam", u"Contoso", 0, 0, 0))
        throw std::logic_error("the first shape does not say Fabrikam");
    presentation->BuiltInDocumentProperties()->Item(1)->PutValue(String(u"Contoso"));
    return presentation;
}

bool SavedDeck::Opens() const
{
    try {
        return Open(path_)->Slides()->NewEnum()->Next()->Shapes()->NewEnum()->Next()->HasTextFrame() != 0;
    } catch (const Failure&) {
        return false;
    }
}

std::vector<std::string> SavedDeck::OtherFiles() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(ToUtf8(folder_.Path())))
        if (entry.path().filename() != "deck.pptx")
            names.push_back(entry.path().filename());
    return names;
}

void SavedDeck::Restore() const
{
    for (const std::string& name : OtherFiles())
        std::filesystem::remove(ToUtf8(folder_.PathOf(FromUtf8(name))));
    folder_.Write(u"deck.pptx", old_);
}

}  // namespace tessarine::test
