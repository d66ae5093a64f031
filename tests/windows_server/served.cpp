#include <gtest/gtest.h>

#include <memory>

#include "tests/windows_server/client.h"

// Registers the server for the length of the program, and gives the main thread an apartment.

namespace mervane::tests {
namespace {

class Served final : public testing::Environment {
 public:
  void SetUp() override {
    apartment_ = std::make_unique<Apartment>();
    library_ = std::make_unique<ServerLibrary>(MERVANE_SERVER);
    ASSERT_EQ(library_->registerServer(), S_OK);
  }
  void TearDown() override {
    EXPECT_EQ(library_->unregisterServer(), S_OK);
    library_.reset();
    apartment_.reset();
  }

 private:
  std::unique_ptr<Apartment> apartment_;
  std::unique_ptr<ServerLibrary> library_;
};

const testing::Environment* const served = testing::AddGlobalTestEnvironment(new Served);

}  // namespace
}  // namespace mervane::tests
