#include "ComObject.h"
#include "DiscContent.h"
#include "Drives.h"

#include "win32/UniqueHandle.h"

#include <iterator>

std::atomic<long> liveObjects{0};

template<>
inline constexpr GUID InterfaceId<IClassFactory> = {
    0x00000001, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

namespace {

struct ServedClass {
    GUID id;
    const wchar_t* key;
    IUnknown* (*make)();
};

constexpr ServedClass Classes[] = {
    {CLSID_MsftDiscMaster2, L"{2735412E-7F64-5B0F-8F00-5D77AFBE261E}", MakeDiscMaster},
    {CLSID_MsftDiscRecorder2, L"{2735412D-7F64-5B0F-8F00-5D77AFBE261E}", MakeDiscRecorder},
    {CLSID_MsftDiscFormat2Data, L"{2735412A-7F64-5B0F-8F00-5D77AFBE261E}", MakeDataWriter},
    {CLSID_MsftDiscFormat2Erase, L"{2735412B-7F64-5B0F-8F00-5D77AFBE261E}", MakeEraser},
    {CLSID_MsftFileSystemImage, L"{2C941FC5-975B-59BE-A960-9A2A262853A5}", MakeFileSystemImage},
};

class Factory : public CountedObject<IClassFactory> {
  public:
    explicit Factory(IUnknown* (*make)()) : make_(make) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
        if (outer) return CLASS_E_NOAGGREGATION;
        const ComPointer<IUnknown> made(make_());
        return made->QueryInterface(id, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL isLocked) override {
        liveObjects += isLocked ? 1 : -1;
        return S_OK;
    }

  private:
    IUnknown* (*make_)();
};

struct KeyTraits {
    using Type = HKEY;
    static Type Invalid() { return nullptr; }
    static void Close(Type key) { RegCloseKey(key); }
};

std::wstring KeyPath(const ServedClass& served) {
    return std::wstring(L"Software\\Classes\\CLSID\\") + served.key;
}

bool SetValue(const std::wstring& path, const wchar_t* name, const std::wstring& value) {
    HKEY raw = nullptr;
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &raw, nullptr))
        return false;
    const UniqueHandle<KeyTraits> key(raw);
    return RegSetValueExW(key.Get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                          static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

/// Keeps the server in the process: threads of its own run in it, and what its runtime holds for a thread of the client
/// is given back only if the server is still there when that thread ends, which is after COM has let go of it.
void StayLoaded() {
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<const wchar_t*>(&liveObjects), &self);
}

} // namespace

extern "C" {

__declspec(dllexport) HRESULT STDMETHODCALLTYPE DllGetClassObject(REFCLSID classId, REFIID id, void** object) {
    StayLoaded();
    for (const ServedClass& served : Classes) {
        if (served.id != classId) continue;
        const ComPointer<IUnknown> factory(new Factory(served.make));
        return factory->QueryInterface(id, object);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

__declspec(dllexport) HRESULT STDMETHODCALLTYPE DllCanUnloadNow() {
    return liveObjects == 0 ? S_OK : S_FALSE;
}

/// Registers the classes for the whole machine: only for a machine made for tests.
__declspec(dllexport) HRESULT STDMETHODCALLTYPE DllRegisterServer() {
    for (const ServedClass& served : Classes) {
        const std::wstring path = KeyPath(served);
        if (!SetValue(path, nullptr, L"Virtual burner") ||
            !SetValue(path + L"\\InprocServer32", nullptr, ServerPath()) ||
            !SetValue(path + L"\\InprocServer32", L"ThreadingModel", L"Both"))
            return SELFREG_E_CLASS;
    }
    return S_OK;
}

__declspec(dllexport) HRESULT STDMETHODCALLTYPE DllUnregisterServer() {
    for (const ServedClass& served : Classes) RegDeleteTreeW(HKEY_LOCAL_MACHINE, KeyPath(served).c_str());
    return S_OK;
}

/// How many objects and connections are alive.
__declspec(dllexport) long LiveObjectCount() {
    return liveObjects;
}

/// Run by rundll32 with the folder of a disc.
__declspec(dllexport) void CALLBACK ShowContentW(HWND, HINSTANCE, LPWSTR discFolder, int) {
    ShowDiscContent(discFolder);
}
}
