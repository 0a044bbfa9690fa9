#include "host/library/Component.h"

#include "host/library/HostError.h"
#include "platform/automation/ClassObject.h"
#include "platform/framework/ExecutablePath.h"

namespace orxdb {
namespace {

HRESULT FindFactory(const CLSID& known, const OLECHAR* progId, const std::filesystem::path& beside,
                    ComPtr<IClassFactory>& factory) {
  if (std::filesystem::exists(beside)) {
    return CoGetClassObjectFromFile(beside.c_str(), known, IClassFactory::iid, factory.putVoid());
  }
  CLSID clsid{};
  const HRESULT status = CLSIDFromProgID(progId, &clsid);
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

ComPtr<IClassFactory> FactoryOf(const CLSID& clsid, const OLECHAR* progId) {
  const auto beside = ProgramFolder().parent_path() / "lib" / "libORXDB.so";
  ComPtr<IClassFactory> factory;
  const HRESULT status = FindFactory(clsid, progId, beside, factory);
  if (status == CO_E_CLASSSTRING) throw NotFound(beside);
  if (FAILED(status)) throw NotUsable(status);
  return factory;
}

template <typename Interface>
ComPtr<Interface> CreateBy(IClassFactory& factory) {
  ComPtr<Interface> object;
  const HRESULT status = factory.CreateInstance(nullptr, Interface::iid, object.putVoid());
  if (FAILED(status)) throw NotUsable(status);
  return object;
}

}  // namespace

std::filesystem::path ProgramFolder() {
  return std::filesystem::path(NativePath(ExecutablePath())).parent_path();
}

ComPtr<IClassFactory> ComponentClass() {
  return FactoryOf(CLSID_OrxDbObj, kOrxDbVersionIndependentProgId);
}

ComPtr<IOrxDbObj> CreateComponent() {
  return CreateBy<IOrxDbObj>(*ComponentClass());
}

ComPtr<IOrxDbLibrary> CreateLibrary() {
  return CreateBy<IOrxDbLibrary>(
      *FactoryOf(CLSID_OrxDbLibrary, kOrxDbLibraryVersionIndependentProgId));
}

}  // namespace orxdb
