#include "support/server/class_factory.h"
#include "support/server/classifier_server.h"
#include "support/server/module.h"
#include "support/server/registration.h"
#include "support/server/server_ids.h"

// The four exports. Nothing of the system's own logic runs here.

using namespace mervane::server;  // NOLINT(google-build-using-namespace): the exports stand in no namespace.

namespace {

const RegisteredClass classifier{classId, className, L"MervaneClass3.Classifier3", true, false};

}  // namespace

extern "C" HRESULT WINAPI DllGetClassObject(REFCLSID requested, REFIID interfaceId, void** object) {
  return classObject(classId, &ClassifierServer::create, requested, interfaceId, object);
}

extern "C" HRESULT WINAPI DllCanUnloadNow() {
  return ModuleLock::anyAlive() ? S_FALSE : S_OK;
}

extern "C" HRESULT WINAPI DllRegisterServer() {
  return registerClass(classifier);
}

extern "C" HRESULT WINAPI DllUnregisterServer() {
  return unregisterClass(classifier);
}
