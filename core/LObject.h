/// @class LObject
/// LObject: the root of the library's object classes.
///
/// It holds no data. Its only purpose is the virtual destructor, so that an
/// object of any derived class (the library's or the caller's) can be stored
/// in an LObjList, LStack or LTree and destroyed through an LObject*.
#ifndef VQ0300_LOBJECT_H
#define VQ0300_LOBJECT_H
/// @file

#include "vq0300/vq0300_export.h"

class VQ0300_API LObject {
 public:
  /// Nothing to set up: the root class holds no data.
  LObject();
  virtual ~LObject();
};

#endif  // VQ0300_LOBJECT_H
