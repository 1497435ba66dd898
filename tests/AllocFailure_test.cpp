// Allocation failure, point by point: this program replaces the global
// allocation functions, so every operator new of the library goes through
// them, and fails the Nth allocation of an operation for every N the
// operation reaches, once (transient) or from then on (persistent). Each run
// must end in std::bad_alloc out of the operation, leave no allocation and
// no file descriptor behind once its objects are gone, and leave objects
// that still work and hold the state the operation's contract names.
#include <vq0300/vq0300.h>

#include <dirent.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <string>
#include <vector>

#include "TestSupport.h"

namespace {

struct Injection {
  bool armed = false;       // counting the allocations of an operation
  long seen = 0;            // allocations while armed
  long failAt = 0;          // the allocation that fails; 0: none
  bool persistent = false;  // every allocation after failAt fails too
  long live = 0;            // allocations not yet freed, armed or not
} g;

bool FailNow() {
  if (!g.armed) return false;
  ++g.seen;
  return g.failAt > 0 && (g.seen == g.failAt || (g.persistent && g.seen > g.failAt));
}

void* Allocate(std::size_t size, bool nothrow) {
  if (FailNow()) {
    if (nothrow) return nullptr;
    throw std::bad_alloc();
  }
  void* p = std::malloc(size != 0 ? size : 1);
  if (p == nullptr && !nothrow) throw std::bad_alloc();
  if (p != nullptr) ++g.live;
  return p;
}

void Free(void* p) {
  if (p == nullptr) return;
  --g.live;
  std::free(p);
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size, false); }
void* operator new[](std::size_t size) { return Allocate(size, false); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size, true);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size, true);
}
void operator delete(void* p) noexcept { Free(p); }
void operator delete[](void* p) noexcept { Free(p); }
void operator delete(void* p, std::size_t) noexcept { Free(p); }
void operator delete[](void* p, std::size_t) noexcept { Free(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { Free(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { Free(p); }

namespace {

using testsupport::TempDir;
using testsupport::WriteFile;

int OpenDescriptors() {
  int count = 0;
  if (DIR* dir = opendir("/proc/self/fd")) {
    while (readdir(dir) != nullptr) ++count;
    closedir(dir);
  }
  return count;
}

// Runs op with the injection armed. True when it ended in std::bad_alloc;
// any other exception goes on to the test, which then fails.
bool Attempt(const std::function<void()>& op) {
  g.armed = true;
  try {
    op();
  } catch (const std::bad_alloc&) {
    g.armed = false;
    return true;
  }
  g.armed = false;
  return false;
}

// The allocations of op, counted once with nothing failing.
long CountAllocations(const std::function<void()>& op) {
  g.failAt = 0;
  g.seen = 0;
  EXPECT_FALSE(Attempt(op));
  return g.seen;
}

// Runs scenario, which sets its objects up, calls Attempt on the operation,
// checks the state it leaves and uses the objects once more, first with no
// failure and then with each allocation point of the operation failing, in
// both modes. Returns the number of allocation points.
long Sweep(const std::string& what, const std::function<void(bool& threw)>& scenario) {
  const int fds = OpenDescriptors();
  const long live = g.live;
  bool threw = false;
  g.failAt = 0;
  g.seen = 0;
  scenario(threw);
  EXPECT_FALSE(threw) << what;
  const long points = g.seen;
  EXPECT_GT(points, 0) << what << ": no allocation to fail";
  for (bool persistent : {false, true}) {
    for (long n = 1; n <= points; ++n) {
      g.failAt = n;
      g.persistent = persistent;
      g.seen = 0;
      threw = false;
      scenario(threw);
      g.failAt = 0;
      EXPECT_TRUE(threw) << what << ": allocation " << n << (persistent ? " on" : " once");
      EXPECT_EQ(g.live, live) << what << ": allocation " << n << " leaked";
      EXPECT_EQ(OpenDescriptors(), fds) << what << ": allocation " << n << " left a descriptor";
    }
  }
  EXPECT_EQ(g.live, live) << what;
  return points;
}

class AllocFailure : public ::testing::Test {
 protected:
  void SetUp() override {
    // Under a tool that replaces the allocation functions itself, the
    // library's calls never reach the ones above: nothing can be injected.
    if (CountAllocations([] { LCString text("hooked"); }) == 0) {
      GTEST_SKIP() << "the allocation functions of this program are not in use";
    }
  }
};

const char kDefinitions[] =
    "<ErrorMessageDefinition>\n"
    "Offset<S/>100<E/>\n"
    "1<S/>Cannot open the device<S/>STOP<E/>\n"
    "2<S/>The device is busy<S/>CONTINUE<E/>\n";

TEST_F(AllocFailure, ObjectListsKeepTheirEntries) {
  LObject a;
  Sweep("LObjList growth", [&](bool& threw) {
    LObjList list;
    for (int i = 0; i < 4; ++i) list.AddTail(&a);  // full: the next entry grows it
    threw = Attempt([&] { list.Insert(2, &a); });
    EXPECT_EQ(list.GetCount(), threw ? 4 : 5);
    list.AddTail(&a);
  });
  Sweep("LStack::Push", [&](bool& threw) {
    LStack stack;
    threw = Attempt([&] { stack.Push(&a); });
    EXPECT_EQ(stack.GetStackElement(), threw ? 0 : 1);
    stack.Push(&a);
  });
}

TEST_F(AllocFailure, TreeInsertionsLeakNoNode) {
  LObject a;
  for (bool last : {false, true}) {
    Sweep(last ? "LTree::InsertLast" : "LTree::InsertChild", [&](bool& threw) {
      LTree root;
      LTree* child = nullptr;
      threw = Attempt([&] { child = last ? root.InsertLast(&a) : root.InsertChild(0, &a); });
      EXPECT_EQ(root.GetChildNumber(), threw ? 0 : 1);
      EXPECT_EQ(child == nullptr, threw);
      if (child == nullptr) child = root.InsertLast(&a);
      child->Delete();
      delete child;
    });
  }
}

TEST_F(AllocFailure, StringsStayWhole) {
  Sweep("LCString copies and joins", [](bool& threw) {
    LCString text("left part");
    const LCString other("right");
    threw = Attempt([&] {
      LCString copy(text);
      copy = copy + other;
      text += copy;
    });
    EXPECT_STREQ(text.c_str(), threw ? "left part" : "left partleft partright");
    text += other;
  });
  Sweep("LCString construction", [](bool& threw) {
    threw = Attempt([] {
      LCString a("abc");
      LCString b(std::string("def"));
      LCString c('x');
      LCString d(8);
      d.Reallocate(16);
      d.AddString(3, "abc");
    });
  });
  Sweep("LCString searches", [](bool& threw) {
    LCString text("abc abc xyz");
    threw = Attempt([&] {
      text.ReverseFind("abc");
      text.Find(LCString("xyz"));
    });
    EXPECT_STREQ(text.c_str(), "abc abc xyz");
  });
  Sweep("string routines", [](bool& threw) {
    std::string text = "MiXeD";
    threw = Attempt([&] {
      FindSubString("needle in a haystack", "HAY", 0, true);
      strlwr(text);
    });
  });
}

TEST_F(AllocFailure, ErrorHandlerKeepsItsLists) {
  TempDir dir;
  WriteFile(dir / "errors.txt", kDefinitions);
  std::string name = "errors.txt";
  char text[] = "recorded";
  Sweep("ErrorHandler construction",
        [](bool& threw) { threw = Attempt([] { ErrorHandler handler; }); });
  Sweep("ErrorHandler::Initialize", [&](bool& threw) {
    char cwd[4096];
    ASSERT_NE(getcwd(cwd, sizeof cwd), nullptr);
    ErrorHandler handler;
    threw = Attempt([&] {
      handler.SetDefaultDir(dir.path().c_str());
      handler.Initialize(name.data(), -1);
    });
    char after[4096];
    ASSERT_NE(getcwd(after, sizeof after), nullptr);
    EXPECT_STREQ(after, cwd);  // the working directory is back
    if (!threw) {
      EXPECT_NE(handler.GetErrorElement(1, 100), nullptr);
    }
  });
  for (int form = 0; form < 3; ++form) {
    Sweep("recording an error, form " + std::to_string(form), [&](bool& threw) {
      ErrorHandler handler;
      handler.SetDefaultDir(dir.path().c_str());
      ASSERT_EQ(handler.Initialize(name.data(), -1), 0);
      for (int i = 0; i < 4; ++i) handler.SetErrorOccured(text);  // full: the next grows
      ErrorHandler other;
      other.SetDefaultDir(dir.path().c_str());
      ASSERT_EQ(other.Initialize(name.data(), -1), 0);
      for (int i = 0; i < 5; ++i) other.SetErrorOccured(text);
      threw = Attempt([&] {
        if (form == 0) handler.SetErrorOccured(text);
        if (form == 1) handler.SetLastErrorOccured(text);
        if (form == 2) handler.AppendErrorOccured(&other);
      });
      if (threw && form != 1) {
        EXPECT_EQ(handler.GetNumberOfErrorOccured(), 4);
      }
      handler.SetErrorOccured(text);
    });
  }
}

TEST_F(AllocFailure, FilesCloseWhatTheyOpened) {
  TempDir dir;
  const std::string path = dir / "file.txt";
  WriteFile(path, "line\n");
  Sweep("LFile(name, mode)", [&](bool& threw) {
    threw = Attempt([&] {
      LFile file(path.c_str(), "r");
      LCString line;
      file.ReadLine(line);
    });
  });
  Sweep("LFile::Open", [&](bool& threw) {
    LFile file;
    threw = Attempt([&] { file.Open(path.c_str(), "a", true); });
    // Either still Empty or Open with its name: never a stream without both.
    EXPECT_EQ(file.IsOpen(), !threw);
    EXPECT_EQ(file.GetFilename() == nullptr, threw);
    if (threw) {
      EXPECT_EQ(file.ValidWrite(), LFILE_ERR_NOT_OPEN);  // no stream held either
    }
    if (!threw) {
      EXPECT_EQ(file.WriteLine("%d\n", 1), 0);
    }
  });
  Sweep("LMsgOutput", [&](bool& threw) {
    LMsgOutput channel;
    channel.SetOutputOptions(LMSG_OUTPUT_LOG);
    threw = Attempt([&] {
      channel.InitLogFile((dir / "channel.log").c_str(), true);
      channel.Output("%s: %d\n", "value", 7);
    });
  });
  Sweep("LLog", [&](bool& threw) {
    LLog log;
    threw = Attempt([&] {
      log.SetLogFilename((dir / "run.log").c_str(), "w");
      log.LogHeader("header");
      log.WriteMessage("50%% done\n");
      log.WriteMessage2("done\n");
    });
    log.WriteMessage("after\n");
  });
}

// /dev/full takes every write into the stream's buffer and refuses it at
// fclose, so each close below fails; the name must go all the same.
TEST_F(AllocFailure, FailedCloseLeavesNoName) {
  if (LFile::exists("/dev/full") == 0) GTEST_SKIP() << "no /dev/full";
  const long live = g.live;
  {
    LFile file("/dev/full", "w");
    ASSERT_TRUE(file.IsOpen());
    EXPECT_EQ(file.WriteLine("buffered"), 0);
  }
  EXPECT_EQ(g.live, live) << "~LFile";
  {
    LMsgOutput channel;
    channel.SetOutputOptions(LMSG_OUTPUT_LOG);
    ASSERT_EQ(channel.InitLogFile("/dev/full", true), 0);
    EXPECT_EQ(channel.Output("buffered\n"), 0);
    const long oneLog = g.live;
    ASSERT_EQ(channel.InitLogFile("/dev/full", true), 0);
    EXPECT_EQ(g.live, oneLog) << "InitLogFile replacing a log";
    EXPECT_EQ(channel.Output("buffered\n"), 0);
  }
  EXPECT_EQ(g.live, live) << "~LMsgOutput";
}

TEST_F(AllocFailure, TablesAndBuffersKeepTheirRows) {
  Sweep("LHash", [](bool& threw) {
    LHash table;
    for (const char* key : {"a", "b", "c", "d"}) table.createKey(key);
    threw = Attempt([&] {
      LHashElement* row = table.createKey("e");
      row->setValue("one");
      row->setValue("two");
    });
    EXPECT_NE(table.getKey("a"), nullptr);
    table.createKey("f");
  });
  Sweep("LByteBuffer", [](bool& threw) {
    LByteBuffer head(4);
    char text[] = "more than one block";
    threw = Attempt([&] {
      LByteBuffer other(8);
      head.WriteData(text);
      head.CopyBlock(&other);
    });
    head.ClearBuffer();
  });
  Sweep("LCirByteBuffer and jtagShiftBitStream", [](bool& threw) {
    LCirByteBuffer ring(4);
    jtagShiftBitStream bits;
    threw = Attempt([&] {
      ring.Allocate(16);
      bits.InitBuffer(64);
    });
    ring.WriteData(static_cast<unsigned char>(1));
    bits.WriteByte(0, 1);
  });
  Sweep("time and hex conversions", [](bool& threw) {
    char hex[] = "1F2E";
    threw = Attempt([&] {
      LCString stamp;
      util_GetTime(stamp);
      util_HexStr2Hex16(hex);
    });
  });
}

// What the library's contracts say works on the caller's storage alone.
TEST_F(AllocFailure, OperationsOnCallerStorageAllocateNothing) {
  char buffer[64] = "  Some Text  ";
  char out[64];
  unsigned char bytes[4] = {1, 2, 3, 4};
  unsigned char hex[9];
  LObject a;
  LObjList list;
  list.AddTail(&a);
  RBTreeNode nodes[3] = {};
  char keys[3][4] = {"b", "a", "c"};
  RBTree tree{};
  LRNG rng(5489u);
  const std::pair<const char*, std::function<void()>> table[] = {
      {"LString",
       [&] {
         LString s;
         s.Find(buffer, "Text");
         s.ReverseFindOneOf(buffer, "xt");
         s.Mid(out, buffer, 2, 4);
         s.TrimLeft(buffer);
         s.TrimRight(buffer);
       }},
      {"bounded copy", [&] { util_strncpy(out, buffer, 0, 0); }},
      {"free routines",
       [&] {
         stricmp("abc", "ABD");
         strnicmp("abc", "ABD", 2);
         itoa(-42, out, 10);
         strrev(out);
       }},
      {"list reads",
       [&] {
         list.GetAt(0);
         list.GetTail();
       }},
      {"RBTree",
       [&] {
         for (int i = 0; i < 3; ++i) {
           nodes[i].key = keys[i];
           tree.Insert(&tree, &nodes[i]);
         }
         tree.Search(tree.root, keys[2]);
         tree.Delete(&tree, &nodes[0]);
       }},
      {"CRC",
       [&] {
         init_crc32();
         get_crc_32(buffer, 8, false);
         get_crc_16(0, buffer, 8, false);
       }},
      {"hex", [&] { util_Bin2HexAnsi(bytes, hex, 4); }},
      {"LRNG", [&] { rng.GetRandom(); }},
  };
  for (const auto& [what, op] : table) EXPECT_EQ(CountAllocations(op), 0) << what;
}

}  // namespace
