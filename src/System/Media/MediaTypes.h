#pragma once
// Small value types of the media model: a head/tail range, a width/height
// area and a rectangle of insets or positions.

namespace Corvane::Mox {

// Two values that bound something from both ends: a trim (units cut from the
// start and from the end), a pair of reference levels.
template <class T>
struct Range {
  T head;
  T tail;

  constexpr Range() : head(), tail() {}
  constexpr Range(T h, T t) : head(h), tail(t) {}
  friend constexpr bool operator==(const Range& a, const Range& b) { return a.head == b.head && a.tail == b.tail; }
};

template <class T>
struct Area {
  T width;
  T height;

  constexpr Area() : width(), height() {}
  constexpr Area(T w, T h) : width(w), height(h) {}
  constexpr bool IsEmpty() const { return width <= 0 || height <= 0; }
  friend constexpr bool operator==(const Area& a, const Area& b) { return a.width == b.width && a.height == b.height; }
};

// Left, right (the horizontal pair), then top, bottom (the vertical pair).
template <class T>
struct Rectangle {
  T left;
  T right;
  T top;
  T bottom;

  constexpr Rectangle() : left(), right(), top(), bottom() {}
  constexpr Rectangle(T l, T r, T t, T b) : left(l), right(r), top(t), bottom(b) {}
  friend constexpr bool operator==(const Rectangle& a, const Rectangle& b) {
    return a.left == b.left && a.right == b.right && a.top == b.top && a.bottom == b.bottom;
  }
};

}  // namespace Corvane::Mox
