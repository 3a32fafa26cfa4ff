#pragma once

#include <memory>
#include <string>

namespace tessarine::standin
{

/// Sees every call that a served object gets.
class CallWatch
{
public:
    virtual ~CallWatch() = default;

    /// Before a call is carried out. `call` names it with its arguments: `Slide.Shapes`, `TextRange.Find("cat", 0, 0,
    /// 1)`, `Hyperlink.Address = "http://x"`, `Slides.Next`. What it raises is what the caller gets in place of the
    /// result: a Failure as the server's own words, a PlainResult without any.
    virtual void Before(const std::string& call) = 0;

    /// After it was carried out and before the caller gets the result.
    virtual void After(const std::string& call) = 0;

    /// A name has been looked up: `Slide.Shapes`.
    virtual void LookedUp(const std::string& name) = 0;
};

/// A call's result in bare numbers, as the system itself gives them.
struct PlainResult {
    long hresult;
};

}  // namespace tessarine::standin
