#pragma once

#include <com/sun/star/awt/Point.hpp>
#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <vector>

#include "calc/office.h"

namespace mervane::addin {

/// The charts of a sheet at one moment, each as the office stores it in files.
class ChartMemory {
 public:
  ChartMemory(const Office& office, uno::Reference<star::frame::XModel> document,
              const uno::Reference<star::sheet::XSpreadsheet>& sheet);

  /// Charts that have come since are taken away, and ones that have gone are made anew. What a chart that stayed looks
  /// like is not touched. The office records none of this; its own record of charts crashes it.
  void restore(const uno::Reference<star::sheet::XSpreadsheet>& sheet) const;

 private:
  struct Chart {
    /// What tells it from others: a chart that comes may get the stored name of one that has gone.
    uno::Reference<star::drawing::XShape> shape;
    rtl::OUString name;
    awt::Point place;
    awt::Size size;
    uno::Any anchor;
    uno::Any resizes;
    /// The chart's own file; empty where the office would not give it.
    uno::Sequence<sal_Int8> contents;
  };
  void makeAnew(const uno::Reference<star::sheet::XSpreadsheet>& sheet, const Chart& chart) const;

  Office office_;
  uno::Reference<star::frame::XModel> document_;
  std::vector<Chart> charts_;
};

}  // namespace mervane::addin
