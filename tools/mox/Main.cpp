// mox: the command-line host of libMox.
#include <cstdarg>
#include <cstdio>

#include <Mox.h>

#include "Commands.h"

using namespace Corvane::Mox;

namespace MoxTool {

void PrintError(const char* format, ...) {
  std::fputs("mox: ", stderr);
  va_list args;
  va_start(args, format);
  std::vfprintf(stderr, format, args);
  va_end(args);
  std::fputc('\n', stderr);
}

}  // namespace MoxTool

int main(int argc, char** argv) {
  try {
    return MoxTool::RunCommandLine(argc, argv);
  } catch (const Result& r) {
    RObject<CString> text(r.ToString(0x3));
    MoxTool::PrintError("%s", text->GetChars());
    return MoxTool::ExitFailure;
  } catch (const std::exception& e) {
    MoxTool::PrintError("%s", e.what());
    return MoxTool::ExitFailure;
  }
}
