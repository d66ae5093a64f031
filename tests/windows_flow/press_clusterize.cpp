#include <cstdio>

#include "tests/windows_flow/press_button.h"

/// Stands in for the user: presses "Clusterize" in the options window that another program shows.
int main() {
  constexpr std::chrono::seconds limit{90};
  if (!mervane::tests::pressButton(L"Clusterize", 0, limit)) {
    std::fputs("No window with a button \"Clusterize\" came up.\n", stderr);
    return 1;
  }
  return 0;
}
