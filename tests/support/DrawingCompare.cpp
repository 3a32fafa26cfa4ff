// Parts with text bodies: everything outside the bodies is equal byte by byte, inside them run by run.
#include <algorithm>
#include <stdexcept>

#include "support/MarkupTokens.h"
#include "support/TextAlignment.h"

namespace tessarine::test
{
namespace
{

/// A child of a paragraph: a run, a break, a field, properties, white space.
struct Element {
    std::string_view bytes;
    std::string_view name;  ///< "" for text and comments between elements.
    String text;            ///< What it adds to the text of the body.
    std::size_t start = 0;  ///< Position of that text in the text of the body.

    std::size_t End() const { return start + text.size(); }
};

struct ParagraphView {
    std::string_view openTag;
    std::vector<Element> elements;
};

struct BodyView {
    std::vector<std::string_view> frame;  ///< Everything but the paragraphs' content, in order.
    std::vector<ParagraphView> paragraphs;
    String text;
};

std::string_view Joined(const std::vector<Token>& tokens, std::size_t first, std::size_t last)
{
    const char* start = tokens[first].bytes.data();
    return {start, static_cast<std::size_t>(tokens[last - 1].bytes.data() + tokens[last - 1].bytes.size() - start)};
}

/// The content of the first a:t in an element; a view of no size when there is none.
std::string_view TextContent(std::string_view element)
{
    const std::vector<Token> tokens = TokensOf(element);
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].name != "t" || tokens[i].kind != Token::Kind::Start)
            continue;
        const std::size_t end = EndOfElement(tokens, i) - 1;
        return end == i + 1 ? std::string_view() : Joined(tokens, i + 1, end);
    }
    return {};
}

String TextOfElement(std::string_view bytes, std::string_view name)
{
    if (name == "br")
        return u"\v";
    return name == "r" || name == "fld" ? TextOfCharacters(CharactersOf(TextContent(bytes))) : String();
}

BodyView ViewOf(const std::vector<Token>& tokens, std::size_t first, std::size_t last)
{
    BodyView body;
    for (std::size_t i = first; i < last;) {
        const Token& token = tokens[i];
        const bool starts = token.kind == Token::Kind::Start || token.kind == Token::Kind::Empty;
        if (!starts || token.name != "p") {
            body.frame.push_back(token.bytes);
            ++i;
            continue;
        }
        if (!body.paragraphs.empty())
            body.text += u'\r';
        ParagraphView paragraph{token.bytes, {}};
        const std::size_t end = EndOfElement(tokens, i);
        for (std::size_t child = i + 1; child + 1 < end;) {
            const bool isElement = tokens[child].kind == Token::Kind::Start || tokens[child].kind == Token::Kind::Empty;
            const std::size_t next = isElement ? EndOfElement(tokens, child) : child + 1;
            Element element{Joined(tokens, child, next), tokens[child].name, {}, body.text.size()};
            element.text = TextOfElement(element.bytes, element.name);
            body.text += element.text;
            paragraph.elements.push_back(std::move(element));
            child = next;
        }
        body.paragraphs.push_back(std::move(paragraph));
        i = end;
    }
    return body;
}

bool EqualButLinks(std::string_view before, std::string_view after)
{
    if (before == after)
        return true;
    const std::vector<Token> left = TokensOf(before);
    const std::vector<Token> right = TokensOf(after);
    return std::ranges::equal(left, right, [](const Token& one, const Token& other) {
        return one.bytes == other.bytes || IsLinkChange(one.bytes, other.bytes);
    });
}

/// A run without what a replacement may change: its text, the speller's marks, being a field.
std::string Skeleton(std::string_view element)
{
    const std::vector<Token> tokens = TokensOf(element);
    const bool isField = tokens.front().name == "fld";
    std::string skeleton = "<r>";
    for (std::size_t i = 1; i + 1 < tokens.size();) {
        const std::size_t end = EndOfElement(tokens, i);
        if (tokens[i].name == "t") {
            skeleton += "<t>";
        } else if (tokens[i].name == "rPr") {
            skeleton += WithoutAttributes(tokens[i].bytes, {"err", "dirty"});
            for (std::size_t inner = i + 1; inner < end; ++inner)
                skeleton += IsLinkChange(tokens[inner].bytes, tokens[inner].bytes)
                                ? WithoutAttributes(tokens[inner].bytes, {"id", "action"})
                                : std::string(tokens[inner].bytes);
        } else if (!isField || tokens[i].name != "pPr") {
            skeleton += Joined(tokens, i, end);
        }
        i = end;
    }
    return skeleton;
}

/// What should have become of one run: the kept stretches of its text and the new ones, in order.
struct Expected {
    struct Stretch {
        bool isNew = false;
        std::size_t start = 0;  ///< Of a kept one, in the run's text.
        String text;
    };
    std::vector<Stretch> stretches;
    bool touched = false;

    String Text() const
    {
        String text;
        for (const Stretch& stretch : stretches)
            text += stretch.text;
        return text;
    }
};

Expected ExpectedOf(const Element& element, const std::vector<Hit>& hits)
{
    Expected expected;
    std::size_t at = element.start;
    const auto keepUpTo = [&](std::size_t end) {
        if (end > at)
            expected.stretches.push_back(
                {false, at - element.start, element.text.substr(at - element.start, end - at)});
    };
    for (const Hit& hit : hits) {
        if (hit.end <= element.start || hit.start >= element.End())
            continue;
        expected.touched = true;
        keepUpTo(hit.start);
        if (hit.start >= element.start && !hit.with.empty())
            expected.stretches.push_back({true, 0, hit.with});
        at = std::min(hit.end, element.End());
    }
    keepUpTo(element.End());
    return expected;
}

/// Whether each kept character is still written with the same bytes.
bool KeptBytesAreEqual(const Expected& expected, std::string_view before, std::string_view after)
{
    const std::string_view left = TextContent(before);
    const std::string_view right = TextContent(after);
    const std::vector<Character> leftCharacters = CharactersOf(left);
    const std::vector<Character> rightCharacters = CharactersOf(right);
    std::size_t newAt = 0;
    for (const Expected::Stretch& stretch : expected.stretches) {
        for (std::size_t i = 0; i < stretch.text.size() && !stretch.isNew; ++i) {
            const Character& one = leftCharacters.at(stretch.start + i);
            const Character& other = rightCharacters.at(newAt + i);
            if (left.substr(one.start, one.end - one.start) != right.substr(other.start, other.end - other.start))
                return false;
        }
        newAt += stretch.text.size();
    }
    return true;
}

/// Compares one part; collects what it finds.
class DrawingComparer
{
public:
    DrawingComparer(std::string_view before, std::string_view after, const std::vector<Replacement>& replacements)
        : before_(before), after_(after), replacements_(replacements)
    {
    }

    std::vector<Difference> Compare()
    {
        const std::vector<Token> left = TokensOf(before_);
        const std::vector<Token> right = TokensOf(after_);
        bool inHeaderOrFooter = false;
        std::size_t i = 0;
        std::size_t j = 0;
        while (i < left.size() && j < right.size()) {
            const Token& token = left[i];
            if (token.name == "sp")
                inHeaderOrFooter = false;
            if (token.name == "ph")
                inHeaderOrFooter = IsHeaderOrFooter(token.bytes);
            const bool bothBodies = token.name == "txBody" && token.kind == Token::Kind::Start &&
                                    right[j].bytes == token.bytes && right[j].kind == Token::Kind::Start;
            if (bothBodies) {
                const std::size_t end = EndOfElement(left, i);
                const std::size_t newEnd = EndOfElement(right, j);
                CompareBodies(ViewOf(left, i, end), ViewOf(right, j, newEnd), inHeaderOrFooter);
                i = end;
                j = newEnd;
                continue;
            }
            if (token.bytes != right[j].bytes && !IsLinkChange(token.bytes, right[j].bytes)) {
                Report(token.bytes, right[j].bytes, "differs outside the text");
                if (token.name != right[j].name || token.kind != right[j].kind)
                    return differences_;
            }
            ++i;
            ++j;
        }
        if (i < left.size() || j < right.size())
            differences_.push_back(DifferenceAt(before_, i < left.size() ? OffsetOf(left[i].bytes) : before_.size(),
                                                after_, j < right.size() ? NewOffsetOf(right[j].bytes) : after_.size(),
                                                "one part goes on where the other ends"));
        return differences_;
    }

private:
    static bool IsHeaderOrFooter(std::string_view tag)
    {
        const String type = AttributeOf(tag, "type");
        return type == u"ftr" || type == u"hdr";
    }

    std::size_t OffsetOf(std::string_view view) const { return static_cast<std::size_t>(view.data() - before_.data()); }
    std::size_t NewOffsetOf(std::string_view view) const
    {
        return static_cast<std::size_t>(view.data() - after_.data());
    }

    void Report(std::string_view left, std::string_view right, std::string reason)
    {
        const auto differ = std::ranges::mismatch(left, right);
        const auto same = static_cast<std::size_t>(differ.in1 - left.begin());
        differences_.push_back(
            DifferenceAt(before_, OffsetOf(left) + same, after_, NewOffsetOf(right) + same, std::move(reason)));
    }

    void CompareBodies(const BodyView& left, const BodyView& right, bool isHeaderOrFooter)
    {
        const auto hits = HitsBetween(left.text, right.text, replacements_);
        if (!hits) {
            Report(left.frame.front(), right.frame.front(),
                   "no replacement makes \"" + ToUtf8(right.text) + "\" of \"" + ToUtf8(left.text) + "\"");
            return;
        }
        const bool hasStructure = std::ranges::any_of(*hits, [&](const Hit& hit) {
            return (left.text.substr(hit.start, hit.end - hit.start) + hit.with).find_first_of(u"\r\n\v") !=
                   String::npos;
        });
        // A put header or footer is one run afterwards, and a hit on the end of a paragraph joins two of them.
        if (hasStructure || (isHeaderOrFooter && !hits->empty()))
            return;
        if (!std::ranges::equal(left.frame, right.frame) || left.paragraphs.size() != right.paragraphs.size()) {
            Report(left.frame.front(), right.frame.front(), "the text body differs outside its runs");
            return;
        }
        for (std::size_t i = 0; i < left.paragraphs.size(); ++i)
            CompareParagraphs(left.paragraphs[i], right.paragraphs[i], *hits);
    }

    void CompareParagraphs(const ParagraphView& left, const ParagraphView& right, const std::vector<Hit>& hits)
    {
        if (left.openTag != right.openTag)
            Report(left.openTag, right.openTag, "the paragraph's tag differs");
        std::size_t j = 0;
        for (const Element& element : left.elements) {
            const Element* other = j < right.elements.size() ? &right.elements[j] : nullptr;
            const Expected expected = ExpectedOf(element, hits);
            const bool mayGo = expected.touched && expected.Text().empty();
            if (other != nullptr && IsAsExpected(element, *other, expected)) {
                ++j;
            } else if (!mayGo) {
                Report(element.bytes, other == nullptr ? right.openTag : other->bytes,
                       expected.touched ? "a replaced run is not what the replacement makes of it"
                                        : "differs where no replacement was");
                return;
            }
        }
        // A paragraph that lost its last run keeps the size of its empty line in a:endParaRPr.
        const bool hasRun = std::ranges::any_of(right.elements, [](const Element& each) { return !each.text.empty(); });
        if (j < right.elements.size() && right.elements[j].name == "endParaRPr" && !hasRun)
            ++j;
        if (j < right.elements.size())
            Report(left.openTag, right.elements[j].bytes, "something new stands in the paragraph");
    }

    static bool IsAsExpected(const Element& element, const Element& other, const Expected& expected)
    {
        if (!expected.touched)
            return EqualButLinks(element.bytes, other.bytes);
        const bool isRun = other.name == "r" || other.name == element.name;
        return isRun && other.text == expected.Text() && Skeleton(element.bytes) == Skeleton(other.bytes) &&
               KeptBytesAreEqual(expected, element.bytes, other.bytes);
    }

    std::string_view before_;
    std::string_view after_;
    const std::vector<Replacement>& replacements_;
    std::vector<Difference> differences_;
};

}  // namespace

std::vector<Difference> DrawingDifferences(std::string_view before, std::string_view after,
                                           const std::vector<Replacement>& replacements)
{
    return DrawingComparer(before, after, replacements).Compare();
}

}  // namespace tessarine::test
