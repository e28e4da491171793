#include "System/Console.h"

#include <cstdio>
#include <cstring>

#include "System/Text.h"

namespace Corvane::Mox {

namespace {

// Set once by the host at start-up; read without locks.
Console::LogLevel g_level = Console::None;
Console::DebugChannel g_mask = Console::AllChannels;
Console::LogCallback g_callback = &Console::DefaultLog;

void Emit(Console::LogLevel level, const char* format, va_list args) {
  Console::LogCallback callback = g_callback;
  if (!callback) return;
  RObject<CString> text(CString::WithArgList(format, args));
  if (text) callback(level, text);
}

void EmitLine(Console::LogLevel level, const char* file, int line, const char* prettyFunction,
              const char* format, va_list args) {
  RObject<CString> body(CString::WithArgList(format, args));
  if (!body) return;
  const char* label = nullptr;
  int labelLength = 0;
  Console::FunctionLabel(prettyFunction, label, labelLength);
  // Messages usually end with their own line feed; add one only when missing.
  const char* chars = body->GetChars();
  const size_t length = std::strlen(chars);
  const char* ending = length && chars[length - 1] == '\n' ? "" : "\n";
  RObject<CString> text(CString::WithFormat("%.*s(%d): %.*s: %s%s", static_cast<int>(std::strlen(file)), file,
                                            line, labelLength, label, chars, ending));
  Console::LogCallback callback = g_callback;
  if (text && callback) callback(level, text);
}

}  // namespace

void Console::SetLogLevel(LogLevel level) { g_level = level; }
Console::LogLevel Console::GetLogLevel() { return g_level; }
bool Console::IsAtLevel(LogLevel level) { return g_level >= level; }
void Console::SetDebugChannelMask(DebugChannel mask) { g_mask = mask; }
Console::DebugChannel Console::GetDebugChannelMask() { return g_mask; }
void Console::SetLogCallback(LogCallback callback) { g_callback = callback; }
Console::LogCallback Console::GetLogCallback() { return g_callback; }

void Console::Log(LogLevel level, const char* format, ...) {
  if (g_level < level || !g_callback) return;
  va_list args;
  va_start(args, format);
  Emit(level, format, args);
  va_end(args);
}

void Console::LogDebug(DebugChannel channel, const char* format, ...) {
  if (g_level < Debug || (g_mask & channel) == 0 || !g_callback) return;
  va_list args;
  va_start(args, format);
  Emit(Debug, format, args);
  va_end(args);
}

void Console::LogAt(LogLevel level, const char* file, int line, const char* prettyFunction, const char* format,
                    ...) {
  if (g_level < level || !g_callback) return;
  va_list args;
  va_start(args, format);
  EmitLine(level, file, line, prettyFunction, format, args);
  va_end(args);
}

void Console::LogDebugAt(DebugChannel channel, const char* file, int line, const char* prettyFunction,
                         const char* format, ...) {
  if (g_level < Debug || (g_mask & channel) == 0 || !g_callback) return;
  va_list args;
  va_start(args, format);
  EmitLine(Debug, file, line, prettyFunction, format, args);
  va_end(args);
}

void Console::DefaultLog(LogLevel level, CString* text) {
  if (!text) return;
  // One stream operation per message keeps lines whole between threads.
  if (level == Error) {
    std::fprintf(stderr, "\x1b[31m%s\x1b[0m", text->GetChars());
    std::fflush(stderr);
  } else if (level == Warning) {
    std::fprintf(stdout, "\x1b[33m%s\x1b[0m", text->GetChars());
    std::fflush(stdout);
  } else {
    std::fputs(text->GetChars(), stdout);
    std::fflush(stdout);
  }
}

void Console::FunctionLabel(const char* prettyFunction, const char*& start, int& length) {
  // "ret ns::Class::Method(args) const" -> "Class::Method".
  const char* end = std::strchr(prettyFunction, '(');
  if (!end) end = prettyFunction + std::strlen(prettyFunction);
  const char* nameStart = end;
  int depth = 0;
  while (nameStart > prettyFunction) {
    char c = nameStart[-1];
    if (c == '>') depth++;
    if (c == '<') depth--;
    if (c == ' ' && depth == 0) break;
    --nameStart;
  }
  // Keep the last two "::"-separated components, outside template arguments.
  const char* cut = nameStart;
  int separators = 0;
  depth = 0;
  for (const char* p = end; p > nameStart + 1; --p) {
    char c = p[-1];
    if (c == '>') depth++;
    if (c == '<') depth--;
    if (depth == 0 && c == ':' && p[-2] == ':') {
      if (++separators == 2) {
        cut = p;
        break;
      }
      --p;
    }
  }
  start = cut;
  length = static_cast<int>(end - cut);
}

}  // namespace Corvane::Mox
