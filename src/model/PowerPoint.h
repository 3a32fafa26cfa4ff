#pragma once

#include <cstdint>
#include <ctime>
#include <memory>
#include <optional>
#include <variant>

#include "platform/String.h"

/// The automation surface: every object and member of PowerPoint's object model that the system uses, as PowerPoint
/// 2007's type library names them.
///
/// - Collections are walked forward with an enumerator, never by index; document properties by index from 1 to Count.
/// - Each member either succeeds or raises a Failure with a number and a text. Numbers that callers tell apart:
///   CannotCreateObject (no PowerPoint), ServerGone and RemoteCallFailed (it has gone), ApplicationDefined and
///   Unspecified (taken for a wrong password, by Open only), InvalidRequest (the object shows no such header or
///   footer).
/// - References are shared. An object stays usable as long as somebody holds it; after Close of its presentation its
///   members may raise.
namespace tessarine::powerpoint
{

/// Kinds of shapes, by the numbers of the type library. Text is searched in auto shapes, text boxes and placeholders.
enum MsoShapeType : std::int32_t {
    msoAutoShape = 1,
    msoCallout = 2,
    msoChart = 3,
    msoFreeform = 5,
    msoGroup = 6,  ///< Its members are not elements of a collection of shapes.
    msoEmbeddedOLEObject = 7,
    msoLine = 9,
    msoLinkedOLEObject = 10,  ///< The one kind whose source is searched.
    msoLinkedPicture = 11,
    msoOLEControlObject = 12,
    msoPicture = 13,
    msoPlaceholder = 14,  ///< A title, a body and the like: what the location of slides searches.
    msoTextEffect = 15,
    msoMedia = 16,
    msoTextBox = 17,
    msoTable = 19,
    msoInk = 22,
    msoSmartArt = 24,
    msoContentApp = 27,
    msoGraphic = 28,
    mso3DModel = 30,
};

/// A tri-state is handed over as a number, because callers accept more than one value for true.
using TriState = std::int32_t;
inline constexpr TriState msoFalse = 0;
inline constexpr TriState msoCTrue = 1;  ///< True as C has it; callers accept it beside msoTrue.
inline constexpr TriState msoTrue = -1;

inline constexpr std::int32_t msoAutomationSecurityForceDisable = 3;  ///< No macro of an opened file runs.

/// A walk over a collection: the next element, or null after the last.
template <class Element>
class Enumerator
{
public:
    virtual ~Enumerator() = default;
    virtual std::shared_ptr<Element> Next() = 0;  ///< Null once all have been given.
};

/// Elements of one kind, walked in their order.
template <class Element>
class Collection
{
public:
    virtual ~Collection() = default;
    virtual std::unique_ptr<Enumerator<Element>> NewEnum() = 0;  ///< Each call begins a walk of its own.

    /// A hint that PowerPoint's object model does not have: false only when none of the elements' text ranges can hold
    /// the text, whatever the case, so that a walk in search of it may be left out. An implementation that can't tell
    /// says true.
    virtual bool MayHoldText(const String& /*text*/) { return true; }
};

/// The text of a shape, or a piece of it.
class TextRange
{
public:
    virtual ~TextRange() = default;

    /// The first occurrence that begins after position `After` (UTF-16 units, 1-based; 0 = from the first), or null.
    /// `MatchCase` and `WholeWords` are 1 or 0.
    virtual std::shared_ptr<TextRange> Find(const String& FindWhat, std::int32_t After, TriState MatchCase,
                                            TriState WholeWords) = 0;

    /// Replaces the occurrence that Find would give and returns the range of the new text, or null when there is none.
    virtual std::shared_ptr<TextRange> Replace(const String& FindWhat, const String& ReplaceWhat, std::int32_t After,
                                               TriState MatchCase, TriState WholeWords) = 0;

    /// Position of the range's first character in the shape's text, UTF-16 units, 1-based.
    virtual std::int32_t Start() = 0;

    /// A hint that PowerPoint's object model does not have: the shape's text from position `Start` on (UTF-16 units,
    /// 1-based), `Length` units or as many as there are. Asked to show hits in context alone, so that an implementation
    /// that can't tell gives nothing.
    virtual std::optional<String> TextAt(std::int32_t /*Start*/, std::int32_t /*Length*/) { return {}; }

    /// A hint that PowerPoint's object model does not have: whether Find would give something from the first character
    /// on. Asked for warnings alone, so that an implementation that can't tell without a call says false.
    virtual bool IsKnownToHold(const String& /*text*/, TriState /*MatchCase*/, TriState /*WholeWords*/)
    {
        return false;
    }
};

/// The part of a shape that holds its text.
class TextFrame
{
public:
    virtual ~TextFrame() = default;
    virtual std::shared_ptr<powerpoint::TextRange> TextRange() = 0;  ///< All of the shape's text.
};

/// Where a linked object comes from.
class LinkFormat
{
public:
    virtual ~LinkFormat() = default;
    virtual String SourceFullName() = 0;  ///< A path, or path and place inside the file ("a.xlsx!Sheet1!R1C1").
    virtual void PutSourceFullName(const String& value) = 0;  ///< Leads the object to another source.
};

/// Anything drawn on a slide, notes page or master. Shapes inside groups and cells of tables are not elements of a
/// collection of shapes.
class Shape
{
public:
    virtual ~Shape() = default;
    virtual std::int32_t Type() = 0;                                 ///< MsoShapeType
    virtual TriState HasTextFrame() = 0;                             ///< 1 and -1 both mean yes.
    virtual std::shared_ptr<powerpoint::TextFrame> TextFrame() = 0;  ///< To be asked only where HasTextFrame says yes.
    virtual std::shared_ptr<powerpoint::LinkFormat> LinkFormat() = 0;  ///< Of a linked object.

    /// What the user reads in the list of a page's shapes ("Title 1"). Asked for warnings and to show hits, so that an
    /// implementation without names may keep this answer.
    virtual String Name() { return {}; }
};

using Shapes = Collection<Shape>;

/// A link of a slide, of a text or of a shape.
class Hyperlink
{
public:
    virtual ~Hyperlink() = default;
    virtual String Address() = 0;  ///< Without the place inside the target; empty for a link to a slide.
    virtual void PutAddress(const String& value) = 0;  ///< The place inside the target stays.
};

using Hyperlinks = Collection<Hyperlink>;

/// The header or the footer of a slide or a master.
class HeaderFooter
{
public:
    virtual ~HeaderFooter() = default;

    /// Both raise InvalidRequest when the object shows no such header or footer.
    virtual String Text() = 0;
    virtual void PutText(const String& value) = 0;
};

/// Header and footer of one slide or master. A slide has a footer alone.
class HeadersFooters
{
public:
    virtual ~HeadersFooters() = default;
    virtual std::shared_ptr<HeaderFooter> Header() = 0;  ///< Of notes and handouts; a slide shows none.
    virtual std::shared_ptr<HeaderFooter> Footer() = 0;
};

/// A slide, title, notes or handout master.
class Master
{
public:
    virtual ~Master() = default;
    virtual std::shared_ptr<powerpoint::Shapes> Shapes() = 0;  ///< Those of the master itself, not of its layouts.
    virtual std::shared_ptr<powerpoint::HeadersFooters> HeadersFooters() = 0;
};

/// A slide master with what belongs to it. A presentation without title masters answers HasTitleMaster with msoFalse.
class Design
{
public:
    virtual ~Design() = default;
    virtual String Name() = 0;                          ///< The walk over the slides tells designs apart by it.
    virtual std::shared_ptr<Master> SlideMaster() = 0;  ///< The one that every design has.
    virtual TriState HasTitleMaster() = 0;
    virtual std::shared_ptr<Master> TitleMaster() = 0;  ///< To be asked only where HasTitleMaster is not msoFalse.
};

using Designs = Collection<Design>;

/// A notes page, as the object model hands it out.
class SlideRange
{
public:
    virtual ~SlideRange() = default;
    virtual std::shared_ptr<powerpoint::Shapes> Shapes() = 0;  ///< The text of the notes is in one of them.
};

/// One slide. Its notes page is there even when nobody has written notes.
class Slide
{
public:
    virtual ~Slide() = default;
    virtual std::shared_ptr<powerpoint::Shapes> Shapes() = 0;                  ///< Not those of its layout or master.
    virtual std::shared_ptr<powerpoint::HeadersFooters> HeadersFooters() = 0;  ///< For the footer.
    virtual std::shared_ptr<powerpoint::Hyperlinks> Hyperlinks() = 0;  ///< Those of its texts and those of its shapes.
    virtual std::shared_ptr<SlideRange> NotesPage() = 0;
    virtual std::shared_ptr<powerpoint::Design> Design() = 0;  ///< Several slides share one, as a rule.

    /// The text of the slide's title, empty for a slide without one. Asked to show hits alone, so that an
    /// implementation that can't tell may keep this answer.
    virtual String Title() { return {}; }
};

using Slides = Collection<Slide>;

/// A date-time of a document property, in local time.
struct Date {
    std::tm local{};
};

/// A value of any type: nothing, boolean, whole number, number, date or text.
using Value = std::variant<std::monostate, bool, std::int64_t, double, Date, String>;

/// The value as text: "True"/"False", a number under the system's locale, a date as the system displays it, "" for
/// nothing.
String TextOf(const Value& value);

/// One document property. Reached by the names "Name" and "Value" where the platform binds late.
class DocumentProperty
{
public:
    virtual ~DocumentProperty() = default;
    virtual String Name() = 0;
    virtual powerpoint::Value Value() = 0;  ///< Raises for a built-in property that has no value.
    virtual void PutValue(const powerpoint::Value& value) = 0;
};

/// A document property collection. Reached by the names "Count" and "Item".
class DocumentProperties
{
public:
    virtual ~DocumentProperties() = default;
    virtual std::int32_t Count() = 0;                                        ///< Also of properties that have no value.
    virtual std::shared_ptr<DocumentProperty> Item(std::int32_t index) = 0;  ///< `index` from 1.
};

/// An open presentation.
class Presentation
{
public:
    virtual ~Presentation() = default;
    virtual std::shared_ptr<powerpoint::Slides> Slides() = 0;    ///< In the order of the presentation.
    virtual std::shared_ptr<powerpoint::Designs> Designs() = 0;  ///< All of the file, also those that no slide uses.
    virtual std::shared_ptr<Master> NotesMaster() = 0;
    virtual std::shared_ptr<Master> HandoutMaster() = 0;
    virtual std::shared_ptr<DocumentProperties> BuiltInDocumentProperties() = 0;  ///< Title, author and the like.
    virtual std::shared_ptr<DocumentProperties> CustomDocumentProperties() = 0;   ///< Those that users have added.
    virtual void UpdateLinks() = 0;  ///< Reads linked objects again from their sources.
    virtual void Save() = 0;         ///< Under the name that it was opened by.
    virtual void Close() = 0;        ///< Unsaved changes are lost.

    /// Whether the last Save put other content into the file than it had when it was opened; nothing before a save, and
    /// where an implementation can't tell. PowerPoint's object model does not have it.
    virtual std::optional<bool> HasSavedChanges() { return {}; }

    /// Does all that Save does but for the file on the disk: whatever Save would fail with for the sake of the edits or
    /// of the file as it is, this fails with, and HasSavedChanges tells what it would tell. PowerPoint's object model
    /// does not have it; an implementation that can't rehearse keeps this one.
    virtual void RehearseSave() {}

    /// A hint that names of shapes and titles of slides will be asked for, for hits: an implementation may keep them
    /// from the first look at a page.
    virtual void ExpectHits() {}

    /// A hint like Collection::MayHoldText, for the notes pages of all slides.
    virtual bool NotesMayHoldText(const String& /*text*/) { return true; }
};

/// The open presentations of an application.
class Presentations
{
public:
    virtual ~Presentations() = default;

    /// Opens a presentation. Failures: ServerGone or RemoteCallFailed when the server has gone; ApplicationDefined or
    /// Unspecified when the file needs a password; any other number for any other reason.
    virtual std::shared_ptr<Presentation> Open(const String& FileName, TriState ReadOnly, TriState Untitled,
                                               TriState WithWindow) = 0;
};

/// A running PowerPoint.
class Application
{
public:
    virtual ~Application() = default;
    virtual std::shared_ptr<powerpoint::Presentations> Presentations() = 0;  ///< Those open in this instance.
    virtual void PutDisplayAlerts(std::int32_t value) = 0;       ///< -1 lets alerts appear, 0 keeps them back.
    virtual void PutAutomationSecurity(std::int32_t value) = 0;  ///< msoAutomationSecurityForceDisable: no macro runs.
    virtual void Quit() = 0;                                     ///< Ends the instance.
};

/// Where applications come from. The composition root hands one to the run.
class Provider
{
public:
    virtual ~Provider() = default;

    /// Starts a new, invisible instance of "PowerPoint.Application". Raises CannotCreateObject when there is none to
    /// start.
    virtual std::shared_ptr<Application> CreateApplication() = 0;

    /// A running instance, also one that the user started; null when none runs.
    virtual std::shared_ptr<Application> AttachToRunning() = 0;
};

}  // namespace tessarine::powerpoint
