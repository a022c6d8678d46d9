// Several writers of one file through FileObject: threads on every system, processes on POSIX
// systems. Nothing that was saved is lost. LUM_WRITES says how often each process saves.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#if !defined(_WIN32)
#include <sys/wait.h>
#include <unistd.h>
#endif

#include "platform/StdioFile.h"
#include "tests/platform/FileObjectTesting.h"

namespace {

class FileWriters : public FileObjectTesting {
 protected:
  CString Path() const { return PathText(m_folder.File("file.cfg")); }

  static CString Key(int writer, int number) {
    CString key;
    key.Format(L"writer%d.key%d", writer, number);
    return key;
  }

  // Loads, sets one key, saves. True when that is in the file. The first one makes the file; who
  // finds it there by now, but could not load it before, is refused and loads it.
  static bool SetOne(const CString& path, int writer, int number) {
    for (int attempt = 0; attempt < 1000; ++attempt) {
      FileObject file;
      file.Load(path);
      file.SetItem(L"Keys", Key(writer, number), L"1", true);
      if (file.Save(path)) {
        return true;
      }
      if (file.LastSave() != FileSaveResult::Conflict) {
        std::cerr << WideToUtf8(file.LastError()).GetString() << "\n";
        return false;
      }
    }
    return false;
  }

  void ExpectAllKeys(int writers, int writes) {
    FileObject file;
    ASSERT_TRUE(file.Load(Path()));
    int missing = 0;
    for (int writer = 0; writer < writers; ++writer) {
      for (int number = 0; number < writes; ++number) {
        CString value;
        missing += file.GetItem(L"Keys", Key(writer, number), value) ? 0 : 1;
      }
    }
    EXPECT_EQ(missing, 0) << "of " << writers * writes;
    EXPECT_EQ(file.ItemCount(L"Keys"), writers * writes);
    EXPECT_EQ(m_folder.EntryCount(), 1u);
  }
};

TEST_F(FileWriters, ThatAreThreadsLoseNothing) {
  constexpr int kThreads = 4;
  constexpr int kWrites = 25;
  std::atomic<int> failed = 0;
  std::vector<std::thread> threads;
  for (int writer = 0; writer < kThreads; ++writer) {
    threads.emplace_back([this, writer, &failed] {
      for (int number = 0; number < kWrites; ++number) {
        failed += SetOne(Path(), writer, number) ? 0 : 1;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(failed, 0);
  ExpectAllKeys(kThreads, kWrites);
}

// Not every system replaces a file in one step; who reads meanwhile waits for the next one.
TEST_F(FileWriters, ThatAreThreadsNeverHideTheFile) {
  constexpr int kThreads = 2;
  constexpr int kWrites = 100;
  ASSERT_TRUE(SetOne(Path(), kThreads, 0));
  std::atomic<int> writing = kThreads;
  std::atomic<int> failed = 0;
  std::vector<std::thread> threads;
  for (int writer = 0; writer < kThreads; ++writer) {
    threads.emplace_back([this, writer, &writing, &failed] {
      for (int number = 0; number < kWrites; ++number) {
        failed += SetOne(Path(), writer, number) ? 0 : 1;
      }
      --writing;
    });
  }
  int reads = 0;
  for (; writing > 0; ++reads) {
    FileObject file;
    EXPECT_TRUE(file.Load(Path()))
        << "read " << reads << ": " << WideToUtf8(file.LastError()).GetString();
    CStdioFile lines;
    EXPECT_TRUE(lines.Open(Path(), CStdioFile::modeRead)) << "read " << reads;
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(failed, 0);
  EXPECT_GT(reads, 0);
}

// Objects that live on meet each other's changes at every save.
TEST_F(FileWriters, ThatLiveOnGetEachOthersKeys) {
  WriteBytes(m_folder.File("file.cfg"), "; notes\n[Keys]\n");
  constexpr int kObjects = 5;
  std::vector<FileObject> files(kObjects);
  for (FileObject& file : files) {
    ASSERT_TRUE(file.Load(Path()));
  }
  for (int round = 0; round < 10; ++round) {
    for (int writer = 0; writer < kObjects; ++writer) {
      FileObject& file = files[static_cast<std::size_t>(writer)];
      ASSERT_TRUE(file.SetItem(L"Keys", Key(writer, round), L"1", true));
      ASSERT_TRUE(file.Save(Path()));
      EXPECT_EQ(file.LastSave(),
                round + writer == 0 ? FileSaveResult::Saved : FileSaveResult::Merged);
      EXPECT_EQ(file.ItemCount(L"Keys"), round * kObjects + writer + 1);
    }
  }
  ExpectAllKeys(kObjects, 10);
  EXPECT_TRUE(ReadBytes(m_folder.File("file.cfg")).starts_with("; notes\n[Keys]\n"));
}

#if !defined(_WIN32)
int WantedWrites() {
  const char* wanted = std::getenv("LUM_WRITES");
  return wanted != nullptr ? std::atoi(wanted) : 100;
}

TEST_F(FileWriters, ThatAreProcessesLoseNothing) {
  constexpr int kProcesses = 8;
  const int writes = WantedWrites();
  const auto start = std::chrono::steady_clock::now();
  std::vector<pid_t> children;
  for (int writer = 0; writer < kProcesses; ++writer) {
    const pid_t child = ::fork();
    if (child == 0) {
      int failed = 0;
      for (int number = 0; number < writes; ++number) {
        failed += SetOne(Path(), writer, number) ? 0 : 1;
      }
      ::_exit(failed == 0 ? 0 : 1);
    }
    children.push_back(child);
  }
  for (const pid_t child : children) {
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
  ExpectAllKeys(kProcesses, writes);
  std::cout << "processes: " << kProcesses << ", writes of each: " << writes
            << ", seconds: " << took.count() << "\n";
}
#endif

// ---- What is done about a conflict

class FileConflicts : public FileWriters {
 protected:
  // A loaded file that another program has changed since.
  FileObject Changed(const char* loaded, const char* changed) {
    WriteBytes(m_folder.File("file.cfg"), loaded);
    FileObject file;
    EXPECT_TRUE(file.Load(Path()));
    WriteBytes(m_folder.File("file.cfg"), changed);
    return file;
  }
  std::string Bytes() const { return ReadBytes(m_folder.File("file.cfg")); }
};

TEST_F(FileConflicts, AreRefusedOnRequest) {
  FileObject file = Changed("[S]\na=1\n", "[S]\na=2\n");
  file.SetItem(L"S", L"b", L"1", true);
  EXPECT_FALSE(file.Save(Path(), {FileConflict::Refuse}));
  EXPECT_EQ(file.LastSave(), FileSaveResult::Conflict);
  EXPECT_FALSE(file.LastError().IsEmpty());
  EXPECT_EQ(Bytes(), "[S]\na=2\n");
  EXPECT_EQ(Items(file, L"S"), "a=1 b=1 ");
  EXPECT_FALSE(file.Save(Path(), {FileConflict::Refuse})) << "the second time, too";
  EXPECT_TRUE(file.Save(Path()));
  EXPECT_EQ(file.LastSave(), FileSaveResult::Merged);
  EXPECT_EQ(Bytes(), "[S]\na=2\nb=1\n");
  EXPECT_TRUE(file.Save(Path(), {FileConflict::Refuse})) << "what was merged is known";
}

TEST_F(FileConflicts, AreOverwrittenOnRequest) {
  FileObject file = Changed("[S]\na=1\n", "[S]\na=2\nb=3\n");
  EXPECT_TRUE(file.Save(Path(), {FileConflict::Overwrite}));
  EXPECT_EQ(file.LastSave(), FileSaveResult::Saved);
  EXPECT_EQ(Bytes(), "[S]\na=1\n");
}

TEST_F(FileConflicts, DoNotComeFromWritingTheSameBytesAgain) {
  FileObject file = Changed("[S]\na=1\n", "[S]\na=1\n");
  EXPECT_TRUE(file.Save(Path(), {FileConflict::Refuse}));
  EXPECT_EQ(file.LastSave(), FileSaveResult::Saved);
}

TEST_F(FileConflicts, LeaveTheOthersBytesWhenNothingWasChangedHere) {
  const std::string theirs("\xEF\xBB\xBF; x \r\n [ S ] x\nno item\n\n[S]\n a =  1 \r\nb=2\nb=3",
                           45);
  FileObject file = Changed("[S]\na=7\nz=1\n", theirs.c_str());
  EXPECT_TRUE(file.Save(Path()));
  EXPECT_EQ(file.LastSave(), FileSaveResult::Merged);
  EXPECT_EQ(Bytes(), theirs);
}

TEST_F(FileConflicts, AreNotSeenInAFileThatIsGoneOrEmptyOrRuined) {
  const char* const ruins[] = {"", "\n\n", "; only a comment\n", "ruined", "[S]\n"};
  for (const char* ruin : ruins) {
    FileObject file = Changed("[S]\na=1\n", ruin);
    file.SetItem(L"S", L"b", L"1", true);
    EXPECT_TRUE(file.Save(Path())) << ruin;
    EXPECT_EQ(file.LastSave(), FileSaveResult::Saved);
    EXPECT_EQ(Bytes(), "[S]\na=1\nb=1\n");
  }
  FileObject file = Changed("[S]\na=1\n", "");
  std::filesystem::remove(m_folder.File("file.cfg"));
  EXPECT_TRUE(file.Save(Path()));
  EXPECT_EQ(Bytes(), "[S]\na=1\n");
}

// ---- What an object knows of its files

TEST_F(FileConflicts, AreSeenAfterAFailedLoad) {
  const std::string huge = "file.cfg";
  FileObject file;
  file.SetItem(L"S", L"a", L"1", true);
  EXPECT_FALSE(file.Load(Path())) << "there is none";
  WriteBytes(m_folder.File(huge), "[S]\nprecious=1\n");
  EXPECT_FALSE(file.Save(Path()));
  EXPECT_EQ(file.LastSave(), FileSaveResult::Conflict);
  EXPECT_EQ(Bytes(), "[S]\nprecious=1\n");
  EXPECT_TRUE(file.Save(PathText(m_folder.File("other.cfg")))) << "other files are free";
  EXPECT_FALSE(file.Save(Path())) << "and change nothing here";
  EXPECT_TRUE(file.Save(Path(), {FileConflict::Overwrite}));
  EXPECT_TRUE(file.Save(Path())) << "now it is this object's own";
}

TEST_F(FileConflicts, AreKnownToCopiesOfTheObject) {
  FileObject file = Changed("[S]\na=1\n", "[S]\na=1\ntheirs=1\n");
  FileObject copy = file;
  FileObject assigned;
  assigned = file;
  const FileObject moved = std::move(file);
  copy.SetItem(L"S", L"copy", L"1", true);
  EXPECT_TRUE(copy.Save(Path()));
  EXPECT_EQ(copy.LastSave(), FileSaveResult::Merged);
  assigned.SetItem(L"S", L"assigned", L"1", true);
  EXPECT_TRUE(assigned.Save(Path()));
  EXPECT_EQ(assigned.LastSave(), FileSaveResult::Merged);
  EXPECT_EQ(Bytes(), "[S]\na=1\ntheirs=1\ncopy=1\nassigned=1\n");
}

TEST_F(FileConflicts, AreSeenAfterACopyWasSavedElsewhere) {
  FileObject file = Changed("[S]\na=1\n", "[S]\na=1\ntheirs=1\n");
  const CString elsewhere = PathText(m_folder.File("copy.cfg"));
  EXPECT_TRUE(file.Save(elsewhere));
  EXPECT_EQ(ReadBytes(m_folder.File("copy.cfg")), "[S]\na=1\n");
  file.SetItem(L"S", L"mine", L"1", true);
  EXPECT_TRUE(file.Save(Path()));
  EXPECT_EQ(file.LastSave(), FileSaveResult::Merged);
  EXPECT_EQ(Bytes(), "[S]\na=1\ntheirs=1\nmine=1\n");

  WriteBytes(m_folder.File("copy.cfg"), "[S]\na=1\nlater=1\n");
  EXPECT_TRUE(file.Save(elsewhere));
  EXPECT_EQ(file.LastSave(), FileSaveResult::Merged);
  EXPECT_EQ(ReadBytes(m_folder.File("copy.cfg")), "[S]\na=1\nlater=1\ntheirs=1\nmine=1\n");
}

TEST_F(FileConflicts, AreSeenUnderAnyNameOfTheFile) {
  FileObject file = Changed("[S]\na=1\n", "[S]\na=1\ntheirs=1\n");
  file.SetItem(L"S", L"mine", L"1", true);
  std::filesystem::create_directory(m_folder.File("sub"));
  EXPECT_TRUE(file.Save(PathText(m_folder.File("sub/../file.cfg"))));
  EXPECT_EQ(file.LastSave(), FileSaveResult::Merged);
  EXPECT_EQ(Bytes(), "[S]\na=1\ntheirs=1\nmine=1\n");
}

// A value's leading blanks are in memory until the file is loaded again: that is no change.
TEST_F(FileConflicts, AreNotMadeByBlanksThatTheFileDoesNotKeep) {
  WriteBytes(m_folder.File("file.cfg"), "[S]\na=1\n");
  FileObject file;
  ASSERT_TRUE(file.Load(Path()));
  file.SetItem(L"S", L"a", L" \t 5", true);
  file.SetItem(L"S", L"b", L"  h\u00F6her", true);
  ASSERT_TRUE(file.Save(Path()));
  WriteBytes(m_folder.File("file.cfg"), "[S]\na=6\nb=tiefer\n");
  EXPECT_TRUE(file.Save(Path()));
  EXPECT_EQ(Bytes(), "[S]\na=6\nb=tiefer\n");
}

}  // namespace
