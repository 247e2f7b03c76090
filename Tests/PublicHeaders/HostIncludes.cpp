// A host's source: the library's headers between the C and C++ libraries', in no particular order.
// Compiling it is the test.

// clang-format off
#include <string.h>

#include <STLCodeTrans.h>

#include <stdlib.h>

#include <Utility.h>

#include <ctype.h>
#include <time.h>
#include <wchar.h>

#include <Global.h>

#include <algorithm>
#include <STLCodeTrans.h>
#include <string>
#include <Utility.h>
// clang-format on

// Nothing of the library's own scaffolding may reach a host.
namespace utility {
struct internal {};
}  // namespace utility
