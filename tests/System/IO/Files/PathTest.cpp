#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <set>
#include <string>

#include "FilesTestSupport.h"
#include "System/IO/Path.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::Testing;

namespace {

class PathTest : public LeakCheckedTest {};

// Runs a path function on a text (null stays null) and returns its text.
template <class F>
std::string On(F function, const char* path) {
  RObject<CString> text(path ? new CString(path) : nullptr);
  return Take(function(text.Get()));
}

std::string Extension(const char* path) { return On(&CPath::GetExtension, path); }
std::string FileName(const char* path) { return On(&CPath::GetFileName, path); }
std::string Stem(const char* path) { return On(&CPath::GetFileNameWithoutExtension, path); }
std::string Directory(const char* path) { return On(&CPath::GetDirectoryName, path); }

std::string Change(const char* path, const char* extension) {
  RObject<CString> text(path ? new CString(path) : nullptr);
  return Take(CPath::ChangeExtension(text, extension));
}

bool Holds(bool (*function)(CString*), const char* path) {
  RObject<CString> text(path ? new CString(path) : nullptr);
  return function(text);
}

}  // namespace

TEST_F(PathTest, CombineInsertsOneSeparatorWhereNeeded) {
  EXPECT_EQ(Take(CPath::Combine("a/", "b")), "a/b");
  EXPECT_EQ(Take(CPath::Combine("a", "/b")), "a/b");
  EXPECT_EQ(Take(CPath::Combine("a", "b")), "a/b");
  EXPECT_EQ(Take(CPath::Combine("/media/in", "clip.mxf")), "/media/in/clip.mxf");
  EXPECT_EQ(Take(CPath::Combine("C:", "clip.mxf")), "C:clip.mxf");
  EXPECT_EQ(Take(CPath::Combine("media\\", "clip.mxf")), "media\\clip.mxf");
  EXPECT_EQ(Take(CPath::Combine("", "b")), "b");
  EXPECT_EQ(Take(CPath::Combine("a", "")), "a");
  EXPECT_EQ(Take(CPath::Combine(nullptr, "b")), "<null>");
  EXPECT_EQ(Take(CPath::Combine("a", nullptr)), "<null>");
  RObject<CString> a(new CString("media"));
  RObject<CString> b(new CString("clip.mxf"));
  EXPECT_EQ(Take(CPath::Combine(a, b, '\\')), "media\\clip.mxf");
  EXPECT_EQ(Take(CPath::Combine(a, nullptr, '/')), "<null>");
}

TEST_F(PathTest, CombineRefusesResultsOf1024Characters) {
  std::string left(511, 'a');
  std::string right(511, 'b');
  EXPECT_EQ(Take(CPath::Combine(left.c_str(), right.c_str())).size(), 1023u);
  EXPECT_EQ(Take(CPath::Combine((left + "a").c_str(), right.c_str())), "<null>");
  // Characters count, not bytes: 1,001 characters in 2,001 bytes are fine.
  std::string wide;
  for (int i = 0; i < 500; ++i) wide += "\xC3\xA9";
  std::string joined = Take(CPath::Combine(wide.c_str(), wide.c_str()));
  EXPECT_EQ(joined.size(), 2001u);
}

TEST_F(PathTest, ExtensionsBelongToTheLastName) {
  EXPECT_EQ(Extension("dir.x/file"), "<null>");
  EXPECT_EQ(Extension("file.tar.gz"), ".gz");
  EXPECT_EQ(Extension("/media/show.final.mov"), ".mov");
  EXPECT_EQ(Extension("C:clip.mxf"), ".mxf");
  EXPECT_EQ(Extension("media\\dir.x\\file"), "<null>");
  EXPECT_EQ(Extension("file."), "<null>");
  EXPECT_EQ(Extension("file"), "<null>");
  EXPECT_EQ(Extension(".profile"), ".profile");
  EXPECT_EQ(Extension(nullptr), "<null>");
  EXPECT_TRUE(Holds(&CPath::HasExtension, "file.tar.gz"));
  EXPECT_FALSE(Holds(&CPath::HasExtension, "dir.x/file"));
  EXPECT_FALSE(Holds(&CPath::HasExtension, "file."));
  EXPECT_FALSE(Holds(&CPath::HasExtension, nullptr));
}

TEST_F(PathTest, ChangeAndAddExtension) {
  EXPECT_EQ(Change("a.txt", "md"), "a.md");
  EXPECT_EQ(Change("a.txt", ".md"), "a.md");
  EXPECT_EQ(Change("/media/show.final.mov", "mp4"), "/media/show.final.mp4");
  EXPECT_EQ(Change("dir.x/file", "ts"), "dir.x/file.ts");
  EXPECT_EQ(Change("a.txt", nullptr), "a");
  EXPECT_EQ(Change(nullptr, "md"), "<null>");
  RObject<CString> path(new CString("segment.m4s"));
  RObject<CString> extension(new CString("tmp"));
  EXPECT_EQ(Take(CPath::ChangeExtension(path, extension)), "segment.tmp");
  EXPECT_EQ(Take(CPath::ChangeExtension(path, static_cast<CString*>(nullptr))), "segment");
  EXPECT_EQ(Take(CPath::AddExtension(path, "tmp")), "segment.m4s.tmp");
  EXPECT_EQ(Take(CPath::AddExtension(path, ".part")), "segment.m4s.part");
  EXPECT_EQ(Take(CPath::AddExtension(path, extension)), "segment.m4s.tmp");
  EXPECT_EQ(Take(CPath::AddExtension(nullptr, "tmp")), "<null>");
}

TEST_F(PathTest, FileNames) {
  EXPECT_EQ(FileName("/media/in/clip.mxf"), "clip.mxf");
  EXPECT_EQ(FileName("C:\\media\\clip.mxf"), "clip.mxf");
  EXPECT_EQ(FileName("C:clip.mxf"), "clip.mxf");
  EXPECT_EQ(FileName("clip.mxf"), "clip.mxf");
  EXPECT_EQ(FileName("media/"), "");
  EXPECT_EQ(FileName(nullptr), "<null>");
  EXPECT_EQ(Stem("/media/in/clip.final.mxf"), "clip.final");
  EXPECT_EQ(Stem("dir.x/file"), "file");
  EXPECT_EQ(Stem("C:\\media\\clip.mxf"), "clip");
  EXPECT_EQ(Stem(nullptr), "<null>");
}

TEST_F(PathTest, DirectoryNames) {
  EXPECT_EQ(Directory("/media/in/clip.mxf"), "/media/in");
  EXPECT_EQ(Directory("media/in/"), "media/in");
  EXPECT_EQ(Directory("C:\\media\\clip.mxf"), "C:\\media");
  EXPECT_EQ(Directory("//server/share/clip.mxf"), "//server/share");
  // The root is no directory name.
  EXPECT_EQ(Directory("/clip.mxf"), "<null>");
  EXPECT_EQ(Directory("C:\\clip.mxf"), "<null>");
  EXPECT_EQ(Directory("/"), "<null>");
  EXPECT_EQ(Directory("C:"), "<null>");
  EXPECT_EQ(Directory("clip.mxf"), "<null>");
  EXPECT_EQ(Directory(nullptr), "<null>");
}

TEST_F(PathTest, RootsAndShares) {
  EXPECT_TRUE(Holds(&CPath::IsPathRooted, "/media"));
  EXPECT_TRUE(Holds(&CPath::IsPathRooted, "\\media"));
  EXPECT_TRUE(Holds(&CPath::IsPathRooted, "C:media"));
  EXPECT_FALSE(Holds(&CPath::IsPathRooted, "media/in"));
  EXPECT_FALSE(Holds(&CPath::IsPathRooted, ""));
  EXPECT_FALSE(Holds(&CPath::IsPathRooted, nullptr));
  EXPECT_TRUE(Holds(&CPath::IsUncPath, "//server/share"));
  EXPECT_TRUE(Holds(&CPath::IsUncPath, "\\\\server\\share"));
  EXPECT_FALSE(Holds(&CPath::IsUncPath, "/media"));
  EXPECT_FALSE(Holds(&CPath::IsUncPath, nullptr));
}

TEST_F(PathTest, ValidityOnlyRefusesColonsInPaths) {
  EXPECT_STREQ(CPath::GetInvalidPathChars(), ":");
  EXPECT_STREQ(CPath::GetInvalidFileNameChars(), "");
  EXPECT_EQ(std::wstring(CPath::GetInvalidPathWChars()), L":");
  EXPECT_EQ(std::wstring(CPath::GetInvalidFileNameWChars()), L"");
  EXPECT_FALSE(CPath::IsValidPath(static_cast<const char*>(nullptr)));
  EXPECT_TRUE(CPath::IsValidPath(""));
  EXPECT_TRUE(CPath::IsValidPath("/media/in/clip.mxf"));
  EXPECT_FALSE(CPath::IsValidPath("C:media"));
  EXPECT_FALSE(Holds(&CPath::IsValidPath, "a:b"));
  EXPECT_TRUE(Holds(&CPath::IsValidPath, "a/b"));
  EXPECT_TRUE(CPath::IsValidFileName("a:b?*"));
  EXPECT_FALSE(CPath::IsValidFileName(static_cast<const char*>(nullptr)));
  EXPECT_FALSE(Holds(&CPath::IsValidFileName, nullptr));
}

TEST_F(PathTest, RandomFileNamesUseTheAlphabet) {
  EXPECT_EQ(std::strlen(CPath::RandomFileNameChars), 64u);
  std::set<std::string> names;
  for (int i = 0; i < 50; ++i) {
    std::string name = Take(CPath::GetRandomFileName());
    ASSERT_EQ(name.size(), 8u);
    for (char c : name) EXPECT_NE(std::strchr(CPath::RandomFileNameChars, c), nullptr) << name;
    names.insert(name);
  }
  EXPECT_GT(names.size(), 45u);
}

TEST_F(PathTest, TempDirectoryIsTMPDIR) {
  const char* saved = getenv("TMPDIR");
  std::string previous = saved ? saved : "";
  setenv("TMPDIR", "/scratch/mox", 1);
  EXPECT_EQ(Take(CPath::GetTempDirectory()), "/scratch/mox");
  unsetenv("TMPDIR");
  EXPECT_EQ(Take(CPath::GetTempDirectory()), "<null>");
  if (saved) setenv("TMPDIR", previous.c_str(), 1);
}

TEST_F(PathTest, TempFilePathsNameNothingThatExists) {
  TemporaryFolder folder;
  std::string prefix = folder / "clip_";
  for (int i = 0; i < 20; ++i) {
    std::string path = Take(CPath::GetTempFilePath(folder.Path().c_str(), "clip"));
    ASSERT_EQ(path.size(), prefix.size() + 6) << path;
    EXPECT_EQ(path.compare(0, prefix.size(), prefix), 0) << path;
    for (std::size_t k = prefix.size(); k < path.size(); ++k) EXPECT_TRUE(std::isxdigit(path[k])) << path;
    EXPECT_FALSE(std::filesystem::exists(path));
    folder.WriteFile(path.substr(folder.Path().size() + 1), "taken");  // the next call must avoid it
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 20);
  RObject<CString> directory(new CString(folder.Path().c_str()));
  RObject<CString> stem(new CString("seg"));
  EXPECT_NE(Take(CPath::GetTempFilePath(directory, "seg")), "<null>");
  EXPECT_NE(Take(CPath::GetTempFilePath(folder.Path().c_str(), stem)), "<null>");
  EXPECT_NE(Take(CPath::GetTempFilePath(directory, stem)), "<null>");
  EXPECT_EQ(Take(CPath::GetTempFilePath(static_cast<const char*>(nullptr), "seg")), "<null>");
  EXPECT_EQ(Take(CPath::GetTempFilePath(directory, static_cast<const char*>(nullptr))), "<null>");
}
