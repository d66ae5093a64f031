#include <cmath>
#include <span>

#include "mervane/convert.h"
#include "tests/conformance/conformance_checks.h"

namespace mervane::tests {

namespace member = sheet::member;

namespace {

bool isLength(member::Id id) {
  return id == member::Left || id == member::Top || id == member::Width || id == member::Height;
}

bool isNumber(const Variant& value) {
  switch (value.kind()) {
    case Variant::Kind::int16:
    case Variant::Kind::int32:
    case Variant::Kind::single:
    case Variant::Kind::real:
    case Variant::Kind::boolean:
      return true;
    default:
      return false;
  }
}

/// Applications keep a truth as a number here and there, and a whole number as a long or as a double.
bool isSame(const Variant& shown, const Variant& value, double tolerance) {
  if (!isNumber(shown) || !isNumber(value)) return shown == value;
  if (value.kind() == Variant::Kind::boolean) {
    return toBoolean(shown, englishLocale()) == toBoolean(value, englishLocale());
  }
  return std::abs(toDouble(shown, englishLocale()) - toDouble(value, englishLocale())) <= tolerance;
}

std::string text(const Variant& value) {
  return value.isObject() || value.isArray() ? "(no plain value)" : toText(value, englishLocale());
}

}  // namespace

std::vector<MadeSheet> conformanceSheets() {
  const MadeCell none;
  return {{"Sheet1",
           {{"Name", "Length", "Width", none, "Kinds"},
            {"a", 1.0, 10.0, none, true},
            {"b", 9.0, 90.0, none, Date{45000.0}},
            {"c", 2.0, 20.0, none, ErrorValue{2042}},
            {"d", 8.0, 80.0, none, MadeCell("=B2+C2", Variant(11.0))},
            {"e", 5.0, 50.0, none, "\xC5\xBDlu\xC5\xA5 \xE8\xA1\xA8"}}},
          {"Second's", {{42.0}}}};
}

std::vector<Variant> Walk::values(const std::string& reference) {
  std::vector<Variant> found;
  sheet::forEach<sheet::Range>(range(reference).Cells(),
                               [&](const sheet::Range& cell) { found.push_back(cell.Value()); });
  return found;
}

void Walk::expectShown(const sheet::Proxy& object, member::Id member, const Variant& value) {
  const Variant now = shown(object, member);
  EXPECT_TRUE(isSame(now, value, isLength(member) ? tolerance() : 0.0))
      << sheet::nameOf(member) << " is " << text(now) << " and not " << text(value);
}

void Walk::expectAssignable(const sheet::Proxy& object, const std::string& className,
                            const std::vector<Property>& properties) {
  for (const Property& property : properties) {
    for (const Variant& value : property.values) {
      SCOPED_TRACE(className + "." + std::string(sheet::nameOf(property.member)) + " = " + text(value));
      const auto assign = [&] {
        static_cast<void>(object.object()->invoke(sheet::Access::put, property.member, {&value, 1}));
      };
      if (host_->lacks(className, property.member)) {
        expectRefusal(assign);
        continue;
      }
      const std::optional<Failure> failure = failureOf(assign);
      EXPECT_FALSE(failure.has_value()) << failure->description();
      if (!failure) expectShown(object, property.member, value);
    }
  }
}

sheet::Chart Walk::embeddedChart(const std::string& source, std::int32_t type, std::int32_t plotBy) {
  const sheet::Application excel = application();
  static_cast<void>(excel.Charts().Add());
  excel.ActiveChart().ChartType(type);
  excel.ActiveChart().Location(sheet::locationAsObject, activeSheet().Name());
  const sheet::Chart chart = excel.ActiveChart();
  chart.SetSourceData(range(source), plotBy);
  sheet::Shape last;
  sheet::forEach<sheet::Shape>(activeSheet().Shapes(), [&](const sheet::Shape& shape) { last = shape; });
  last.Width(350.0);
  last.Height(200.0);
  return chart;
}

}  // namespace mervane::tests
