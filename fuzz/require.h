#pragma once

#include <cstdio>
#include <cstdlib>

/// Stops the target where a property does not hold, saying which and where.
#define MERVANE_REQUIRE(property)                                                          \
  do {                                                                                     \
    if (!(property)) {                                                                     \
      std::fprintf(stderr, "%s:%d: broken property: %s\n", __FILE__, __LINE__, #property); \
      std::abort();                                                                        \
    }                                                                                      \
  } while (false)
