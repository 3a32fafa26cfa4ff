#include "office/builtin/shapes/ShapeTreeEdits.h"

#include <algorithm>
#include <utility>

#include "office/builtin/limits/Damage.h"
#include "office/builtin/text/TextCheck.h"
#include "office/builtin/xml/EditedPart.h"
#include "office/builtin/xml/XmlText.h"

namespace tessarine::builtin
{

ShapeTreeEdits::Original::Original(const XmlDocument& read) : xml(read.Bytes()), document(read, xml) {}

ShapeTree& ShapeTreeEdits::Tree()
{
    if (!tree_) {
        kept_.Use();
        // In memory that the next part uses again: the tree keeps copies and no views.
        tree_ = ReadShapeTree(package_.ReadDocumentOnce(entry_), package_.NameOf(entry_), package_.limits(), names_);
    }
    return *tree_;
}

const XmlDocument& ShapeTreeEdits::Document()
{
    if (!original_) {
        kept_.Use();
        // A copy, as edits need the document for longer than ReadDocumentOnce keeps it. An edit mostly follows the
        // reading of its part, whose index then need not be made again.
        original_ = std::make_unique<Original>(package_.ReadDocumentOnce(entry_));
    }
    return original_->document;
}

bool ShapeTreeEdits::HasEdits() const
{
    const auto isEdited = [](const TextBody& body) { return body.Edited() != nullptr; };
    return !elements_.empty() || (tree_ && std::ranges::any_of(tree_->bodies, isEdited));
}

void ShapeTreeEdits::LetGo()
{
    tree_.reset();
    original_.reset();
}

std::size_t ShapeTreeEdits::KeptBytes() const
{
    constexpr std::size_t indexOfElement = 28;  // see XmlDocument
    std::size_t bytes = tree_ ? KeptBytesOf(*tree_) : 0;
    if (original_)
        bytes += original_->xml.size() + original_->document.ElementCount() * indexOfElement;
    for (const auto& [offset, edit] : elements_)
        bytes += sizeof(ByteEdit) + edit.text.size();
    return bytes;
}

TextTree& ShapeTreeEdits::OpenText(std::size_t body)
{
    return Tree().bodies[body].Open([this]() -> const XmlDocument& { return Document(); });
}

void ShapeTreeEdits::ChangeTag(std::size_t element, const std::function<void(std::string& tag)>& change)
{
    const XmlDocument& document = Document();
    auto edit = elements_.find(element);
    if (edit == elements_.end()) {
        const ElementRange range = document.RangeOf(document.ElementAt(element));
        const std::string_view tag = document.Bytes().substr(range.begin, range.contentBegin - range.begin);
        edit = elements_.try_emplace(element, ByteEdit{range.begin, range.contentBegin, std::string(tag)}).first;
    }
    change(edit->second.text);
}

void ShapeTreeEdits::RemoveElement(std::size_t element)
{
    const XmlDocument& document = Document();
    const ElementRange range = document.RangeOf(document.ElementAt(element));
    // Takes the place of changes to its tag.
    elements_[element] = {range.begin, range.end, {}};
}

void ShapeTreeEdits::VisitCurrent(const std::function<void(const XmlDocument&)>& visit)
{
    const XmlDocument& document = Document();
    std::vector<ByteEdit> edits = Edits();
    if (edits.empty()) {
        visit(document);
        return;
    }
    const std::string xml = ApplyEdits(document.Bytes(), std::move(edits));
    visit(XmlDocument(xml, package_.NameOf(entry_), package_.limits()));
}

std::vector<ByteEdit> ShapeTreeEdits::Edits() const
{
    std::vector<ByteEdit> edits;
    for (const auto& [offset, edit] : elements_)
        edits.push_back(edit);
    // They never meet the edits above: links in texts are edited in the texts' pieces.
    if (tree_)
        for (const TextBody& body : tree_->bodies)
            if (const TextTree* const text = body.Edited())
                edits.push_back({text->Begin(), text->End(), text->Bytes()});
    return edits;
}

bool ShapeTreeEdits::IsRefusal(const Failure& failure)
{
    return failure.number == FailureNumber::InvalidRequest || failure.number == FailureNumber::BadArgument ||
           failure.number == FailureNumber::Unspecified;
}

void ShapeTreeEdits::CompareShapes(const ShapeTree& readAgain) const
{
    // Links were perhaps edited without the shapes being read.
    if (!tree_)
        return;
    const auto textOf = [](const ShapeTree& tree, const ShapeRecord& shape) {
        return shape.body ? tree.bodies[*shape.body].Text() : String();
    };
    const auto isSame = [&](const ShapeRecord& before, const ShapeRecord& after) {
        return before.type == after.type && before.placeholder == after.placeholder &&
               before.hasTextFrame == after.hasTextFrame && before.body.has_value() == after.body.has_value() &&
               before.linkId == after.linkId && ReadsAs(textOf(readAgain, after), textOf(*tree_, before));
    };
    if (!std::ranges::equal(tree_->shapes, readAgain.shapes, isSame))
        throw FailedEdit(package_.NameOf(entry_), "a shape would not have the text that was put");
}

bool ShapeTreeEdits::LeavesOtherText() const
{
    return tree_ && std::ranges::any_of(tree_->shapes, [&](const ShapeRecord& shape) {
               return shape.hasOtherText && shape.body && tree_->bodies[*shape.body].Edited() != nullptr;
           });
}

std::optional<TextChange> ShapeTreeEdits::TitleChange()
{
    if (!tree_)
        return std::nullopt;
    const auto title = std::ranges::find(tree_->shapes, Placeholder::Title, &ShapeRecord::placeholder);
    if (title == tree_->shapes.end() || !title->body || tree_->bodies[*title->body].Edited() == nullptr)
        return std::nullopt;
    const TextBody& body = tree_->bodies[*title->body];
    const XmlDocument& document = Document();
    TextChange change{ReadBodyText(document, document.ElementAt(body.Offset())).text, body.Text()};
    return change.before == change.after ? std::nullopt : std::optional(std::move(change));
}

/// Whether all edits are of texts, and each of these reads as it should when it is read again alone.
bool ShapeTreeEdits::TextsReadAgain(const std::vector<ByteEdit>& edits) const
{
    if (!elements_.empty() || !tree_)
        return false;
    const XmlDocument& before = original_->document;
    TextCheck check(before, package_.limits());
    auto edit = edits.begin();  // one for each edited body, in their order
    const bool areTaken = std::ranges::all_of(tree_->bodies, [&](const TextBody& body) {
        return body.Edited() == nullptr || check.Take(before.ElementAt(body.Offset()), *edit++, body.Text());
    });
    return areTaken && check.AllReadAsTheyShould();
}

bool ShapeTreeEdits::Flush(const std::function<void(const ShapeTree& readAgain)>& check)
{
    std::vector<ByteEdit> edits = Edits();
    const bool hasEdits = !edits.empty();
    if (hasEdits) {
        const XmlDocument& before = Document();
        const bool isProved = TextsReadAgain(edits);
        // They take several times the memory of their bytes, which are read again below.
        if (tree_)
            for (TextBody& body : tree_->bodies)
                body.CloseEdits();
        if (isProved)
            package_.ReplaceXml(entry_, ApplyEdits(before.Bytes(), std::move(edits)));
        else
            PutReadAgain(std::move(edits), check);
        tree_.reset();
        elements_.clear();
    }
    // Without edits, too: it is the largest thing that is kept of a part.
    original_.reset();
    return hasEdits;
}

void ShapeTreeEdits::PutReadAgain(std::vector<ByteEdit> edits,
                                  const std::function<void(const ShapeTree& readAgain)>& check)
{
    const std::string_view part = package_.NameOf(entry_);
    const EditedPart edited(Document(), std::move(edits), part, package_.limits());
    // The old part is not needed any more, and is as large as the new one. Should the check fail, it is read again.
    original_.reset();
    const ShapeTree readAgain = ReadShapeTree(edited.Document(), part, package_.limits());
    CompareShapes(readAgain);
    check(readAgain);
    package_.ReplaceXml(entry_, edited.Bytes());
}

}  // namespace tessarine::builtin
