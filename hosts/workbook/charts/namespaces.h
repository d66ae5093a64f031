#pragma once

namespace mervane::workbook::charts {

/// The addresses that drawing and chart parts name, in one of the format's two forms.
struct Namespaces {
  const char* chart;
  const char* drawing;  ///< of shapes, fills, lines and texts
  const char* sheetDrawing;
  const char* relations;
};

inline constexpr Namespaces transitionalNamespaces{
    "http://schemas.openxmlformats.org/drawingml/2006/chart",
    "http://schemas.openxmlformats.org/drawingml/2006/main",
    "http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing",
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships",
};

inline constexpr Namespaces strictNamespaces{
    "http://purl.oclc.org/ooxml/drawingml/chart",
    "http://purl.oclc.org/ooxml/drawingml/main",
    "http://purl.oclc.org/ooxml/drawingml/spreadsheetDrawing",
    "http://purl.oclc.org/ooxml/officeDocument/relationships",
};

[[nodiscard]] constexpr const Namespaces& namespacesOf(bool strict) noexcept {
  return strict ? strictNamespaces : transitionalNamespaces;
}

inline constexpr const char* chartContentType = "application/vnd.openxmlformats-officedocument.drawingml.chart+xml";
inline constexpr const char* drawingContentType = "application/vnd.openxmlformats-officedocument.drawing+xml";

}  // namespace mervane::workbook::charts
