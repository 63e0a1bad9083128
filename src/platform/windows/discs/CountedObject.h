#pragma once

#include "platform/windows/discs/ComPointer.h"

#include <atomic>

/// A COM object with one main interface, which counts its references and ends with the last. It starts with the one of
/// its maker.
template<class Interface>
class CountedObject : public Interface {
  public:
    CountedObject() = default;
    CountedObject(const CountedObject&) = delete;
    CountedObject& operator=(const CountedObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (!object) return E_POINTER;
        *object =
            id == InterfaceId<IUnknown> || id == InterfaceId<Interface> ? static_cast<Interface*>(this) : Other(id);
        if (!*object) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

  protected:
    virtual ~CountedObject() = default;
    /// A further interface of the object, without a reference; null when it has no such one.
    virtual void* Other(REFIID) { return nullptr; }

  private:
    std::atomic<ULONG> references_{1};
};

/// The same for an automation interface that is reached through its table only.
template<class Interface>
class CountedDispatch : public CountedObject<Interface> {
  public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (!count) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }

  protected:
    void* Other(REFIID id) override {
        return id == InterfaceId<IDispatch> ? static_cast<IDispatch*>(this) : OtherThanDispatch(id);
    }
    virtual void* OtherThanDispatch(REFIID) { return nullptr; }
};
