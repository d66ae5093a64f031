#include "hosts/workbook/chart_service.h"

#include "hosts/charts/chart_object.h"
#include "hosts/charts/shape_objects.h"
#include "hosts/workbook/charts/chart_book.h"

namespace mervane::workbook {
namespace {

using charts::ChartBook;
using Collection = mervane::charts::DrawingCollectionObject;

class Service : public ChartService {
 public:
  explicit Service(ChartHost& host) : book_(std::make_shared<ChartBook>(host)) {}
  ~Service() override { book_->close(); }
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;

  sheet::ObjectRef charts() override { return std::make_shared<mervane::charts::ChartsObject>(book_); }

  sheet::ObjectRef activeChart() override {
    if (!book_->active()) return nullptr;
    return std::make_shared<mervane::charts::ChartObject>(book_, book_->active());
  }

  sheet::ObjectRef chartObjects(std::int32_t sheet) override {
    return std::make_shared<Collection>(book_, sheet, Collection::Elements::charts);
  }

  sheet::ObjectRef shapes(std::int32_t sheet) override {
    return std::make_shared<Collection>(book_, sheet, Collection::Elements::shapes);
  }

  mervane::charts::ChartStore& store() override { return *book_; }
  void write() override { book_->write(); }

 private:
  std::shared_ptr<ChartBook> book_;
};

}  // namespace

std::unique_ptr<ChartService> makeChartService(ChartHost& host) {
  return std::make_unique<Service>(host);
}

}  // namespace mervane::workbook
