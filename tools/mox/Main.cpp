// mox: the command-line host of libMox.
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include <Mox.h>

#include "Commands.h"

using namespace Corvane::Mox;

namespace MoxTool {

namespace {

const Command kCommands[] = {
    {"info", "info [--json]", "print the library's build identification", &RunInfo},
    {"formats", "formats [--json] [video|audio|subtitle]", "list the media format codes", &RunFormats},
    {"run", "run SCRIPT|-e TEXT [options]", "parse and evaluate a WFL script (see 'mox run --help')", &RunRun},
    {"convert", "convert INPUT OUTPUT [options]", "convert a media file with a one-line job (see 'mox convert --help')",
     &RunConvert},
    {"probe", "probe FILE [--json] [--samples] [--type CODE]", "open a media file, index it and describe its tracks", &RunProbe},
    {"catalog", "catalog [--json]", "list every component family, code and name, and whether it is available", &RunCatalog},
    {"graph", "graph SCRIPT [-D NAME=VALUE]... [-o FILE]", "build a script's topology and write its graph (dot, SVG or PNG)",
     &RunGraph},
    {"inspect", "inspect CODE [--family FAMILY] [--json]", "describe a component: family, availability, properties, formats",
     &RunInspect},
    {nullptr, nullptr, nullptr, nullptr},
};

void PrintUsage(FILE* out) {
  std::fprintf(out,
               "usage: mox [--help] [--version] <command> [arguments]\n"
               "\n"
               "mox runs media workflows with libMox.\n"
               "\n"
               "commands:\n");
  for (const Command* c = kCommands; c->name; ++c) {
    // A synopsis too long for its column puts the summary on the next line.
    if (std::strlen(c->synopsis) > 28) {
      std::fprintf(out, "  %s\n  %-28s %s\n", c->synopsis, "", c->summary);
    } else {
      std::fprintf(out, "  %-28s %s\n", c->synopsis, c->summary);
    }
  }
  std::fprintf(out,
               "\n"
               "options:\n"
               "  -h, --help                   show this help and exit\n"
               "  -V, --version                show the library's version and build and exit\n"
               "\n"
               "exit status: 0 success, 1 failure, 2 bad usage, 3 a script called die\n");
}

void PrintVersion() {
  std::printf("mox %s (revision %s, branch %s, build %s, %s %s)\n", MoxVersion::GetVersion(),
              MoxVersion::GetRevision(), MoxVersion::GetBranch(), MoxVersion::GetBuildNumber(),
              MoxVersion::GetDate(), MoxVersion::GetTime());
}

}  // namespace

const Command* GetCommands() { return kCommands; }

void PrintError(const char* format, ...) {
  std::fputs("mox: ", stderr);
  va_list args;
  va_start(args, format);
  std::vfprintf(stderr, format, args);
  va_end(args);
  std::fputc('\n', stderr);
}

int Main(int argc, char** argv) {
  if (argc < 2) {
    PrintUsage(stderr);
    return ExitUsage;
  }
  const char* first = argv[1];
  if (!std::strcmp(first, "-h") || !std::strcmp(first, "--help") || !std::strcmp(first, "help")) {
    PrintUsage(stdout);
    return ExitSuccess;
  }
  if (!std::strcmp(first, "-V") || !std::strcmp(first, "--version")) {
    PrintVersion();
    return ExitSuccess;
  }
  for (const Command* c = kCommands; c->name; ++c) {
    if (!std::strcmp(first, c->name)) return c->run(argc - 1, argv + 1);
  }
  PrintError("unknown command '%s' (see 'mox --help')", first);
  return ExitUsage;
}

}  // namespace MoxTool

int main(int argc, char** argv) {
  try {
    return MoxTool::Main(argc, argv);
  } catch (const Result& r) {
    RObject<CString> text(r.ToString(0x3));
    MoxTool::PrintError("%s", text->GetChars());
    return MoxTool::ExitFailure;
  } catch (const std::exception& e) {
    MoxTool::PrintError("%s", e.what());
    return MoxTool::ExitFailure;
  }
}
