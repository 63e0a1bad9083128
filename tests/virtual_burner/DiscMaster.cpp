#include "ComObject.h"
#include "Drives.h"

namespace {

class DiscMaster : public DispatchObject<IDiscMaster2> {
  public:
    HRESULT STDMETHODCALLTYPE get__NewEnum(IEnumVARIANT**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE get_Item(LONG index, BSTR* value) override {
        const auto folders = DriveFolders();
        if (index < 0 || static_cast<std::size_t>(index) >= folders.size()) return E_INVALIDARG;
        return GiveText(folders[static_cast<std::size_t>(index)], value);
    }
    HRESULT STDMETHODCALLTYPE get_Count(LONG* value) override {
        return Give(static_cast<LONG>(DriveFolders().size()), value);
    }
    HRESULT STDMETHODCALLTYPE get_IsSupportedEnvironment(VARIANT_BOOL* value) override {
        return GiveFlag(!DriveFolders().empty(), value);
    }
};

} // namespace

IUnknown* MakeDiscMaster() {
    return new DiscMaster;
}
