#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "DeckOnDisk.h"
#include "platform/CaseFolding.h"
#include "TextBoxOnDisk.h"

namespace tessarine::test
{
namespace
{

/// Random decks, texts and edits, the same for the same seed on every machine.
class DeckGenerator
{
public:
    explicit DeckGenerator(unsigned seed) : engine_(seed) {}

    std::size_t Below(std::size_t limit) { return engine_() % limit; }
    bool OneIn(std::size_t chances) { return Below(chances) == 0; }

    /// Slides with text boxes, some with notes. The texts are added to `texts`, as nearly as this test knows them.
    Deck RandomDeck(std::vector<String>& texts)
    {
        Deck deck;
        for (std::size_t i = 1 + Below(3); i > 0; --i) {
            isStrange_ = OneIn(3);
            SlideContent slide;
            for (std::size_t shape = 1 + Below(3); shape > 0; --shape)
                slide.Add(RandomShape(texts));
            if (OneIn(2))
                slide.Add(NotesPage(RandomShape(texts)));
            deck.Slide(slide);
        }
        return deck;
    }

    /// A piece of one of the texts, at times in another case; now and then something else.
    String Sought(const std::vector<String>& texts)
    {
        const String& text = texts[Below(texts.size())];
        if (text.empty() || OneIn(5))
            return Words(1 + Below(2));
        const std::size_t begin = Below(text.size());
        const String piece = text.substr(begin, 1 + Below(12));
        return OneIn(3) ? ToUpper(piece) : OneIn(2) ? FoldCase(StringView(piece)) : piece;
    }

    String Words(std::size_t count)
    {
        static const std::vector<String> words{
            u"Fabrikam", u"Contoso",    u"ab",           u"A",
            u"R&D",      u"\u00C4rger", u"\u0416\u0423", u"\u212A",
            u"\u017F",   u"\u732B",     u"\U00010400",   u"\U0001F600",
            u"_x000B_",  u"_x005F_",    u"<t>",          u"a longer text of plain letters",
            u" ",        u"",           u"\u00DF"};
        String text;
        for (; count > 0; --count)
            text += words[Below(words.size())];
        return text;
    }

private:
    Shape RandomShape(std::vector<String>& texts)
    {
        String text;
        std::string paragraphs;
        for (std::size_t i = 1 + Below(3); i > 0; --i) {
            if (!paragraphs.empty())
                text += u'\r';
            std::string pieces;
            for (std::size_t piece = Below(5); piece > 0; --piece)
                pieces += Piece(text);
            paragraphs += P(pieces);
        }
        texts.push_back(text);
        return RawShape(R"(<p:sp><p:nvSpPr><p:cNvPr id="2" name="Text"/><p:cNvSpPr txBox="1"/><p:nvPr/></p:nvSpPr>)"
                        "<p:spPr/><p:txBody><a:bodyPr/><a:lstStyle/>" +
                        paragraphs + "</p:txBody></p:sp>");
    }

    std::string Piece(String& text)
    {
        if (OneIn(8)) {
            text += u'\v';
            return Br;
        }
        if (isStrange_ && OneIn(4))
            return Strange();
        const String words = Words(1 + Below(2));
        text += words;
        const std::string content = Properties() + "<a:t>" + Written(words) + "</a:t>";
        return OneIn(8) ? "<a:fld id=\"{1}\" type=\"x\">" + content + "</a:fld>" : "<a:r>" + content + "</a:r>";
    }

    std::string Properties()
    {
        static const std::vector<std::string> plain{
            "", "<a:rPr/>", "<a:rPr lang=\"en-US\" dirty=\"0\"/>",
            "<a:rPr b=\"1\"><a:solidFill><a:srgbClr val=\"C00000\"/></a:solidFill></a:rPr>"};
        static const std::vector<std::string> strange{
            "<a:rPr><a:extLst><a:ext uri=\"{1}\"><a:r><a:t>zz</a:t></a:r></a:ext></a:extLst></a:rPr>",
            "<a:rPr lang=\"/>\"/>",
            "<a:rPr lang='>'></a:rPr>",
            "<a:rPr/>\n ",
            "<a:rPr><a:t/></a:rPr>",
            "<a:rPr><a:r><a:rPr/><a:t>zz</a:t></a:r><a:fld/></a:rPr>"};
        const auto& properties = isStrange_ && OneIn(3) ? strange : plain;
        return properties[Below(properties.size())];
    }

    /// What is no text of the shape, though it looks like some, or is written in a way of its own.
    std::string Strange()
    {
        static const std::vector<std::string> pieces{"<a:r/>",
                                                     "<a:r><a:t/></a:r>",
                                                     "<a:r><a:t></a:t></a:r>",
                                                     "<a:r><a:t/><a:t>zz</a:t></a:r>",
                                                     "<!-- <a:t>zz</a:t> -->",
                                                     "<a:r><a:t>a<!-- -->b</a:t></a:r>",
                                                     "<a:r><a:t>a<a:x/>b</a:t></a:r>",
                                                     "<a:r><a:t><![CDATA[ab]]></a:t></a:r>",
                                                     "<a:x><a:t>zz</a:t></a:x>",
                                                     "<x:r xmlns:x=\"http://example.com/\"><x:t>zz</x:t></x:r>",
                                                     "<a:r><a:t >ab</a:t ></a:r>",
                                                     "<a:r><a:t xml:space=\"preserve\">ab</a:t></a:r>",
                                                     "<a:r><a:t>a&#13;b\nc\rd</a:t></a:r>"};
        return pieces[Below(pieces.size())];
    }

    std::string Written(const String& words)
    {
        std::string xml;
        for (const char c : ToUtf8(words)) {
            const bool asReference = c == '&' || c == '<' || (c > 0 && isStrange_ && OneIn(6));
            xml += asReference ? "&#" + std::to_string(c) + ";" : std::string(1, c);
        }
        return xml;
    }

    std::mt19937 engine_;
    bool isStrange_ = false;  // the slide that is being made is written as no program does
};

bool Holds(powerpoint::Collection<powerpoint::Shape>& shapes, const String& text, bool matchCase)
{
    const auto walk = shapes.NewEnum();
    while (const auto shape = walk->Next())
        if (shape->HasTextFrame() != powerpoint::msoFalse &&
            shape->TextFrame()->TextRange()->Find(text, 0, matchCase ? powerpoint::msoTrue : powerpoint::msoFalse,
                                                  powerpoint::msoFalse))
            return true;
    return false;
}

void ReplaceSomewhere(powerpoint::Presentation& presentation, DeckGenerator& random, const String& what,
                      const String& with)
{
    const auto slides = All(presentation.Slides());
    const auto& slide = slides[random.Below(slides.size())];
    for (const auto& shape : All(random.OneIn(3) ? slide->NotesPage()->Shapes() : slide->Shapes()))
        if (shape->HasTextFrame() != powerpoint::msoFalse)
            RaisedBy([&] {  // what is written very strangely may refuse an edit
                shape->TextFrame()->TextRange()->Replace(what, with, 0, powerpoint::msoFalse, powerpoint::msoFalse);
            });
}

/// What is said about one text, first by the filters and then by a search.
struct Answers {
    bool mayBeInSlides = false;
    bool mayBeInNotes = false;
    std::vector<bool> mayBeOn;  // slide by slide, then notes page by notes page
    std::vector<bool> isOn;
};

Answers Ask(powerpoint::Presentation& presentation, const String& text, bool matchCase)
{
    Answers answers;
    answers.mayBeInSlides = presentation.Slides()->MayHoldText(text);
    answers.mayBeInNotes = presentation.NotesMayHoldText(text);
    std::vector<std::shared_ptr<powerpoint::Shapes>> pages;
    for (const auto& slide : All(presentation.Slides()))
        pages.push_back(slide->Shapes());
    for (const auto& slide : All(presentation.Slides()))
        pages.push_back(slide->NotesPage()->Shapes());
    for (const auto& page : pages)
        answers.mayBeOn.push_back(page->MayHoldText(text));
    for (const auto& page : pages)
        answers.isOn.push_back(Holds(*page, text, matchCase));
    return answers;
}

class TextFilterProperty : public testing::TestWithParam<unsigned>
{
};

TEST_P(TextFilterProperty, NeverDeniesWhatASearchFinds)
{
    DeckGenerator random(GetParam());
    std::vector<String> texts;
    const DeckOnDisk file(random.RandomDeck(texts));
    const auto presentation = file.Open();

    for (int step = 0; step < 20; ++step) {
        const String sought = random.Sought(texts);
        SCOPED_TRACE("step " + std::to_string(step) + ", \"" + ToUtf8(sought) + "\"");
        if (random.OneIn(6)) {
            const String with = random.Words(2);
            ReplaceSomewhere(*presentation, random, sought, with);
            texts.push_back(with);
        }

        const Answers answers = Ask(*presentation, sought, random.OneIn(3));

        const std::size_t slides = answers.isOn.size() / 2;
        for (std::size_t page = 0; page < answers.isOn.size(); ++page) {
            ASSERT_TRUE(answers.mayBeOn[page] || !answers.isOn[page]) << "page " << page;
            ASSERT_TRUE((page < slides ? answers.mayBeInSlides : answers.mayBeInNotes) || !answers.isOn[page])
                << "page " << page;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, TextFilterProperty, testing::Range(0u, 80u));

TEST(TextFilterOfRandomDecks, DeniesMostOfWhatIsNotThere)
{
    std::size_t denied = 0;
    std::size_t absent = 0;
    for (unsigned seed = 0; seed < 20; ++seed) {
        DeckGenerator random(seed);
        std::vector<String> texts;
        const DeckOnDisk file(random.RandomDeck(texts));
        const auto presentation = file.Open();
        for (int step = 0; step < 10; ++step) {
            const Answers answers = Ask(*presentation, random.Words(2), false);
            for (std::size_t page = 0; page < answers.isOn.size(); ++page) {
                absent += !answers.isOn[page];
                denied += !answers.mayBeOn[page];
            }
        }
    }

    EXPECT_GT(denied * 2, absent);
}

}  // namespace
}  // namespace tessarine::test
