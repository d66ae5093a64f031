#include "tests/support/fake_chart.h"

#include <algorithm>

#include "spreadsheet/chart.h"

namespace mervane::tests {

using enum sheet::member::Id;
using sheet::Access;
using sheet::member::Id;

namespace {

using Properties = std::initializer_list<Id>;

std::shared_ptr<FakeObject> border() {
  return std::make_shared<FakeObject>(Properties{LineStyle, Weight, ColorIndex});
}
std::shared_ptr<FakeObject> interior() {
  return std::make_shared<FakeObject>(Properties{Pattern, PatternColorIndex, ColorIndex});
}
std::shared_ptr<FakeObject> font() {
  return std::make_shared<FakeObject>(Properties{Name, Size, FontStyle, Strikethrough, Superscript, Subscript,
                                                 OutlineFont, Shadow, Underline, ColorIndex, Background});
}

std::shared_ptr<FakeObject> area() {
  auto object = std::make_shared<FakeObject>(Properties{Left, Top, Width, Height});
  object->parts = {{Border, border()}, {Interior, interior()}};
  return object;
}

std::shared_ptr<FakeObject> axis(bool values) {
  auto object =
      std::make_shared<FakeObject>(Properties{Crosses, ReversePlotOrder, HasMajorGridlines, HasMinorGridlines});
  const std::vector<Id> own =
      values ? std::vector{MinorUnitIsAuto, MajorUnitIsAuto, ScaleType, DisplayUnit}
             : std::vector{TickMarkSpacing, TickLabelSpacing, BaseUnitIsAuto, AxisBetweenCategories};
  for (const Id id : own) object->values[id] = Variant();
  object->values[HasMajorGridlines] = Variant(true);
  if (!values) object->values[TickLabelSpacing] = Variant(std::int32_t{1});
  auto labels = std::make_shared<FakeObject>();
  labels->parts = {{Font, font()}};
  auto lines = std::make_shared<FakeObject>();
  lines->parts = {{Border, border()}};
  object->parts = {{TickLabels, labels}, {MajorGridlines, lines}};
  return object;
}

/// A chart as it stood when the reference was taken.
class ChartHandle final : public sheet::Object, public Named {
 public:
  explicit ChartHandle(std::shared_ptr<FakeChart> chart) : chart_(std::move(chart)), moves_(chart_->moves) {}
  Variant invoke(Access access, Id member, std::span<const Variant> arguments) override {
    if (moves_ != chart_->moves) raise(runtime::applicationDefined);
    return chart_->invoke(access, member, arguments);
  }
  [[nodiscard]] std::string name() const override { return chart_->label; }

 private:
  std::shared_ptr<FakeChart> chart_;
  int moves_;
};

}  // namespace

FakeSeries::FakeSeries(std::int32_t number, std::int32_t count)
    : FakeObject({Name, Formula, XValues, MarkerBackgroundColorIndex, MarkerForegroundColorIndex, Smooth, MarkerSize,
                  Shadow}) {
  label = "Series" + formatExact(number);
  values[Name] = Variant(label);
  values[Formula] = Variant("=SERIES()");
  parts = {{Border, border()}, {Interior, interior()}};
  for (std::int32_t i = 1; i <= count; ++i) {
    auto point = std::make_shared<FakeObject>(Properties{Shadow, InvertIfNegative});
    point->label = label + "Point" + formatExact(i);
    point->parts = {{Border, border()}, {Interior, interior()}};
    points.push_back(std::move(point));
  }
  auto collection = std::make_shared<FakeObject>();
  collection->handlers[NewEnum] = [this](Access, std::span<const Variant>) {
    return asValue(std::make_shared<FakeEnumerator>(std::vector<sheet::ObjectRef>(points.begin(), points.end())));
  };
  parts[Points] = collection;
}

FakeChart::FakeChart(std::string name) : FakeObject({ChartType}), categoryAxis(axis(false)), valueAxis(axis(true)) {
  label = std::move(name);
  parts = {{ChartArea, area()}, {PlotArea, area()}};
  parts[ChartArea]->values[Width] = Variant(width);
  parts[ChartArea]->values[Height] = Variant(height);
  handlers[HasTitle] = [this](Access access, std::span<const Variant> arguments) {
    if (access == Access::put) hasPart(HasTitle, ChartTitle, toBoolean(arguments.back(), englishLocale()));
    return Variant(parts.contains(ChartTitle));
  };
  handlers[HasLegend] = [this](Access access, std::span<const Variant> arguments) {
    if (access == Access::put) hasPart(HasLegend, Legend, toBoolean(arguments.back(), englishLocale()));
    return Variant(parts.contains(Legend));
  };
  handlers[ApplyDataLabels] = [this](Access, std::span<const Variant> arguments) {
    return values[ApplyDataLabels] = arguments.front();
  };
  handlers[Axes] = [this](Access, std::span<const Variant> arguments) {
    return asValue(number(arguments[0]) == sheet::axisCategory ? categoryAxis : valueAxis);
  };
  handlers[SeriesCollection] = [this](Access, std::span<const Variant> arguments) {
    return seriesCollection(arguments);
  };
  hasPart(HasLegend, Legend, true);
}

sheet::ObjectRef FakeChart::handle() {
  return std::make_shared<ChartHandle>(shared_from_this());
}

void FakeChart::setTitle(const std::optional<std::string>& text) {
  hasPart(HasTitle, ChartTitle, text.has_value());
  if (text) parts[ChartTitle]->values[Text] = Variant(*text);
}

std::string FakeChart::title() const {
  return parts.contains(ChartTitle) ? toText(at({ChartTitle, Text}), englishLocale()) : std::string();
}

void FakeChart::addSeries(std::int32_t points) {
  auto one = std::make_shared<FakeSeries>(static_cast<std::int32_t>(series.size()) + 1, points);
  if (formulasAreEmpty) one->values[Formula] = Variant("");
  one->handlers[Delete] = [this, which = one.get()](Access, std::span<const Variant>) {
    std::erase_if(series, [&](const auto& candidate) { return candidate.get() == which; });
    return Variant();
  };
  series.push_back(std::move(one));
}

Variant FakeChart::seriesCollection(std::span<const Variant> arguments) {
  if (!arguments.empty()) {
    const std::int32_t index = number(arguments[0]);
    if (index < 1 || index > static_cast<std::int32_t>(series.size())) raise(runtime::applicationDefined);
    return asValue(series[static_cast<std::size_t>(index - 1)]);
  }
  auto collection = std::make_shared<FakeObject>();
  collection->handlers[Count] = [this](Access, std::span<const Variant>) {
    return Variant(static_cast<std::int32_t>(series.size()));
  };
  collection->handlers[NewSeries] = [this](Access, std::span<const Variant>) {
    addSeries(0);
    return asValue(series.back());
  };
  collection->handlers[NewEnum] = [this](Access, std::span<const Variant>) {
    return asValue(std::make_shared<FakeEnumerator>(std::vector<sheet::ObjectRef>(series.begin(), series.end())));
  };
  return asValue(collection);
}

void FakeChart::hasPart(Id flag, Id part, bool on) {
  if (!on) {
    parts.erase(part);
  } else if (!parts.contains(part)) {
    auto object = std::make_shared<FakeObject>(Properties{Left, Top});
    const std::vector<Id> own =
        flag == HasTitle ? std::vector{Text, AutoScaleFont} : std::vector{Width, Height, Position, Shadow};
    for (const Id id : own) object->values[id] = Variant();
    object->parts = {{Font, font()}};
    if (flag == HasLegend) {
      object->parts[Border] = border();
      object->parts[Interior] = interior();
      object->values[Height] = Variant(20.0);
      object->values[Width] = Variant(80.0);
    }
    parts[part] = std::move(object);
  }
}

}  // namespace mervane::tests
