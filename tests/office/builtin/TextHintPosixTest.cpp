#include <optional>
#include <utility>

#include "platform/Locale.h"
#include "support/ScopedEnvironment.h"
#include "TextBoxOnDisk.h"

namespace tessarine::test
{
namespace
{

TEST(TextHints, NeverDenyWhatTheLocaleMakesEqual)
{
    std::optional<ScopedEnvironment> turkish(std::in_place, "LC_ALL", "tr_TR.UTF-8");
    UseSystemLocale();
    const TextBoxOnDisk box(P(R("İSTANBUL ve ISPARTA")));

    for (const String text : {u"istanbul", u"ısparta"}) {
        EXPECT_TRUE(SlideOf(*box.File().Open(), 1)->Shapes()->MayHoldText(text)) << ToUtf8(text);
        EXPECT_NE(box.Find(text, {.matchCase = false}), 0) << ToUtf8(text);
    }
    EXPECT_EQ(box.Find(u"isparta", {.matchCase = false}), 0);

    turkish.reset();
    UseSystemLocale();
    EXPECT_EQ(box.Find(u"istanbul", {.matchCase = false}), 0);
    EXPECT_NE(box.Find(u"isparta", {.matchCase = false}), 0);
}

}  // namespace
}  // namespace tessarine::test
