#pragma once

#include <cstdint>

namespace mervane {

/// An error number of the automation run time with its fixed text.
struct RuntimeError {
  std::int32_t number;
  const char* description;
};

/// What the automation run time itself raises: array access, conversions, empty references.
/// The numbers are those that automation clients see in the low word of 0x800A....
namespace runtime {
inline constexpr RuntimeError invalidProcedureCall{5, "Invalid procedure call or argument"};
inline constexpr RuntimeError overflow{6, "Overflow"};
inline constexpr RuntimeError outOfMemory{7, "Out of memory"};
inline constexpr RuntimeError subscriptOutOfRange{9, "Subscript out of range"};
inline constexpr RuntimeError divisionByZero{11, "Division by zero"};
inline constexpr RuntimeError typeMismatch{13, "Type mismatch"};
inline constexpr RuntimeError badFileNameOrNumber{52, "Bad file name or number"};
inline constexpr RuntimeError fileNotFound{53, "File not found"};
inline constexpr RuntimeError pathFileAccess{75, "Path/File access error"};
inline constexpr RuntimeError objectNotSet{91, "Object variable or With block variable not set"};
inline constexpr RuntimeError invalidUseOfNull{94, "Invalid use of Null"};
inline constexpr RuntimeError memberNotSupported{438, "Object doesn't support this property or method"};
inline constexpr RuntimeError argumentNotOptional{449, "Argument not optional"};
inline constexpr RuntimeError wrongArgumentCount{450, "Wrong number of arguments or invalid property assignment"};
inline constexpr RuntimeError applicationDefined{1004, "Application-defined or object-defined error"};
}  // namespace runtime

/// Raises the run-time error as a Failure without a source.
[[noreturn]] void raise(const RuntimeError& error);

}  // namespace mervane
