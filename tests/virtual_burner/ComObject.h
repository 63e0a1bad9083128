#pragma once

#include "platform/windows/discs/CountedObject.h"

#include <olectl.h>

#include <atomic>
#include <cstddef>
#include <mutex>
#include <utility>
#include <vector>

/// How many objects and connections of this server are alive; a test compares it before and after.
extern std::atomic<long> liveObjects;

/// An object of the server, counted while it lives.
template<class Object>
class LiveObject : public Object {
  public:
    LiveObject() { ++liveObjects; }

  protected:
    ~LiveObject() override { --liveObjects; }
};

template<class Interface>
using ComObject = LiveObject<CountedObject<Interface>>;

template<class Interface>
using DispatchObject = LiveObject<CountedDispatch<Interface>>;

/// Calls sinks through Invoke, with the arguments in their natural order.
inline void FireAt(const std::vector<ComPointer<IDispatch>>& sinks, DISPID id, std::vector<VARIANT> arguments) {
    std::vector<VARIANTARG> reversed(arguments.rbegin(), arguments.rend());
    DISPPARAMS parameters{};
    parameters.rgvarg = reversed.data();
    parameters.cArgs = static_cast<UINT>(reversed.size());
    for (const auto& sink : sinks)
        sink->Invoke(id, GUID{}, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr);
}

/// The connection point of an object that fires one event interface; a part of that object, which it keeps alive.
template<class EventInterface>
class EventSource : public IConnectionPointContainer, public IConnectionPoint {
  public:
    explicit EventSource(IUnknown& owner) : owner_(owner) {}
    /// A connection that is still there was forgotten by the client, and goes on counting as alive.
    virtual ~EventSource() = default;

    void* Find(REFIID id) {
        if (id == InterfaceId<IConnectionPointContainer>) return static_cast<IConnectionPointContainer*>(this);
        return nullptr;
    }
    void Fire(DISPID id, std::vector<VARIANT> arguments) { FireAt(Sinks(), id, std::move(arguments)); }
    /// Those that are connected now.
    std::vector<ComPointer<IDispatch>> Sinks() {
        std::vector<ComPointer<IDispatch>> sinks;
        std::lock_guard lock(mutex_);
        for (auto& sink : sinks_)
            if (sink.object) sinks.push_back(sink.object);
        return sinks;
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (object && id == InterfaceId<IConnectionPoint>) {
            *object = static_cast<IConnectionPoint*>(this);
            AddRef();
            return S_OK;
        }
        return owner_.QueryInterface(id, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return owner_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return owner_.Release(); }

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override {
        if (!point) return E_POINTER;
        *point = id == InterfaceId<EventInterface> ? this : nullptr;
        if (!*point) return CONNECT_E_NOCONNECTION;
        AddRef();
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override {
        if (!id) return E_POINTER;
        *id = InterfaceId<EventInterface>;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override {
        if (!container) return E_POINTER;
        *container = this;
        AddRef();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
        if (!sink || !cookie) return E_POINTER;
        IDispatch* object = nullptr;
        if (FAILED(sink->QueryInterface(InterfaceId<EventInterface>, reinterpret_cast<void**>(&object))))
            return CONNECT_E_CANNOTCONNECT;
        std::lock_guard lock(mutex_);
        ++liveObjects;
        *cookie = ++lastCookie_;
        sinks_.push_back({*cookie, ComPointer<IDispatch>(object)});
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override {
        std::lock_guard lock(mutex_);
        for (auto& sink : sinks_) {
            if (sink.cookie != cookie || !sink.object) continue;
            sink.object.Reset();
            --liveObjects;
            return S_OK;
        }
        return CONNECT_E_NOCONNECTION;
    }
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

  private:
    struct Sink {
        DWORD cookie;
        ComPointer<IDispatch> object;
    };

    IUnknown& owner_;
    std::mutex mutex_;
    std::vector<Sink> sinks_;
    DWORD lastCookie_ = 0;
};

inline VARIANT Number(LONG value) {
    VARIANT variant;
    VariantInit(&variant);
    variant.vt = VT_I4;
    variant.lVal = value;
    return variant;
}

/// Borrowed: the caller keeps the reference.
inline VARIANT Object(IDispatch* value) {
    VARIANT variant;
    VariantInit(&variant);
    variant.vt = VT_DISPATCH;
    variant.pdispVal = value;
    return variant;
}

inline HRESULT GiveText(const std::wstring& text, BSTR* value) {
    if (!value) return E_POINTER;
    *value = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return *value ? S_OK : E_OUTOFMEMORY;
}

template<class Value>
HRESULT Give(Value given, Value* value) {
    if (!value) return E_POINTER;
    *value = given;
    return S_OK;
}

inline HRESULT GiveFlag(bool given, VARIANT_BOOL* value) {
    return Give<VARIANT_BOOL>(given ? VARIANT_TRUE : VARIANT_FALSE, value);
}

/// An array of variants, each made by `make(index)` and owned by the array.
template<class Make>
HRESULT GiveArray(std::size_t count, SAFEARRAY** value, Make make) {
    if (!value) return E_POINTER;
    *value = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(count));
    if (!*value) return E_OUTOFMEMORY;
    for (LONG index = 0; index < static_cast<LONG>(count); ++index) {
        VARIANT element = make(static_cast<std::size_t>(index));
        SafeArrayPutElement(*value, &index, &element);
        VariantClear(&element);
    }
    return S_OK;
}

inline HRESULT GiveNumbers(const std::vector<LONG>& numbers, SAFEARRAY** value, VARTYPE type = VT_I4) {
    return GiveArray(numbers.size(), value, [&](std::size_t index) {
        VARIANT element = Number(numbers[index]);
        element.vt = type;
        return element;
    });
}

/// The classes' makers, each with one reference for the caller.
IUnknown* MakeDiscMaster();
IUnknown* MakeDiscRecorder();
IUnknown* MakeDataWriter();
IUnknown* MakeEraser();
IUnknown* MakeFileSystemImage();
