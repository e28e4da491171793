#include "JsonText.h"

#include <cstdio>

namespace MoxTool {

std::string JsonQuote(const char* text) {
  if (!text) return "null";
  std::string out = "\"";
  for (const unsigned char* p = reinterpret_cast<const unsigned char*>(text); *p; ++p) {
    switch (*p) {
      case '"': out += "\\\""; break;
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      case '\t': out += "\\t"; break;
      default:
        if (*p < 0x20) {
          char escaped[8];
          std::snprintf(escaped, sizeof escaped, "\\u%04x", *p);
          out += escaped;
        } else {
          out += static_cast<char>(*p);  // UTF-8 passes through
        }
    }
  }
  return out + "\"";
}

}  // namespace MoxTool
