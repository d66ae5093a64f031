#pragma once

namespace mervane::cli {

/// How the program ends, as its manual promises it.
enum class ExitStatus : int {
  done = 0,
  dataRefused = 1,    ///< the input was read but cannot be clustered as asked
  usage = 2,          ///< the command line is wrong
  fileTrouble = 3,    ///< a file could not be opened, read or written
  engineFailure = 4,  ///< the run failed, or the program itself did
  interrupted = 130,
};

}  // namespace mervane::cli
