#include "host/library/Component.h"

#include "host/library/HostError.h"
#include "platform/automation/ClassObject.h"
#include "platform/framework/ExecutablePath.h"

namespace orxdb {
namespace {

HRESULT FindFactory(const std::filesystem::path& beside, ComPtr<IClassFactory>& factory) {
  if (std::filesystem::exists(beside)) {
    return CoGetClassObjectFromFile(beside.c_str(), CLSID_OrxDbObj, IClassFactory::iid,
                                    factory.putVoid());
  }
  CLSID clsid{};
  const HRESULT status = CLSIDFromProgID(kOrxDbVersionIndependentProgId, &clsid);
  return FAILED(status) ? status
                        : CoGetClassObject(clsid, CLSCTX_INPROC_SERVER, nullptr, IClassFactory::iid,
                                           factory.putVoid());
}

HostError NotFound(const std::filesystem::path& beside) {
  return HostError("The component ORXDB.OrxDbObj is not registered and there is no " +
                   beside.string() + ". `orxregsvr LIBRARY` registers one.");
}

HostError NotUsable(HRESULT status) {
  return HostError("The component ORXDB.OrxDbObj cannot be used (" + Hexadecimal(status) + ").");
}

}  // namespace

std::filesystem::path ProgramFolder() {
  return std::filesystem::path(NativePath(ExecutablePath())).parent_path();
}

ComPtr<IClassFactory> ComponentClass() {
  const auto beside = ProgramFolder().parent_path() / "lib" / "libORXDB.so";
  ComPtr<IClassFactory> factory;
  const HRESULT status = FindFactory(beside, factory);
  if (status == CO_E_CLASSSTRING) throw NotFound(beside);
  if (FAILED(status)) throw NotUsable(status);
  return factory;
}

ComPtr<IOrxDbObj> CreateComponent() {
  ComPtr<IOrxDbObj> component;
  const HRESULT status =
      ComponentClass()->CreateInstance(nullptr, IOrxDbObj::iid, component.putVoid());
  if (FAILED(status)) throw NotUsable(status);
  return component;
}

}  // namespace orxdb
