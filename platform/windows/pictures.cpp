#include "platform/windows/pictures.h"

#include <array>
#include <cstdint>

namespace mervane::windows {
namespace {

constexpr COLORREF green = RGB(46, 125, 50);
constexpr COLORREF blue = RGB(21, 101, 192);
constexpr COLORREF red = RGB(198, 40, 40);
constexpr COLORREF amber = RGB(239, 142, 0);
constexpr COLORREF grey = RGB(96, 96, 96);

/// Draws in a grid of 16 by 16 laid over the square.
class Grid {
 public:
  Grid(HDC target, const RECT& square) : target_(target), square_(square) {}

  void dot(int x, int y, int radius, COLORREF colour) const {
    Tools tools(target_, colour, colour, 1);
    Ellipse(target_, at(x - radius), row(y - radius), at(x + radius), row(y + radius));
  }
  void ring(int x, int y, int radius, COLORREF colour) const {
    Tools tools(target_, colour, CLR_INVALID, pen());
    Ellipse(target_, at(x - radius), row(y - radius), at(x + radius), row(y + radius));
  }
  void line(int x1, int y1, int x2, int y2, COLORREF colour) const {
    Tools tools(target_, colour, CLR_INVALID, pen());
    MoveToEx(target_, at(x1), row(y1), nullptr);
    LineTo(target_, at(x2), row(y2));
  }
  void box(int x1, int y1, int x2, int y2, COLORREF colour) const {
    Tools tools(target_, colour, CLR_INVALID, pen());
    Rectangle(target_, at(x1), row(y1), at(x2), row(y2));
  }
  template <std::size_t Count>
  void shape(const std::array<POINT, Count>& corners, COLORREF colour) const {
    Tools tools(target_, colour, colour, 1);
    std::array<POINT, Count> placed{};
    for (std::size_t i = 0; i < Count; ++i) placed[i] = {at(corners[i].x), row(corners[i].y)};
    Polygon(target_, placed.data(), static_cast<int>(Count));
  }

 private:
  /// Pen and brush for one figure, put back behind it.
  class Tools {
   public:
    Tools(HDC target, COLORREF pen, COLORREF brush, int width)
        : target_(target),
          pen_(CreatePen(PS_SOLID, width, pen)),
          brush_(brush == CLR_INVALID ? static_cast<HBRUSH>(GetStockObject(NULL_BRUSH)) : CreateSolidBrush(brush)),
          oldPen_(SelectObject(target, pen_)),
          oldBrush_(SelectObject(target, brush_)) {}
    ~Tools() {
      SelectObject(target_, oldPen_);
      SelectObject(target_, oldBrush_);
      DeleteObject(pen_);
      DeleteObject(brush_);
    }
    Tools(const Tools&) = delete;
    Tools& operator=(const Tools&) = delete;

   private:
    HDC target_;
    HPEN pen_;
    HBRUSH brush_;
    HGDIOBJ oldPen_;
    HGDIOBJ oldBrush_;
  };

  [[nodiscard]] int at(long x) const { return square_.left + MulDiv(static_cast<int>(x), side(), 16); }
  [[nodiscard]] int row(long y) const { return square_.top + MulDiv(static_cast<int>(y), side(), 16); }
  [[nodiscard]] int side() const { return static_cast<int>(square_.right - square_.left); }
  [[nodiscard]] int pen() const { return side() >= 32 ? 3 : 2; }

  HDC target_;
  RECT square_;
};

}  // namespace

void drawPicture(HDC target, const std::string& key, const RECT& square) {
  const Grid grid(target, square);
  if (key == "classify") {  // three groups of rows
    grid.dot(4, 4, 3, green);
    grid.dot(12, 5, 3, amber);
    grid.dot(8, 12, 3, blue);
  } else if (key == "close" || key == "abort") {
    const COLORREF colour = key == "close" ? grey : red;
    grid.line(3, 3, 13, 13, colour);
    grid.line(13, 3, 3, 13, colour);
  } else if (key == "DEFAULTS" || key == "retry") {  // a circle that begins again
    const COLORREF colour = key == "retry" ? green : blue;
    grid.ring(8, 8, 5, colour);
    grid.shape(std::array<POINT, 3>{{{10, 1}, {15, 4}, {10, 7}}}, colour);
  } else if (key == "ignore") {  // past it
    grid.shape(std::array<POINT, 3>{{{2, 3}, {8, 8}, {2, 13}}}, blue);
    grid.shape(std::array<POINT, 3>{{{8, 3}, {14, 8}, {8, 13}}}, blue);
  } else if (key == "support") {  // a letter
    grid.box(1, 3, 15, 13, grey);
    grid.line(1, 3, 8, 9, grey);
    grid.line(8, 9, 15, 3, grey);
  } else if (key == "icon") {  // a warning
    grid.shape(std::array<POINT, 3>{{{8, 1}, {15, 14}, {1, 14}}}, amber);
    grid.line(8, 6, 8, 10, RGB(255, 255, 255));
    grid.dot(8, 12, 1, RGB(255, 255, 255));
  }
}

}  // namespace mervane::windows
