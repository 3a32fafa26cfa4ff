#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "model/PowerPoint.h"
#include "platform/Failure.h"
#include "support/FakeScript.h"

/// A stand-in for PowerPoint: presentations are plain values, every member of the surface can be made to fail, and what
/// was done is written down in order.
///
///     auto deck = FakeDeck({.slides = {{.shapes = {Placeholder(u"a cat")}, .footer = u"cat"}}});
///     FakePowerPoint powerPoint;
///     powerPoint.Put(u"a.pptx", deck);
///     powerPoint.script.Fail("Presentation.Save", 1234, u"disk full");
///
/// After the run `deck.content->slides[0].shapes[0].text` is what the shape holds now, `powerPoint.script.Calls()` what
/// was called. What was not saved shows by the missing "Save a.pptx": the values change at once, as they do in
/// PowerPoint.
namespace tessarine
{

struct FakeShape {
    std::int32_t type = powerpoint::msoAutoShape;
    String text{};
    powerpoint::TriState hasTextFrame = powerpoint::msoTrue;
    String sourceFullName{};  ///< Of a linked object.
    String name{};
};

FakeShape Placeholder(String text);
FakeShape AutoShape(String text);
FakeShape TextBox(String text);
FakeShape ShapeOfType(std::int32_t type, String text);
FakeShape LinkedObject(String sourceFullName);

/// A header or footer text; nothing when the object shows none, which raises InvalidRequest on reading and writing.
using FakeHeaderFooter = std::optional<String>;

struct FakeMaster {
    std::vector<FakeShape> shapes{};
    FakeHeaderFooter header{};
    FakeHeaderFooter footer{};
};

struct FakeDesign {
    String name{};
    FakeMaster slideMaster{};
    std::optional<FakeMaster> titleMaster{};
    std::optional<powerpoint::TriState> hasTitleMaster{};  ///< Answered instead of -1 or 0 by titleMaster.
};

struct FakeSlide {
    std::vector<FakeShape> shapes{};
    std::vector<String> hyperlinks{};
    FakeHeaderFooter footer{};
    std::vector<FakeShape> notes{};
    std::size_t design = 0;  ///< Index in the presentation's designs.
    String title{};
};

struct FakeProperty {
    String name{};
    powerpoint::Value value{};
    std::int32_t readFailure = 0;   ///< Number raised by reading the value; 0 for none.
    std::int32_t writeFailure = 0;  ///< Number raised by writing it.
};

struct FakeContent {
    std::vector<FakeSlide> slides{};
    std::vector<FakeDesign> designs{};
    FakeMaster notesMaster{};
    FakeMaster handoutMaster{};
    std::vector<FakeProperty> builtInProperties{};
    std::vector<FakeProperty> customProperties{};
};

/// A presentation's content, shared between the test and the surface objects made from it.
struct FakeDeck {
    explicit FakeDeck(FakeContent content = {});

    std::shared_ptr<FakeContent> content;

    /// The deck as an open presentation. `path` is how the calls name it; it may be empty.
    std::shared_ptr<powerpoint::Presentation> Open(const FakeScript& script, const String& path = {}) const;
};

/// A text range over a text of the test's own.
std::shared_ptr<powerpoint::TextRange> FakeTextRangeOver(const std::shared_ptr<String>& text,
                                                         const FakeScript& script = {});

/// The provider: files by path, instances that run, and the failures of Open.
///
/// Calls in order: "CreateApplication", "AttachToRunning", "Presentations.Open a.pptx", "Presentation.Save a.pptx" and
/// so on, see FakeScript.
class FakePowerPoint
{
public:
    FakePowerPoint();

    FakeScript script;

    /// Lets a path open as this deck. Any other path fails to open with SystemFileNotFound.
    void Put(const String& path, const FakeDeck& deck);

    /// Lets Open of a path fail, `times` times; then it opens as before. Failures queue up.
    void FailOpen(const String& path, std::int32_t number, const String& text, int times = 1);
    void FailOpenAlways(const String& path, std::int32_t number, const String& text);

    /// Starts an instance as a user would: AttachToRunning gives it until somebody quits it.
    void StartByUser();

    /// Instances that have been started and not quit.
    int Running() const;

    /// What a project is given.
    std::shared_ptr<powerpoint::Provider> Provider() const;

private:
    struct State;
    std::shared_ptr<State> state_;

    friend class FakeProvider;
    friend class FakeApplication;
    friend class FakePresentations;
};

}  // namespace tessarine
