#include "wfl/wfl/wflDiagnostics.h"

#include <cstdio>

#include "System/Console.h"

namespace Corvane::Mox::WFL {

namespace {

// A printable rendering of one byte for the lexer's report.
std::string ByteText(int byte) {
  char text[8];
  if (byte >= 32 && byte < 127) {
    text[0] = static_cast<char>(byte);
    text[1] = 0;
  } else {
    std::snprintf(text, sizeof text, "\\x%02X", static_cast<unsigned int>(byte) & 0xFFu);
  }
  return text;
}

}  // namespace

wflDiagnostics::wflDiagnostics(const char* sourceName)
    : source_(sourceName && *sourceName ? sourceName : "-unknown source-") {}

void wflDiagnostics::ReportLexerError(int line, int position, int byte) {
  char text[256];
  if (byte < 0) {
    std::snprintf(text, sizeof text, "%s(%d) : lexer error : at offset %d, (end of input)", source_.c_str(), line,
                  position);
    Add({line, position, "", text});
    return;
  }
  std::string shown = ByteText(byte);
  std::snprintf(text, sizeof text, "%s(%d) : lexer error : at offset %d, near '%s' (byte 0x%02X)", source_.c_str(),
                line, position, shown.c_str(), byte);
  Add({line, position, shown, text});
}

void wflDiagnostics::ReportSyntaxError(int line, int position, const std::string& near, const std::string& detail) {
  std::string text = source_ + "(" + std::to_string(line) + ") : error : at offset " + std::to_string(position) +
                     ", near '" + near + "'" + detail;
  Add({line, position, near, text});
}

void wflDiagnostics::Add(wflDiagnostic diagnostic) {
  MOX_LOG(Console::Error, "%s\n", diagnostic.text.c_str());
  reports_.push_back(std::move(diagnostic));
}

}  // namespace Corvane::Mox::WFL
