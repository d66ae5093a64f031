#include <cxxabi.h>

// This run time keeps the objects of a thread in memory that one thread-specific key frees at the thread's end, and
// calls their destructors through another key. Keys are served in the order in which they were made, and that is the
// order of first use: memory first. Destructors would then work on freed memory. A destructor that is registered
// before any other code of the program runs turns the order round.

// What the linker is told to look for, so that this object comes into every program.
extern "C" char mervaneThreadEndOrder;
char mervaneThreadEndOrder = 0;

namespace {

// At 32 bits destructors are called as members are, which the compiler finds odd outside a class.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wattributes"
void _GLIBCXX_CDTOR_CALLABI nothingToEnd(void* /*object*/) {}
#pragma GCC diagnostic pop

[[gnu::constructor(101)]] void destructorsComeFirst() {
  abi::__cxa_thread_atexit(&nothingToEnd, &mervaneThreadEndOrder, nullptr);
}

}  // namespace
