#pragma once

#include "platform/windows/discs/ImapiInterfaces.h"

#include <oleauto.h>

#include <string>
#include <utility>

/// Holds one reference on a COM object.
template<class Interface>
class ComPointer {
  public:
    ComPointer() = default;
    /// Takes over the reference that the caller holds.
    explicit ComPointer(Interface* object) : object_(object) {}
    ComPointer(const ComPointer& other) : object_(other.object_) {
        if (object_) object_->AddRef();
    }
    ComPointer(ComPointer&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ComPointer& operator=(ComPointer other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ComPointer() { Reset(); }

    Interface* Get() const { return object_; }
    Interface* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

    /// Gives up what it holds and lends its place to a call that hands out a reference.
    Interface** Receive() {
        Reset();
        return &object_;
    }
    void Reset() {
        if (object_) std::exchange(object_, nullptr)->Release();
    }
    /// The object's other interface; null when it has none.
    template<class Other>
    ComPointer<Other> As() const {
        return ComPointer<Other>::From(object_);
    }
    static ComPointer From(IUnknown* object) {
        ComPointer result;
        if (object) object->QueryInterface(InterfaceId<Interface>, reinterpret_cast<void**>(result.Receive()));
        return result;
    }

  private:
    Interface* object_ = nullptr;
};

/// Owns a text in COM's form.
class ComText {
  public:
    ComText() = default;
    explicit ComText(const std::wstring& text)
        : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
    ComText(const ComText&) = delete;
    ComText& operator=(const ComText&) = delete;
    ~ComText() { SysFreeString(text_); }

    BSTR Get() const { return text_; }
    BSTR* Receive() {
        SysFreeString(std::exchange(text_, nullptr));
        return &text_;
    }
    std::wstring Text() const { return text_ ? std::wstring(text_, SysStringLen(text_)) : std::wstring(); }

  private:
    BSTR text_ = nullptr;
};

/// Owns an array of variants, as image mastering hands them out.
class ComArray {
  public:
    ComArray() = default;
    ComArray(const ComArray&) = delete;
    ComArray& operator=(const ComArray&) = delete;
    ~ComArray() {
        if (array_) SafeArrayDestroy(array_);
    }

    SAFEARRAY* Get() const { return array_; }
    SAFEARRAY** Receive() { return &array_; }
    LONG Count() const {
        LONG lower = 0;
        LONG upper = -1;
        if (!array_ || SafeArrayGetDim(array_) != 1 || FAILED(SafeArrayGetLBound(array_, 1, &lower)) ||
            FAILED(SafeArrayGetUBound(array_, 1, &upper)))
            return 0;
        return upper - lower + 1;
    }
    /// Calls `use` with every element as a variant of type `type`; those that cannot be brought to it are left out.
    template<class Use>
    void ForEach(VARTYPE type, Use use) const {
        LONG lower = 0;
        if (array_) SafeArrayGetLBound(array_, 1, &lower);
        for (LONG index = lower; index < lower + Count(); ++index) {
            VARIANT element;
            VariantInit(&element);
            if (SUCCEEDED(SafeArrayGetElement(array_, &index, &element)) &&
                SUCCEEDED(VariantChangeType(&element, &element, 0, type)))
                use(element);
            VariantClear(&element);
        }
    }

  private:
    SAFEARRAY* array_ = nullptr;
};

/// Makes an object of a class of the system; null, with the reason in `result`, when it cannot.
template<class Interface>
ComPointer<Interface> CreateObject(const GUID& classId, HRESULT& result) {
    ComPointer<Interface> object;
    result = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, InterfaceId<Interface>,
                              reinterpret_cast<void**>(object.Receive()));
    return object;
}
