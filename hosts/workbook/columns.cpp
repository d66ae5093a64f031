#include "hosts/workbook/columns.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "hosts/workbook/cell_address.h"
#include "hosts/workbook/refuse.h"
#include "hosts/workbook/sheet_frame.h"
#include "hosts/workbook/small_xml.h"

namespace mervane::workbook {

namespace {

void attribute(std::string& to, std::string_view name, std::string_view value) {
  to += ' ';
  to += name;
  to += "=\"";
  appendEscaped(to, value);
  to += '"';
}

std::string shortest(double value) {
  std::array<char, 32> text{};
  const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc{} ? std::string(text.data(), end) : "0";
}

}  // namespace

void Columns::load(const SheetFrame& frame, std::size_t formatCount, const std::string& part) {
  pugi::xml_document document;
  if (!frame.load("cols", document)) return;
  for (const pugi::xml_node& node : document.document_element()) {
    if (localName(node) != "col") continue;
    Span span;
    for (const pugi::xml_attribute& one : node.attributes()) {
      const std::string_view name = one.name();
      if (name == "min") {
        span.first = wholeNumber(one, 1);
      } else if (name == "max") {
        span.last = wholeNumber(one, 1);
      } else if (name == "width") {
        span.width = realNumber(one, -1.0);
      } else if (name == "style") {
        span.style = static_cast<std::uint32_t>(std::max(wholeNumber(one, 0), 0));
      } else if (name == "hidden") {
        span.hidden = isTrue(one);
      } else {
        span.others.emplace_back(name, one.value());
      }
    }
    span.first = std::clamp(span.first, 1, lastSheetColumn);
    span.last = std::clamp(span.last, span.first, lastSheetColumn);
    if (span.style >= formatCount) {
      refuseDamaged(part, "column " + sheet::columnLetters(span.first),
                    "the cell format \"" + std::to_string(span.style) + "\" does not exist");
    }
    spans_.push_back(std::move(span));
  }
  std::stable_sort(spans_.begin(), spans_.end(), [](const Span& a, const Span& b) { return a.first < b.first; });
}

const Columns::Span* Columns::find(std::int32_t column) const noexcept {
  auto after = std::upper_bound(spans_.begin(), spans_.end(), column,
                                [](std::int32_t wanted, const Span& one) { return wanted < one.first; });
  if (after == spans_.begin()) return nullptr;
  --after;
  return column <= after->last ? &*after : nullptr;
}

void Columns::setFittedWidth(std::int32_t column, double width) {
  changed_ = true;
  const auto set = [&](Span& span) {
    span.width = width;
    span.hidden = false;
    std::erase_if(span.others, [](const auto& one) { return one.first == "customWidth" || one.first == "bestFit"; });
    span.others.emplace_back("bestFit", "1");
    span.others.emplace_back("customWidth", "1");
  };
  for (std::size_t i = 0; i < spans_.size(); ++i) {
    if (column < spans_[i].first || column > spans_[i].last) continue;
    // The span is cut into what lies before the column, the column, and what lies behind it.
    Span before = spans_[i];
    Span after = spans_[i];
    before.last = column - 1;
    after.first = column + 1;
    spans_[i].first = spans_[i].last = column;
    set(spans_[i]);
    if (after.first <= after.last) spans_.insert(spans_.begin() + static_cast<std::ptrdiff_t>(i) + 1, std::move(after));
    if (before.first <= before.last) spans_.insert(spans_.begin() + static_cast<std::ptrdiff_t>(i), std::move(before));
    return;
  }
  Span span;
  span.first = span.last = column;
  set(span);
  const auto place = std::upper_bound(spans_.begin(), spans_.end(), column,
                                      [](std::int32_t wanted, const Span& one) { return wanted < one.first; });
  spans_.insert(place, std::move(span));
}

std::string Columns::print(std::string_view prefix) const {
  std::string text = "<" + std::string(prefix) + "cols>";
  for (const Span& span : spans_) {
    text += "<" + std::string(prefix) + "col";
    attribute(text, "min", std::to_string(span.first));
    attribute(text, "max", std::to_string(span.last));
    if (span.width >= 0.0) attribute(text, "width", shortest(span.width));
    if (span.style != 0) attribute(text, "style", std::to_string(span.style));
    if (span.hidden) attribute(text, "hidden", "1");
    for (const auto& [name, value] : span.others) attribute(text, name, value);
    text += "/>";
  }
  return text + "</" + std::string(prefix) + "cols>";
}

}  // namespace mervane::workbook
