#include "office/builtin/text/TextBody.h"

#include "DeckOnDisk.h"

namespace tessarine::test
{
namespace
{

using builtin::TextBody;
using builtin::XmlDocument;

const std::string bodyMarkup =
    R"(<p:txBody xmlns:p="http://schemas.openxmlformats.org/presentationml/2006/main")"
    R"( xmlns:a="http://schemas.openxmlformats.org/drawingml/2006/main"><a:p><a:r><a:t>one</a:t></a:r></a:p></p:txBody>)";

TEST(TextBody, RefusesAnEditOfADocumentThatHoldsAnotherText)
{
    const XmlDocument document(bodyMarkup, "part", builtin::Limits::Small());
    const auto source = [&]() -> const XmlDocument& { return document; };
    TextBody same(0, u"one", {});
    TextBody other(0, u"two", {});
    TextBody elsewhere(1, u"one", {});

    EXPECT_EQ(same.Replace(0, 3, u"four", source), 4u);
    for (TextBody* body : {&other, &elsewhere})
        EXPECT_THAT(RaisedBy([&] { body->Replace(0, 3, u"four", source); }),
                    FailsWith(FailureNumber::FileCorrupt, "not what it was"));
}

TEST(TextBody, NeedsNoDocumentToPutATextInPlaceOfItself)
{
    const auto source = []() -> const XmlDocument& { throw std::logic_error("the document was asked for"); };
    TextBody body(0, u"one", {});

    EXPECT_EQ(body.Replace(0, 3, u"one", source), 3u);
    EXPECT_EQ(body.Edited(), nullptr);
}

}  // namespace
}  // namespace tessarine::test
