#include <gtest/gtest.h>

#include "tests/windows_server/client.h"

namespace mervane::tests {
namespace {

TEST(Creation, ByNameAndByClassIdLeadToTheSameClass) {
  CLSID byName{};
  ASSERT_EQ(CLSIDFromProgID(L"MervaneClass3.Classifier3", &byName), S_OK);
  EXPECT_TRUE(byName == server::classId);
  const Classifier classifier;
  EXPECT_NE(classifier.get(), nullptr);
}

TEST(Creation, PresentAndEarlierIdsAreAnsweredByOneObject) {
  for (const IID& requested :
       {IID_IUnknown, IID_IDispatch, server::defaultInterfaceId, server::earlierDefaultInterfaceId,
        IID_IProvideClassInfo, IID_IProvideClassInfo2, IID_ISupportErrorInfo, IID_IConnectionPointContainer}) {
    ComPtr<IUnknown> object;
    ASSERT_EQ(CoCreateInstance(server::classId, nullptr, CLSCTX_INPROC_SERVER, requested,
                               reinterpret_cast<void**>(object.GetAddressOf())),
              S_OK);
    ComPtr<_Classifier3> slots;
    ASSERT_EQ(object->QueryInterface(server::defaultInterfaceId, reinterpret_cast<void**>(slots.GetAddressOf())), S_OK);
    ComPtr<IUnknown> first;
    ComPtr<IUnknown> second;
    object.As(&first);
    slots.As(&second);
    EXPECT_EQ(first.Get(), second.Get());
    slots->UnloadfrmMain();
  }
}

TEST(Creation, TheEarlierIdHasTheSameSlots) {
  const Classifier classifier;
  ComPtr<_Classifier3> earlier;
  ASSERT_EQ(
      classifier->QueryInterface(server::earlierDefaultInterfaceId, reinterpret_cast<void**>(earlier.GetAddressOf())),
      S_OK);
  ASSERT_EQ(earlier->put_Clusters(7), S_OK);
  LONG clusters = 0;
  EXPECT_EQ(classifier->get_Clusters(&clusters), S_OK);
  EXPECT_EQ(clusters, 7);
}

TEST(Creation, OtherInterfacesAreRefused) {
  const Classifier classifier;
  ComPtr<IPersist> other;
  EXPECT_EQ(classifier->QueryInterface(IID_IPersist, reinterpret_cast<void**>(other.GetAddressOf())), E_NOINTERFACE);
  EXPECT_EQ(other.Get(), nullptr);
  EXPECT_EQ(classifier->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST(Creation, OneClassIsOfferedAndNoOther) {
  ServerLibrary library(MERVANE_SERVER);
  ComPtr<IClassFactory> factory;
  EXPECT_EQ(
      library.classObject(server::engineClassId, IID_IClassFactory, reinterpret_cast<void**>(factory.GetAddressOf())),
      CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(library.classObject(server::classId, IID_IClassFactory, nullptr), E_POINTER);
  EXPECT_EQ(library.classObject(server::classId, IID_IDispatch, reinterpret_cast<void**>(factory.GetAddressOf())),
            E_NOINTERFACE);
  EXPECT_EQ(library.classObject(server::classId, IID_IClassFactory, reinterpret_cast<void**>(factory.GetAddressOf())),
            S_OK);
  EXPECT_NE(factory.Get(), nullptr);
}

TEST(Creation, AnInterfaceThatThereIsNotLeavesNothingAlive) {
  ServerLibrary library(MERVANE_SERVER);
  ASSERT_EQ(library.canUnloadNow(), S_OK);
  ComPtr<IClassFactory> factory;
  ASSERT_EQ(library.classObject(server::classId, IID_IClassFactory, reinterpret_cast<void**>(factory.GetAddressOf())),
            S_OK);
  void* made = &library;
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IPersist, &made), E_NOINTERFACE);
  EXPECT_EQ(made, nullptr);
  EXPECT_EQ(library.canUnloadNow(), S_OK);
}

TEST(Creation, TheFactoryMakesNoPartsOfOtherObjects) {
  ServerLibrary library(MERVANE_SERVER);
  ComPtr<IClassFactory> factory;
  ASSERT_EQ(library.classObject(server::classId, IID_IClassFactory, reinterpret_cast<void**>(factory.GetAddressOf())),
            S_OK);
  const Classifier outer;
  ComPtr<IUnknown> made;
  EXPECT_EQ(factory->CreateInstance(outer.get(), IID_IUnknown, reinterpret_cast<void**>(made.GetAddressOf())),
            CLASS_E_NOAGGREGATION);
  EXPECT_EQ(made.Get(), nullptr);
}

TEST(Creation, TheObjectTellsItsClassAndItsEvents) {
  const Classifier classifier;
  ComPtr<IProvideClassInfo2> informed;
  ASSERT_EQ(classifier->QueryInterface(IID_IProvideClassInfo2, reinterpret_cast<void**>(informed.GetAddressOf())),
            S_OK);
  ComPtr<ITypeInfo> info;
  ASSERT_EQ(informed->GetClassInfo(&info), S_OK);
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
  EXPECT_TRUE(attributes->guid == server::classId);
  info->ReleaseTypeAttr(attributes);
  GUID id{};
  EXPECT_EQ(informed->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &id), S_OK);
  EXPECT_TRUE(id == server::eventInterfaceId);
  EXPECT_EQ(informed->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID + 1, &id), E_INVALIDARG);
}

TEST(Creation, ErrorInformationIsPromisedForBothIdsAlone) {
  const Classifier classifier;
  ComPtr<ISupportErrorInfo> support;
  ASSERT_EQ(classifier->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(support.GetAddressOf())), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(server::defaultInterfaceId), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(server::earlierDefaultInterfaceId), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IConnectionPointContainer), S_FALSE);
}

}  // namespace
}  // namespace mervane::tests
