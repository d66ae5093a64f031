#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "tests/windows_flow/press_button.h"

/// Stands in for the user: presses these buttons one after the other, each as soon as a window that another program
/// shows has it; "Clusterize" where none is named.
int main(int count, char** words) {
  constexpr std::chrono::seconds limit{90};
  std::vector<std::wstring> buttons;
  for (int i = 1; i < count; ++i) buttons.emplace_back(words[i], words[i] + std::strlen(words[i]));
  if (buttons.empty()) buttons.emplace_back(L"Clusterize");
  for (const std::wstring& button : buttons) {
    if (mervane::tests::pressButton(button, 0, limit)) continue;
    std::fprintf(stderr, "No window with a button \"%ls\" came up.\n", button.c_str());
    return 1;
  }
  return 0;
}
