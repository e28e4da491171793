#pragma once
// Console: the single logging channel of the library. A process-wide level,
// a debug-channel mask and a replaceable callback; the initial level is 0, so
// nothing is written until the host asks for it.

#include "System/Result.h"

namespace Corvane::Mox {

class CString;

class Console {
 public:
  enum LogLevel : int { None = 0, Error = 1, Warning = 2, Information = 3, Verbose = 4, Debug = 5 };

  enum DebugChannel : unsigned int {
    AudioDecompression = 0x2,
    AudioChannelMapping = 0x4,
    VideoCompression = 0x10,
    CaptionConversion = 0x100,
    SubtitleRendering = 0x200,
    WorkflowRuntime = 0x100000,
    AllChannels = 0xFFFFFFFFu,
  };

  using LogCallback = void (*)(LogLevel, CString*);

  static void SetLogLevel(LogLevel level);
  static LogLevel GetLogLevel();
  static bool IsAtLevel(LogLevel level);
  static void SetDebugChannelMask(DebugChannel mask);
  static DebugChannel GetDebugChannelMask();
  static void SetLogCallback(LogCallback callback);
  static LogCallback GetLogCallback();

  static void Log(LogLevel level, const char* format, ...) MOX_PRINTF(2, 3);
  static void LogDebug(DebugChannel channel, const char* format, ...) MOX_PRINTF(2, 3);

  // Writes errors in red to stderr, warnings in yellow to stdout, the rest bare to stdout.
  static void DefaultLog(LogLevel level, CString* text);

  // Logs one standard line "path(line): Class::Method: text\n"; used by MOX_LOG.
  static void LogAt(LogLevel level, const char* file, int line, const char* prettyFunction,
                    const char* format, ...) MOX_PRINTF(5, 6);
  static void LogDebugAt(DebugChannel channel, const char* file, int line, const char* prettyFunction,
                         const char* format, ...) MOX_PRINTF(5, 6);

  // The "Class::Method" part of a compiler-produced function signature.
  static void FunctionLabel(const char* prettyFunction, const char*& start, int& length);
};

}  // namespace Corvane::Mox

// Logs at a level with the source position and function label; the arguments
// are evaluated only when the level is enabled.
#define MOX_LOG(level, ...)                                                                      \
  do {                                                                                           \
    if (::Corvane::Mox::Console::IsAtLevel(static_cast<::Corvane::Mox::Console::LogLevel>(level))) \
      ::Corvane::Mox::Console::LogAt(static_cast<::Corvane::Mox::Console::LogLevel>(level), __FILE__, \
                                     __LINE__, __PRETTY_FUNCTION__, __VA_ARGS__);                 \
  } while (0)

#define MOX_LOG_DEBUG(channel, ...)                                                               \
  do {                                                                                            \
    if (::Corvane::Mox::Console::IsAtLevel(::Corvane::Mox::Console::Debug))                       \
      ::Corvane::Mox::Console::LogDebugAt(channel, __FILE__, __LINE__, __PRETTY_FUNCTION__, __VA_ARGS__); \
  } while (0)
