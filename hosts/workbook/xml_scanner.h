#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace mervane::workbook {

/// Goes through the XML of a large part token by token, in a window that slides over it, so that the part is never in
/// memory as a whole. Tags are matched, attributes are checked as they are read, document types and encodings other
/// than UTF-8 and UTF-16 are refused; comments and processing instructions are passed over.
///
/// OPTIMIZATION: a general parser takes three times as long for a sheet of a million cells as unpacking it does; this
/// one takes half of that time. Views that it hands out hold until the next call of `next`.
class XmlScanner {
 public:
  enum class Token { startTag, endTag, text, end };
  /// Writes at most `size` bytes and answers how many, 0 at the end.
  using Source = std::function<std::size_t(char* bytes, std::size_t size)>;

  XmlScanner(Source source, std::string partName);

  /// An element without content gives a start tag and then an end tag. Text outside the root is passed over.
  Token next();
  /// Of the tag, with its prefix.
  [[nodiscard]] std::string_view name() const noexcept { return name_; }
  /// The raw attributes of the start tag; see nextAttribute.
  [[nodiscard]] std::string_view attributes() const noexcept { return attributes_; }
  /// Number of elements that are open; a start tag counts itself, an end tag does not.
  [[nodiscard]] std::size_t depth() const noexcept { return depths_.size(); }
  /// The text as written; see appendText.
  [[nodiscard]] std::string_view rawText() const noexcept { return text_; }
  /// Appends the text with its references resolved.
  void appendText(std::string& to) const;

  /// Takes the first attribute off the rest; false at the end. Refuses what is no attribute.
  bool nextAttribute(std::string_view& rest, std::string_view& name, std::string_view& rawValue) const;
  /// A raw attribute value with its references resolved.
  [[nodiscard]] std::string resolved(std::string_view raw) const;

  /// Passes over the rest of the element whose start tag was the last token.
  void skipElement();

  /// Keeps the bytes from the end of the current token on, until they are taken.
  void beginCapture();
  /// The bytes kept, up to the begin or the end of the current token; capturing ends.
  [[nodiscard]] std::string takeCapture(bool withToken);

  /// Raises applicationDefined, naming the part.
  [[noreturn]] void malformed(std::string_view what) const;

 private:
  bool refill();
  std::size_t find(std::string_view what, std::size_t from);
  void scanText();
  void scanStartTag();
  void scanEndTag();
  bool scanDeclaration();
  void pop(std::string_view name);
  void checkBegin();
  void appendResolved(std::string& to, std::string_view raw) const;

  Source source_;
  std::string partName_;
  std::vector<char> window_;
  std::size_t tokenBegin_ = 0;
  std::size_t at_ = 0;   // end of the current token
  std::size_t end_ = 0;  // end of the bytes in the window
  bool sourceAtEnd_ = false;
  bool pendingEnd_ = false;
  bool rootSeen_ = false;
  bool isLiteral_ = false;  // the text is a literal section, without references

  std::string openNames_;
  std::vector<std::size_t> depths_;
  std::string_view name_;
  std::string_view attributes_;
  std::string_view text_;

  bool capturing_ = false;
  std::size_t captureFrom_ = 0;
  std::string captured_;
};

}  // namespace mervane::workbook
