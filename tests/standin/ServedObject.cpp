#include "standin/ServedObject.h"

#include <algorithm>
#include <utility>

#include "platform/CaseFolding.h"
#include "platform/Failure.h"
#include "standin/Counted.h"

namespace tessarine::standin
{

namespace
{

std::string TextOf(const Variant& value)
{
    switch (value.Type()) {
        case VT_EMPTY:
            return "Empty";
        case VT_BSTR:
            return '"' + ToUtf8(value.ToText()) + '"';
        case VT_BOOL:
            return value.Raw().boolVal != VARIANT_FALSE ? "True" : "False";
        default:
            return ToUtf8(value.ToText());
    }
}

std::string TextOf(const Arguments& arguments)
{
    std::string text;
    for (const Variant& argument : arguments)
        text += (text.empty() ? "" : ", ") + TextOf(argument);
    return text.empty() ? text : '(' + text + ')';
}

BSTR NewText(const String& text)
{
    return SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()));
}

/// A failure as a server tells it. Numbers of Visual Basic's own have a facility of theirs.
HRESULT CodeOf(std::int32_t number)
{
    return number > 0 ? MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number) : number;
}

/// Carries out what a caller asks for, and puts what becomes of it into the system's form.
template <class Body>
HRESULT Answer(EXCEPINFO* exception, Body&& body)
{
    try {
        return body();
    } catch (const PlainResult& result) {
        return result.hresult;
    } catch (...) {
        const Failure failure = CurrentFailure();
        if (!exception)
            return CodeOf(failure.number);
        *exception = {};
        exception->scode = CodeOf(failure.number);
        exception->bstrSource = NewText(failure.source);
        exception->bstrDescription = NewText(failure.description);
        return DISP_E_EXCEPTION;
    }
}

class Elements final : public Counted<IEnumVARIANT>
{
public:
    Elements(std::shared_ptr<CallWatch> watch, std::string call, Walk walk)
        : watch_(std::move(watch)), call_(std::move(call)), walk_(std::move(walk))
    {
    }

    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* elements, ULONG* fetched) override
    {
        ULONG given = 0;
        const HRESULT result = Answer(nullptr, [&] {
            for (; given < count; ++given) {
                watch_->Before(call_);
                Variant element = walk_();
                watch_->After(call_);
                if (element.Type() == VT_EMPTY)
                    return S_FALSE;
                VariantInit(&elements[given]);
                std::swap(elements[given], *const_cast<VARIANT*>(&element.Raw()));
            }
            return S_OK;
        });
        if (fetched)
            *fetched = given;
        return result;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

private:
    const std::shared_ptr<CallWatch> watch_;
    const std::string call_;
    const Walk walk_;
};

class Served final : public Counted<IDispatch>
{
public:
    Served(std::shared_ptr<CallWatch> watch, std::string kind, std::vector<Member> members,
           std::function<Walk()> newEnum)
        : watch_(std::move(watch)), kind_(std::move(kind)), members_(std::move(members)), newEnum_(std::move(newEnum))
    {
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override
    {
        if (count != 1)
            return DISP_E_UNKNOWNNAME;
        const String name = reinterpret_cast<const char16_t*>(names[0]);
        // Names know no case in automation.
        const auto found = std::ranges::find(members_, ToUpper(name), [](const Member& m) { return ToUpper(m.name); });
        watch_->LookedUp(kind_ + "." + ToUtf8(name));
        ids[0] = found == members_.end() ? DISPID_UNKNOWN : IdOf(*found);
        return found == members_.end() ? DISP_E_UNKNOWNNAME : S_OK;
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO* exception, UINT*) override
    {
        return Answer(exception, [&] {
            if (id == DISPID_NEWENUM && newEnum_)
                return BeginWalk(result);
            const auto found = std::ranges::find(members_, id, [this](const Member& member) { return IdOf(member); });
            if (found == members_.end())
                return DISP_E_MEMBERNOTFOUND;
            Arguments arguments;
            for (UINT at = parameters->cArgs; at > 0; --at)
                arguments.push_back(CopyOf(parameters->rgvarg[at - 1]));
            return (flags & DISPATCH_PROPERTYPUT) != 0 ? Put(*found, arguments) : Get(*found, arguments, result);
        });
    }

private:
    /// The same for all objects of a kind, as they have the same members. Item is the default member.
    DISPID IdOf(const Member& member) const
    {
        return member.name == u"Item" ? DISPID_VALUE : static_cast<DISPID>(&member - members_.data()) + 1;
    }

    HRESULT BeginWalk(VARIANT* result)
    {
        const std::string call = kind_ + "._NewEnum";
        watch_->Before(call);
        Reference<IEnumVARIANT> walk(new Elements(watch_, kind_ + ".Next", newEnum_()));
        watch_->After(call);
        if (result) {
            result->vt = VT_UNKNOWN;
            result->punkVal = walk.release();
        }
        return S_OK;
    }

    HRESULT Put(const Member& member, const Arguments& arguments)
    {
        if (!member.put)
            return DISP_E_MEMBERNOTFOUND;
        if (arguments.size() != 1)
            return DISP_E_BADPARAMCOUNT;
        const std::string call = CallOf(member) + " = " + TextOf(arguments.front());
        watch_->Before(call);
        member.put(arguments.front());
        watch_->After(call);
        return S_OK;
    }

    HRESULT Get(const Member& member, const Arguments& arguments, VARIANT* result)
    {
        if (!member.get)
            return DISP_E_MEMBERNOTFOUND;
        if (arguments.size() != member.parameters)
            return DISP_E_BADPARAMCOUNT;
        const std::string call = CallOf(member) + TextOf(arguments);
        watch_->Before(call);
        Variant given = member.get(arguments);
        watch_->After(call);
        if (result) {
            VariantInit(result);
            std::swap(*result, *const_cast<VARIANT*>(&given.Raw()));
        }
        return S_OK;
    }

    std::string CallOf(const Member& member) const { return kind_ + "." + ToUtf8(member.name); }

    const std::shared_ptr<CallWatch> watch_;
    const std::string kind_;
    const std::vector<Member> members_;
    const std::function<Walk()> newEnum_;
};

}  // namespace

Reference<IDispatch> Serve(std::shared_ptr<CallWatch> watch, std::string kind, std::vector<Member> members,
                           std::function<Walk()> newEnum)
{
    return Reference<IDispatch>(new Served(std::move(watch), std::move(kind), std::move(members), std::move(newEnum)));
}

Variant ObjectValue(Reference<IDispatch> object)
{
    Variant value;
    VARIANT* const raw = value.Receive();
    raw->vt = VT_DISPATCH;
    raw->pdispVal = object.release();
    return value;
}

Variant CopyOf(const VARIANT& value)
{
    Variant copy;
    const HRESULT result = VariantCopyInd(copy.Receive(), const_cast<VARIANT*>(&value));
    if (FAILED(result))
        throw PlainResult{result};
    return copy;
}

}  // namespace tessarine::standin
