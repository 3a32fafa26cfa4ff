#include <random>

#include "TextBoxOnDisk.h"

namespace tessarine::test
{
namespace
{

/// Random paragraphs and edits, the same for the same seed on every machine.
class BodyGenerator
{
public:
    explicit BodyGenerator(unsigned seed) : engine_(seed) {}

    std::size_t Below(std::size_t limit) { return engine_() % limit; }
    bool OneIn(std::size_t chances) { return Below(chances) == 0; }

    /// Few different characters, so that texts meet again; among them all that markup gives a meaning to.
    String Text(std::size_t most)
    {
        static const std::vector<String> characters{u"a", u"b",      u"ab",     u" ", u"\u00E9", u"\U0001F600", u"\t",
                                                    u"&", u"<",      u">",      u"]", u"_",      u"x",          u"\"",
                                                    u"'", u"\u00A0", u"\u732B", u"a", u"b",      u" "};
        String text;
        for (std::size_t i = Below(most + 1); i > 0; --i)
            text += characters[Below(characters.size())];
        return text;
    }

    /// A text to put in: with breaks and control characters at times.
    String Replacement()
    {
        static const std::vector<String> breaks{u"\r", u"\n", u"\r\n", u"\v", u"\u0001", u"\v\v", u"\r\r"};
        String text = Text(4);
        if (OneIn(3))
            text += breaks[Below(breaks.size())] + Text(2);
        return OneIn(8) ? String() : text;
    }

    std::string Body(String& text)
    {
        std::string xml;
        for (std::size_t i = 1 + Below(4); i > 0; --i) {
            if (!xml.empty())
                text += u'\r';
            xml += Gap() + Paragraph(text);
        }
        return xml + Gap();
    }

private:
    std::string Gap() { return OneIn(4) ? "\n  " : OneIn(8) ? "<!-- <a:p> -->" : ""; }

    std::string Paragraph(String& text)
    {
        if (OneIn(8))
            return "<a:p/>";
        std::string xml = OneIn(2) ? "<a:pPr lvl=\"1\"/>" : "";
        for (std::size_t i = Below(6); i > 0; --i)
            xml += Gap() + Piece(text);
        return P(xml + (OneIn(3) ? "<a:endParaRPr sz=\"2000\"/>" : ""));
    }

    std::string Piece(String& text)
    {
        if (OneIn(6)) {
            text += u'\v';
            return OneIn(2) ? Br : "<a:br><a:rPr b=\"1\"/></a:br>";
        }
        if (OneIn(8)) {
            text += u'7';  // which no search looks for: such fields are never hit
            return "<a:fld id=\"{1}\" type=\"slidenum\"><a:rPr/><a:t>7</a:t></a:fld>";
        }
        const std::string content = Properties() + Content(text);
        return OneIn(8) ? "<a:fld id=\"{1}\" type=\"footer\">" + content + "</a:fld>" : "<a:r>" + content + "</a:r>";
    }

    std::string Properties()
    {
        static const std::vector<std::string> properties{
            "", "<a:rPr b=\"1\"/>", "<a:rPr sz=\"900\" err=\"1\"></a:rPr>",
            "<a:rPr><a:hlinkClick r:id=\"\" action=\"ppaction://noaction\"/></a:rPr>"};
        return properties[Below(properties.size())];
    }

    std::string Content(String& text)
    {
        if (OneIn(10))
            return OneIn(2) ? "<a:t/>" : "";
        std::string xml = "<a:t>";
        for (std::size_t i = Below(4); i > 0; --i) {
            const String part = Text(4);
            text += part;
            xml += Written(part);
        }
        return xml + "</a:t>";
    }

    /// The text in one of the ways in which XML can hold it.
    std::string Written(const String& part)
    {
        const std::string utf8 = ToUtf8(part);
        if (OneIn(4) && utf8.find("]]>") == std::string::npos)
            return "<![CDATA[" + utf8 + "]]>";
        std::string xml = OneIn(6) ? "<!-- & -->" : "";
        for (const char c : utf8) {
            if (c == '&' || c == '<' || c == '>' || (c == 'a' && OneIn(4)))
                xml += "&#" + std::to_string(c) + ";";
            else
                xml += c;
        }
        return xml + (OneIn(6) ? "<?x y?>" : "");
    }

    std::mt19937 engine_;
};

bool IsHigh(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

/// What an edit should make of a text, on a plain string.
class Model
{
public:
    explicit Model(String text) : text_(std::move(text)) {}

    const String& Text() const { return text_; }

    /// Start of the hit from 1, 0 for none.
    std::int32_t Replace(const String& what, const String& with, std::int32_t after)
    {
        const std::size_t at = text_.find(what, static_cast<std::size_t>(after));
        if (at == String::npos || what.empty())
            return 0;
        text_.replace(at, what.size(), AsHeld(with));
        return static_cast<std::int32_t>(at) + 1;
    }

    static String AsHeld(const String& with)
    {
        String held;
        for (std::size_t i = 0; i < with.size(); ++i)
            if (with[i] != u'\n')
                held += with[i];
            else if (i == 0 || with[i - 1] != u'\r')
                held += u'\r';
        return held;
    }

    /// Hits of a run's walk, which goes on one unit behind the start of the last one.
    std::int32_t Count(const String& what) const
    {
        std::int32_t count = 0;
        for (std::size_t at = text_.find(what); at != String::npos && !what.empty(); at = text_.find(what, at + 1))
            ++count;
        return count;
    }

    /// A piece of the text that can be looked for, at times one that isn't there.
    String SomethingIn(BodyGenerator& random) const
    {
        if (text_.empty() || random.OneIn(5))
            return random.Text(2);
        std::size_t begin = random.Below(text_.size());
        std::size_t end = std::min(text_.size(), begin + 1 + random.Below(6));
        if (begin > 0 && IsHigh(text_[begin - 1]))
            --begin;
        if (IsHigh(text_[end - 1]))
            ++end;
        const String piece = text_.substr(begin, end - begin);
        return piece.substr(0, piece.find(u'7'));
    }

private:
    String text_;
};

std::int32_t ReplaceIn(powerpoint::TextRange& range, const String& what, const String& with, std::int32_t after)
{
    const auto hit = range.Replace(what, with, after, 1, 0);
    return hit ? hit->Start() : 0;
}

class TextRoundTrip : public testing::TestWithParam<unsigned>
{
};

TEST_P(TextRoundTrip, EditsAsAPlainStringDoes)
{
    BodyGenerator random(GetParam());
    String text;
    const std::string paragraphs = random.Body(text);
    SCOPED_TRACE(paragraphs);
    const TextBoxOnDisk box(paragraphs);
    ASSERT_EQ(box.Text(), text);
    Model model(text);
    const auto presentation = box.File().Open();
    const auto range = ShapeOf(*presentation, 1, 1)->TextFrame()->TextRange();

    for (int edit = 0; edit < 8; ++edit) {
        const String what = model.SomethingIn(random);
        const String with = random.Replacement();
        const auto after = static_cast<std::int32_t>(random.Below(3) == 0 ? random.Below(model.Text().size() + 1) : 0);
        SCOPED_TRACE("\"" + ToUtf8(what) + "\" -> \"" + ToUtf8(with) + "\" after " + std::to_string(after) + " in \"" +
                     ToUtf8(model.Text()) + "\"");
        if (after > 0 && after < static_cast<std::int32_t>(model.Text().size()) &&
            IsHigh(model.Text()[static_cast<std::size_t>(after) - 1]))
            continue;

        ASSERT_EQ(ReplaceIn(*range, what, with, after), model.Replace(what, with, after));
        presentation->Save();

        ASSERT_NO_THROW(box.Paragraphs());
        ASSERT_EQ(box.Text(), model.Text()) << box.Paragraphs();
    }

    const DeckOnDisk saved(box.File().Bytes());
    const auto read = ShapeOf(*saved.Open(), 1, 1)->TextFrame()->TextRange();
    const String firstPart = model.Text().substr(0, model.Text().find(u'7'));
    EXPECT_EQ(read->Find(firstPart, 0, 1, 0) != nullptr, !firstPart.empty()) << "as the engine itself reads it";
}

TEST_P(TextRoundTrip, TakesAReplacementBack)
{
    BodyGenerator random(GetParam());
    String text;
    const std::string paragraphs = random.Body(text);
    SCOPED_TRACE(paragraphs);
    const TextBoxOnDisk box(paragraphs);
    const auto presentation = box.File().Open();
    const auto range = ShapeOf(*presentation, 1, 1)->TextFrame()->TextRange();

    for (int edit = 0; edit < 8; ++edit) {
        const String what = Model(text).SomethingIn(random);
        const String with = Model::AsHeld(random.Replacement());
        SCOPED_TRACE("\"" + ToUtf8(what) + "\" -> \"" + ToUtf8(with) + "\"");
        const std::int32_t start = with.empty() ? 0 : ReplaceIn(*range, what, with, 0);
        if (start > 0) {
            ASSERT_EQ(ReplaceIn(*range, with, what, start - 1), start);
        }
    }
    presentation->Save();

    EXPECT_EQ(box.Text(), text) << box.Paragraphs();
}

TEST_P(TextRoundTrip, CountsTheHitsOfAPlainString)
{
    BodyGenerator random(GetParam());
    String text;
    const std::string paragraphs = random.Body(text);
    SCOPED_TRACE(paragraphs);
    const TextBoxOnDisk box(paragraphs);
    const Model model(text);

    for (int search = 0; search < 6; ++search) {
        const String what = model.SomethingIn(random);
        EXPECT_EQ(box.CountAll(what), model.Count(what)) << ToUtf8(what);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, TextRoundTrip, testing::Range(0u, 60u));

}  // namespace
}  // namespace tessarine::test
