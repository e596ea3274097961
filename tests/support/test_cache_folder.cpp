// Every test, and every tessaly a test starts, keeps the font cache in the build tree: never in the
// user's own cache folder. A test that wants another folder sets XDG_CACHE_HOME and puts it back.
#include <cstdlib>

namespace {

const bool kCacheFolderSet = [] { return setenv("XDG_CACHE_HOME", TESSALY_TEST_CACHE, 1) == 0; }();

} // namespace
