// A host that knows libMox only through its installed headers and library.
#include <cstdio>

#include <Mox.h>

int main() {
  using namespace Corvane::Mox;
  RObject<CString> text(new CString("héllo"));
  std::printf("consumer: %d characters\n", text->GetLength());
  return 0;
}
