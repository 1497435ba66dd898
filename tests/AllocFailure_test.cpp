// Allocation failure, point by point: this program replaces the global
// allocation functions, so every operator new of the library goes through
// them, and fails the Nth allocation of an operation for every N the
// operation reaches, once (transient) or from then on (persistent). Each run
// must end in std::bad_alloc out of the operation, leave no allocation and
// no file descriptor behind once its objects are gone, and leave objects
// that still work and hold the state the operation's contract names. Under a
// tool that replaces the allocation functions itself (valgrind) nothing can
// be injected, and every sweep fails: run it natively or under the sanitizers.
#include <vq0300/vq0300.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <new>
#include <string>

#include "TestSupport.h"

namespace {

struct Injection {
  bool armed = false;       // counting the allocations of an operation
  long seen = 0;            // allocations while armed
  long failAt = 0;          // the allocation that fails; 0: none
  bool persistent = false;  // every allocation after failAt fails too
  long live = 0;            // allocations not yet freed, armed or not
} g;

void* Allocate(std::size_t size, bool nothrow) {
  const bool fail = g.armed && ++g.seen >= g.failAt && g.failAt > 0;
  void* p = fail && (g.persistent || g.seen == g.failAt) ? nullptr : std::malloc(size ? size : 1);
  if (p == nullptr && !nothrow) throw std::bad_alloc();
  if (p != nullptr) ++g.live;
  return p;
}

void Free(void* p) {
  if (p != nullptr) --g.live;
  std::free(p);
}

}  // namespace

// Every form: a sanitizer's runtime defines each of them, so a form left out
// here would bypass the count.
void* operator new(std::size_t n) { return Allocate(n, false); }
void* operator new[](std::size_t n) { return Allocate(n, false); }
void* operator new(std::size_t n, const std::nothrow_t&) noexcept { return Allocate(n, true); }
void* operator new[](std::size_t n, const std::nothrow_t&) noexcept { return Allocate(n, true); }
void operator delete(void* p) noexcept { Free(p); }
void operator delete[](void* p) noexcept { Free(p); }
void operator delete(void* p, std::size_t) noexcept { Free(p); }
void operator delete[](void* p, std::size_t) noexcept { Free(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { Free(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { Free(p); }

namespace {

using testsupport::TempDir;
using testsupport::WriteFile;

long OpenDescriptors() {
  const auto fds = std::filesystem::directory_iterator("/proc/self/fd");
  return std::distance(begin(fds), end(fds));
}

// Runs op with the injection armed. True when it ended in std::bad_alloc;
// any other exception goes on to the test, which then fails.
bool Attempt(const std::function<void()>& op) {
  bool threw = false;
  g.armed = true;
  try {
    op();
  } catch (const std::bad_alloc&) {
    threw = true;
  }
  g.armed = false;
  return threw;
}

// Runs scenario, which sets its objects up, calls Attempt on the operation,
// checks the state it leaves and uses the objects once more, first with no
// failure and then with each allocation point of the operation failing, in
// both modes.
void Sweep(const std::string& what, const std::function<void(bool& threw)>& scenario) {
  const int fds = OpenDescriptors();
  const long live = g.live;
  long points = 0;
  for (bool persistent : {false, true}) {
    for (long n = 0; n == 0 || n <= points; ++n) {  // n == 0: nothing fails
      g = {false, 0, n, persistent, g.live};
      bool threw = false;
      scenario(threw);
      g.failAt = 0;
      if (n == 0) points = g.seen;
      EXPECT_EQ(threw, n > 0) << what << ": allocation " << n << (persistent ? " on" : " once");
      EXPECT_EQ(g.live, live) << what << ": allocation " << n << " leaked";
      EXPECT_EQ(OpenDescriptors(), fds) << what << ": allocation " << n << " left a descriptor";
    }
  }
  EXPECT_GT(points, 0) << what << ": no allocation to fail";
}

TEST(AllocFailure, ContainersKeepTheirEntries) {
  LObject a;
  Sweep("LObjList growth", [&](bool& threw) {
    LObjList list;
    for (int i = 0; i < 4; ++i) list.AddTail(&a);  // full: the next entry grows it
    threw = Attempt([&] { list.Insert(2, &a); });
    EXPECT_EQ(list.GetCount(), threw ? 4 : 5);
    list.AddTail(&a);
  });
  Sweep("LTree::InsertChild", [&](bool& threw) {
    LTree root;
    LTree* child = nullptr;
    threw = Attempt([&] { child = root.InsertChild(0, &a); });
    EXPECT_EQ(root.GetChildNumber(), threw ? 0 : 1);
    if (child == nullptr) child = root.InsertLast(&a);
    child->Delete();
    delete child;
  });
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
}

TEST(AllocFailure, StringsStayWhole) {
  Sweep("LCString", [](bool& threw) {
    LCString text("left part");
    const LCString other("right");
    threw = Attempt([&] {
      LCString copy(text), d(8);
      d.Reallocate(16);
      FindSubString("needle in a haystack", "HAY", 0, true);
      copy = copy + other;
      text += copy;
    });
    EXPECT_STREQ(text.c_str(), threw ? "left part" : "left partleft partright");
  });
}

TEST(AllocFailure, ErrorHandlerKeepsItsLists) {
  TempDir dir;
  WriteFile(dir / "errors.txt",
            "<ErrorMessageDefinition>\nOffset<S/>100<E/>\n1<S/>Cannot open<S/>STOP<E/>\n");
  std::string name = "errors.txt";
  char text[] = "recorded";
  const std::string cwd = std::filesystem::current_path();
  Sweep("ErrorHandler::Initialize", [&](bool& threw) {
    ErrorHandler handler;
    threw = Attempt([&] {
      handler.SetDefaultDir(dir.path().c_str());
      handler.Initialize(name.data(), -1);
    });
    EXPECT_EQ(std::filesystem::current_path(), cwd);
    if (!threw) {
      EXPECT_NE(handler.GetErrorElement(1, 100), nullptr);
    }
  });
  for (int form = 0; form < 3; ++form) {
    Sweep("recording an error, form " + std::to_string(form), [&](bool& threw) {
      ErrorHandler handler, other;
      for (ErrorHandler* h : {&handler, &other}) {
        h->SetDefaultDir(dir.path().c_str());
        ASSERT_EQ(h->Initialize(name.data(), -1), 0);
        for (int i = 0; i < 4; ++i) h->SetErrorOccured(text);  // full: the next grows
      }
      other.SetErrorOccured(text);  // one entry behind handler's count, to append
      threw = Attempt([&] {
        if (form == 0) handler.SetErrorOccured(text);
        if (form == 1) handler.SetLastErrorOccured(text);
        if (form == 2) handler.AppendErrorOccured(&other);
      });
      // A replacement makes its copy before it removes the newest entry.
      EXPECT_EQ(handler.GetNumberOfErrorOccured(), threw || form == 1 ? 4 : 5);
    });
  }
}

TEST(AllocFailure, FilesCloseWhatTheyOpened) {
  TempDir dir;
  const std::string path = dir / "file.txt";
  WriteFile(path, "line\n");
  Sweep("LFile::Open", [&](bool& threw) {
    LFile file;
    threw = Attempt([&] { file.Open(path.c_str(), "a", true); });
    // Either still Empty or Open with its name: never a stream without both.
    EXPECT_EQ(file.IsOpen(), !threw);
    EXPECT_EQ(file.GetFilename() == nullptr, threw);
    EXPECT_EQ(file.ValidWrite(), threw ? LFILE_ERR_NOT_OPEN : 0);
  });
  // /dev/full takes every write into the stream's buffer and refuses it at
  // fclose, so each log closes with an error; its name must go all the same,
  // from the log that InitLogFile replaces and from ~LMsgOutput. A new log
  // that fails to come leaves none, not the old one freed.
  Sweep("LMsgOutput::InitLogFile", [&](bool& threw) {
    LMsgOutput channel;
    channel.SetOutputOptions(LMSG_OUTPUT_LOG);
    channel.InitLogFile("/dev/full", true);
    channel.Output("buffered\n");
    threw = Attempt([&] { channel.InitLogFile("/dev/full", true); });
    channel.Output("buffered\n");
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

TEST(AllocFailure, BuffersKeepTheirBlocks) {
  Sweep("byte stores", [](bool& threw) {
    LByteBuffer head(4);
    LCirByteBuffer ring(4);
    jtagShiftBitStream bits;
    char text[] = "more than one block";
    threw = Attempt([&] {
      head.WriteData(text);
      ring.Allocate(16);
      bits.InitBuffer(64);
    });
    EXPECT_EQ(bits.GetBufferBitSize(), threw ? 0 : 64);  // a failed buffer holds no bits
    ring.WriteData(static_cast<unsigned char>(1));
    bits.WriteByte(0, 1);
  });
}

}  // namespace
