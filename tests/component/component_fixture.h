#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

#include "mervane/classifier3.h"
#include "platform/headless/headless_option_window.h"
#include "tests/support/failure_matchers.h"
#include "tests/support/recording_engine.h"
#include "tests/support/scripted_error_window.h"
#include "tests/support/test_machine.h"

namespace mervane::tests {

/// Rows of equal length as an array of the element type, with the lower bounds given.
template <class T>
[[nodiscard]] Array<T> grid(std::initializer_list<std::initializer_list<T>> rows, std::int32_t firstRow = 1,
                            std::int32_t firstColumn = 1) {
  const auto rowCount = static_cast<std::int32_t>(rows.size());
  const auto columnCount = static_cast<std::int32_t>(rows.begin()->size());
  Array<T> array({Bounds{firstRow, firstRow + (rowCount - 1)}, Bounds{firstColumn, firstColumn + (columnCount - 1)}});
  auto next = array.elements().begin();
  for (const auto& row : rows) next = std::copy(row.begin(), row.end(), next);
  return array;
}

/// One object with a recording engine, on a machine of doubles whose failure dialog follows a script.
class ComponentTest : public testing::Test {
 protected:
  ComponentTest() {
    installErrorDialog(*machine.services, dialog);
    machine.services->createOptionWindow = platform::headlessOptionWindows(user);
    classifier = make(engine);
  }
  ~ComponentTest() override {
    for (const auto& one : made) one->UnloadfrmMain();
  }

  std::shared_ptr<Classifier3> make(std::shared_ptr<NetworkEngine> network) {
    made.push_back(Classifier3::create({[network = std::move(network)] { return network; }}));
    return made.back();
  }

  /// Numbers of Outputs in the order of their rows.
  std::vector<std::int32_t> outputs() { return classifier->Outputs().elements(); }

  TestMachine machine;
  std::shared_ptr<ErrorDialogScript> dialog = std::make_shared<ErrorDialogScript>(machine.journal);
  std::shared_ptr<platform::HeadlessUser> user = std::make_shared<platform::HeadlessUser>();
  std::shared_ptr<RecordingEngine> engine = std::make_shared<RecordingEngine>();
  std::vector<std::shared_ptr<Classifier3>> made;
  std::shared_ptr<Classifier3> classifier;
};

}  // namespace mervane::tests
