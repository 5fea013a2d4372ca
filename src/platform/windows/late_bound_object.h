// An object of the system's component model that is made by name and asked by name, as a script
// would do it.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include <objbase.h>
#include <oleauto.h>
#include <windows.h>

namespace veldara {

// The component model in use on this thread, for as long as the value lives.
class ComponentModel {
  public:
    ComponentModel();
    ComponentModel(const ComponentModel&) = delete;
    ComponentModel& operator=(const ComponentModel&) = delete;
    ~ComponentModel();

  private:
    bool started_ = false;
};

// A value of a call: text, number, truth or object. Owns what it holds.
class Variant {
  public:
    Variant() { VariantInit(&value_); }
    explicit Variant(const std::string& text);
    Variant(Variant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
    Variant& operator=(Variant&& other) noexcept;
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(&value_); }

    VARIANT* address() { return &value_; }
    const VARIANT& value() const { return value_; }

    // Each converts as the system does and throws Error when that is not possible.
    std::string text() const;
    bool truth() const;
    double number() const;

  private:
    VARIANT value_{};
};

class LateBoundObject {
  public:
    // Makes the object that the system knows under the name. Throws Error.
    static LateBoundObject create(const std::string& name);
    // The object that a call returned. Throws Error when it returned something else.
    explicit LateBoundObject(const Variant& value);

    // Both throw Error with what the component says of a failure, without a full stop: the caller
    // knows what it was about.
    Variant get(const std::string& property) const;
    Variant call(const std::string& method, std::initializer_list<std::string> arguments) const;
    // Every member of a collection. Throws Error.
    std::vector<Variant> members() const;

  private:
    struct Release {
        void operator()(IUnknown* object) const { object->Release(); }
    };
    explicit LateBoundObject(IDispatch* object) : object_(object) {}
    Variant invoke(const std::string& name, WORD kind, std::vector<Variant> arguments) const;
    Variant invoke(DISPID member, WORD kind, std::vector<Variant>& arguments) const;

    std::unique_ptr<IDispatch, Release> object_;
};

} // namespace veldara
