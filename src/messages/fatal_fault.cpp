#include "messages/fatal_fault.h"

namespace kelo {

void throwFatalFault(const char* what) { throw FatalFault{what}; }

}  // namespace kelo
