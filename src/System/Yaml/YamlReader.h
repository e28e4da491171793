#pragma once
// CYamlReader: the parser of the YAML subset (internal to the library).
// Builds a node's attributes and children from its lines; each child is
// read recursively from the deeper-indented lines that follow its "name:".

#include <string>
#include <vector>

namespace Corvane::Mox {

class CString;
class CYamlNode;

class CYamlReader {
 public:
  struct Line {
    int number;        // 1-based, in the original text
    std::string text;  // without the line end
  };

  // The non-empty lines of a UTF-8 text, split at CR and LF.
  static std::vector<Line> SplitLines(const char* text, std::size_t length);
  // Fills node from lines; depth is the node's nesting level. Nesting deeper
  // than CYamlNode::MaxDepth throws ResultFormatError.
  static void Read(CYamlNode* node, const std::vector<Line>& lines, int depth);

 private:
  // The child being collected: its name, the column of the "name:" content,
  // the column of its first list item (-1 before one) and its lines.
  struct PendingChild {
    std::string name;
    int column = -1;
    int itemColumn = -1;
    int line = 0;
    std::vector<Line> lines;
    bool active = false;
  };

  // True when the line belongs to the pending child; starts another child of
  // the same name when a list item begins at the level of the first one.
  static bool Collect(CYamlNode* node, PendingChild& pending, const Line& line, int indent, bool item, int depth);
  static void Flush(CYamlNode* node, PendingChild& pending, int depth);
  // One line of the node itself: an attribute or the start of a child.
  static void ReadLine(CYamlNode* node, PendingChild& pending, const Line& line, int indent, int depth);
};

}  // namespace Corvane::Mox
