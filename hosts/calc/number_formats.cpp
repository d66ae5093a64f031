#include "hosts/calc/number_formats.h"

#include <chrono>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/util/Date.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XNumberFormatTypes.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>

#include "hosts/calc/session.h"

namespace mervane::calc {

namespace {

css::lang::Locale english() {
  return {"en", "US", rtl::OUString()};
}

/// The one that the user has chosen, or the machine's; numbers are shown with its signs.
css::lang::Locale ofTheOffice() {
  return {};
}

}  // namespace

uno::Reference<css::util::XNumberFormats> NumberFormats::formats() {
  if (!formats_.is()) {
    const uno::Reference<css::util::XNumberFormatsSupplier> supplier(session_.model(), uno::UNO_QUERY_THROW);
    formats_ = supplier->getNumberFormats();
  }
  return formats_;
}

NumberFormats::Kind NumberFormats::kindOf(sal_Int32 key) {
  const auto known = kinds_.find(key);
  if (known != kinds_.end()) return known->second;
  sal_Int16 type = 0;
  formats()->getByKey(key)->getPropertyValue("Type") >>= type;
  Kind kind = Kind::plain;
  if ((type & css::util::NumberFormat::DATETIME) != 0) kind = Kind::date;
  if ((type & css::util::NumberFormat::LOGICAL) != 0) kind = Kind::truth;
  kinds_.emplace(key, kind);
  return kind;
}

sal_Int32 NumberFormats::keyOf(const std::string& code) {
  const auto known = keys_.find(code);
  if (known != keys_.end()) return known->second;
  sal_Int32 key = -1;
  try {
    const rtl::OUString text = toOffice(code);
    key = formats()->queryKey(text, english(), false);
    if (key < 0) {
      key = formats()->addNewConverted(text, english(), ofTheOffice());
    } else {
      const uno::Reference<css::util::XNumberFormatTypes> types(formats(), uno::UNO_QUERY_THROW);
      key = types->getFormatForLocale(key, ofTheOffice());
    }
  } catch (const css::lang::DisposedException&) {
    throw;
  } catch (const uno::Exception&) {
    refuse("\"" + code + "\" is no number format.");
  }
  keys_.emplace(code, key);
  codes_.emplace(key, code);
  return key;
}

std::string NumberFormats::codeOf(sal_Int32 key) {
  // The object model knows no format for truth values; they show as such in the plain one.
  if (kindOf(key) == Kind::truth) return "General";
  const auto known = codes_.find(key);
  if (known != codes_.end()) return known->second;
  rtl::OUString code;
  const uno::Reference<css::util::XNumberFormatTypes> types(formats(), uno::UNO_QUERY_THROW);
  formats()->getByKey(types->getFormatForLocale(key, english()))->getPropertyValue("FormatString") >>= code;
  std::string text = fromOffice(code);
  codes_.emplace(key, text);
  return text;
}

sal_Int32 NumberFormats::truthKey() {
  const uno::Reference<css::util::XNumberFormatTypes> types(formats(), uno::UNO_QUERY_THROW);
  return types->getStandardFormat(css::util::NumberFormat::LOGICAL, english());
}

double NumberFormats::daysBehind() {
  css::util::Date zero;
  const uno::Reference<css::beans::XPropertySet> properties(session_.model(), uno::UNO_QUERY_THROW);
  if (!(properties->getPropertyValue("NullDate") >>= zero)) return 0.0;
  const auto days = [](int year, unsigned month, unsigned day) {
    return std::chrono::sys_days(
               std::chrono::year_month_day(std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)))
        .time_since_epoch()
        .count();
  };
  return static_cast<double>(days(zero.Year, zero.Month, zero.Day) - days(1899, 12, 30));
}

}  // namespace mervane::calc
