#pragma once
// CDirectionalString: a string with a text direction, and the splitting of
// mixed left-to-right and right-to-left text into runs of one direction (as
// caption and subtitle renderers need to lay out each run on its own).

#include "System/Text.h"

namespace Corvane::Mox {

enum class TextDirection : int { LeftToRight = 0, RightToLeft = 1 };

class CDirectionalString : public CString {
 public:
  CDirectionalString(const wchar_t* text, TextDirection direction);
  CDirectionalString(CString* text, TextDirection direction);
  CDirectionalString(const wchar_t* text, int count, TextDirection direction);

  TextDirection GetTextDirection() const { return direction_; }
  void SetTextDirection(TextDirection direction) { direction_ = direction; }

  // The text cut into maximal runs of one direction, in order. Neutral
  // characters stay with the run they follow; leading neutral characters
  // take the direction of the first strong character. Null or empty text
  // gives an empty list. The caller owns the list.
  static CList<CDirectionalString>* GetBidiStrings(CString* text);

  static bool IsStrongLTRChar(wchar_t c);
  static bool IsStrongRTLChar(wchar_t c);
  static bool IsWeakDirectionalChar(wchar_t c);

 private:
  TextDirection direction_;
};

}  // namespace Corvane::Mox
