#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/screen.h"
#include "tests/support/call_script.h"

namespace mervane::tests {

class RecordingScreen : public platform::Screen {
 public:
  explicit RecordingScreen(std::shared_ptr<Journal> journal = nullptr) : script(std::move(journal)) {}

  void pointer(std::int32_t shape) override {
    script.enter(shape == pointerHourglass ? "screen.hourglass" : "screen.pointer");
    pointers.push_back(shape);
  }
  void beep() override {
    script.enter("screen.beep");
    ++beeps;
  }

  std::vector<std::int32_t> pointers;  ///< each shape that was set, in order
  int beeps = 0;
  CallScript script;
};

}  // namespace mervane::tests
