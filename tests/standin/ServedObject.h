#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "office/windows/ComHeaders.h"
#include "office/windows/Variant.h"
#include "platform/String.h"
#include "standin/CallWatch.h"

namespace tessarine::standin
{

using windows::Variant;

/// What a call hands over, in the order of the object model.
using Arguments = std::vector<Variant>;

/// A member of a served object. One without `put` can't be put, one without `get` can't be read or called.
struct Member {
    String name;
    std::function<Variant(const Arguments&)> get;
    std::function<void(const Variant&)> put = {};
    std::size_t parameters = 0;  ///< How many arguments it takes; all of them are needed.
};

/// The elements of a walk: each call gives the next one, an empty value after the last.
using Walk = std::function<Variant()>;

/// A reference that lets go of itself.
struct ReleaseReference {
    void operator()(IUnknown* object) const noexcept { object->Release(); }
};
template <class Interface>
using Reference = std::unique_ptr<Interface, ReleaseReference>;

/// An object that is reached by names. `kind` names it in the object model, and its calls in the watch. `newEnum`
/// begins a walk; empty for what is no collection. A failure of a member goes to the caller with number and text.
Reference<IDispatch> Serve(std::shared_ptr<CallWatch> watch, std::string kind, std::vector<Member> members,
                           std::function<Walk()> newEnum = {});

/// A value that holds the object, or no object.
Variant ObjectValue(Reference<IDispatch> object);

/// A copy of a value; one that refers to another place becomes what stands there.
Variant CopyOf(const VARIANT& value);

}  // namespace tessarine::standin
