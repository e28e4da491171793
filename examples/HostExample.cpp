// A small host program: the class library used directly through <Mox.h>.
// It builds strings, keeps objects in reference-counted holders, turns a
// failure into a Result exception and logs through the console callback.
#include <cstdio>

#include <Mox.h>

using namespace Corvane::Mox;

namespace {

void PrintLog(Console::LogLevel level, CString* text) { std::fprintf(stderr, "[log %d] %s", level, text->GetChars()); }

Result OpenClip(const char* name) {
  if (!name || !*name) return ResultArgumentNull("no clip name");
  return ResultFileNotFound("'%s' is not in the library", name);
}

}  // namespace

int main() {
  Console::SetLogCallback(&PrintLog);
  Console::SetLogLevel(Console::Information);

  RObject<CString> title(CString::WithFormat("%s, %d frames at %.3f fps", "clip-01", 1440, 23.976));
  std::printf("title: %s (%d characters, hash 0x%08X)\n", title->GetChars(), title->GetLength(),
              static_cast<unsigned int>(title->GetHashCode()));

  RObject<CString> greeting(new CString(L"Grüße aus Köln"));
  std::printf("wide text: %s has %d characters in %zu bytes\n", greeting->GetChars(), greeting->GetLength(),
              std::char_traits<char>::length(greeting->GetChars()));

  try {
    OpenClip("missing.mov").ThrowIfFailed();
  } catch (const Result& failure) {
    RObject<CString> text(failure.ToString(0x3));
    MOX_LOG(Console::Information, "caught: %s", text->GetChars());
  }

  // A component's settings as a property bag, printed the way hosts exchange them.
  RObject<CProperties> settings(new CProperties(nullptr));
  settings->SetProperty("Width", 1920);
  settings->SetProperty("Height", 1080);
  settings->SetProperty("Codec", "avc1");
  settings->SetPropertyDescription("Codec", "sample entry of the video track");
  RObject<CString> json(settings->ToJson());
  RObject<CString> yaml(settings->ToYaml());
  std::printf("settings as JSON:\n%s\nsettings as YAML:\n%s\n", json->GetChars(), yaml->GetChars());

  std::printf("libMox %s, revision %s\n", MoxVersion::GetVersion(), MoxVersion::GetRevision());
  return 0;
}
