// LObject: the root of the object hierarchy.
#include "vq0300/LObject.h"

LObject::LObject() = default;

LObject::~LObject() = default;
