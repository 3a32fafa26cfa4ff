#pragma once

#include <array>
#include <functional>
#include <memory>
#include <span>
#include <utility>

#include "office/windows/Session.h"
#include "office/windows/Variant.h"

namespace tessarine::windows
{

class AutomationEnumerator;

/// An object of a server, whose members are called by their names. Every member here is one call to the server, and
/// raises a Failure with the number that NumberOf gives and, where the server has one, its own text.
///
/// `kind` is the object's name in the object model ("Shape"): objects of one kind have the same members.
class AutomationObject
{
public:
    AutomationObject() = default;  ///< Null: any call raises `ObjectNotSet`.

    /// Takes over a reference to an object, which may be null.
    AutomationObject(std::shared_ptr<Session> session, IDispatch* object, String kind);

    /// A new object of a registered program. Raises `CannotCreateObject`.
    static AutomationObject Create(const std::shared_ptr<Session>& session, const wchar_t* program, String kind);

    /// The running object of a registered program; null when none runs.
    static AutomationObject Attach(const std::shared_ptr<Session>& session, const wchar_t* program, String kind);

    explicit operator bool() const { return object_ != nullptr; }

    Session& SessionOf() const { return *session_; }  ///< Of an object that isn't null.

    /// A property, or what a method gives.
    template <class... Arguments>
    std::int32_t Integer(const char16_t* member, const Arguments&... arguments) const
    {
        return Get(
            member, [](const Variant& value) { return value.ToInteger(); }, arguments...);
    }
    template <class... Arguments>
    String Text(const char16_t* member, const Arguments&... arguments) const
    {
        return Get(
            member, [](const Variant& value) { return value.ToText(); }, arguments...);
    }

    /// An object, or null for nothing.
    template <class... Arguments>
    AutomationObject Object(const char16_t* member, const char16_t* kind, const Arguments&... arguments) const
    {
        IDispatch* const object = Get(
            member, [](const Variant& value) { return value.ToObject(); }, arguments...);
        return {session_, object, kind};
    }

    /// Any value, as `convert` takes it; that is called on the session's thread.
    template <class Convert, class... Arguments>
    auto Get(const char16_t* member, Convert convert, const Arguments&... arguments) const
        -> decltype(convert(std::declval<const Variant&>()))
    {
        std::optional<decltype(convert(std::declval<const Variant&>()))> result;
        std::array<Variant, sizeof...(Arguments)> packed{Variant(arguments)...};
        Invoke(member, DISPATCH_PROPERTYGET | DISPATCH_METHOD, packed,
               [&](const Variant& value) { result.emplace(convert(value)); });
        return std::move(*result);
    }

    /// A method without a result.
    template <class... Arguments>
    void Call(const char16_t* member, const Arguments&... arguments) const
    {
        std::array<Variant, sizeof...(Arguments)> packed{Variant(arguments)...};
        Invoke(member, DISPATCH_METHOD, packed, {});
    }

    /// Puts a property.
    void Put(const char16_t* member, Variant value) const;

    /// A walk over a collection. `kind` is that of its elements.
    AutomationEnumerator NewEnum(const char16_t* kind) const;

private:
    using Take = std::function<void(const Variant&)>;

    /// Calls a member on the session's thread; `take` is given the result there. The arguments are in the order of the
    /// object model.
    void Invoke(const char16_t* member, WORD flags, std::span<Variant> arguments, const Take& take) const;
    String NameOf(const char16_t* member) const { return kind_ + u'.' + member; }

    std::shared_ptr<Session> session_;
    std::shared_ptr<IDispatch> object_;
    String kind_;
};

/// An object of a surface that hands its calls to an automation object. Its class says with `Kind` what that one is in
/// the object model.
template <class Surface>
class AutomatedObject : public Surface
{
public:
    explicit AutomatedObject(AutomationObject object) : object_(std::move(object)) {}

protected:
    const AutomationObject object_;
};

/// A walk over the elements of a collection.
class AutomationEnumerator
{
public:
    /// Takes over a reference.
    AutomationEnumerator(std::shared_ptr<Session> session, IEnumVARIANT* walk, String kind);

    AutomationObject Next() const;  ///< Null after the last.

private:
    std::shared_ptr<Session> session_;
    std::shared_ptr<IEnumVARIANT> walk_;
    String kind_;
};

}  // namespace tessarine::windows
