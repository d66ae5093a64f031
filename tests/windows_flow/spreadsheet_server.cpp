#include "support/server/class_factory.h"
#include "support/server/module.h"
#include "support/server/registration.h"
#include "tests/windows_flow/foreign_application.h"
#include "tests/windows_flow/host_dispatch.h"

// The foreign application as an in-process class that scripts create by name.

using namespace mervane::server;  // NOLINT(google-build-using-namespace): the exports stand in no namespace.

namespace {

constexpr GUID applicationId = {0x6378C452, 0xAFAB, 0x467A, {0x8B, 0x01, 0xB8, 0x52, 0xFB, 0xFA, 0xFB, 0xDF}};
const RegisteredClass application{applicationId, L"MervaneTest.Spreadsheet", L"Spreadsheet for tests", false, false};

HRESULT createApplication(REFIID interfaceId, void** object) {
  IDispatch* made = mervane::tests::ForeignApplication::create();
  const HRESULT result = made->QueryInterface(interfaceId, object);
  made->Release();
  return result;
}

}  // namespace

extern "C" HRESULT WINAPI DllGetClassObject(REFCLSID requested, REFIID interfaceId, void** object) {
  return classObject(applicationId, &createApplication, requested, interfaceId, object);
}

extern "C" HRESULT WINAPI DllCanUnloadNow() {
  return ModuleLock::anyAlive() || mervane::tests::HostDispatch::alive() != 0 ? S_FALSE : S_OK;
}

extern "C" HRESULT WINAPI DllRegisterServer() {
  return registerClass(application);
}

extern "C" HRESULT WINAPI DllUnregisterServer() {
  return unregisterClass(application);
}
