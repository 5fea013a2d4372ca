#include "platform/windows/late_bound_object.h"

#include "platform/error.h"
#include "platform/text/wide_text.h"

#include <algorithm>
#include <utility>

namespace veldara {

namespace {

[[noreturn]] void fail(const std::string& what, HRESULT code) {
    throw Error(what + ": " + systemMessage(static_cast<unsigned long>(code)) + ".");
}

Variant converted(const VARIANT& value, VARTYPE type) {
    Variant result;
    VARIANT source = value; // a view; the call takes no const
    // Never the user's own way of writing numbers: these values are not shown.
    const HRESULT code =
        VariantChangeTypeEx(result.address(), &source, LOCALE_INVARIANT, VARIANT_ALPHABOOL, type);
    if (FAILED(code)) {
        fail("The system gave an unexpected kind of value", code);
    }
    return result;
}

// The sentences of the scripting components are the numbered ones of their script languages, which
// the system's own table of messages lacks.
const char* scriptMessage(HRESULT code) {
    constexpr HRESULT script = static_cast<HRESULT>(0x800A0000);
    switch (code - script) {
    case 52:
        return "Bad file name or number";
    case 53:
        return "File not found";
    case 57:
        return "Device I/O error";
    case 58:
        return "File already exists";
    case 61:
        return "Disk full";
    case 68:
        return "Device unavailable";
    case 70:
        return "Permission denied";
    case 71:
        return "Disk not ready";
    case 75:
        return "Path/File access error";
    case 76:
        return "Path not found";
    default:
        return nullptr;
    }
}

// What a failed call says of its failure; frees the texts that it leaves behind.
class CallFailure {
  public:
    CallFailure() = default;
    CallFailure(const CallFailure&) = delete;
    CallFailure& operator=(const CallFailure&) = delete;
    ~CallFailure() {
        SysFreeString(information_.bstrSource);
        SysFreeString(information_.bstrDescription);
        SysFreeString(information_.bstrHelpFile);
    }
    EXCEPINFO* address() { return &information_; }
    std::string reason(HRESULT ofCall) const {
        const bool told = ofCall == DISP_E_EXCEPTION;
        if (told && SysStringLen(information_.bstrDescription) > 0) {
            return narrowText(
                {information_.bstrDescription, SysStringLen(information_.bstrDescription)});
        }
        const HRESULT code = told && information_.scode != 0 ? information_.scode : ofCall;
        const char* const message = scriptMessage(code);
        return message != nullptr ? message : systemMessage(static_cast<unsigned long>(code));
    }

  private:
    EXCEPINFO information_{};
};

} // namespace

ComponentModel::ComponentModel()
    : started_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}

ComponentModel::~ComponentModel() {
    if (started_) {
        CoUninitialize();
    }
}

Variant::Variant(const std::string& text) {
    const std::wstring wide = wideText(text);
    VariantInit(&value_);
    value_.vt = VT_BSTR;
    value_.bstrVal = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

Variant& Variant::operator=(Variant&& other) noexcept {
    if (this != &other) {
        VariantClear(&value_);
        value_ = std::exchange(other.value_, VARIANT{});
    }
    return *this;
}

std::string Variant::text() const {
    const Variant result = converted(value_, VT_BSTR);
    return narrowText({result.value_.bstrVal, SysStringLen(result.value_.bstrVal)});
}

bool Variant::truth() const {
    return converted(value_, VT_BOOL).value_.boolVal != VARIANT_FALSE;
}

double Variant::number() const {
    return converted(value_, VT_R8).value_.dblVal;
}

LateBoundObject LateBoundObject::create(const std::string& name) {
    CLSID identifier{};
    HRESULT code = CLSIDFromProgID(wideText(name).c_str(), &identifier);
    void* object = nullptr;
    if (SUCCEEDED(code)) {
        code = CoCreateInstance(identifier, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                IID_IDispatch, &object);
    }
    if (FAILED(code)) {
        fail("The Windows component \"" + name + "\" cannot be used", code);
    }
    return LateBoundObject(static_cast<IDispatch*>(object));
}

LateBoundObject::LateBoundObject(const Variant& value) {
    const VARIANT& held = value.value();
    if (held.vt != VT_DISPATCH || held.pdispVal == nullptr) {
        throw Error("A Windows component gave no object where one was expected.");
    }
    held.pdispVal->AddRef();
    object_.reset(held.pdispVal);
}

Variant LateBoundObject::get(const std::string& property) const {
    return invoke(property, DISPATCH_PROPERTYGET, {});
}

Variant LateBoundObject::call(const std::string& method,
                              std::initializer_list<std::string> arguments) const {
    std::vector<Variant> values;
    for (const std::string& argument : arguments) {
        values.emplace_back(argument);
    }
    // A script language does not tell a method from a property with arguments either.
    return invoke(method, DISPATCH_METHOD | DISPATCH_PROPERTYGET, std::move(values));
}

std::vector<Variant> LateBoundObject::members() const {
    std::vector<Variant> none;
    const Variant source = invoke(DISPID_NEWENUM, DISPATCH_METHOD | DISPATCH_PROPERTYGET, none);
    const VARIANT& held = source.value();
    void* object = nullptr;
    const bool isObject = held.vt == VT_UNKNOWN || held.vt == VT_DISPATCH;
    if (!isObject || held.punkVal == nullptr ||
        FAILED(held.punkVal->QueryInterface(IID_IEnumVARIANT, &object))) {
        throw Error("A Windows component gave a collection that cannot be listed.");
    }
    const std::unique_ptr<IEnumVARIANT, Release> enumeration(static_cast<IEnumVARIANT*>(object));
    std::vector<Variant> members;
    for (;;) {
        Variant member;
        ULONG fetched = 0;
        const HRESULT code = enumeration->Next(1, member.address(), &fetched);
        if (FAILED(code)) {
            fail("A folder cannot be listed to its end", code);
        }
        if (code != S_OK || fetched == 0) {
            return members;
        }
        members.push_back(std::move(member));
    }
}

Variant LateBoundObject::invoke(const std::string& name, WORD kind,
                                std::vector<Variant> arguments) const {
    std::wstring wide = wideText(name);
    LPOLESTR names = wide.data();
    DISPID member = DISPID_UNKNOWN;
    const HRESULT code =
        object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_SYSTEM_DEFAULT, &member);
    if (FAILED(code)) {
        fail("A Windows component has no \"" + name + "\"", code);
    }
    return invoke(member, kind, arguments);
}

Variant LateBoundObject::invoke(DISPID member, WORD kind, std::vector<Variant>& arguments) const {
    // The last argument comes first. These are views: the variants stay the owners.
    std::vector<VARIANT> reversed(arguments.size());
    std::transform(arguments.rbegin(), arguments.rend(), reversed.begin(),
                   [](const Variant& argument) { return argument.value(); });
    DISPPARAMS parameters{};
    parameters.rgvarg = reversed.data();
    parameters.cArgs = static_cast<UINT>(reversed.size());
    Variant result;
    CallFailure failure;
    const HRESULT code = object_->Invoke(member, IID_NULL, LOCALE_SYSTEM_DEFAULT, kind, &parameters,
                                         result.address(), failure.address(), nullptr);
    if (FAILED(code)) {
        throw Error(failure.reason(code));
    }
    return result;
}

} // namespace veldara
