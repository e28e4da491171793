#include "FourCharacterCode.h"

#include <Mox.h>

using namespace Corvane::Mox;

namespace MoxTool {

bool ParseCode(const std::string& text, unsigned int& code) {
  if (text.empty() || text.size() > 4) return false;
  char padded[5] = "    ";
  text.copy(padded, text.size());
  code = FourCC(padded);
  return true;
}

std::string CodeText(unsigned int code) {
  char text[5];
  FourCCToChars(code, text);
  return std::string(text, 4);
}

std::string TrimmedCodeText(unsigned int code) {
  std::string text = CodeText(code);
  while (!text.empty() && text.back() == ' ') text.pop_back();
  return text;
}

}  // namespace MoxTool
