// mox formats: the vocabulary of media format codes, so that a user can look
// a code up: each code with its name (an alias shows the name of the format
// it stands for) and its parent, as an aligned table or as JSON.
#include <cstdio>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include <Mox.h>

#include "Commands.h"
#include "JsonText.h"

using namespace Corvane::Mox;

namespace MoxTool {

namespace {

struct Vocabulary {
  const char* kind;
  int (*count)();
  const FormatEntry* (*row)(int);
  const char* (*name)(unsigned int);
};

const Vocabulary kVocabularies[] = {
    {"video", &VideoFormat::GetRowCount, &VideoFormat::GetRow, &VideoFormat::GetName},
    {"audio", &AudioFormat::GetRowCount, &AudioFormat::GetRow, &AudioFormat::GetName},
    {"subtitle", &SubtitleFormat::GetRowCount, &SubtitleFormat::GetRow, &SubtitleFormat::GetName},
};

struct Row {
  const char* kind;
  std::string code;
  std::string parent;
  const char* name;
  bool alias;
};

// Codes print as their characters, with "%XX" for bytes that are not
// printable; trailing spaces are kept (the table quotes them).
std::string CodeText(unsigned int code) { return code ? FourString(code).GetChars() : ""; }

void PrintTable(const std::vector<Row>& rows) {
  std::printf("%-9s %-14s %-14s %s\n", "KIND", "CODE", "PARENT", "NAME");
  for (const Row& row : rows) {
    std::string code = "\"" + row.code + "\"";
    std::string parent = row.parent.empty() ? "-" : "\"" + row.parent + "\"";
    std::string name = row.name ? row.name : "";
    if (row.alias && row.name) name = "(alias) " + name;
    std::printf("%-9s %-14s %-14s %s\n", row.kind, code.c_str(), parent.c_str(), name.c_str());
  }
}

void PrintJson(const std::vector<Row>& rows) {
  std::printf("[");
  for (size_t i = 0; i < rows.size(); ++i) {
    const Row& row = rows[i];
    std::printf("%s\n  {\"kind\": \"%s\", \"code\": %s, \"parent\": %s, \"name\": %s, \"alias\": %s}", i ? "," : "",
                row.kind, JsonQuote(row.code.c_str()).c_str(),
                JsonQuote(row.parent.empty() ? nullptr : row.parent.c_str()).c_str(), JsonQuote(row.name).c_str(),
                row.alias ? "true" : "false");
  }
  std::printf("\n]\n");
}

}  // namespace

int RunFormats(const FormatsOptions& options) {
  const char* only = options.kind.empty() ? nullptr : options.kind.c_str();
  std::vector<Row> rows;
  for (const Vocabulary& vocabulary : kVocabularies) {
    if (only && std::strcmp(only, vocabulary.kind)) continue;
    std::set<unsigned int> seen;
    for (int i = 0; i < vocabulary.count(); ++i) {
      const FormatEntry* entry = vocabulary.row(i);
      if (!seen.insert(entry->code).second) continue;  // a repeated code keeps its first row
      rows.push_back(Row{vocabulary.kind, CodeText(entry->code), CodeText(entry->parent),
                         vocabulary.name(entry->code), entry->name == nullptr});
    }
  }
  if (options.json)
    PrintJson(rows);
  else
    PrintTable(rows);
  return ExitSuccess;
}

}  // namespace MoxTool
