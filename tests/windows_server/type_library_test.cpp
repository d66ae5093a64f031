#include <gtest/gtest.h>

#include <map>
#include <string>

#include "tests/windows_server/client.h"

namespace mervane::tests {
namespace {

/// The type library as a client reads it out of the file.
class TypeLibrary : public testing::Test {
 protected:
  TypeLibrary() {
    const ServerLibrary file(MERVANE_SERVER);
    EXPECT_EQ(LoadTypeLibEx(file.path().c_str(), REGKIND_NONE, &library), S_OK);
  }
  ComPtr<ITypeInfo> infoOf(const GUID& id) {
    ComPtr<ITypeInfo> info;
    EXPECT_EQ(library->GetTypeInfoOfGuid(id, &info), S_OK);
    return info;
  }
  static std::wstring nameOf(ITypeInfo* info, MEMBERID member = MEMBERID_NIL) {
    BSTR name = nullptr;
    info->GetDocumentation(member, &name, nullptr, nullptr, nullptr);
    std::wstring result(name == nullptr ? L"" : name);
    SysFreeString(name);
    return result;
  }
  /// Kind, flags and version of a type.
  struct Attributes {
    TYPEKIND kind;
    WORD flags;
    WORD major;
    WORD minor;
  };
  static Attributes attributesOf(ITypeInfo* info) {
    TYPEATTR* attributes = nullptr;
    EXPECT_EQ(info->GetTypeAttr(&attributes), S_OK);
    const Attributes result{attributes->typekind, attributes->wTypeFlags, attributes->wMajorVerNum,
                            attributes->wMinorVerNum};
    info->ReleaseTypeAttr(attributes);
    return result;
  }

  ComPtr<ITypeLib> library;
};

TEST_F(TypeLibrary, HasItsIdVersionLanguageAndTexts) {
  TLIBATTR* attributes = nullptr;
  ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
  EXPECT_TRUE(attributes->guid == server::libraryId);
  EXPECT_EQ(attributes->wMajorVerNum, 2);
  EXPECT_EQ(attributes->wMinorVerNum, 1);
  EXPECT_EQ(attributes->lcid, 0x409U);
  library->ReleaseTLibAttr(attributes);
  BSTR name = nullptr;
  BSTR description = nullptr;
  ASSERT_EQ(library->GetDocumentation(-1, &name, &description, nullptr, nullptr), S_OK);
  EXPECT_STREQ(name, L"MervaneClass3");
  EXPECT_STREQ(description, L"Mervane Kelvash library");
  SysFreeString(name);
  SysFreeString(description);
}

TEST_F(TypeLibrary, TheClassHasItsVersionAndInterfaces) {
  const ComPtr<ITypeInfo> info = infoOf(server::classId);
  const Attributes attributes = attributesOf(info.Get());
  EXPECT_EQ(nameOf(info.Get()), L"Classifier3");
  EXPECT_EQ(attributes.kind, TKIND_COCLASS);
  EXPECT_EQ(attributes.major, 1);
  EXPECT_EQ(attributes.minor, 1);
  EXPECT_NE(attributes.flags & TYPEFLAG_FCANCREATE, 0);
  const int expected[] = {IMPLTYPEFLAG_FDEFAULT, IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE};
  const wchar_t* const names[] = {L"_Classifier3", L"__Classifier3"};
  for (UINT i = 0; i < 2; ++i) {
    int flags = 0;
    EXPECT_EQ(info->GetImplTypeFlags(i, &flags), S_OK);
    EXPECT_EQ(flags, expected[i]);
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> implemented;
    ASSERT_EQ(info->GetRefTypeOfImplType(i, &reference), S_OK);
    ASSERT_EQ(info->GetRefTypeInfo(reference, &implemented), S_OK);
    EXPECT_EQ(nameOf(implemented.Get()), names[i]);
  }
}

TEST_F(TypeLibrary, BothInterfacesAreHiddenAndOfVersionOnePointOne) {
  for (const GUID& id : {server::defaultInterfaceId, server::eventInterfaceId}) {
    const Attributes attributes = attributesOf(infoOf(id).Get());
    EXPECT_EQ(attributes.kind, TKIND_DISPATCH);
    EXPECT_NE(attributes.flags & TYPEFLAG_FHIDDEN, 0);
    EXPECT_EQ(attributes.major, 1);
    EXPECT_EQ(attributes.minor, 1);
    EXPECT_EQ((attributes.flags & TYPEFLAG_FDUAL) != 0, id == server::defaultInterfaceId);
  }
}

TEST_F(TypeLibrary, TheEarlierInterfaceHasTheSlotsOfThePresentOne) {
  const ComPtr<ITypeInfo> info = infoOf(server::earlierDefaultInterfaceId);
  EXPECT_EQ(nameOf(info.Get()), L"Classifier3___v0");
  const Attributes attributes = attributesOf(info.Get());
  EXPECT_EQ(attributes.kind, TKIND_DISPATCH);
  EXPECT_NE(attributes.flags & TYPEFLAG_FDUAL, 0);
  EXPECT_NE(attributes.flags & TYPEFLAG_FHIDDEN, 0);
  const auto slotsOf = [&](const GUID& id) {
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> slots;
    EXPECT_EQ(infoOf(id)->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
    EXPECT_EQ(infoOf(id)->GetRefTypeInfo(reference, &slots), S_OK);
    std::vector<std::wstring> list;
    FUNCDESC* described = nullptr;
    for (UINT i = 0; slots->GetFuncDesc(i, &described) == S_OK; ++i) {
      list.push_back(nameOf(slots.Get(), described->memid) + L" " + std::to_wstring(described->memid) + L" " +
                     std::to_wstring(described->invkind) + L" " + std::to_wstring(described->oVft) + L" " +
                     std::to_wstring(described->cParams));
      slots->ReleaseFuncDesc(described);
    }
    return list;
  };
  EXPECT_EQ(slotsOf(server::earlierDefaultInterfaceId), slotsOf(server::defaultInterfaceId));
  EXPECT_EQ(slotsOf(server::defaultInterfaceId).size(), 34U);
}

TEST_F(TypeLibrary, TheArgumentsOfScaleValueAreSpelledAsPromised) {
  const ComPtr<ITypeInfo> info = infoOf(server::defaultInterfaceId);
  BSTR names[8] = {};
  UINT count = 0;
  ASSERT_EQ(info->GetNames(0x6003001D, names, 8, &count), S_OK);
  std::vector<std::wstring> found(names, names + count);
  for (UINT i = 0; i < count; ++i) SysFreeString(names[i]);
  EXPECT_EQ(found, (std::vector<std::wstring>{L"ScaleValue", L"Value", L"minSrcRangeValue", L"maxSrcRangeValue",
                                              L"minDestRangeValue", L"maxDestRangeValue"}));
}

/// A member in its slot: name, dispatch id, how it is called.
struct Member {
  const wchar_t* name;
  MEMBERID id;
  INVOKEKIND kind;
};

TEST_F(TypeLibrary, MembersStandInTheirSlotsWithTheirDispatchIds) {
  const Member members[] = {
      {L"ExcelApplication", 0x6803000C, INVOKE_PROPERTYPUTREF},
      {L"ExcelApplication", 0x6803000C, INVOKE_PROPERTYGET},
      {L"Inputs", 0x6803000B, INVOKE_PROPERTYPUT},
      {L"Inputs", 0x6803000B, INVOKE_PROPERTYGET},
      {L"getMaxValue", 0x6003000D, INVOKE_FUNC},
      {L"getMinValue", 0x6003000E, INVOKE_FUNC},
      {L"Outputs", 0x6803000A, INVOKE_PROPERTYGET},
      {L"InitialWeights", 0x68030009, INVOKE_PROPERTYPUT},
      {L"InitialWeights", 0x68030009, INVOKE_PROPERTYGET},
      {L"ActivationFunction", 0x68030008, INVOKE_PROPERTYPUT},
      {L"ActivationFunction", 0x68030008, INVOKE_PROPERTYGET},
      {L"Clusters", 0x68030007, INVOKE_PROPERTYPUT},
      {L"Clusters", 0x68030007, INVOKE_PROPERTYGET},
      {L"LearningRadius", 0x68030006, INVOKE_PROPERTYPUT},
      {L"LearningRadius", 0x68030006, INVOKE_PROPERTYGET},
      {L"LearningRate", 0x68030005, INVOKE_PROPERTYPUT},
      {L"LearningRate", 0x68030005, INVOKE_PROPERTYGET},
      {L"EpochCount", 0x68030004, INVOKE_PROPERTYPUT},
      {L"EpochCount", 0x68030004, INVOKE_PROPERTYGET},
      {L"UseConvexCombination", 0x68030003, INVOKE_PROPERTYPUT},
      {L"UseConvexCombination", 0x68030003, INVOKE_PROPERTYGET},
      {L"AutoScaleInputs", 0x68030002, INVOKE_PROPERTYPUT},
      {L"AutoScaleInputs", 0x68030002, INVOKE_PROPERTYGET},
      {L"StopLearning", 0x60030010, INVOKE_FUNC},
      {L"Run", 0x60030011, INVOKE_FUNC},
      {L"GetSamplesCount", 0x60030019, INVOKE_FUNC},
      {L"GetColumnsCount", 0x6003001A, INVOKE_FUNC},
      {L"ScaleValue", 0x6003001D, INVOKE_FUNC},
      {L"ShowMainForm", 0x60030026, INVOKE_FUNC},
      {L"CellInputs", 0x68030001, INVOKE_PROPERTYPUT},
      {L"CellInputs", 0x68030001, INVOKE_PROPERTYGET},
      {L"CellOutputs", 0x68030000, INVOKE_PROPERTYPUT},
      {L"CellOutputs", 0x68030000, INVOKE_PROPERTYGET},
      {L"UnloadfrmMain", 0x60030034, INVOKE_FUNC},
  };
  const ComPtr<ITypeInfo> dispatch = infoOf(server::defaultInterfaceId);
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> slots;
  ASSERT_EQ(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
  ASSERT_EQ(dispatch->GetRefTypeInfo(reference, &slots), S_OK);
  SHORT slot = 7;  // behind those of IUnknown and IDispatch
  UINT index = 0;
  for (const Member& member : members) {
    FUNCDESC* described = nullptr;
    ASSERT_EQ(slots->GetFuncDesc(index++, &described), S_OK);
    EXPECT_EQ(nameOf(slots.Get(), described->memid), member.name);
    EXPECT_EQ(described->memid, member.id) << index;
    EXPECT_EQ(described->invkind, member.kind) << index;
    EXPECT_EQ(described->oVft, slot++ * static_cast<SHORT>(sizeof(void*))) << index;
    slots->ReleaseFuncDesc(described);
  }
  FUNCDESC* further = nullptr;
  EXPECT_NE(slots->GetFuncDesc(index, &further), S_OK);
}

TEST_F(TypeLibrary, TheEventHasThreeArgumentsByReference) {
  const ComPtr<ITypeInfo> events = infoOf(server::eventInterfaceId);
  FUNCDESC* described = nullptr;
  ASSERT_EQ(events->GetFuncDesc(0, &described), S_OK);
  EXPECT_EQ(described->memid, 1);
  ASSERT_EQ(described->cParams, 3);
  const VARTYPE types[] = {VT_I4, VT_R8, VT_I4};
  for (int i = 0; i < 3; ++i) {
    const TYPEDESC& type = described->lprgelemdescParam[i].tdesc;
    ASSERT_EQ(type.vt, VT_PTR);
    EXPECT_EQ(type.lptdesc->vt, types[i]);
  }
  BSTR names[4] = {};
  UINT count = 0;
  events->GetNames(described->memid, names, 4, &count);
  ASSERT_EQ(count, 4U);
  EXPECT_STREQ(names[0], L"NextEpoch");
  EXPECT_STREQ(names[1], L"epoch");
  EXPECT_STREQ(names[2], L"CurrentLearningRate");
  EXPECT_STREQ(names[3], L"CurrentRadius");
  for (BSTR name : names) SysFreeString(name);
  events->ReleaseFuncDesc(described);
}

TEST_F(TypeLibrary, TheEnumerationsHaveTheirIdsAndNumbers) {
  const GUID functions = {0x62CCC507, 0x0B42, 0x4EF1, {0xBD, 0x7B, 0xE7, 0x8F, 0xA0, 0xF0, 0xB8, 0x5D}};
  const GUID errors = {0x44623E3B, 0xACB0, 0x4930, {0x8D, 0x3B, 0x51, 0x0D, 0xFC, 0x48, 0xF2, 0x77}};
  const std::map<std::wstring, LONG> expected = {
      {L"ACTIVATE_FUNC_DEFAULT", 0},
      {L"ACTIVATE_FUNC_ZEROT", 1},
      {L"ACTIVATE_FUNC_TANH", 2},
      {L"ACTIVATE_FUNC_EXP05", 3},
      {L"ACTIVATE_FUNC_EXP", 4},
      {L"eErr_InvalidArgument", -2147203703},
      {L"eErr_InvalidReference", -2147203701},
      {L"eErr_CompareNameSheet", -2147203700},
      {L"eErr_ClearRange", -2147203699},
      {L"eErr_NotDigit", -2147203698},
      {L"eErr_RangeIntersect", -2147203697},
      {L"eErr_RepeatedInputs", -2147203696},
      {L"eErr_ErrLearningRate", -2147203695},
      {L"eErr_ErrInitialWeights", -2147203694},
      {L"eErr_NoDigit", -2147203693},
      {L"eErr_CategoriesCount", -2147203692},
      {L"eErr_Table", -2147203691},
      {L"eErr_InputAndOutputAreNotSame", -2147203690},
  };
  std::map<std::wstring, LONG> found;
  for (const GUID& id : {functions, errors}) {
    const ComPtr<ITypeInfo> info = infoOf(id);
    EXPECT_EQ(attributesOf(info.Get()).kind, TKIND_ENUM);
    VARDESC* described = nullptr;
    for (UINT i = 0; info->GetVarDesc(i, &described) == S_OK; ++i) {
      found[nameOf(info.Get(), described->memid)] = described->lpvarValue->lVal;
      info->ReleaseVarDesc(described);
    }
  }
  EXPECT_EQ(found, expected);
}

TEST_F(TypeLibrary, TheApplicationHasTheTypeOfItsOwnLibrary) {
  const ComPtr<ITypeInfo> dispatch = infoOf(server::defaultInterfaceId);
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> slots;
  ASSERT_EQ(dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
  ASSERT_EQ(dispatch->GetRefTypeInfo(reference, &slots), S_OK);
  FUNCDESC* described = nullptr;
  ASSERT_EQ(slots->GetFuncDesc(0, &described), S_OK);
  const TYPEDESC& type = described->lprgelemdescParam[0].tdesc;
  ASSERT_EQ(type.vt, VT_PTR);
  EXPECT_EQ(type.lptdesc->vt, VT_USERDEFINED);
  slots->ReleaseFuncDesc(described);

  // What it refers to can be followed only where the application is installed; the id stands in the file.
  const ServerLibrary file(MERVANE_SERVER);
  const HRSRC resource = FindResourceW(file.module(), MAKEINTRESOURCEW(1), L"TYPELIB");
  ASSERT_NE(resource, nullptr);
  const auto* bytes = static_cast<const char*>(LockResource(LoadResource(file.module(), resource)));
  const std::string content(bytes, SizeofResource(file.module(), resource));
  const GUID application = {0x00020813, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
  const GUID standard = {0x00020430, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
  for (const GUID& id : {application, standard}) {
    const std::string searched(reinterpret_cast<const char*>(&id), sizeof id);
    EXPECT_NE(content.find(searched), std::string::npos);
  }
}

TEST(LateBoundNames, AreFoundInAnyCaseWithTheirArguments) {
  const Classifier classifier;
  const LateBound late = classifier.lateBound();
  EXPECT_EQ(late.id(L"Run"), 0x60030011);
  EXPECT_EQ(late.id(L"RUN"), 0x60030011);
  EXPECT_EQ(late.id(L"cellinputs"), 0x68030001);
  EXPECT_EQ(late.id(L"NoSuchMember"), DISPID_UNKNOWN);
  wchar_t method[] = L"ScaleValue";
  wchar_t argument[] = L"maxDestRangeValue";
  OLECHAR* names[] = {method, argument};
  DISPID ids[2] = {};
  EXPECT_EQ(classifier->GetIDsOfNames(IID_NULL, names, 2, LOCALE_USER_DEFAULT, ids), S_OK);
  EXPECT_EQ(ids[1], 4);
  UINT count = 0;
  EXPECT_EQ(classifier->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 1U);
  ComPtr<ITypeInfo> info;
  EXPECT_EQ(classifier->GetTypeInfo(1, LOCALE_USER_DEFAULT, &info), DISP_E_BADINDEX);
}

TEST(VersionResource, HoldsTheNumbersAndTexts) {
  const ServerLibrary file(MERVANE_SERVER);
  DWORD ignored = 0;
  std::vector<BYTE> block(GetFileVersionInfoSizeW(file.path().c_str(), &ignored));
  ASSERT_FALSE(block.empty());
  ASSERT_NE(GetFileVersionInfoW(file.path().c_str(), 0, static_cast<DWORD>(block.size()), block.data()), FALSE);
  VS_FIXEDFILEINFO* numbers = nullptr;
  UINT length = 0;
  ASSERT_NE(VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&numbers), &length), FALSE);
  EXPECT_EQ(numbers->dwFileVersionMS, 0x00030000U);
  EXPECT_EQ(numbers->dwFileVersionLS, 57U);
  EXPECT_EQ(numbers->dwProductVersionMS, 0x00030000U);
  EXPECT_EQ(numbers->dwProductVersionLS, 57U);
  const std::map<std::wstring, std::wstring> expected = {{L"InternalName", L"MervaneCls31"},
                                                         {L"ProductName", L"MervaneClass"},
                                                         {L"FileVersion", L"3.00.0057"},
                                                         {L"ProductVersion", L"3.00.0057"},
                                                         {L"OLESelfRegister", L""}};
  for (const auto& [name, text] : expected) {
    wchar_t* found = nullptr;
    const std::wstring path = L"\\StringFileInfo\\040904B0\\" + name;
    ASSERT_NE(VerQueryValueW(block.data(), path.c_str(), reinterpret_cast<void**>(&found), &length), FALSE);
    EXPECT_EQ(std::wstring(found), text);
  }
}

TEST(IdResources, ListTheEarlierIdFirst) {
  const ServerLibrary file(MERVANE_SERVER);
  const std::pair<const wchar_t*, std::pair<GUID, GUID>> lists[] = {
      {L"_IID_CLASSIFIER3", {server::earlierDefaultInterfaceId, server::defaultInterfaceId}},
      {L"_SRCIID_CLASSIFIER3", {server::earlierEventInterfaceId, server::eventInterfaceId}}};
  for (const auto& [name, ids] : lists) {
    const HRSRC resource = FindResourceW(file.module(), name, MAKEINTRESOURCEW(10));
    ASSERT_NE(resource, nullptr);
    ASSERT_EQ(SizeofResource(file.module(), resource), 36U);
    const auto* bytes = static_cast<const BYTE*>(LockResource(LoadResource(file.module(), resource)));
    DWORD length = 0;
    GUID found[2] = {};
    memcpy(&length, bytes, sizeof length);
    memcpy(found, bytes + sizeof length, sizeof found);
    EXPECT_EQ(length, 32U);
    EXPECT_TRUE(found[0] == ids.first && found[1] == ids.second);
  }
}

}  // namespace
}  // namespace mervane::tests
