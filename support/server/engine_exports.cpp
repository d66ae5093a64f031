#include "support/server/class_factory.h"
#include "support/server/engine_server.h"
#include "support/server/module.h"
#include "support/server/registration.h"
#include "support/server/server_ids.h"

// The four exports of the engine's own server.

using namespace mervane::server;  // NOLINT(google-build-using-namespace): the exports stand in no namespace.

namespace {

const RegisteredClass engine{engineClassId, L"MervaneEngine.NetworkEngine", L"Mervane network engine", false, true};

}  // namespace

extern "C" HRESULT WINAPI DllGetClassObject(REFCLSID requested, REFIID interfaceId, void** object) {
  return classObject(engineClassId, &EngineServer::create, requested, interfaceId, object);
}

extern "C" HRESULT WINAPI DllCanUnloadNow() {
  return ModuleLock::anyAlive() ? S_FALSE : S_OK;
}

extern "C" HRESULT WINAPI DllRegisterServer() {
  return registerClass(engine);
}

extern "C" HRESULT WINAPI DllUnregisterServer() {
  return unregisterClass(engine);
}
