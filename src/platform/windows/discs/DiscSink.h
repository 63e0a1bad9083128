#pragma once

#include "platform/windows/discs/CountedObject.h"

#include <array>
#include <functional>
#include <new>

/// Receives the one event of an event interface. Image mastering delivers it through IDispatch::Invoke; the real method
/// behind IDispatch is there for a source that calls it.
template<class EventInterface, std::size_t ArgumentCount>
class DiscSinkBase : public CountedDispatch<EventInterface> {
  public:
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        constexpr DISPID updateId = 0x200;
        if (id != updateId) return DISP_E_MEMBERNOTFOUND;
        if (!parameters || parameters->cArgs != ArgumentCount) return DISP_E_BADPARAMCOUNT;
        // The last argument comes first.
        std::array<VARIANTARG*, ArgumentCount> arguments;
        for (std::size_t index = 0; index < ArgumentCount; ++index)
            arguments[index] = &parameters->rgvarg[ArgumentCount - 1 - index];
        return OnInvoke(arguments);
    }

  protected:
    virtual HRESULT OnInvoke(const std::array<VARIANTARG*, ArgumentCount>& arguments) = 0;

    /// Nothing is thrown at the system: a step for which there is no memory is not told.
    template<class Tell>
    static HRESULT Told(Tell tell) {
        try {
            tell();
            return S_OK;
        } catch (const std::bad_alloc&) {
            return E_OUTOFMEMORY;
        }
    }
    static IUnknown* ObjectIn(const VARIANTARG& argument) {
        return argument.vt == VT_DISPATCH || argument.vt == VT_UNKNOWN ? argument.punkVal : nullptr;
    }
    static LONG NumberIn(VARIANTARG& argument) {
        VARIANT number;
        VariantInit(&number);
        return SUCCEEDED(VariantChangeType(&number, &argument, 0, VT_I4)) ? number.lVal : 0;
    }
};

/// Told of each step of a write: the writer and what it says of the step, either may be null.
class WriteSink : public DiscSinkBase<DDiscFormat2DataEvents, 2> {
  public:
    using Handler = std::function<void(IDiscFormat2Data*, IDiscFormat2DataEventArgs*)>;
    explicit WriteSink(Handler handler) : handler_(std::move(handler)) {}

    HRESULT STDMETHODCALLTYPE Update(IDispatch* object, IDispatch* progress) override {
        return Told([&] {
            handler_(ComPointer<IDiscFormat2Data>::From(object).Get(),
                     ComPointer<IDiscFormat2DataEventArgs>::From(progress).Get());
        });
    }

  private:
    HRESULT OnInvoke(const std::array<VARIANTARG*, 2>& arguments) override {
        return Update(static_cast<IDispatch*>(ObjectIn(*arguments[0])),
                      static_cast<IDispatch*>(ObjectIn(*arguments[1])));
    }

    Handler handler_;
};

/// Told of each step of an erase: the seconds it has taken and the estimate of all.
class EraseSink : public DiscSinkBase<DDiscFormat2EraseEvents, 3> {
  public:
    using Handler = std::function<void(LONG elapsedSeconds, LONG estimatedSeconds)>;
    explicit EraseSink(Handler handler) : handler_(std::move(handler)) {}

    HRESULT STDMETHODCALLTYPE Update(IDispatch*, LONG elapsedSeconds, LONG estimatedSeconds) override {
        return Told([&] { handler_(elapsedSeconds, estimatedSeconds); });
    }

  private:
    HRESULT OnInvoke(const std::array<VARIANTARG*, 3>& arguments) override {
        return Update(nullptr, NumberIn(*arguments[1]), NumberIn(*arguments[2]));
    }

    Handler handler_;
};

/// Connects a sink to a source of events for as long as it lives.
class SinkConnection {
  public:
    template<class EventInterface>
    SinkConnection(IUnknown* source, EventInterface* sink) {
        const auto container = ComPointer<IConnectionPointContainer>::From(source);
        if (container && SUCCEEDED(container->FindConnectionPoint(InterfaceId<EventInterface>, point_.Receive())) &&
            FAILED(point_->Advise(sink, &cookie_)))
            point_.Reset();
    }
    SinkConnection(const SinkConnection&) = delete;
    SinkConnection& operator=(const SinkConnection&) = delete;
    ~SinkConnection() {
        if (point_) point_->Unadvise(cookie_);
    }

  private:
    ComPointer<IConnectionPoint> point_;
    DWORD cookie_ = 0;
};
