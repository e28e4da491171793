#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <string>
#include <vector>

#include "FilesTestSupport.h"
#include "System/Collections/List.h"
#include "System/IO/Directory.h"
#include "System/IO/File.h"

using namespace Corvane::Mox;
using namespace Corvane::Mox::Testing;

namespace {

class FileDirectoryTest : public LeakCheckedTest {
 protected:
  TemporaryFolder folder_;
};

RObject<CString> Text(const std::string& text) { return RObject<CString>(new CString(text.c_str())); }

std::vector<std::string> Sorted(CList<CString>* list) {
  std::vector<std::string> names;
  for (CString* name : *list) names.emplace_back(name->GetChars());  // borrowed from the iterator
  std::sort(names.begin(), names.end());
  return names;
}

bool Exists(const std::string& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0;
}

}  // namespace

TEST_F(FileDirectoryTest, ErrnoMapsToResultKindsAndTexts) {
  struct Case {
    int error;
    unsigned int type;
    const char* details;
  } cases[] = {
      {EPERM, ResultReadOnly().GetType(), "'/m/x' is ready only"},
      {ENOENT, ResultPathDoesNotExist().GetType(), "'/m/x' does not exist"},
      {EACCES, ResultAccessDenied().GetType(), "access to '/m/x' is denied"},
      {EMLINK, ResultSymbolicLink().GetType(), "'/m/x' is a symbolic link"},
      {ENAMETOOLONG, ResultPathNameTooLong().GetType(), "'/m/x' is too long"},
      {ENOTEMPTY, ResultNotEmpty().GetType(), "'/m/x' is not empty"},
      {EIO, ResultError().GetType(), "unknown IO error, 5"},
      {EISDIR, ResultError().GetType(), "unknown IO error, 21"},
  };
  for (const Case& c : cases) {
    Result result = FileResults::FromErrno(c.error, "/m/x");
    EXPECT_EQ(result.GetType(), c.type) << c.error;
    EXPECT_EQ(Details(result), c.details);
  }
}

TEST_F(FileDirectoryTest, FilesExistAndHaveLengths) {
  std::string file = folder_.WriteFile("clip.mxf", std::string(1234, 'x'));
  EXPECT_TRUE(CFile::Exists(file.c_str()));
  EXPECT_TRUE(CFile::Exists(Text(file)));
  EXPECT_EQ(CFile::GetLength(Text(file)), 1234);
  EXPECT_FALSE(CFile::Exists(folder_.Path().c_str()));  // a folder is no file
  EXPECT_FALSE(CFile::Exists((folder_ / "missing").c_str()));
  EXPECT_FALSE(CFile::Exists(static_cast<const char*>(nullptr)));
  EXPECT_FALSE(CFile::Exists(static_cast<CString*>(nullptr)));
  EXPECT_EQ(CFile::GetLength(Text(folder_ / "missing")), -1);
  EXPECT_EQ(CFile::GetLength(nullptr), -1);
  EXPECT_EQ(CFile::GetLength(Text(folder_.WriteFile("empty", ""))), 0);
}

TEST_F(FileDirectoryTest, DeletingFiles) {
  std::string file = folder_.WriteFile("clip.mxf", "data");
  EXPECT_TRUE(CFile::Delete(Text(file)).Succeeded());
  EXPECT_FALSE(Exists(file));
  // Missing: the details name the path.
  Result missing = CFile::Delete(Text(file));
  EXPECT_TRUE(IsKind<ResultPathDoesNotExist>(missing));
  EXPECT_EQ(Details(missing), "'" + file + "' does not exist");
  EXPECT_TRUE(IsKind<ResultArgumentNull>(CFile::Delete(nullptr)));
  // A folder where a file was expected is no case of its own.
  Result folder = CFile::Delete(Text(folder_.Path()));
  EXPECT_TRUE(IsKind<ResultError>(folder));
  EXPECT_EQ(Details(folder), "unknown IO error, " + std::to_string(EISDIR));
  EXPECT_TRUE(Exists(folder_.Path()));
  // A name longer than the platform allows.
  std::string tooLong = folder_ / std::string(NAME_MAX + 1, 'n');
  Result longName = CFile::Delete(Text(tooLong));
  EXPECT_TRUE(IsKind<ResultPathNameTooLong>(longName));
  EXPECT_EQ(Details(longName), "'" + tooLong + "' is too long");
}

TEST_F(FileDirectoryTest, PermissionDeniedWhenNotPrivileged) {
  if (geteuid() == 0) GTEST_SKIP() << "a privileged process is never denied; the mapping is tested directly";
  std::string locked = folder_ / "locked";
  ASSERT_EQ(mkdir(locked.c_str(), 0755), 0);
  std::string file = folder_.WriteFile("locked/clip.mxf", "data");
  ASSERT_EQ(chmod(locked.c_str(), 0555), 0);
  Result denied = CFile::Delete(Text(file));
  chmod(locked.c_str(), 0755);
  EXPECT_TRUE(IsKind<ResultAccessDenied>(denied));
  EXPECT_EQ(Details(denied), "access to '" + file + "' is denied");
}

TEST_F(FileDirectoryTest, CreateDirectoryMakesEveryMissingLevel) {
  std::string deep = folder_ / "package/video/1080p";
  EXPECT_FALSE(CDirectory::Exists(deep.c_str()));
  ASSERT_TRUE(CDirectory::CreateDirectory(Text(deep)).Succeeded());
  EXPECT_TRUE(CDirectory::Exists(deep.c_str()));
  EXPECT_TRUE(CDirectory::Exists(Text(folder_ / "package/video")));
  // Again, and with a trailing or doubled separator: nothing to do.
  EXPECT_TRUE(CDirectory::CreateDirectory(Text(deep + "/")).Succeeded());
  EXPECT_TRUE(CDirectory::Create(Text(folder_ / "package//audio")).Succeeded());
  EXPECT_TRUE(CDirectory::Exists((folder_ / "package/audio").c_str()));
  EXPECT_TRUE(IsKind<ResultArgumentNull>(CDirectory::CreateDirectory(nullptr)));
  EXPECT_FALSE(CDirectory::Exists(folder_.WriteFile("plain", "x").c_str()));
  EXPECT_FALSE(CDirectory::Exists(static_cast<const char*>(nullptr)));
}

TEST_F(FileDirectoryTest, CreateDirectoryLogsWhatWentWrong) {
  LogCapture log(Console::Error);
  std::string file = folder_.WriteFile("plain", "x");
  Result notFolder = CDirectory::CreateDirectory(Text(file + "/sub"));
  EXPECT_TRUE(notFolder.Failed());
  ASSERT_EQ(LogCapture::Lines().size(), 1u);
  EXPECT_EQ(LogCapture::Lines()[0].first, Console::Error);
  EXPECT_TRUE(EndsWith(LogCapture::Lines()[0].second, ": CDirectory::CreateDirectory: RESULT_PATH_IS_NOT_DIRECTORY\n"))
      << LogCapture::Lines()[0].second;
  EXPECT_NE(LogCapture::Lines()[0].second.find("Directory.cpp("), std::string::npos);
  Result tooLong = CDirectory::CreateDirectory(Text(folder_ / std::string(NAME_MAX + 1, 'd')));
  EXPECT_TRUE(IsKind<ResultPathNameTooLong>(tooLong));
  ASSERT_EQ(LogCapture::Lines().size(), 2u);
  EXPECT_TRUE(EndsWith(LogCapture::Lines()[1].second, ": RESULT_PATH_NAME_TOO_LONG\n"));
  Result empty = CDirectory::CreateDirectory(Text(""));
  EXPECT_TRUE(IsKind<ResultPathDoesNotExist>(empty));
  ASSERT_EQ(LogCapture::Lines().size(), 3u);
  EXPECT_TRUE(EndsWith(LogCapture::Lines()[2].second, ": RESULT_PATH_DOES_NOT_EXIST\n"));
}

TEST_F(FileDirectoryTest, DeletingFolders) {
  std::string tree = folder_ / "package";
  ASSERT_TRUE(CDirectory::CreateDirectory(Text(tree + "/video/1080p")).Succeeded());
  folder_.WriteFile("package/index.m3u8", "#EXTM3U");
  folder_.WriteFile("package/video/1080p/segment1.ts", "ts");
  // A link out of the tree goes, what it points to stays.
  std::string outside = folder_.WriteFile("keep.txt", "keep");
  ASSERT_EQ(symlink(outside.c_str(), (tree + "/link").c_str()), 0);
  Result notEmpty = CDirectory::Delete(tree.c_str(), false);
  EXPECT_TRUE(IsKind<ResultNotEmpty>(notEmpty));
  EXPECT_EQ(Details(notEmpty), "'" + tree + "' is not empty");
  EXPECT_TRUE(CDirectory::Delete(Text(tree), true).Succeeded());
  EXPECT_FALSE(Exists(tree));
  EXPECT_TRUE(Exists(outside));
  // Without recursion an empty folder and a file go too.
  ASSERT_TRUE(CDirectory::CreateDirectory(Text(folder_ / "empty")).Succeeded());
  EXPECT_TRUE(CDirectory::Delete((folder_ / "empty").c_str(), false).Succeeded());
  EXPECT_TRUE(CDirectory::Delete(outside.c_str(), false).Succeeded());
  EXPECT_FALSE(Exists(outside));
  Result missing = CDirectory::Delete((folder_ / "gone").c_str(), true);
  EXPECT_TRUE(IsKind<ResultPathDoesNotExist>(missing));
  EXPECT_EQ(Details(missing), "'" + (folder_ / "gone") + "' does not exist");
  EXPECT_TRUE(IsKind<ResultPathDoesNotExist>(CDirectory::Delete((folder_ / "gone").c_str(), false)));
  EXPECT_TRUE(IsKind<ResultNullPointer>(CDirectory::Delete(static_cast<const char*>(nullptr), true)));
  EXPECT_TRUE(IsKind<ResultNullPointer>(CDirectory::Delete("", false)));
  EXPECT_TRUE(IsKind<ResultNullPointer>(CDirectory::Delete(static_cast<CString*>(nullptr), false)));
}

TEST_F(FileDirectoryTest, CurrentDirectory) {
  RObject<CString> current;
  ASSERT_TRUE(CDirectory::GetCurrentDirectory(current.Out()).Succeeded());
  char expected[PATH_MAX];
  ASSERT_NE(getcwd(expected, sizeof expected), nullptr);
  EXPECT_STREQ(current->GetChars(), expected);
}

TEST_F(FileDirectoryTest, ListingsHoldBareNamesOfOneKind) {
  folder_.WriteFile("a.mxf", "a");
  folder_.WriteFile("b.wav", "b");
  folder_.WriteFile(".hidden", "h");
  ASSERT_EQ(mkdir((folder_ / "sub").c_str(), 0755), 0);
  ASSERT_EQ(mkdir((folder_ / ".cache").c_str(), 0755), 0);
  ASSERT_EQ(symlink((folder_ / "a.mxf").c_str(), (folder_ / "to-file").c_str()), 0);
  ASSERT_EQ(symlink((folder_ / "sub").c_str(), (folder_ / "to-folder").c_str()), 0);
  ASSERT_EQ(symlink((folder_ / "nowhere").c_str(), (folder_ / "dangling").c_str()), 0);
  RObject<CList<CString>> files;
  ASSERT_TRUE(CDirectory::GetFiles(Text(folder_.Path()), files.Out()).Succeeded());
  EXPECT_EQ(Sorted(files), (std::vector<std::string>{"a.mxf", "b.wav", "to-file"}));
  RObject<CList<CString>> folders;
  ASSERT_TRUE(CDirectory::GetDirectories(Text(folder_.Path()), folders.Out()).Succeeded());
  EXPECT_EQ(Sorted(folders), (std::vector<std::string>{"sub"}));
}

TEST_F(FileDirectoryTest, ListingsOfUnreadableFoldersAreEmpty) {
  RObject<CList<CString>> list;
  Result missing = CDirectory::GetFiles(Text(folder_ / "missing"), list.Out());
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(missing));
  ASSERT_TRUE(list);  // a list is handed over all the same
  EXPECT_EQ(list->GetCount(), 0);
  Result notFolder = CDirectory::GetDirectories(Text(folder_.WriteFile("plain", "x")), list.Out());
  EXPECT_TRUE(IsKind<ResultArgumentOutOfRange>(notFolder));
  ASSERT_TRUE(list);
  EXPECT_EQ(list->GetCount(), 0);
  list.Clear();
  EXPECT_TRUE(IsKind<ResultArgumentNull>(CDirectory::GetFiles(nullptr, list.Out())));
  EXPECT_FALSE(list);
  EXPECT_TRUE(IsKind<ResultArgumentNull>(CDirectory::GetDirectories(nullptr, list.Out())));
}
