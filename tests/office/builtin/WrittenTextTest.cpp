#include "TextBoxOnDisk.h"

/// How new text is written, and what becomes of the old text's references, comments and character data.
namespace tessarine::test
{
namespace
{

TEST(WrittenText, EscapesWhatMarkupNeeds)
{
    EXPECT_EQ(Replaced(P(R("x")), u"x", u"<a> & \"b\" 'c' ]]> &amp;"),
              P(R("&lt;a&gt; &amp; \"b\" 'c' ]]&gt; &amp;amp;")));
}

TEST(WrittenText, WritesOtherCharactersAsUtf8)
{
    EXPECT_EQ(Replaced(P(R("x")), u"x", u"\u00E4\u732B\U0001F600\u00A0\u200B\u00AD\u007F\u0085"),
              P(R("\u00E4\u732B\U0001F600\u00A0\u200B\u00AD\x7F\u0085")));
}

TEST(WrittenText, NeedsNothingForBlanksAtTheEnds)
{
    EXPECT_EQ(Replaced(P(R("x")), u"x", u"  y "), P(R("  y ")));
}

TEST(WrittenText, WritesControlCharactersAsEscapes)
{
    EXPECT_EQ(Replaced(P(R("x")), u"x", String(u"a\u0001\u0008\u001F") + u'\0' + u"b"),
              P(R("a_x0001__x0008__x001F__x0000_b")));
}

TEST(WrittenText, KeepsATextThatLooksLikeAnEscape)
{
    const TextBoxOnDisk box(P(R("x, y")));

    box.Replace(u"x", u"_x000B_");

    EXPECT_EQ(box.Paragraphs(), P(R("_x005F_x000B_, y")));
    EXPECT_EQ(box.Find(u"_x000B_, y"), 1);
    EXPECT_EQ(box.Find(u"\v"), 0);
}

TEST(WrittenText, DoesNotMakeAnEscapeOfTextsThatMeet)
{
    const TextBoxOnDisk box(P(R("_x00no_ x")));

    box.Replace(u"no", u"0B");

    EXPECT_EQ(box.Paragraphs(), P(R("_x005F_x000B_ x")));
    EXPECT_EQ(box.Replace(u"_ x", u"_ y"), 7);
    EXPECT_EQ(box.Find(u"_x000B_ y"), 1);
}

TEST(WrittenText, PutsTheReplacementCharacterForWhatIsNone)
{
    const String lone = {u'a', 0xD83D, u'b', 0xDE00, 0xFFFE, 0xFFFF};

    EXPECT_EQ(Replaced(P(R("x")), u"x", lone), P(R("a\uFFFDb\uFFFD\uFFFD\uFFFD")));
}

TEST(WrittenText, KeepsReferencesBesideTheHit)
{
    EXPECT_EQ(Replaced(P(R("&#x41;&amp;Fabrikam&#66;&gt;")), u"Fabrikam", u"x"), P(R("&#x41;&amp;x&#66;&gt;")));
}

TEST(WrittenText, ReplacesReferencesInTheHit)
{
    EXPECT_EQ(Replaced(P(R("a &#70;abrik&#x61;m &amp; Co")), u"Fabrikam & Co", u"x"), P(R("a x")));
}

TEST(WrittenText, HasNoErrorMarkOfTheTextBefore)
{
    const std::string marked = R"(lang="de" err="1" dirty="0")";
    const std::string plain = R"(lang="de" dirty="0")";

    EXPECT_EQ(Replaced(P(R("one Fabrikam", marked) + R("two", marked)), u"Fabrikam", u"x"),
              P(R("one x", plain) + R("two", marked)));
    EXPECT_EQ(Replaced(P(R("ab", marked) + R("cd", marked) + R("ef", marked)), u"bcd", u""),
              P(R("a", plain) + R("ef", marked)));
    EXPECT_EQ(Replaced(P(R("Fabrikam", marked)), u"rik", u"\r"), P(R("Fab", plain)) + P(R("am", plain)));
    EXPECT_EQ(Replaced(P(R("Fabrikam", R"(err="1")")), u"Fabrikam", u""), P("<a:endParaRPr/>"));
}

TEST(WrittenText, KeepsCommentsAndInstructionsInTheText)
{
    EXPECT_EQ(Replaced(P(R("a<!--1-->Fabri<?x?>kam<!--2-->b")), u"Fabrikam", u"x"), P(R("a<!--1-->x<?x?><!--2-->b")));
}

TEST(WrittenText, InCharacterDataKeepsTheRestOfIt)
{
    const TextBoxOnDisk box(P(R("<![CDATA[R&D <Fabrikam>]]>")));

    box.Replace(u"Fabrikam", u"A & <B>");

    EXPECT_EQ(box.Paragraphs(), P(R("<![CDATA[R&D <]]>A &amp; &lt;B&gt;<![CDATA[>]]>")));
    EXPECT_EQ(box.Text(), u"R&D <A & <B>>");
}

TEST(WrittenText, EscapesAnEndMarkOfCharacterDataThatComesTogether)
{
    EXPECT_EQ(Replaced(P(R("]]x>")), u"x", u""), P(R("]]&gt;")));
    EXPECT_EQ(Replaced(P(R("x>")), u"x", u"]]"), P(R("]]&gt;")));
    EXPECT_EQ(Replaced(P(R("<![CDATA[<]]x>]]>")), u"x", u""), P(R("&lt;]]&gt;")));
    EXPECT_EQ(Replaced(P(R("<![CDATA[]]x><b>]]>")), u"x", u""), P(R("]]&gt;&lt;b&gt;")));
}

TEST(WrittenText, OfAnEscapeAcrossTheEndOfCharacterDataIsWellFormed)
{
    const std::string text = "<![CDATA[ab_x00]]>0B_cd";

    EXPECT_EQ(Replaced(P(R(text)), u"b\vc", u"-"), P(R("a-d")));
    EXPECT_EQ(Replaced(P(R(text)), u"\v", u""), P(R("abcd")));
    EXPECT_EQ(Replaced(P(R(text) + R("x")), u"\v", u"\r"), P(R("ab")) + P(R("cd") + R("x")));
    const TextBoxOnDisk box(P(R(text)) + P(R("cat")));
    EXPECT_EQ(box.ReplaceAll(u"\v", u" "), 1);
    EXPECT_EQ(box.ReplaceAll(u"cat", u"dog"), 1);
    EXPECT_EQ(box.Text(), u"ab cd\rdog");
}

TEST(WrittenText, AcrossCharacterDataAndTextIsWellFormed)
{
    const TextBoxOnDisk box(P(R("a_x00<![CDATA[0B_<]]>b")));

    EXPECT_EQ(box.Replace(u"a\v", u"c"), 1);

    EXPECT_EQ(box.Paragraphs(), P(R("c&lt;b")));
}

}  // namespace
}  // namespace tessarine::test
