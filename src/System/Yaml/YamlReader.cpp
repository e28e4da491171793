#include "System/Yaml/YamlReader.h"

#include "System/Text.h"
#include "System/Yaml/YamlNode.h"

namespace Corvane::Mox {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

int IndentOf(const std::string& text) {
  std::size_t i = 0;
  while (i < text.size() && IsBlank(text[i])) ++i;
  return static_cast<int>(i);
}

std::string Trim(const std::string& text) {
  std::size_t start = 0;
  std::size_t end = text.size();
  while (start < end && IsBlank(text[start])) ++start;
  while (end > start && IsBlank(text[end - 1])) --end;
  return text.substr(start, end - start);
}

}  // namespace

std::vector<CYamlReader::Line> CYamlReader::SplitLines(const char* text, std::size_t length) {
  std::vector<Line> lines;
  if (!text) return lines;
  int number = 1;
  std::size_t start = 0;
  for (std::size_t i = 0; i <= length; ++i) {
    bool end = i == length || text[i] == '\r' || text[i] == '\n';
    if (!end) continue;
    std::string line(text + start, i - start);
    if (static_cast<std::size_t>(IndentOf(line)) < line.size()) lines.push_back(Line{number, std::move(line)});
    // CR LF is one line end.
    if (i < length && text[i] == '\r' && i + 1 < length && text[i + 1] == '\n') ++i;
    ++number;
    start = i + 1;
  }
  return lines;
}

void CYamlReader::Read(CYamlNode* node, const std::vector<Line>& lines, int depth) {
  PendingChild pending;
  for (const Line& line : lines) {
    int indent = IndentOf(line.text);
    bool item = line.text[static_cast<std::size_t>(indent)] == '-';
    if (Collect(node, pending, line, indent, item, depth)) continue;
    Flush(node, pending, depth);
    ReadLine(node, pending, line, indent, depth);
  }
  Flush(node, pending, depth);
}

bool CYamlReader::Collect(CYamlNode* node, PendingChild& pending, const Line& line, int indent, bool item,
                          int depth) {
  if (!pending.active) return false;
  bool deeper = indent > pending.column;
  bool continuesList = item && indent == pending.itemColumn;
  // A list may start at the column of its "name:" ("key:" then "- a: 1").
  bool opensList = item && pending.itemColumn < 0 && (deeper || (indent == pending.column && pending.lines.empty()));
  if (!deeper && !continuesList && !opensList) return false;
  if (opensList) {
    pending.itemColumn = indent;
  } else if (continuesList && !pending.lines.empty()) {
    // Another item of the list: another child of the same name.
    PendingChild next;
    next.name = pending.name;
    next.column = pending.column;
    next.itemColumn = pending.itemColumn;
    next.line = line.number;
    next.active = true;
    Flush(node, pending, depth);
    pending = std::move(next);
  }
  pending.lines.push_back(line);
  return true;
}

void CYamlReader::Flush(CYamlNode* node, PendingChild& pending, int depth) {
  if (!pending.active) return;
  pending.active = false;
  if (depth + 1 > CYamlNode::MaxDepth)
    throw ResultFormatError("YAML nesting deeper than %d levels at line %d", CYamlNode::MaxDepth, pending.line);
  RObject<CString> name(new CString(pending.name.c_str()));
  RObject<CYamlNode> child(new CYamlNode(name, nullptr));
  Read(child, pending.lines, depth + 1);
  node->AddChildNode(child).ThrowIfFailed();
  pending.lines.clear();
}

void CYamlReader::ReadLine(CYamlNode* node, PendingChild& pending, const Line& line, int indent, int) {
  std::string text = line.text.substr(static_cast<std::size_t>(indent));
  int column = indent;
  if (text[0] == '-') {
    // A list item: the dash and the spaces after it go; the content sets the column.
    int spaces = IndentOf(text.substr(1));
    text = text.substr(1 + static_cast<std::size_t>(spaces));
    column = indent + 1 + spaces;
  }
  std::size_t colon = text.find(':');
  // Exactly one colon: values that contain ':' (times, URLs) are not part of the format.
  if (colon == std::string::npos || text.find(':', colon + 1) != std::string::npos) return;
  std::string name = Trim(text.substr(0, colon));
  std::string value = Trim(text.substr(colon + 1));
  if (name.empty()) return;
  if (!value.empty()) {
    node->SetAttribute(name.c_str(), value.c_str()).ThrowIfFailed();
    return;
  }
  pending.name = name;
  pending.column = column;
  pending.itemColumn = -1;
  pending.line = line.number;
  pending.lines.clear();
  pending.active = true;
}

}  // namespace Corvane::Mox
