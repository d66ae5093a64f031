#include "hosts/workbook/styles.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "hosts/workbook/number_format.h"
#include "hosts/workbook/refuse.h"
#include "hosts/workbook/small_xml.h"
#include "spreadsheet/palette.h"

namespace mervane::workbook {

namespace {

/// What the application allows.
constexpr std::size_t mostFormats = 65490;
constexpr std::uint32_t firstCustomFormat = 164;

constexpr std::string_view emptyPart =
    R"(<styleSheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"><fonts count="1"><font><sz val="11"/><name val="Calibri"/><family val="2"/></font></fonts><fills count="2"><fill><patternFill patternType="none"/></fill><fill><patternFill patternType="gray125"/></fill></fills><borders count="1"><border><left/><right/><top/><bottom/><diagonal/></border></borders><cellStyleXfs count="1"><xf numFmtId="0" fontId="0" fillId="0" borderId="0"/></cellStyleXfs><cellXfs count="1"><xf numFmtId="0" fontId="0" fillId="0" borderId="0" xfId="0"/></cellXfs></styleSheet>)";

/// The lists of the part in the order of the format.
constexpr std::array<std::string_view, 11> order{"numFmts",      "fonts",   "fills",      "borders",
                                                 "cellStyleXfs", "cellXfs", "cellStyles", "dxfs",
                                                 "tableStyles",  "colors",  "extLst"};

std::size_t rank(std::string_view name) {
  return static_cast<std::size_t>(std::find(order.begin(), order.end(), name) - order.begin());
}

std::uint32_t reference(const pugi::xml_node& node, const char* attribute) {
  return static_cast<std::uint32_t>(std::max(wholeNumber(node.attribute(attribute), 0), 0));
}

void setAttribute(pugi::xml_node node, const char* name, const std::string& value) {
  pugi::xml_attribute attribute = node.attribute(name);
  if (!attribute) attribute = node.append_attribute(name);
  attribute = value.c_str();
}

ColorName readColor(const pugi::xml_node& node) {
  ColorName color;
  if (!node) return color;
  if (const pugi::xml_attribute rgb = node.attribute("rgb")) {
    const std::string_view text = rgb.value();
    std::uint32_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value, 16);
    return {ColorName::Kind::rgb, value & 0xFFFFFFU};
  }
  if (node.attribute("theme")) return {ColorName::Kind::theme, reference(node, "theme")};
  if (node.attribute("indexed")) {
    const std::uint32_t number = reference(node, "indexed");
    if (number == 64 || number == 65) return {ColorName::Kind::automatic, number};
    return {ColorName::Kind::indexed, number};
  }
  if (isTrue(node.attribute("auto"))) return {ColorName::Kind::automatic, 64};
  return color;
}

constexpr std::array<const char*, 4> sideNames{"left", "right", "top", "bottom"};

pugi::xml_node sideNode(const pugi::xml_node& border, Side side) {
  const pugi::xml_node node = childNamed(border, sideNames[static_cast<std::size_t>(side)]);
  if (node) return node;
  if (side == Side::left) return childNamed(border, "start");
  if (side == Side::right) return childNamed(border, "end");
  return {};
}

/// The indexed colours of a whole palette: the first eight twice.
constexpr std::size_t wholePalette = 64;

/// The colour of an indexed colour where the workbook has no palette of its own.
std::uint32_t usualColor(std::uint32_t number) {
  const std::uint32_t index = number < 8 ? number + 1 : number - 7;
  if (index < 1 || index > static_cast<std::uint32_t>(sheet::paletteSize)) return 0;
  return sheet::paletteColor(static_cast<std::int32_t>(index));
}

}  // namespace

std::uint32_t Styles::List::add(std::string item) {
  const auto found = numbers.find(item);
  if (found != numbers.end()) return found->second;
  const auto number = static_cast<std::uint32_t>(items.size());
  numbers.emplace(item, number);
  items.push_back(std::move(item));
  return number;
}

void Styles::List::read(const pugi::xml_node& list) {
  for (const pugi::xml_node& node : list) {
    if (node.type() != pugi::node_element) continue;
    items.push_back(printFragment(node));
    numbers.emplace(items.back(), static_cast<std::uint32_t>(items.size() - 1));
  }
  original = items.size();
}

void Styles::List::beginSave() {
  assigned.clear();
  news.clear();
}

std::uint32_t Styles::List::assign(std::uint32_t number) {
  // A number that the file refers to without having it stays as it is.
  if (number < original || number >= items.size()) return number;
  if (const auto known = assigned.find(number); known != assigned.end()) return known->second;
  const auto next = static_cast<std::uint32_t>(original + news.size());
  assigned.emplace(number, next);
  news.push_back(number);
  return next;
}

void Styles::load(std::string_view content, std::string_view partName) {
  loadXml(document_, content.empty() ? emptyPart : content, partName);
  const pugi::xml_node root = document_.document_element();
  prefix_ = prefixOf(root);
  if (localName(root) != "styleSheet") {
    refuse("The part \"" + std::string(partName) +
           "\" holds no cell formats. Let the spreadsheet repair the file and save it anew.");
  }
  fonts_.read(childNamed(root, "fonts"));
  fills_.read(childNamed(root, "fills"));
  borders_.read(childNamed(root, "borders"));
  formats_.read(childNamed(root, "cellXfs"));
  for (const pugi::xml_node& node : childNamed(root, "numFmts")) {
    if (localName(node) == "numFmt") {
      numberFormats_[wholeNumber(node.attribute("numFmtId"), 0)] = node.attribute("formatCode").value();
    }
  }
  for (const pugi::xml_node& node : childNamed(childNamed(root, "colors"), "indexedColors")) {
    if (node.type() == pugi::node_element) palette_.push_back(readColor(node).value);
  }
  if (formats_.items.empty()) {
    // A list without formats counts as one with the plain format.
    formats_.add("<" + tag("xf") + " numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/>");
    formats_.original = 1;
  }
}

const Styles::Facts& Styles::makeFacts(std::uint32_t style) const {
  if (style >= facts_.size()) facts_.resize(std::max<std::size_t>(formats_.items.size(), style + std::size_t{1}));
  facts_[style] = std::make_unique<Facts>(readFacts(style));
  return *facts_[style];
}

Styles::Facts Styles::readFacts(std::uint32_t style) const {
  Facts facts;
  pugi::xml_document document;
  const auto load = [&](const List& list, std::uint32_t number) {
    document.reset();
    if (number < list.items.size()) loadXml(document, list.items[number], "styles");
    return document.document_element();
  };
  const pugi::xml_node format = load(formats_, style);
  const std::int32_t numberFormat = wholeNumber(format.attribute("numFmtId"), 0);
  const std::uint32_t font = reference(format, "fontId");
  const std::uint32_t fill = reference(format, "fillId");
  const std::uint32_t border = reference(format, "borderId");
  facts.isLocked = isTrue(childNamed(format, "protection").attribute("locked"), true);
  const auto custom = numberFormats_.find(numberFormat);
  facts.numberFormat = custom != numberFormats_.end() ? custom->second : std::string(builtInFormat(numberFormat));
  facts.hasTextMark = isTrue(format.attribute("quotePrefix")) || facts.numberFormat == "@";
  facts.isDate = isDateFormat(custom != numberFormats_.end() ? 1000 : numberFormat, facts.numberFormat);

  const pugi::xml_node fontNode = load(fonts_, font);
  const pugi::xml_node bold = childNamed(fontNode, "b");
  facts.isBold = bold && isTrue(bold.attribute("val"), true);
  facts.fontName = childNamed(fontNode, "name").attribute("val").value();
  if (facts.fontName.empty()) facts.fontName = "Calibri";
  facts.fontSize = realNumber(childNamed(fontNode, "sz").attribute("val"), 11.0);

  const pugi::xml_node fillNode = load(fills_, fill);
  if (childNamed(fillNode, "gradientFill")) {
    facts.fill.pattern = "gradient";
  } else if (const pugi::xml_node pattern = childNamed(fillNode, "patternFill")) {
    const std::string_view word = pattern.attribute("patternType").value();
    facts.fill.pattern = word.empty() ? "none" : std::string(word);
    facts.fill.fore = readColor(childNamed(pattern, "fgColor"));
    facts.fill.back = readColor(childNamed(pattern, "bgColor"));
  }

  const pugi::xml_node borderNode = load(borders_, border);
  for (std::size_t side = 0; side < 4; ++side) {
    const pugi::xml_node line = sideNode(borderNode, static_cast<Side>(side));
    const std::string_view word = line.attribute("style").value();
    if (!word.empty()) facts.lines[side] = {std::string(word), readColor(childNamed(line, "color"))};
  }
  return facts;
}

const LineFormat& Styles::line(std::uint32_t style, Side side) const {
  return facts(style).lines[static_cast<std::size_t>(side)];
}

std::uint32_t Styles::indexedColor(std::uint32_t number) const {
  return number < palette_.size() ? palette_[number] : usualColor(number);
}

bool Styles::hasUsualColor(std::uint32_t number) const {
  if (palette_.empty()) return true;
  return palette_.size() >= wholePalette && number < palette_.size() && palette_[number] == usualColor(number);
}

std::uint32_t Styles::withPart(std::uint32_t style, const char* attribute, const char* applied, std::uint32_t value) {
  pugi::xml_document document;
  loadXml(document, formats_.items[style], "styles");
  const pugi::xml_node node = document.document_element();
  if (reference(node, attribute) == value && node.attribute(attribute)) return style;
  setAttribute(node, attribute, std::to_string(value));
  setAttribute(node, applied, "1");
  const std::uint32_t number = formats_.add(printFragment(node));
  if (formats_.items.size() > mostFormats * 4) {
    refuse("The workbook would need too many different cell formats.");
  }
  return number;
}

std::uint32_t Styles::withBold(std::uint32_t style, bool bold) {
  if (isBold(style) == bold) return style;
  pugi::xml_document document;
  loadXml(document, formats_.items[style], "styles");
  const std::uint32_t font = reference(document.document_element(), "fontId");
  document.reset();
  loadXml(document, font < fonts_.items.size() ? fonts_.items[font] : "<" + tag("font") + "/>", "styles");
  pugi::xml_node node = document.document_element();
  while (pugi::xml_node old = childNamed(node, "b")) node.remove_child(old);
  if (bold) node.prepend_child(tag("b").c_str());
  return withPart(style, "fontId", "applyFont", fonts_.add(printFragment(node)));
}

std::uint32_t Styles::withNumberFormat(std::uint32_t style, std::string_view code) {
  if (numberFormat(style) == code) return style;
  std::int32_t number = builtInNumber(code);
  if (number < 0) {
    for (const auto& [one, text] : numberFormats_) {
      if (text == code) number = one;
    }
    if (number < 0) {
      // Files may have numbers up to the largest, so the first free one is taken and not the one behind the last.
      number = firstCustomFormat;
      while (numberFormats_.count(number) != 0) ++number;
      numberFormats_[number] = code;
      newNumberFormats_.push_back(number);
    }
  }
  return withPart(style, "numFmtId", "applyNumberFormat", static_cast<std::uint32_t>(number));
}

void Styles::writeColor(pugi::xml_node parent, const char* name, const ColorName& color) const {
  if (color.kind == ColorName::Kind::none) return;
  pugi::xml_node node = parent.append_child(tag(name).c_str());
  switch (color.kind) {
    case ColorName::Kind::none:
      break;
    case ColorName::Kind::automatic:
    case ColorName::Kind::indexed:
      node.append_attribute("indexed") = color.value;
      break;
    case ColorName::Kind::theme:
      node.append_attribute("theme") = color.value;
      break;
    case ColorName::Kind::rgb: {
      std::array<char, 9> text{};
      std::uint32_t value = 0xFF000000U | color.value;
      for (std::size_t i = 8; i-- > 0; value >>= 4) text[i] = "0123456789ABCDEF"[value & 15U];
      node.append_attribute("rgb") = text.data();
      break;
    }
  }
}

std::uint32_t Styles::withFill(std::uint32_t style, const FillFormat& fill) {
  // OPTIMIZATION: every coloured row asks for one of a few changes.
  FillChange change{style, fill};
  if (const auto known = filled_.find(change); known != filled_.end()) return known->second;
  pugi::xml_document document;
  pugi::xml_node pattern = document.append_child(tag("fill").c_str()).append_child(tag("patternFill").c_str());
  pattern.append_attribute("patternType") = fill.pattern.c_str();
  writeColor(pattern, "fgColor", fill.fore);
  writeColor(pattern, "bgColor", fill.back);
  const std::uint32_t filled =
      withPart(style, "fillId", "applyFill", fills_.add(printFragment(document.document_element())));
  filled_.emplace(std::move(change), filled);
  return filled;
}

std::uint32_t Styles::withLine(std::uint32_t style, Side side, const LineFormat& line) {
  pugi::xml_document document;
  loadXml(document, formats_.items[style], "styles");
  const std::uint32_t border = reference(document.document_element(), "borderId");
  document.reset();
  loadXml(document, border < borders_.items.size() ? borders_.items[border] : "<" + tag("border") + "/>", "styles");
  const pugi::xml_node root = document.document_element();
  pugi::xml_node node = sideNode(root, side);
  if (!node) {
    // The four sides come first, in the order of their names here.
    pugi::xml_node before;
    for (std::size_t later = static_cast<std::size_t>(side) + 1; later < 4 && !before; ++later) {
      before = sideNode(root, static_cast<Side>(later));
    }
    if (!before) before = childNamed(root, "diagonal");
    const std::string name = tag(sideNames[static_cast<std::size_t>(side)]);
    node = before ? document.document_element().insert_child_before(name.c_str(), before)
                  : document.document_element().append_child(name.c_str());
  }
  node.remove_children();
  node.remove_attributes();
  if (line.style != "none") {
    node.append_attribute("style") = line.style.c_str();
    writeColor(node, "color", line.color);
  }
  return withPart(style, "borderId", "applyBorder", borders_.add(printFragment(root)));
}

void Styles::beginSave() {
  for (List* list : {&formats_, &fonts_, &fills_, &borders_}) list->beginSave();
  newFormats_.clear();
}

std::uint32_t Styles::assignFormat(std::uint32_t style) {
  const std::size_t before = formats_.news.size();
  const std::uint32_t number = formats_.assign(style);
  if (formats_.news.size() != before) {
    if (formats_.original + formats_.news.size() > mostFormats) {
      refuse("The workbook would have more different cell formats than the spreadsheet allows.");
    }
    newFormats_.push_back(style);
    pugi::xml_document document;
    loadXml(document, formats_.items[style], "styles");
    const pugi::xml_node node = document.document_element();
    static_cast<void>(fonts_.assign(reference(node, "fontId")));
    static_cast<void>(fills_.assign(reference(node, "fillId")));
    static_cast<void>(borders_.assign(reference(node, "borderId")));
  }
  return number;
}

void Styles::appendNews(const pugi::xml_node& list, const List& from) const {
  pugi::xml_node parent = list;
  for (const std::uint32_t number : from.news) {
    pugi::xml_document item;
    loadXml(item, from.items[number], "styles");
    parent.append_copy(item.document_element());
  }
  setAttribute(parent, "count", std::to_string(from.original + from.news.size()));
}

std::string Styles::print() const {
  pugi::xml_document copy;
  copy.reset(document_);
  pugi::xml_node root = copy.document_element();
  const auto list = [&](std::string_view name) {
    pugi::xml_node found = childNamed(root, name);
    if (found) return found;
    for (const pugi::xml_node& child : root) {
      if (child.type() == pugi::node_element && rank(localName(child)) > rank(name)) {
        return root.insert_child_before(tag(name).c_str(), child);
      }
    }
    return root.append_child(tag(name).c_str());
  };
  if (!fonts_.news.empty()) appendNews(list("fonts"), fonts_);
  if (!fills_.news.empty()) appendNews(list("fills"), fills_);
  if (!borders_.news.empty()) appendNews(list("borders"), borders_);
  pugi::xml_node formats = list("cellXfs");
  if (!formats.first_child()) {
    pugi::xml_document plain;
    loadXml(plain, formats_.items[0], "styles");
    formats.append_copy(plain.document_element());
  }
  std::vector<std::int32_t> usedNumberFormats;
  for (const std::uint32_t number : formats_.news) {
    pugi::xml_document item;
    loadXml(item, formats_.items[number], "styles");
    pugi::xml_node node = formats.append_copy(item.document_element());
    const auto renumber = [&](const char* attribute, const List& from) {
      const auto found = from.assigned.find(reference(node, attribute));
      if (found != from.assigned.end()) setAttribute(node, attribute, std::to_string(found->second));
    };
    renumber("fontId", fonts_);
    renumber("fillId", fills_);
    renumber("borderId", borders_);
    usedNumberFormats.push_back(wholeNumber(node.attribute("numFmtId"), 0));
  }
  setAttribute(formats, "count", std::to_string(std::max<std::size_t>(formats_.original, 1) + formats_.news.size()));
  for (const std::int32_t number : newNumberFormats_) {
    if (std::find(usedNumberFormats.begin(), usedNumberFormats.end(), number) == usedNumberFormats.end()) continue;
    pugi::xml_node codes = list("numFmts");
    pugi::xml_node node = codes.append_child(tag("numFmt").c_str());
    node.append_attribute("numFmtId") = number;
    node.append_attribute("formatCode") = numberFormats_.at(number).c_str();
    setAttribute(codes, "count", std::to_string(std::distance(codes.begin(), codes.end())));
  }
  return printXml(copy);
}

}  // namespace mervane::workbook
