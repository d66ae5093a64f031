#pragma once

// What automation_types.idl stands for in C++: the platform's own headers.
#include <oaidl.h>
