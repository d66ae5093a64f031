#include <gtest/gtest.h>
#include <objbase.h>

/// The tests run in an apartment, as the user interface of a spreadsheet does.
int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  const int status = RUN_ALL_TESTS();
  CoUninitialize();
  return status;
}
