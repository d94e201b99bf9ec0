// vtsconfig.h - fills defParam: the defaults, then what the source of the configuration
// says. The built-in source says nothing.
#ifndef VTS_VTSCONFIG_H
#define VTS_VTSCONFIG_H

// The seam for a real source: gives the text of a key, at most size characters, empty if there
// is none. A null handle is the built-in source.
using vtsStringSource = int (*)(void* handle, char const* key, int size, char* text);
int vtsGetStringFromFileStub(void* handle, char const* key, int size, char* text);
extern vtsStringSource vtsGetStringFromFile; // the stub, unless replaced

void vtsConfigure();  // at every test start: no setting survives one, and the generator restarts
int vtsSet_One_Cpu(); // 0; the tool binds the process to a processor
void vtsSetDefaultParams(); // but for the number of rows; flags and modes of the units, too
int vtsReadConfig(void* handle, int mode); // 0; mode is for sources to come

void hrotsCreateMeteringName(char const* text, char* name); // at most 63 characters of it

#endif
