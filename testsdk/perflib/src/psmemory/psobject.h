// psobject.h - what can own a block of aligned memory: objects that know their size and
// can put their data back, and the marks for blocks that no such object owns.
#ifndef PSMEMORY_PSOBJECT_H
#define PSMEMORY_PSOBJECT_H

#include "psbase/psstring.h"

class psObject {
public:
    virtual int objectSize() { return 0; }       // bytes of data
    virtual psString objectInfo() { return ""; } // one line for the memory dump
    virtual int reserveCopy() { return 0; }      // keep a copy of the data; 0: nothing done
    virtual int setReservedCopy() { return 0; }  // put the kept data back; 0: nothing done
    virtual void deleteReservedCopy() {}
    virtual ~psObject() = default;
};

// Marks an ordinary buffer and a part of another object. Their addresses are what counts.
extern psObject* const MEM_OBJECT_IS_BUFFER;
extern psObject* const MEM_OBJECT_IS_SUBOBJECT;

#endif
