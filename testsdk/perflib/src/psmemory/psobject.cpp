// psobject.cpp - the two marks for blocks without an owner of their own. They are
// objects, so that a walk over all owners may ask them like any other.
#include "psmemory/psobject.h"

namespace {

psObject bufferMark;
psObject subobjectMark;

} // namespace

constinit psObject* const MEM_OBJECT_IS_BUFFER = &bufferMark;
constinit psObject* const MEM_OBJECT_IS_SUBOBJECT = &subobjectMark;
