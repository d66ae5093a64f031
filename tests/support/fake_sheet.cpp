#include "tests/support/fake_sheet.h"

#include <algorithm>

#include "mervane/letter_case.h"
#include "tests/support/fake_range.h"

namespace mervane::tests {

using enum sheet::member::Id;
using sheet::Access;
using sheet::member::Id;

namespace {

constexpr std::int32_t pictureType = 13;

using Arguments = std::span<const Variant>;

std::string textOf(const Variant& value) {
  return toText(value, englishLocale());
}

}  // namespace

FakeSheet::FakeSheet() {
  addWorksheet("Sheet1");
  makeApplication();
}

FakeSheet::~FakeSheet() {
  for (const auto& sheet : worksheets) {
    for (const auto& shape : sheet->shapes) {
      if (shape->chart) shape->chart->series.clear();
    }
  }
  if (activeChart) activeChart->series.clear();
}

FakeWorksheet& FakeSheet::addWorksheet(const std::string& name) {
  worksheets.push_back(std::make_shared<FakeWorksheet>());
  worksheets.back()->name = name;
  return *worksheets.back();
}

std::shared_ptr<FakeWorksheet> FakeSheet::find(const std::string& name) const {
  if (name.empty()) return worksheets.at(activeSheet);
  for (const auto& sheet : worksheets) {
    if (lowered(sheet->name) == lowered(name)) return sheet;
  }
  raise(runtime::subscriptOutOfRange);
}

FakeWorksheet& FakeSheet::worksheet(const std::string& name) {
  return *find(name);
}

FakeCell& FakeSheet::cell(const std::string& address) {
  const FakeRange::Place place = FakeRange::placeOf(address);
  return worksheet().cells[{place.row, place.column}];
}

void FakeSheet::fill(const std::string& address, const std::vector<std::vector<Variant>>& rows) {
  const FakeRange::Place place = FakeRange::placeOf(address);
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 0; column < rows[row].size(); ++column) {
      worksheet()
          .cells[{place.row + static_cast<std::int32_t>(row), place.column + static_cast<std::int32_t>(column)}]
          .value = rows[row][column];
    }
  }
}

std::vector<Variant> FakeSheet::values(const std::string& range) {
  const FakeRange::Place place = FakeRange::placeOf(range);
  std::vector<Variant> result;
  for (std::int32_t row = 0; row < place.rows; ++row) {
    for (std::int32_t column = 0; column < place.columns; ++column) {
      result.push_back(worksheet().cells[{place.row + row, place.column + column}].value);
    }
  }
  return result;
}

std::shared_ptr<FakeChart> FakeSheet::addChart(const std::optional<std::string>& title) {
  auto chart = std::make_shared<FakeChart>("Chart" + formatExact(++chartsMade_));
  chart->sheetName = worksheet().name;
  chart->setTitle(title);
  auto shape = std::make_shared<FakeShape>();
  shape->chart = chart;
  worksheet().shapes.push_back(shape);
  return chart;
}

void FakeSheet::addPicture() {
  worksheet().shapes.push_back(std::make_shared<FakeShape>());
}

std::vector<std::shared_ptr<FakeChart>> FakeSheet::charts() {
  std::vector<std::shared_ptr<FakeChart>> result;
  for (const auto& shape : worksheet().shapes) {
    if (shape->chart) result.push_back(shape->chart);
  }
  return result;
}

std::shared_ptr<FakeChart> FakeSheet::chart(const std::string& title) {
  return shape(title).chart;
}

FakeShape& FakeSheet::shape(const std::string& title) {
  for (const auto& shape : worksheet().shapes) {
    if (shape->chart && shape->chart->title() == title) return *shape;
  }
  raise(runtime::subscriptOutOfRange);
}

std::string FakeSheet::nameOf(const sheet::Object& object) {
  const auto* named = dynamic_cast<const Named*>(&object);
  return named == nullptr ? std::string() : named->name();
}

sheet::ObjectRef FakeSheet::rangeNamed(const std::string& reference, const std::shared_ptr<FakeWorksheet>& sheet) {
  const std::size_t mark = reference.rfind('!');
  if (mark == std::string::npos) return std::make_shared<FakeRange>(this, sheet, FakeRange::placeOf(reference));
  std::string name = reference.substr(0, mark);
  if (name.size() > 1 && name.front() == '\'' && name.back() == '\'') name = name.substr(1, name.size() - 2);
  return std::make_shared<FakeRange>(this, find(name), FakeRange::placeOf(reference.substr(mark + 1)));
}

void FakeSheet::makeApplication() {
  application_ = std::make_shared<FakeObject>();
  auto& on = application_->handlers;
  on[Range] = [this](Access, Arguments a) { return asValue(rangeNamed(textOf(a[0]), worksheets.at(activeSheet))); };
  on[ActiveSheet] = [this](Access, Arguments) { return asValue(worksheetObject(worksheets.at(activeSheet))); };
  on[ActiveChart] = [this](Access, Arguments) { return activeChart ? asValue(activeChart->handle()) : Variant(); };
  on[Version] = [this](Access, Arguments) { return version; };
  on[ReferenceStyle] = [this](Access, Arguments) { return Variant(referenceStyle); };
  on[ConvertFormula] = [this](Access, Arguments a) { return convertFormula(textOf(a[0])); };
  on[ScreenUpdating] = [this](Access, Arguments a) {
    screenUpdating.push_back(toBoolean(a[0], englishLocale()));
    return Variant();
  };
  on[Charts] = [this](Access, Arguments) {
    auto charts = std::make_shared<FakeObject>();
    charts->label = "Charts";
    charts->handlers[Add] = [this](Access, Arguments) { return asValue(newChart()); };
    return asValue(charts);
  };
  on[ActiveWorkbook] = [this](Access, Arguments) {
    auto workbook = std::make_shared<FakeObject>();
    workbook->handlers[ActiveSheet] = [this](Access, Arguments) {
      return asValue(worksheetObject(worksheets.at(activeSheet)));
    };
    workbook->handlers[Worksheets] = [this](Access, Arguments) {
      auto sheets = std::make_shared<FakeObject>();
      sheets->handlers[Count] = [this](Access, Arguments) {
        return Variant(static_cast<std::int32_t>(worksheets.size()));
      };
      sheets->handlers[Item] = [this](Access, Arguments a) {
        if (a[0].isText()) return asValue(worksheetObject(find(textOf(a[0]))));
        return asValue(worksheetObject(worksheets.at(static_cast<std::size_t>(number(a[0]) - 1))));
      };
      return asValue(sheets);
    };
    return asValue(workbook);
  };
}

sheet::ObjectRef FakeSheet::worksheetObject(const std::shared_ptr<FakeWorksheet>& sheet) {
  auto object = std::make_shared<FakeObject>();
  object->label = sheet->name;
  auto& on = object->handlers;
  on[Name] = [sheet](Access, Arguments) { return Variant(sheet->name); };
  on[Range] = [this, sheet](Access, Arguments a) { return asValue(rangeNamed(textOf(a[0]), sheet)); };
  on[AutoFilterMode] = [sheet](Access, Arguments) { return Variant(sheet->autoFilterMode); };
  on[ChartObjects] = [sheet](Access, Arguments) {
    auto charts = std::make_shared<FakeObject>();
    charts->handlers[NewEnum] = [sheet](Access, Arguments) {
      std::vector<sheet::ObjectRef> elements;
      for (const auto& shape : sheet->shapes) {
        if (!shape->chart) continue;
        auto element = std::make_shared<FakeObject>();
        element->label = "ChartObject of " + shape->chart->label;
        element->handlers[Chart] = [shape](Access, Arguments) { return asValue(shape->chart->handle()); };
        element->handlers[Delete] = [sheet, shape](Access, Arguments) {
          std::erase(sheet->shapes, shape);
          return Variant();
        };
        elements.push_back(std::move(element));
      }
      return asValue(std::make_shared<FakeEnumerator>(std::move(elements)));
    };
    return asValue(charts);
  };
  on[Shapes] = [this, sheet](Access, Arguments) {
    auto shapes = std::make_shared<FakeObject>();
    shapes->handlers[NewEnum] = [this, sheet](Access, Arguments) {
      std::vector<sheet::ObjectRef> elements;
      for (const auto& shape : sheet->shapes) elements.push_back(shapeObject(sheet, shape));
      return asValue(std::make_shared<FakeEnumerator>(std::move(elements)));
    };
    return asValue(shapes);
  };
  return object;
}

sheet::ObjectRef FakeSheet::shapeObject(const std::shared_ptr<FakeWorksheet>&,
                                        const std::shared_ptr<FakeShape>& shape) {
  auto object = std::make_shared<FakeObject>();
  object->label = shape->chart ? "Shape of " + shape->chart->label : "Picture";
  auto& on = object->handlers;
  on[Type] = [shape](Access, Arguments) { return Variant(shape->chart ? sheet::shapeTypeChart : pictureType); };
  on[DrawingObject] = [shape](Access, Arguments) {
    auto drawing = std::make_shared<FakeObject>();
    drawing->handlers[Chart] = [shape](Access, Arguments) {
      if (!shape->chart) raise(runtime::memberNotSupported);
      return asValue(shape->chart->handle());
    };
    return asValue(drawing);
  };
  const auto sets = [&](Id id, double FakeShape::*field) {
    on[id] = [shape, field](Access, Arguments a) {
      (*shape).*field = toDouble(a[0], englishLocale());
      return Variant();
    };
  };
  sets(Left, &FakeShape::left);
  sets(Top, &FakeShape::top);
  sets(Width, &FakeShape::width);
  sets(Height, &FakeShape::height);
  return object;
}

sheet::ObjectRef FakeSheet::newChart() {
  auto chart = std::make_shared<FakeChart>("Chart" + formatExact(++chartsMade_));
  chart->formulasAreEmpty = formulasAreEmpty;
  for (std::int32_t i = 0; i < guessedSeries; ++i) chart->addSeries(1);
  FakeChart* made = chart.get();
  chart->handlers[Location] = [this, made](Access, Arguments a) {
    // The old reference is dead from here on, as is every other that was taken before.
    made->sheetName = textOf(a[1]);
    ++made->moves;
    auto shape = std::make_shared<FakeShape>();
    shape->chart = made->shared_from_this();
    find(made->sheetName)->shapes.push_back(shape);
    return asValue(made->handle());
  };
  chart->handlers[SetSourceData] = [made](Access, Arguments a) {
    const auto& range = dynamic_cast<const FakeRange&>(*a[0].object());
    const bool byRows = number(a[1]) == sheet::plotByRows;
    made->source = range.name() + " by " + formatExact(number(a[1]));
    made->series.clear();
    const auto& place = range.place();
    for (std::int32_t i = 0; i < (byRows ? place.rows : place.columns); ++i) {
      made->addSeries(byRows ? place.columns : place.rows);
    }
    return Variant();
  };
  activeChart = chart;
  return chart->handle();
}

}  // namespace mervane::tests
