// The version record. The version text names build 167.32 while the numeric
// fields say 167 and 638; both are returned as they are, neither derived. The
// first three fields are the header's version macros (the build checks those
// against the project version).
#include "huxvc.h"

namespace {
constexpr HuxLibraryVersion kVersion = {
    HUXVC_VERSION_MAJOR, HUXVC_VERSION_MINOR, HUXVC_VERSION_PATCH, 638, {'w', '7', '\0', '\0'}, "huxvcw7-6.0.dll", "6.0 Update 1 build 167.32", "Nov 25 2008",
};
}  // namespace

extern "C" HUX_API const HuxLibraryVersion* HUX_STDCALL huxvcGetLibVersion(void) { return &kVersion; }
