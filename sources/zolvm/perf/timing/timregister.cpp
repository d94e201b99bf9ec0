// timregister.cpp - registers the measured library. Once for the whole suite: a second time
// from each family's module would change nothing.
#include "timing/timregister.h"

#include "ps/psregister.h"
#include "zo/zoenvironment.h"

namespace {

[[maybe_unused]] int const b_zolEnvironment = psRegZolEnvironment(zoSetZolEnvironment);
[[maybe_unused]] int const b_zolVersion = psRegZolVersion(zoGetZolVersion_zolvm);

} // namespace
