// Helpers shared by the two sources of ErrorHandler (the record of errors and
// the definition-file loader). Private to the library: not installed, not
// exported.
#ifndef VQ0300_ERRORHANDLER_INTERNAL_H
#define VQ0300_ERRORHANDLER_INTERNAL_H

#include "core/Helpers_internal.h"
#include "vq0300/LObjList.h"

namespace vq0300_internal {

// The file test that guards every recording, lookup and load: true when name
// is stored and opens for reading (it is closed again at once).
inline bool DefinitionFileOpens(const char* name) { return FileOpens(name, "r"); }

// Destroys every element of list from the tail on; the list stays, empty.
void DestroyElements(LObjList* list);

}  // namespace vq0300_internal

#endif  // VQ0300_ERRORHANDLER_INTERNAL_H
