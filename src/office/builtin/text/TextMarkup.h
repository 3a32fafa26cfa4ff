#pragma once

#include <vector>

#include "office/builtin/matching/TextMatch.h"
#include "office/builtin/xml/XmlDocument.h"
#include "platform/String.h"

/// What the markup of a text body (`p:txBody`) means. Reading a text and taking it apart for editing both go by these
/// rules, so that what is found is what is replaced.
namespace tessarine::builtin
{

/// What a child of a paragraph is (ECMA-376 21.1.2.2.6).
enum class PieceKind {
    Run,            ///< a:r
    Break,          ///< a:br
    Field,          ///< a:fld whose text is ordinary text.
    VolatileField,  ///< a:fld with a slide number or a date: PowerPoint writes it anew, so no hit may touch it.
    Properties,     ///< a:pPr
    EndProperties,  ///< a:endParaRPr
    Opaque,         ///< Any other element: of no length, and a hit may not span it. An equation, for example.
    Gap             ///< No element: white space, comments.
};

bool IsParagraph(const XmlDocument& document, Node child);  ///< a:p, of a text body's children.
PieceKind KindOf(const XmlDocument& document, Node child);  ///< Of a paragraph's children.

/// True for what may hold properties and links of text: runs, fields and breaks.
bool IsRun(PieceKind kind);

/// The element that holds the characters of a run or field (the first a:t), and the one that holds the properties of a
/// run, field or break (a:rPr); none when absent.
Node CharactersOf(const XmlDocument& document, Node run);
Node PropertiesOf(const XmlDocument& document, Node run);
/// One of the two link elements of run properties: that of a click, or that of the pointer over it; none when absent.
Node LinkOf(const XmlDocument& document, Node properties, bool isHover);

/// A text as TextBody describes it, and what a hit must leave alone in it.
struct BodyText {
    String text;
    std::vector<ProtectedRange> protectedRanges;
};
BodyText ReadBodyText(const XmlDocument& document, Node body);
/// Adds the text of one paragraph, and of one child of a paragraph.
void AppendParagraph(const XmlDocument& document, Node paragraph, BodyText& read);
void AppendPiece(const XmlDocument& document, Node child, BodyText& read);

}  // namespace tessarine::builtin
