// Fuzzes the error definition file loader. The input after its first byte
// becomes the definition file, in a temporary directory made once; the first
// byte picks a block selector. Per input the harness:
//  - loads every definition (selector -1) with Initialize, from an absolute
//    default directory, and snapshots the definition list;
//  - runs the reading pass GetErrorList(-1) on its own, which must append the
//    same elements once more;
//  - loads the one block of the selector with Initialize and a null name
//    (the stored name stays), which must give a contiguous run of the full
//    load whose codes all carry the selector; -1 gives the full load again,
//    a selector below -1 nothing.
// Every call must return 0, -1, -2 or -3 (only 0 or -1 here, since the file
// and its directory exist), leave the working directory as it was, and give
// elements with a message that is never null. Leaks show through the leak
// check of the address sanitizer, which libFuzzer runs per input.
#include <unistd.h>
#include <vq0300/ErrorElement.h>
#include <vq0300/ErrorHandler.h>
#include <vq0300/LObjList.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "FuzzSupport.h"

namespace {

[[noreturn]] void Fail(int line, const char* what) {
  std::fprintf(stderr, "ErrorDefinitionFile_fuzz: check failed at line %d: %s\n", line, what);
  std::abort();
}

// The definition list is private to ErrorHandler. An explicit instantiation
// may name a private member, and the friend defined in it hands the member
// pointer out: standard C++, no guess at the object layout.
using ListMember = LObjList* ErrorHandler::*;
ListMember DefinitionList();
template <ListMember member>
struct ExposeDefinitionList {
  friend ListMember DefinitionList() { return member; }
};
template struct ExposeDefinitionList<&ErrorHandler::m_pDefinitionList>;

struct Definition {
  uint32_t code;
  std::string message;
  uint16_t cont;
  bool operator==(const Definition& o) const {
    return code == o.code && message == o.message && cont == o.cont;
  }
};

std::vector<Definition> Snapshot(ErrorHandler& handler) {
  LObjList* list = handler.*DefinitionList();
  std::vector<Definition> out;
  for (int i = 0; i < list->GetCount(); ++i) {
    auto* e = static_cast<ErrorElement*>(list->GetAt(i));
    CHECK(e != nullptr);
    CHECK(e->GetErrorMessage() != nullptr);
    CHECK(e->m_wContinue == 0 || e->m_wContinue == 1);
    out.push_back({e->m_dwErrorCode, e->GetErrorMessage(), e->m_wContinue});
  }
  return out;
}

std::string WorkingDirectory() {
  std::vector<char> area(4096);
  CHECK(getcwd(area.data(), area.size()) != nullptr);
  return area.data();
}

// The temporary directory and the definition file in it, made once and
// removed at exit.
struct Place {
  std::string dir, file;
  Place() {
    const char* tmp = std::getenv("TMPDIR");
    std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/vq0300-fuzz-XXXXXX";
    CHECK(mkdtemp(&pattern[0]) != nullptr && pattern[0] == '/');
    dir = pattern;
    file = dir + "/errors.def";
  }
  ~Place() {
    std::remove(file.c_str());
    rmdir(dir.c_str());
  }
};

const Place& ThePlace() {
  static const Place place;
  return place;
}

// A load: the result is one of the loader's codes, and here never -2 or -3.
int Checked(int result, const std::string& cwd) {
  CHECK(result == 0 || result == -1 || result == -2 || result == -3);
  CHECK(result == 0 || result == -1);
  CHECK(WorkingDirectory() == cwd);
  return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const Place& place = ThePlace();
  // Selectors -2 to 5: below -1 (nothing), -1 (all), and small block values
  // the file may well hold.
  const int selector = data[0] % 8 - 2;
  FILE* f = std::fopen(place.file.c_str(), "wb");
  CHECK(f != nullptr);
  CHECK(std::fwrite(data + 1, 1, size - 1, f) == size - 1);
  CHECK(std::fclose(f) == 0);

  const std::string cwd = WorkingDirectory();
  ErrorHandler handler;
  handler.SetDefaultDir(place.dir.c_str());
  char name[] = "errors.def";
  const int all_result = Checked(handler.Initialize(name, -1), cwd);
  const std::vector<Definition> all = Snapshot(handler);

  // The reading pass alone appends the same elements again.
  CHECK(Checked(handler.GetErrorList(-1), cwd) == all_result);
  std::vector<Definition> twice = all;
  twice.insert(twice.end(), all.begin(), all.end());
  CHECK(Snapshot(handler) == twice);

  // Initialize empties the record of occurred errors as well.
  handler.SetErrorOccured(name);
  CHECK(handler.GetNumberOfErrorOccured() == 1);
  const int block_result = Checked(handler.Initialize(nullptr, selector), cwd);
  CHECK(handler.GetNumberOfErrorOccured() == 0);
  const std::vector<Definition> block = Snapshot(handler);
  if (selector == -1) {
    CHECK(block == all && block_result == all_result);
  } else if (selector < -1) {
    CHECK(block.empty() && block_result == all_result);
  } else {
    // A block pass reads like the full one and may end early, at the next
    // offset statement.
    CHECK(block_result == all_result || block_result == 0);
    for (const Definition& d : block) CHECK(d.code >> 16 == static_cast<uint32_t>(selector));
    bool found = block.empty();
    for (size_t i = 0; !found && i + block.size() <= all.size(); ++i) {
      found = std::equal(block.begin(), block.end(), all.begin() + i);
    }
    CHECK(found);
  }
  // Lookups find the first definition of a code.
  for (size_t i = 0; i < all.size() && i < 8; ++i) {
    ErrorElement* e = handler.GetErrorElement(all[i].code & 0xFFFF, all[i].code >> 16);
    const Definition* first = nullptr;
    for (const Definition& d : block) {
      if (d.code == all[i].code) {
        first = &d;
        break;
      }
    }
    CHECK((e == nullptr) == (first == nullptr));
    if (e != nullptr) {
      CHECK((Definition{e->m_dwErrorCode, e->GetErrorMessage(), e->m_wContinue} == *first));
    }
  }
  return 0;
}
