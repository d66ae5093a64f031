#include <string>
#include <vector>

#include "cli/program.h"

int main(int count, char** arguments) {
  const std::vector<std::string> texts(arguments + (count > 0 ? 1 : 0), arguments + count);
  return static_cast<int>(mervane::cli::runProgram(texts));
}
