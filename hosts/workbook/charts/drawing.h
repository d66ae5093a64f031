#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "hosts/charts/chart_store.h"
#include "hosts/workbook/chart_service.h"
#include "hosts/workbook/charts/anchor.h"
#include "hosts/workbook/charts/model.h"
#include "hosts/workbook/package.h"

namespace mervane::workbook::charts {

/// One thing that lies in a worksheet, as the file has it.
struct FileItem : mervane::charts::DrawingItem {
  std::string xml;           ///< its anchor as the file has it; empty for a chart of our own
  Anchor anchor;             ///< as the file has it
  std::string chartPart;     ///< empty for a chart that was not written yet
  std::string relation;      ///< from the drawing to the chart part
  std::optional<Box> moved;  ///< where it was put; always set for a chart of our own
};

/// The drawing of one worksheet, whether it has a part already or not. Anchors that nobody moved or deleted, and
/// all else that the part holds, are kept byte for byte.
class Drawing {
 public:
  /// Reads the sheet's drawing. Raises where the part is damaged.
  Drawing(ChartHost& host, std::int32_t sheet);

  /// In drawing order, the topmost last.
  [[nodiscard]] const std::vector<std::shared_ptr<FileItem>>& items() const noexcept { return items_; }
  [[nodiscard]] std::shared_ptr<FileItem> itemOf(const Chart& chart) const;
  [[nodiscard]] Box boxOf(const FileItem& item) const;

  void add(const std::shared_ptr<Chart>& chart);
  void move(FileItem& item, const Box& box);
  void remove(const std::shared_ptr<FileItem>& item);

  /// Puts all changes into the package. Repeated, it writes the charts anew with the cells' values of that moment.
  void write();

 private:
  using Segment = std::variant<std::string, std::shared_ptr<FileItem>>;

  void read(const std::string& text);
  [[nodiscard]] std::shared_ptr<FileItem> readItem(const std::string& anchorText, const pugi::xml_node& anchor) const;
  void readGraphicFrame(FileItem& item, const pugi::xml_node& frame) const;
  void nameNewChart(Chart& chart) const;
  void writeCharts();
  void removeDeletedCharts();
  [[nodiscard]] bool holdsNothing() const;
  [[nodiscard]] std::string text() const;
  [[nodiscard]] std::string newAnchor(const FileItem& item, std::uint32_t id) const;

  ChartHost& host_;
  std::int32_t sheet_;
  std::string part_;      ///< empty while the sheet has no drawing
  std::string relation_;  ///< from the sheet to the drawing
  std::string head_;      ///< up to the end of the start tag
  std::string tail_;      ///< from the end tag on
  std::vector<Segment> segments_;
  std::vector<std::shared_ptr<FileItem>> items_;
  std::vector<std::shared_ptr<FileItem>> removed_;  ///< whose parts are still in the package
  std::uint32_t highestId_ = 1;                     ///< of the shapes that the part holds
  bool changed_ = false;
};

/// Removes a part with the parts that it alone refers to. Nothing happens while another part refers to it.
void removeWithSubParts(Package& package, const std::string& part);

}  // namespace mervane::workbook::charts
