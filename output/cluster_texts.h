#pragma once

#include <array>
#include <cstdint>
#include <string>

/// Texts and colours that several pieces of the output share.
namespace mervane::output {

/// Palette indexes of the clusters. Cluster k takes the entry at k modulo 16; the charts count in their own way.
inline constexpr std::array<std::int32_t, 16> clusterColors{35, 36, 50, 38, 39, 40, 10, 34,
                                                            16, 45, 41, 3,  5,  6,  14, 37};

/// "Cluster " followed by the number in decimal.
[[nodiscard]] inline std::string clusterName(std::int32_t cluster) {
  std::string digits;
  for (std::int32_t rest = cluster; rest != 0; rest /= 10) {
    digits.insert(digits.begin(), static_cast<char>('0' + rest % 10));
  }
  return "Cluster " + digits;
}

/// The titles of the two charts. They are all by which a later run knows its charts again.
inline constexpr const char* profilesTitle = "Clusters profiles";
inline constexpr const char* weightsTitle = "Clusters weights";

}  // namespace mervane::output
