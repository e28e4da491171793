#pragma once
// The lexer's and parser's error reports. Each names the source, the line,
// the position in the line and the offending text; every report is also
// logged at error level. Recognition goes on after a report (the lexer skips
// the byte, the parser recovers), so a script may collect several.

#include <string>
#include <vector>

namespace Corvane::Mox::WFL {

struct wflDiagnostic {
  int line;          // 1-based
  int position;      // 0-based position in the line
  std::string near;  // the offending text ("" at end of input)
  std::string text;  // the whole report
};

class wflDiagnostics {
 public:
  explicit wflDiagnostics(const char* sourceName);

  // "source(line) : lexer error : at offset p, near '...' (byte 0xNN)"; a
  // negative byte means end of input.
  void ReportLexerError(int line, int position, int byte);
  // "source(line) : error : at offset p, near 'text'" followed by the detail.
  void ReportSyntaxError(int line, int position, const std::string& near, const std::string& detail);

  int GetCount() const { return static_cast<int>(reports_.size()); }
  const std::vector<wflDiagnostic>& GetReports() const { return reports_; }

 private:
  void Add(wflDiagnostic diagnostic);

  std::string source_;
  std::vector<wflDiagnostic> reports_;
};

}  // namespace Corvane::Mox::WFL
